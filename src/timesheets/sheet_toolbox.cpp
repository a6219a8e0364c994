#include "timesheets/sheet_toolbox.h"

#include "frame/globals.h"
#include "frame/settings.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timesheets/sheet_calculation.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/template_files.h"
#include "timesheets/template_variables.h"

#include <QScopeGuard>

namespace kelvrane {

namespace {

SpreadsheetState& state() {
    return Sheets().state;
}

// The rows of the option panel; false: no recalculation.

bool takeIncrement(const QString& value) {
    TimeIncrements = value;
    SaveRegText(value, keys::SpreadSheetInfo, QStringLiteral("TimeIncrements"));
    return true;
}

bool takeWeekStart(const QString& value) {
    const QString number = WeekdayNumberConvert(true, value);
    if (number.isEmpty())
        return false;
    StartOfWeek = number;
    SaveRegNumber(ToInt16(number), keys::SpreadSheetInfo, QStringLiteral("StartOfWeek"));
    Sheets().layOut();
    return true;
}

void showNumDays() {
    Sheets().SmartToolbox.setValue(QStringLiteral("CALCNUMDAYS"),
                                   QString::number(state().CalcNumDays));
}

bool takeNumDays(const QString& value) {
    if (value.isEmpty())
        return false;
    int days = -1;
    SkipErrors step(QStringLiteral("SmartToolbox_Change"));
    step([&] { days = ToInt16(value); });
    if (days == 0)
        MsgBox(QStringLiteral("Number of days must be greater than 0"),
               QStringLiteral("Invalid Entry"));
    if (days <= 0) {
        showNumDays();
        return days == 0; // the old number is calculated with once more
    }
    state().CalcNumDays = days;
    SaveRegNumber(days, keys::SpreadSheetInfo, QStringLiteral("CalcNumDays"));
    return true;
}

bool takeSortOrder(const QString& value) {
    state().SortOrder = value;
    SaveRegText(value, keys::SpreadSheetInfo, QStringLiteral("SortOrder"));
    EnableAdding();
    Sheets().focusToolbox();
    return true;
}

struct OptionRow {
    const char* key;
    bool (*take)(const QString& value);
};
constexpr OptionRow optionRows[] = {
    {"TIMEINCREMENTS", takeIncrement},
    {"WEEKSTARTDAY", takeWeekStart},
    {"CALCNUMDAYS", takeNumDays},
    {"SORTORDER", takeSortOrder},
};

} // namespace

void FillSMUIToolbox() {
    state().Filling = true;
    const auto done = qScopeGuard([] { state().Filling = false; });
    KeyedItems& toolbox = Sheets().SmartToolbox;
    toolbox.setValue(QStringLiteral("SORTORDER"),
                     state().SortOrder.isEmpty() ? sort_orders::ByProject : state().SortOrder);
    toolbox.setValue(QStringLiteral("TIMEINCREMENTS"), TimeIncrements);
    toolbox.setValue(QStringLiteral("WEEKSTARTDAY"), WeekdayNumberConvert(false, StartOfWeek));
    showNumDays();
}

void SheetOptionChange(const QString& key, const QString& value) {
    if (state().Filling)
        return;
    for (const OptionRow& row : optionRows)
        if (key == QLatin1String(row.key) && row.take(value)) {
            ports.events->yield();
            if (ports.screens->isLoaded(Screen::frmSpreadsheet) && CheckTemplateChanges())
                AddData();
            return;
        }
}

void CloseToolbox() {
    state().ToolboxVisible = false;
    Sheets().layOut();
}

} // namespace kelvrane
