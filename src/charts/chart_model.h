// What the chart screen shows: tool bar and menus, the chart, the tree, and which of chart and
// labels stands in the middle.
#pragma once

#include "charts/chart_settings.h"
#include "charts/chart_tree.h"
#include "chartspace/chart.h"
#include "platform/keyed_items.h"
#include "timekeeping/hours_chart.h"

#include <QDate>
#include <QImage>
#include <QObject>

namespace kelvrane {

enum class ChartPane {
    Chart,         ///< the chart, and the tree if ViewList
    NoData,        ///< lblNoData
    Recalculating, ///< lblRecalculating
};

enum class ChartDate { Start = 0, End = 1 };

class ChartModel : public QObject {
    Q_OBJECT
  public:
    ChartModel();

    KeyedItems smuiToolBar; ///< mnuSaveAs and mnuPrint are below FILE
    KeyedItems mnuListDisplayType;
    KeyedItems mnuChartType; ///< "mnuChartType" and the type's 0-based place in the table
    ChartTree tree;

    ChartSettings settings;
    QDate StartDate, EndDate;
    bool RangeMode = false;                  ///< off: one day, the end follows the start
    ChartDate PickedDate = ChartDate::Start; ///< which one the month view picks
    QList<DayProjectTotal> totals;           ///< of the dates, by project
    QImage picForm;                          ///< the screen's picture, taken last

    ChartPane pane() const { return m_pane; }
    void setPane(ChartPane pane);
    bool isTreeShown() const { return settings.ViewList && m_pane == ChartPane::Chart; }

    const chartspace::Chart& chart() const { return m_chart; }
    /// Legend, title and view come and go with the chart.
    void setChart(const chartspace::Chart& chart);

    QDate date(ChartDate which) const;
    /// Puts both dates into their fields.
    void showDates();
    /// Shows or hides the end date, by RangeMode.
    void showRangeMode();
    /// Ticks the tree's order and the chart's type in their menus, and the tree's button.
    void showChoices();

    /// As a newly opened screen has it, on that day.
    void reset(QDate today = {});

  signals:
    void LayoutChanged(); ///< another pane, or the tree comes or goes
    void ChartChanged();
    void ChartRebuilt();                      ///< from the data; legend and title are gone
    void MonthViewWanted(const QString& key); ///< at the item with that key, for PickedDate
    void PictureWanted();                     ///< into picForm, at once

  private:
    ChartPane m_pane = ChartPane::Recalculating;
    chartspace::Chart m_chart;
};

/// The one chart screen; it lives with the process.
ChartModel& Charts();

} // namespace kelvrane
