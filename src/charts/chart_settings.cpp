#include "charts/chart_settings.h"

#include "charts/chart_tree.h"
#include "charts/chart_types.h"
#include "charts/view_sliders.h"
#include "platform/ports.h"
#include "platform/settings_store.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"

#include <algorithm>
#include <cmath>

namespace kelvrane {

namespace {

constexpr int largestSize = 150'000; // twips

QString stored(const char* key, const QString& fallback = {}) {
    return ports.settings->section(QStringLiteral("Chart"), QString::fromLatin1(key), fallback);
}

void store(const char* key, const QString& text) {
    ports.settings->setSection(QStringLiteral("Chart"), QString::fromLatin1(key), text);
}

int storedNumber(const char* key, int fallback, int lowest, int highest) {
    double number = fallback;
    SkipErrors step(QStringLiteral("frmChart_Load"));
    step([&] { number = std::round(ToDouble(stored(key, QString::number(fallback)))); });
    return number >= lowest && number <= highest ? static_cast<int>(number) : fallback;
}

void readType(ChartSettings& settings) {
    const int value = storedNumber("ChartType", settings.ChartType, 0, 1'000);
    const auto known = std::ranges::find(ChartTypes, value, &ChartTypeRecord::ChartTypeValue);
    if (known == ChartTypes.end())
        return;
    settings.ChartType = known->ChartTypeValue;
    settings.ChartTypeDesc = known->Description;
}

} // namespace

ChartSettings ReadChartSettings() {
    FillChartTypes();
    ChartSettings settings;
    settings.Width = storedNumber("Width", settings.Width, 1, largestSize);
    settings.Height = storedNumber("Height", settings.Height, 1, largestSize);
    readType(settings);
    for (const ViewSlider& slider : viewSliders)
        settings.view.*slider.value =
            storedNumber(slider.storedKey, slider.firstRun, slider.lowest, slider.highest);
    settings.ListViewType = storedNumber("ListViewType", settings.ListViewType, list_views::ByDate,
                                         list_views::ByProject);
    settings.ViewList = stored("ViewList") == BooleanText(true);
    return settings;
}

void WriteChartSettings(const ChartSettings& settings) {
    ports.settings->beginChanges();
    store("Width", QString::number(settings.Width));
    store("Height", QString::number(settings.Height));
    store("ChartType", QString::number(settings.ChartType));
    store("ChartTypeDesc", settings.ChartTypeDesc);
    for (const ViewSlider& slider : viewSliders)
        store(slider.storedKey, DoubleText(settings.view.*slider.value));
    store("ListViewType", QString::number(settings.ListViewType));
    store("ViewList", BooleanText(settings.ViewList));
    ports.settings->endChanges();
}

} // namespace kelvrane
