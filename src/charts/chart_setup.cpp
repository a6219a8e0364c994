#include "charts/chart_setup.h"

#include "charts/chart_model.h"
#include "charts/chart_types.h"
#include "charts/setup_model.h"
#include "charts/view_sliders.h"
#include "frame/error_report.h"
#include "frame/help_topics.h"
#include "platform/ports.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

struct Family {
    const char* key; ///< stands in the descriptions of its types
    const QList<ChartTypeRecord>& types;
};
// In the order in which a description is searched for them.
const Family families[] = {{"Bar", BarCharts}, {"Column", ColumnCharts}, {"Pie", PieCharts}};

void markType() {
    KeyedItems& types = ChartSetup().smuiAvailCharts;
    const QList<KeyedItem> items = types.items();
    for (const KeyedItem& item : items)
        types.setTicked(item.key, item.key == Charts().settings.ChartTypeDesc);
}

void allow3D(bool allowed) {
    SetupModel& setup = ChartSetup();
    setup.SSTab1.setEnabled(setup_tabs::View3D, allowed);
    if (!allowed && setup.Tab == setup_tabs::View3D)
        emit setup.TypePageWanted();
}

template <typename Change>
void changeChart(Change&& change) {
    chartspace::Chart chart = Charts().chart();
    std::forward<Change>(change)(chart);
    Charts().setChart(chart);
}

void chooseType(const QString& description) {
    const auto record = std::ranges::find(ChartTypes, description, &ChartTypeRecord::Description);
    if (record != ChartTypes.end())
        ChooseChart(record->ChartTypeValue, record->Description);
}

void controlsClick(const QString& key) {
    struct Command {
        const char* key;
        void (*run)();
    };
    static constexpr Command commands[] = {{"cmdAddLegend", cmdAddLegend_Click},
                                           {"cmdAddTitle", cmdAddTitle_Click},
                                           {"cmdRestoreDefaults", cmdRestoreDefaults_Click}};
    for (const Command& command : commands)
        if (key == QLatin1String(command.key))
            command.run();
}

} // namespace

void LoadGraphControl() {
    const QString description = Charts().settings.ChartTypeDesc;
    ChartSetup().reset();
    ShowFamilyOf(description);
    chooseType(description);
}

void Set3DValues() {
    changeChart([](chartspace::Chart& chart) { chart.view = Charts().settings.view; });
    emit ChartSetup().SlidersMoved();
}

void ChooseChart(qint16 type, const QString& description) {
    ChartModel& charts = Charts();
    changeChart([type](chartspace::Chart& chart) {
        chart.type = static_cast<chartspace::ChartType>(type);
    });
    charts.settings.ChartType = type;
    charts.settings.ChartTypeDesc = description;
    charts.showChoices();
    markType();
    const bool is3D = description.contains(QLatin1String("3D"), Qt::CaseInsensitive);
    allow3D(is3D);
    if (is3D)
        Set3DValues();
}

void ChooseFamily(const QString& key) {
    SetupModel& setup = ChartSetup();
    const QList<KeyedItem> shown = setup.smuiChartType.items();
    for (const KeyedItem& item : shown)
        setup.smuiChartType.setTicked(item.key, item.key == key);
    for (const Family& family : families) {
        if (key != QLatin1String(family.key))
            continue;
        QList<KeyedItem> items;
        for (const ChartTypeRecord& record : family.types)
            items.append({.key = record.Description,
                          .caption = record.Description,
                          .kind = ItemKind::Choice,
                          .image = record.Description,
                          .ticked = record.Description == Charts().settings.ChartTypeDesc});
        setup.smuiAvailCharts.refill(items);
    }
}

void ShowFamilyOf(const QString& description) {
    for (const Family& family : families)
        if (const QString key = QString::fromLatin1(family.key); description.contains(key)) {
            ChooseFamily(key);
            return;
        }
}

void cmdAddLegend_Click() {
    SetupModel& setup = ChartSetup();
    setup.LegendShown = !setup.LegendShown;
    changeChart([&](chartspace::Chart& chart) { chart.legend = setup.LegendShown; });
    setup.showLegendAndTitle();
}

void cmdAddTitle_Click() {
    SetupModel& setup = ChartSetup();
    setup.TitleShown = !setup.TitleShown;
    changeChart([&](chartspace::Chart& chart) {
        chart.title =
            setup.TitleShown ? setup.controls.value(QStringLiteral("txtTitle")) : QString();
    });
    setup.showLegendAndTitle();
    if (setup.TitleShown)
        emit setup.TitleFocusWanted();
}

void txtTitle_Change(const QString& text) {
    if (ChartSetup().TitleShown)
        changeChart([&](chartspace::Chart& chart) {
            chart.title = text.isEmpty() ? QStringLiteral(" ") : text;
        });
}

void SliderChange(const QString& name, int value) {
    for (const ViewSlider& slider : viewSliders)
        if (name == QLatin1String(slider.name)) {
            const int bounded = std::clamp(value, slider.lowest, slider.highest);
            Charts().settings.view.*slider.value = bounded;
            changeChart([&](chartspace::Chart& chart) { chart.view.*slider.value = bounded; });
        }
    emit ChartSetup().SlidersMoved();
}

void cmdRestoreDefaults_Click() {
    for (const ViewSlider& slider : viewSliders)
        Charts().settings.view.*slider.value = slider.restored;
    Set3DValues();
}

void SSTab1_Click(const QString& key) {
    ChartSetup().Tab = key;
}

void GraphControlToolBar_Click(const QString& key) {
    if (key == u"CLOSE")
        ports.screens->unload(Screen::frmGraphControl);
    if (key == u"HELP")
        ShowHelpTopic(ChartSetupHelpTopic());
}

int ChartSetupHelpTopic() {
    return ChartSetup().Tab == setup_tabs::View3D ? topics::ChartView : topics::ChartSetup;
}

void WireGraphControl() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    SetupModel& setup = ChartSetup();
    const auto onClick = [&setup](KeyedItems& items, const char* routine,
                                  void (*run)(const QString&)) {
        QObject::connect(&items, &KeyedItems::Clicked, &setup,
                         [routine = QString::fromLatin1(routine), run](const QString& key) {
                             Guarded(routine, [&] { run(key); });
                         });
    };
    onClick(setup.smuiToolBar, "smuiToolBar_Click", GraphControlToolBar_Click);
    onClick(setup.smuiChartType, "smuiChartType_Click", ChooseFamily);
    onClick(setup.smuiAvailCharts, "smuiAvailCharts_Click", chooseType);
    onClick(setup.controls, "frmGraphControl_Click", controlsClick);
    QObject::connect(&setup.controls, &KeyedItems::Edited, &setup,
                     [](const QString& /*key*/, const QString& text) {
                         Guarded(QStringLiteral("txtTitle_Change"), [&] { txtTitle_Change(text); });
                     });
    QObject::connect(&Charts(), &ChartModel::ChartRebuilt, &setup, [] {
        ChartSetup().LegendShown = false;
        ChartSetup().TitleShown = false;
        ChartSetup().showLegendAndTitle();
    });
}

} // namespace kelvrane
