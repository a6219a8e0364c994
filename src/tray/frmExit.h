// The end-of-day prompt on screen. It shows an ExitPrompt and hands clicks back to it.
#pragma once

#include "tray/exit_prompt.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace kelvrane {

class frmExit : public QDialog {
    Q_OBJECT
  public:
    explicit frmExit(QWidget* parent = nullptr);

    ExitPrompt& prompt() { return m_prompt; }

    /// Esc and the close box are the Cancel button.
    void reject() override;

  protected:
    /// Unloading hides it before it goes: the countdown ends there.
    void hideEvent(QHideEvent* event) override;

  private:
    QLabel* addLabel(const QString& key);
    QPushButton* addButton(const QString& key);
    QComboBox* addTimeList(const QString& key);
    QCheckBox* addCheck(const QString& key);
    void layOut();
    void layOutEditor();
    void fitHeight();
    void refresh();

    ExitPrompt m_prompt;
    QLabel* Label1;
    QLabel* Label2;
    QComboBox* cboTime[3];
    QCheckBox* chkAsk;
    QPushButton* cmdSave;
    QPushButton* cmdUpdate;
    QPushButton* cmdCancel;
};

} // namespace kelvrane
