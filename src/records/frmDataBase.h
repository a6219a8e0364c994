// The Database Manager: projects and customers in a record panel or a list, and the place where a
// project is picked. It shows Manager() and RecordPanel() and hands what the user does back to
// them.
#pragma once

#include <QWidget>

class QAbstractButton;
class QShortcut;
class QStackedWidget;

namespace kelvrane {

class frmDataBaseList;
class KeyedButtons;
class KeyedPanel;
class KeyedToolBar;
class TabStrip;

class frmDataBase : public QWidget {
    Q_OBJECT
  public:
    /// Opens the tables; UnloadDataBase closes them.
    explicit frmDataBase(QWidget* parent = nullptr);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void createPanels();
    QWidget* createFindPanel();
    QWidget* createStepping();
    void arrange();
    void bind();
    void layOut();
    void showButtons();
    void showProgress();

    KeyedToolBar* smuiToolBar = nullptr;
    TabStrip* smuiOptions = nullptr;
    KeyedPanel* smuiDataBase = nullptr;
    KeyedPanel* smuiProgress = nullptr;
    KeyedButtons* smuiFind = nullptr;
    frmDataBaseList* ListView1 = nullptr;
    QWidget* m_findPanel = nullptr;
    QWidget* m_stepping = nullptr;
    QStackedWidget* m_views = nullptr;
    QShortcut* m_select = nullptr;     ///< Enter on the record panel
    QList<QAbstractButton*> m_buttons; ///< CmdUp, cmdDown, cmdFind, ImgClose
};

} // namespace kelvrane
