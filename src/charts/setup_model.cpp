#include "charts/setup_model.h"

namespace kelvrane {

namespace {

struct Row {
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* image = "";
    const char* toolTip = "";
};
constexpr Row barRows[] = {
    {"CLOSE", "Close", ItemKind::Button, "close"},
    {"", "", ItemKind::Spacer},
    {"HELP", "Help", ItemKind::Button, "help"},
};
constexpr Row tabRows[] = {
    {"TYPE", "Type", ItemKind::Button},
    {"VIEW3D", "3D View", ItemKind::Button},
    {"BORDERFILL", "Border/Fill", ItemKind::Button},
};
constexpr Row familyRows[] = {
    {"Column", "Column", ItemKind::Choice, "column", "Column Charts"},
    {"Bar", "Bar", ItemKind::Choice, "bar", "Bar Charts"},
    {"Pie", "Pie", ItemKind::Choice, "pie"},
};
constexpr Row controlRows[] = {
    {"cmdAddLegend", "Add Legend", ItemKind::Button},
    {"cmdAddTitle", "Add Title", ItemKind::Button},
    {"txtTitle", "Title", ItemKind::Edit},
    {"cmdRestoreDefaults", "Restore Default View", ItemKind::Button},
};

template <typename Rows>
QList<KeyedItem> itemsOf(const Rows& rows) {
    QList<KeyedItem> items;
    for (const Row& row : rows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .toolTip = QString::fromLatin1(row.toolTip),
                      .image = QString::fromLatin1(row.image)});
    return items;
}

} // namespace

SetupModel::SetupModel() {
    smuiToolBar.refill(itemsOf(barRows));
    reset();
}

void SetupModel::showLegendAndTitle() {
    controls.setCaption(QStringLiteral("cmdAddLegend"), LegendShown
                                                            ? QStringLiteral("Remove Legend")
                                                            : QStringLiteral("Add Legend"));
    controls.setCaption(QStringLiteral("cmdAddTitle"),
                        TitleShown ? QStringLiteral("Remove Title") : QStringLiteral("Add Title"));
    controls.setEnabled(QStringLiteral("txtTitle"), TitleShown);
}

void SetupModel::reset() {
    SSTab1.refill(itemsOf(tabRows));
    smuiChartType.refill(itemsOf(familyRows));
    smuiAvailCharts.clear();
    controls.refill(itemsOf(controlRows));
    LegendShown = false;
    TitleShown = false;
    Tab = setup_tabs::Type;
    showLegendAndTitle();
}

SetupModel& ChartSetup() {
    static SetupModel model;
    return model;
}

} // namespace kelvrane
