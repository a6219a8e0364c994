#include "records/select_item.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/database_manager.h"
#include "records/manager_model.h"
#include "records/record_state.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"

#include <optional>
#include <utility>

namespace kelvrane {

namespace {

struct Choice {
    QString name;
    QString number;
    QString active;
};

Choice listChoice(int row) {
    const ProjectList& list = Manager().ListView1;
    return {list.text(row, ProjectList::NameColumn), list.text(row, ProjectList::NumberColumn),
            list.text(row, ProjectList::ActiveColumn)};
}

Choice recordChoice() {
    Recordset& records = ProjectRecords();
    return {records.text(project_column::Name), records.text(project_column::Number),
            records.text(project_column::Active)};
}

bool isRunning(const Choice& choice) {
    if (CurrentEntryIndex < 0)
        return false;
    const DayEntry& entry = At(std::as_const(DayEntries), CurrentEntryIndex);
    return entry.ProjectName == choice.name && entry.ProjectNumber == choice.number &&
           entry.StopTime.isEmpty();
}

/// The two questions. A No to the first also forgets that a selection was made.
bool wanted(const Choice& choice, SkipErrors& step) {
    if (step.condition([&] { return isRunning(choice); }) &&
        !Agrees(QStringLiteral("The project is currently active.  Add project again?"),
                QStringLiteral("Duplicate Project"))) {
        ItemSelected = false;
        return false;
    }
    return choice.active != BooleanText(false) ||
           Agrees(QStringLiteral("This is an inactive project, would you still like to continue?"),
                  QStringLiteral("Inactive Project"));
}

void give(const SelectionSink& sink, const Choice& choice) {
    if (sink.select)
        sink.select(choice.name, choice.number);
}

void undo(const SelectionSink& sink) {
    if (sink.undo)
        sink.undo();
}

} // namespace

void SelectItem() {
    SkipErrors step = ReportingSteps(QStringLiteral("SelectItem"));
    if (step.condition([] { return ProjectRecords().isEmpty(); })) {
        MsgBox(QStringLiteral("Cannot select this record because Project Database is empty"),
               QStringLiteral("Database is Empty"));
        return;
    }
    const ManagerState& state = Manager().state;
    const bool fromList = state.ViewMode == u"List";
    if (fromList && state.SelectedIndex == 0) {
        MsgBox(QStringLiteral("Please select a record"));
        return;
    }
    Choice choice;
    // Without its name and number there is nothing to give away.
    if (!step([&] { choice = fromList ? listChoice(state.SelectedIndex) : recordChoice(); }))
        return;
    if (!DayCalendarOpen) {
        if (!wanted(choice, step))
            return;
        step([&] { give(ModifyOpen ? selectionSinks.modify : selectionSinks.day, choice); });
        ItemSelected = true;
    }
    if (DayCalendarOpen)
        step([&] { give(selectionSinks.calendar, choice); });
    RequestClose();
}

void UndoSelection() {
    if (DayCalendarOpen)
        undo(selectionSinks.calendar);
    if (ModifyOpen)
        undo(selectionSinks.modify);
    else if (ports.screens->isVisible(Screen::frmSTM))
        undo(selectionSinks.day);
    else
        ports.screens->unload(Screen::frmSTM);
}

} // namespace kelvrane
