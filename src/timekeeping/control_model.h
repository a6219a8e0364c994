// What the control screen shows. It lives with the process: the day goes on while no screen is
// loaded, and the screen shows this model when it comes back.
#pragma once

#include "chartspace/chart.h"
#include "platform/keyed_items.h"
#include "timekeeping/week_view.h"

#include <QObject>

namespace kelvrane {

/// Layout kept between runs. Sizes are twips (15 a logical pixel), bars are percent.
struct ControlLayout {
    bool BreakDownShowing = true;
    bool QuickViewShowing = false;
    bool ControlPanelShowing = true;
    double Splitter1Percent = 50; ///< current project above, list below
    double Splitter2Percent = 50; ///< left column, chart
    double Width = 9795;
    double Height = 5895;
    double SplitterTop = 5335;  ///< top of the bar over the week view
    double WeekViewSize = 3000; ///< height kept for the week view
    bool WeekViewGrown = false; ///< the window was made taller for the week view
};

class ControlModel : public QObject {
    Q_OBJECT
  public:
    ControlModel();

    KeyedItems smuiTimeCtrl;      ///< tool bar
    KeyedItems smuiProjectStatus; ///< current project
    KeyedItems smuiBreakDown;     ///< six rows an entry
    KeyedItems smuiQuickView;     ///< five rows
    KeyedItems smuiOptions;       ///< pages OPTIONS and VIEWS
    KeyedItems smuiPanelLayout;   ///< smuiPanel of the page OPTIONS
    KeyedItems smuiPanelLaunch;   ///< smuiPanel of the page VIEWS
    KeyedItems mnuSetData;        ///< pop-up menu of the break-down list
    WeekView lvwWeekView;
    ControlLayout layout;
    bool loaded = false; ///< the day and the layout were read and not unloaded since

    const chartspace::Chart& dailyChart() const { return m_dailyChart; }
    void setDailyChart(const chartspace::Chart& chart);

    /// As after construction; for tests and a new load.
    void reset();

  signals:
    void DailyChartChanged();
    void LayoutChanged(); ///< visibility, sizes: lay out again
    void DateChanged();   ///< the clock's date, or the date of the entries

  private:
    chartspace::Chart m_dailyChart;
};

/// The one model.
ControlModel& Control();

} // namespace kelvrane
