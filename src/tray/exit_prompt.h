// The end-of-day prompt. It counts fifteen minutes down and, when nobody answers, stops and saves
// the day. It can be turned into a small editor of the stop time; the countdown goes on behind it.
//
//     ExitPrompt prompt;                     // counting
//     prompt.controls.click("cmdCancel");    // as a click on the button does
#pragma once

#include "platform/int16.h"
#include "platform/keyed_items.h"

#include <QObject>
#include <QString>

namespace kelvrane {

class IntervalTimer;

class ExitPrompt : public QObject {
    Q_OBJECT
  public:
    /// The load: starts the countdown and tells the tray.
    explicit ExitPrompt(QObject* parent = nullptr);

    /// Label1, Label2, cboTime0 to cboTime2 (hour, minute, AM or PM), chkAsk, cmdSave, cmdUpdate,
    /// cmdCancel. Labels and buttons are their captions.
    KeyedItems controls;

    const QString& caption() const { return m_caption; }
    bool isEditing() const { return m_editing; }
    void stopCountdown();

  signals:
    /// The prompt became the editor of the stop time.
    void EditorOpened();

  private:
    void clicked(const QString& key);
    void tick();
    void writeLabels();
    void saveAndQuit(bool timedOut);
    void openEditor();
    void cmdSave();
    void cmdUpdate();
    void cmdCancel();
    void chkAsk();
    void cboTime();
    void close();

    QString m_caption = QStringLiteral("Save Day Information");
    bool m_editing = false;
    bool m_counting = false;
    Int16 RemainingMinutes = 15;
    IntervalTimer* ExitTimer = nullptr;
};

} // namespace kelvrane
