// The spreadsheet screen: menus, the sheet, the options of the calculation and the list of
// databases beside it, the calendar over it.
#pragma once

#include <QWidget>

class QCalendarWidget;
class QFrame;
class QLabel;
class QProgressBar;
class QStackedWidget;
class QToolButton;

namespace kelvrane {

class FlatButton;
class KeyedPanel;
class SheetEditor;

class frmSpreadsheet : public QWidget {
    Q_OBJECT
  public:
    explicit frmSpreadsheet(QWidget* parent = nullptr);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* createBar();
    QWidget* createSheet();
    QWidget* createSide();
    QWidget* createStatusBar();
    void createCalendar();
    void bind();
    void layOut();
    void showBar();
    void showStatus();
    void placeCalendar();

    SheetEditor* ss1 = nullptr;
    KeyedPanel* SmartToolbox = nullptr;
    QWidget* m_side = nullptr;
    QStackedWidget* m_sheet = nullptr; ///< nothing yet, ss1, lblNoData
    FlatButton* STARTINGDATE = nullptr;
    QLabel* STARTDATE = nullptr;
    QFrame* m_calendar = nullptr;
    QCalendarWidget* MonthView1 = nullptr;
    QLabel* TEMPLATE_NAME = nullptr;
    QLabel* COLLECTION_NAME = nullptr;
    QLabel* m_progressText = nullptr;
    QProgressBar* PROGRESS = nullptr;
};

} // namespace kelvrane
