#include "charts/chart_model.h"

#include "charts/chart_types.h"
#include "platform/item_rows.h"
#include "platform/texts.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr ItemRow barRows[] = {
    {.key = "FILE", .caption = "File", .kind = ItemKind::SubMenu},
    {.key = "mnuSaveAs", .caption = "Save As ...", .image = "save", .parent = "FILE"},
    {.key = "mnuPrint", .caption = "Print ...", .image = "print", .parent = "FILE"},
    {"CHARTSETUP", "Chart Setup", "Chart Setup", "2dpie"},
    {"ADDREMOVELIST", "View List", "Add/Remove List", "List"},
    {"DAYRANGE", "", "Single Day/Range of Days", "SingleRange"},
    {.key = "SELSTARTDATE", .caption = "Start Date: ", .kind = ItemKind::DropDown},
    {.key = "STARTDATE", .kind = ItemKind::Edit},
    {.key = "SELENDDATE", .caption = "End Date: ", .kind = ItemKind::DropDown},
    {.key = "ENDDATE", .kind = ItemKind::Edit},
    {.kind = ItemKind::Spacer},
    {.key = "HELP", .caption = "Help", .image = "HELP"},
};

// By list_views::
constexpr ItemRow orderRows[] = {
    {.key = "mnuListDisplayTypeByDate", .caption = "By Date", .kind = ItemKind::Choice},
    {.key = "mnuListDisplayTypeByProject", .caption = "By Project", .kind = ItemKind::Choice},
};

QString typeKey(int place) {
    return QStringLiteral("mnuChartType") + QString::number(place);
}

/// The whole table, a line between the families.
QList<KeyedItem> typeItems() {
    FillChartTypes();
    QList<KeyedItem> items;
    int place = 0;
    for (const QList<ChartTypeRecord>& family : {ColumnCharts, BarCharts, PieCharts}) {
        if (place > 0)
            items.append({.kind = ItemKind::Separator});
        for (const ChartTypeRecord& record : family)
            items.append(
                {.key = typeKey(place++), .caption = record.Description, .kind = ItemKind::Choice});
    }
    return items;
}

} // namespace

ChartModel::ChartModel() {
    reset();
}

void ChartModel::setPane(ChartPane pane) {
    if (std::exchange(m_pane, pane) != pane)
        emit LayoutChanged();
}

void ChartModel::setChart(const chartspace::Chart& chart) {
    if (m_chart == chart)
        return;
    m_chart = chart;
    emit ChartChanged();
}

QDate ChartModel::date(ChartDate which) const {
    return which == ChartDate::Start ? StartDate : EndDate;
}

void ChartModel::showDates() {
    smuiToolBar.setValue(QStringLiteral("STARTDATE"), DateText(StartDate));
    smuiToolBar.setValue(QStringLiteral("ENDDATE"), DateText(EndDate));
}

void ChartModel::showRangeMode() {
    smuiToolBar.setVisible(QStringLiteral("SELENDDATE"), RangeMode);
    smuiToolBar.setVisible(QStringLiteral("ENDDATE"), RangeMode);
    smuiToolBar.setTicked(QStringLiteral("DAYRANGE"), RangeMode);
}

void ChartModel::showChoices() {
    smuiToolBar.setTicked(QStringLiteral("ADDREMOVELIST"), settings.ViewList);
    for (int order = 0; order < int(std::size(orderRows)); ++order)
        mnuListDisplayType.setTicked(QString::fromLatin1(orderRows[order].key),
                                     settings.ListViewType == order);
    for (int place = 0; place < chartTypeCount; ++place)
        mnuChartType.setTicked(typeKey(place),
                               ChartTypeAt(place).ChartTypeValue == settings.ChartType);
}

void ChartModel::reset(QDate today) {
    smuiToolBar.refill(ItemsOf(barRows));
    mnuListDisplayType.refill(ItemsOf(orderRows));
    mnuChartType.refill(typeItems());
    settings = {};
    StartDate = EndDate = today;
    RangeMode = false;
    PickedDate = ChartDate::Start;
    totals.clear();
    tree.clear();
    picForm = {};
    setPane(ChartPane::Recalculating);
    setChart({});
    showDates();
    showRangeMode();
}

ChartModel& Charts() {
    static ChartModel model;
    return model;
}

} // namespace kelvrane
