#include "timesheets/sheet_calculation.h"

#include "collections/collection_builder.h"
#include "collections/file_clash.h"
#include "frame/globals.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timesheets/customer_calculation.h"
#include "timesheets/database_list.h"
#include "timesheets/project_calculation.h"
#include "timesheets/sheet_context.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/template_files.h"
#include "timesheets/template_scan.h"
#include "timesheets/week_number.h"
#include "timevalues/time_values.h"

#include <QScopeGuard>

namespace kelvrane {

namespace {

const QString startDate = QStringLiteral("STARTDATE");

SpreadsheetState& state() {
    return Sheets().state;
}

bool needsCollection() {
    return state().SortOrder == sort_orders::ByCustomer || DBCount >= 2;
}

/// The road to a template that exists; false: there is none to calculate with.
bool findTemplate() {
    if (ports.files->exists(SS_Template))
        return true;
    const BoxAnswer answer =
        MsgBox(QStringLiteral("Can not find spread sheet template: ") + SS_Template +
                   QStringLiteral(". \rPress OK to select a template or press cancel to cancel "
                                  "spreadsheet generation."),
               QStringLiteral("Missing file"), BoxIcon::Stop, BoxButtons::OkCancel);
    return answer == BoxAnswer::Ok && ShowLoad(true);
}

SheetPeriod period() {
    QDate end = state().selectedDate;
    for (int day = 1; day < state().CalcNumDays; ++day)
        end = DateFromText(StepDate(end, 1));
    return {Sheets().SmartToolBar.item(startDate).caption, end,
            WeekNumber(state().selectedDate, SheetFirstDayOfWeek())};
}

void fileSheet(QString name) {
    Clash().DefaultName = name;
    AddSheetToCollection(name, Sheets().ss1.HTMLData(), Sheets().smuiStatusBar);
}

void fillSheet(const SheetPeriod& period) {
    SheetContext context{.sheet = Sheets().ss1,
                         .startDate = period.startDate,
                         .templatePath = SS_Template,
                         .addSheet = fileSheet};
    for (int item = 1; item <= DBCount; ++item)
        context.isAccepted.append(DatabaseAt(item).isAccepted());
    if (state().SortOrder == sort_orders::ByCustomer)
        SetUpByCustomerCalculations(context, period.end, TimeIncrements);
    else
        SetUpByProjectCalculations(context, period.end, TimeIncrements);
    state().noData = context.noData;
    state().sheetShown = !context.noData;
}

/// A result is on the sheet now: its edits are no template's, and it isn't saved over one.
void leaveTemplate() {
    state().TemplateModified = state().TemplateEditing = false;
    Sheets().SmartToolBar.setEnabled(QStringLiteral("TEMPLATE_SAVE"), false);
}

} // namespace

bool HasCollection() {
    return !CollectionLoc.isEmpty() && !CollectionFileName.isEmpty();
}

int SheetFirstDayOfWeek() {
    const int day = StartOfWeek.toInt();
    return day >= 1 && day <= 7 ? day : 1;
}

void EnableAdding() {
    Sheets().SmartToolBar.setEnabled(QStringLiteral("ADDTO_COLLECTION"),
                                     state().SortOrder != sort_orders::ByProject ||
                                         state().Calculated);
}

void AddData() {
    if (state().Calculating) // filing a sheet lets events through
        return;
    state().Calculating = true;
    const auto done = qScopeGuard([] { state().Calculating = false; });
    Sheets().hideCalendar();
    if (needsCollection() && !HasCollection()) {
        MsgBox(QStringLiteral("Please select a valid Collection Location, then rerun the "
                              "spreadsheet."),
               QStringLiteral("Invalid Collection Location"), BoxIcon::Information);
        ports.screens->show(Screen::frmCollectionLoc);
        return;
    }
    if (!findTemplate())
        return;
    Sheets().ss1.setHTMLURL(SS_Template);
    state().Calculated = true;
    leaveTemplate();
    EnableAdding();
    ProjectNames.clear();
    ProjectNumbers.clear();
    const SheetPeriod days = period();
    ResetSSVariables();
    ScanTemplate(Sheets().ss1, days);
    if (state().SortOrder != sort_orders::ByCustomer && !CheckProjectAnchors())
        return;
    fillSheet(days);
    Sheets().layOut();
}

} // namespace kelvrane
