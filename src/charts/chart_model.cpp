#include "charts/chart_model.h"

#include "charts/chart_types.h"
#include "platform/texts.h"

#include <utility>

namespace kelvrane {

namespace {

struct BarRow {
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* image = "";
    const char* toolTip = "";
    const char* parent = "";
};
constexpr BarRow barRows[] = {
    {"FILE", "File", ItemKind::SubMenu},
    {"mnuSaveAs", "Save As ...", ItemKind::Button, "save", "", "FILE"},
    {"mnuPrint", "Print ...", ItemKind::Button, "print", "", "FILE"},
    {"CHARTSETUP", "Chart Setup", ItemKind::Button, "2dpie", "Chart Setup"},
    {"ADDREMOVELIST", "View List", ItemKind::Button, "List", "Add/Remove List"},
    {"DAYRANGE", "", ItemKind::Button, "SingleRange", "Single Day/Range of Days"},
    {"SELSTARTDATE", "Start Date: ", ItemKind::DropDown},
    {"STARTDATE", "", ItemKind::Edit},
    {"SELENDDATE", "End Date: ", ItemKind::DropDown},
    {"ENDDATE", "", ItemKind::Edit},
    {"", "", ItemKind::Spacer},
    {"HELP", "Help", ItemKind::Button, "HELP"},
};

struct OrderRow {
    const char* key;
    const char* caption;
};
constexpr OrderRow orderRows[] = {
    // By list_views::
    {"mnuListDisplayTypeByDate", "By Date"},
    {"mnuListDisplayTypeByProject", "By Project"},
};

QList<KeyedItem> barItems() {
    QList<KeyedItem> items;
    for (const BarRow& row : barRows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .toolTip = QString::fromLatin1(row.toolTip),
                      .image = QString::fromLatin1(row.image),
                      .parent = QString::fromLatin1(row.parent)});
    return items;
}

QList<KeyedItem> orderItems() {
    QList<KeyedItem> items;
    for (const OrderRow& row : orderRows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = ItemKind::Choice});
    return items;
}

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
    smuiToolBar.refill(barItems());
    mnuListDisplayType.refill(orderItems());
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
