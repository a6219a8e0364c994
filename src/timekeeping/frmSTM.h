// The control screen: tool bar, current project, the day's list, daily chart, week view, launch
// panel. It shows Control() and hands what the user does back to it.
#pragma once

#include <QWidget>

class QLabel;
class QMenu;
class QToolButton;
class QVBoxLayout;

namespace kelvrane {

class BarSplitter;
class ChartView;
class ControlStatusBar;
class KeyedPanel;
class KeyedToolBar;
class RunningHeader;
class TabStrip;
class WeekTable;

class frmSTM : public QWidget {
    Q_OBJECT
  public:
    /// Loads the day when it isn't loaded yet.
    explicit frmSTM(QWidget* parent = nullptr);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void createPanels();
    QWidget* createChartArea();
    QToolButton* createGraphTypeButton(int index, const QString& toolTip);
    void createMenu();
    void arrange();
    void bind();
    void layOut();
    void showChart();
    void showSummary();
    void takeWantedSize();
    int placeListBar(int space) const;
    int placeChartBar(int space) const;
    int placeWeekViewBar(int space) const;
    bool hasOwnSize() const;

    bool m_guarded = true; ///< the screen is being built or laid out
    bool m_summaryDue = false;
    KeyedToolBar* smuiTimeCtrl = nullptr;
    TabStrip* smuiOptions = nullptr;
    RunningHeader* m_header = nullptr;
    KeyedPanel* smuiProjectStatus = nullptr;
    KeyedPanel* smuiQuickView = nullptr;
    KeyedPanel* smuiBreakDown = nullptr;
    QWidget* m_list = nullptr; ///< holds quick view and break-down
    QWidget* m_chartArea = nullptr;
    QLabel* m_chartType = nullptr;
    ChartView* ChartSpace1 = nullptr;
    WeekTable* lvwWeekView = nullptr;
    BarSplitter* Splitter1 = nullptr;
    BarSplitter* Splitter2 = nullptr;
    BarSplitter* splitter = nullptr;
    ControlStatusBar* StatusBar = nullptr;
    QMenu* mnuSetData = nullptr;
};

} // namespace kelvrane
