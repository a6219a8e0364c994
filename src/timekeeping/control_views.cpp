#include "timekeeping/control_views.h"

#include "charts/chart_types.h"
#include "frame/globals.h"
#include "platform/ports.h"
#include "platform/settings_store.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/control_model.h"
#include "timekeeping/daily_chart.h"
#include "timekeeping/week_hours.h"

#include <algorithm>

namespace kelvrane {

namespace {

const QString section = QStringLiteral("SingleTimerView");

// What the layout keys hold, as text in the section store.
struct BooleanKey {
    const char* key;
    bool* value;
    bool fallback;
};
struct NumberKey {
    const char* key;
    double* value;
    double fallback;
};

QList<BooleanKey> booleanKeys(ControlLayout& layout) {
    return {{"bBreakDownShowing", &layout.BreakDownShowing, true},
            {"bQuickViewShowing", &layout.QuickViewShowing, false},
            {"bGraphShowing", &GraphShowing, true},
            {"bWeekVeiwShowing", &WeekViewShowing, false},
            {"bControlPanelShowing", &layout.ControlPanelShowing, true}};
}

QList<NumberKey> numberKeys(ControlLayout& layout) {
    return {{"iLastSplitter1Pos", &layout.Splitter1Percent, 50},
            {"iLastSplitter2Pos", &layout.Splitter2Percent, 50},
            {"iLastMeWidth", &layout.Width, 9795},
            {"iLastMeHeight", &layout.Height, 5895},
            {"SplitterTop", &layout.SplitterTop, 5335},
            {"fLastSizePercent", &layout.WeekViewSize, 3000}};
}

QString layoutText(const char* key, const QString& fallback) {
    return ports.settings->section(section, QString::fromLatin1(key), fallback);
}

/// A stored number between 0 and the limit; what is missing or out of place is the fallback.
double layoutNumber(const char* key, double fallback, double limit) {
    double number = fallback;
    SkipErrors step(QStringLiteral("frmSTM_Load"));
    step([&] { number = ToDouble(layoutText(key, DoubleText(fallback))); });
    return number >= 0 && number <= limit ? number : fallback;
}

/// Ticks what the left column shows.
void showLists(bool layOut) {
    const ControlLayout& layout = Control().layout;
    Control().smuiPanelLayout.setTicked(QStringLiteral("BREAKDOWN"), layout.BreakDownShowing);
    Control().smuiPanelLayout.setTicked(QStringLiteral("QUICKVIEW"), layout.QuickViewShowing);
    if (layOut)
        emit Control().LayoutChanged();
}

} // namespace

void ReadControlLayout() {
    constexpr double farOut = 1'000'000; // twips, beyond any desktop
    ControlLayout& layout = Control().layout;
    for (const BooleanKey& row : booleanKeys(layout)) {
        const QString text = layoutText(row.key, {});
        *row.value = text == BooleanText(!row.fallback) ? !row.fallback : row.fallback;
    }
    for (const NumberKey& row : numberKeys(layout))
        *row.value = layoutNumber(row.key, row.fallback, farOut);
    ChartIndex = qint64(std::min(layoutNumber("ChartType", 0, farOut), chartTypeCount - 1.0));
}

void SaveControlLayout() {
    if (!Control().loaded)
        return;
    ControlLayout& layout = Control().layout;
    SettingsStore& store = *ports.settings;
    store.beginChanges();
    for (const BooleanKey& row : booleanKeys(layout))
        store.setSection(section, QString::fromLatin1(row.key), BooleanText(*row.value));
    for (const NumberKey& row : numberKeys(layout))
        store.setSection(section, QString::fromLatin1(row.key), SingleText(float(*row.value)));
    store.setSection(section, QStringLiteral("ChartType"), QString::number(ChartIndex));
    store.endChanges();
}

void ShowControlPanel(bool showing, bool layOut) {
    Control().layout.ControlPanelShowing = showing;
    KeyedItems& bar = Control().smuiTimeCtrl;
    const QString key = QStringLiteral("CONTROLPANEL");
    bar.setImage(key, showing ? QStringLiteral("left1") : QStringLiteral("right1"));
    bar.setCaption(key, showing ? QStringLiteral("Control Panel       ") : QString());
    if (layOut)
        emit Control().LayoutChanged();
}

void ShowBreakDown(bool showing, bool layOut) {
    ControlLayout& layout = Control().layout;
    layout.BreakDownShowing = showing;
    layout.QuickViewShowing = layout.QuickViewShowing && !showing;
    showLists(layOut);
}

void ShowQuickView(bool showing, bool layOut) {
    ControlLayout& layout = Control().layout;
    layout.QuickViewShowing = showing;
    layout.BreakDownShowing = layout.BreakDownShowing && !showing;
    showLists(layOut);
}

void ShowGraph(bool showing, bool layOut) {
    GraphShowing = showing;
    if (showing)
        UpdateDailyChart();
    Control().smuiPanelLayout.setTicked(QStringLiteral("GRAPH"), showing);
    if (layOut)
        emit Control().LayoutChanged();
}

void ShowWeekView(bool showing, bool layOut) {
    WeekViewShowing = showing;
    Control().smuiPanelLayout.setTicked(QStringLiteral("WEEKVIEW"), showing);
    if (layOut)
        emit Control().LayoutChanged();
    if (showing && layOut) { // the load fills the view itself, at its end
        SetLVWColumnHeaders();
        FillWeekView();
    }
}

void NextGraphType() {
    ChartIndex = (ChartIndex + 1) % chartTypeCount;
    ApplyChartType();
}

void PreviousGraphType() {
    ChartIndex = (ChartIndex + chartTypeCount - 1) % chartTypeCount;
    ApplyChartType();
}

} // namespace kelvrane
