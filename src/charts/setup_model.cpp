#include "charts/setup_model.h"

#include "platform/item_rows.h"

namespace kelvrane {

namespace {

constexpr ItemRow barRows[] = {
    {.key = "CLOSE", .caption = "Close", .image = "close"},
    {.kind = ItemKind::Spacer},
    {.key = "HELP", .caption = "Help", .image = "help"},
};
constexpr ItemRow tabRows[] = {
    {"TYPE", "Type"},
    {"VIEW3D", "3D View"},
    {"BORDERFILL", "Border/Fill"},
};
constexpr ItemRow familyRows[] = {
    {"Column", "Column", "Column Charts", "column", ItemKind::Choice},
    {"Bar", "Bar", "Bar Charts", "bar", ItemKind::Choice},
    {"Pie", "Pie", "", "pie", ItemKind::Choice},
};
constexpr ItemRow controlRows[] = {
    {"cmdAddLegend", "Add Legend"},
    {"cmdAddTitle", "Add Title"},
    {.key = "txtTitle", .caption = "Title", .kind = ItemKind::Edit},
    {"cmdRestoreDefaults", "Restore Default View"},
};

} // namespace

SetupModel::SetupModel() {
    smuiToolBar.refill(ItemsOf(barRows));
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
    SSTab1.refill(ItemsOf(tabRows));
    smuiChartType.refill(ItemsOf(familyRows));
    smuiAvailCharts.clear();
    controls.refill(ItemsOf(controlRows));
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
