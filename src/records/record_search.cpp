#include "records/record_search.h"

#include "frame/error_report.h"
#include "platform/ports.h"
#include "records/manager_model.h"
#include "records/project_record.h"
#include "records/record_state.h"
#include "records/record_tables.h"
#include "records/shown_record.h"

namespace kelvrane {

namespace {

const QString allFields = QStringLiteral("All");

ManagerState& state() {
    return Manager().state;
}

bool matches(const QString& value) {
    if (state().MatchCase)
        return value.contains(state().FindText);
    return value.toLower().contains(state().FindText.toLower());
}

bool projectsEmpty() {
    if (!ProjectRecords().isEmpty())
        return false;
    MsgBox(QStringLiteral("No records to find because Project Database is empty"),
           QStringLiteral("Database is Empty"));
    return true;
}

bool onLastRecord() {
    return ProjectRecords().position() == ProjectRecords().count();
}

void setFindCaption(const QString& caption) {
    Manager().buttons.setCaption(QStringLiteral("cmdFind"), caption);
}

/// The row that matches, 0: none. With "All" each column that misses moves the place on by one, so
/// the rows that follow are not all looked at; that is wanted.
int searchList() {
    const ProjectList& list = Manager().ListView1;
    int& place = state().ListFindIndex;
    const bool all = state().FindField == allFields;
    const int columns = list.columnCount();
    while (place >= 1 && place <= list.count()) {
        const int row = place;
        const int first = all ? 0 : state().FindColumn;
        const int last = all ? columns - 1 : state().FindColumn;
        for (int column = first; column <= last; ++column) {
            if (matches(list.text(row, column)))
                return row;
            ++place;
        }
    }
    return 0;
}

bool SearchColumn() {
    bool found = false;
    SkipErrors step = ReportingSteps(QStringLiteral("SearchColumn"));
    step([&] {
        if (!matches(ProjectRecords().text(state().FindColumn + 1)))
            return;
        RedrawProject(state().InManager);
        state().FoundInColumn = true;
        found = true;
    });
    return found;
}

/// Position 0, the table's key, takes part.
bool SearchAllColumns() {
    bool found = false;
    SkipErrors step(QStringLiteral("SearchAllColumns"));
    const int fields = ProjectRecords().fieldCount();
    int& next = state().NextColumn;
    while (!found && next < fields) {
        found = step.condition(
            [&] { return !ProjectRecords().isNull(next) && matches(ProjectRecords().text(next)); });
        ++next;
    }
    if (found)
        RedrawProject(state().InManager);
    // A match in the last field leaves the record to the next search, which moves on.
    state().RecordDone = !found && next >= fields;
    if (state().RecordDone)
        next = 0;
    return found;
}

bool searchOn(bool (*search)()) {
    while (!ProjectRecords().atEnd()) {
        if (search())
            return true;
        ProjectRecords().moveNext();
    }
    return false;
}

bool searchAllFields() {
    if (!state().RecordDone) {
        if (SearchAllColumns())
            return true;
        if (!onLastRecord())
            ProjectRecords().moveNext();
    }
    return searchOn(SearchAllColumns);
}

bool searchOneField() {
    if (state().FoundInColumn && !onLastRecord())
        ProjectRecords().moveNext();
    return searchOn(SearchColumn);
}

void showNotFound() {
    const TablesInUse tables;
    MsgBox(QStringLiteral("No records found"), QStringLiteral(" No records"));
    if (tables.gone())
        return;
    state().RestartSearch = true;
    setFindCaption(QStringLiteral("Find"));
    state().FoundInColumn = false;
    if (ProjectRecords().position() < 1)
        ProjectRecords().setPosition(*ProjectPosition);
}

} // namespace

void FindChange(const QString& key, const QString& /*value*/) {
    if (key == u"FIND" || key == u"FIELDS")
        Restart_Search();
}

void FindFieldChosen(int place) {
    state().fieldsColumn = place;
}

void FindClick(const QString& key) {
    KeyedItems& panel = Manager().smuiFind;
    if (key == u"CASE SENSITIVE") {
        state().MatchCase = !panel.item(key).ticked;
        panel.setTicked(key, state().MatchCase);
    } else if (key.startsWith(QLatin1String("SEARCH "))) {
        // The direction is shown and not read.
        panel.setTicked(QStringLiteral("SEARCH FORWARD"), key == u"SEARCH FORWARD");
        panel.setTicked(QStringLiteral("SEARCH BACKWARD"), key == u"SEARCH BACKWARD");
    }
}

void Restart_Search() {
    SkipErrors step = ReportingSteps(QStringLiteral("Restart_Search"));
    state().RestartSearch = true;
    state().RecordDone = true;
    state().NextColumn = 0;
    state().ListFindIndex = 1;
    step([] {
        const KeyedItems& panel = Manager().smuiFind;
        state().FindText = panel.value(QStringLiteral("FIND"));
        state().FindField = panel.value(QStringLiteral("FIELDS"));
        state().FindColumn = state().fieldsColumn;
    });
}

void Find() {
    if (state().Loading)
        return;
    if (state().listShown)
        FindInListItem();
    else if (MayLeaveRecord())
        FindInSingleRecordView();
}

void FindInListItem() {
    SkipErrors step = ReportingSteps(QStringLiteral("FindInListItem"));
    step([] {
        if (projectsEmpty())
            return;
        ProjectList& list = Manager().ListView1;
        int& place = state().ListFindIndex;
        const int row = searchList();
        // What is marked is what "Select" takes: the row found, or none.
        ChooseListRow(row);
        list.wantRow(row);
        if (row > 0) {
            ++place;
            return;
        }
        MsgBox(place == list.count() + 1 ? QStringLiteral("No more items found")
                                         : QStringLiteral("Item not found"));
        place = 1;
    });
}

void FindInSingleRecordView() {
    SkipErrors step = ReportingSteps(QStringLiteral("FindInSingleRecordView"));
    step([] {
        if (projectsEmpty())
            return;
        const int position = ProjectRecords().position();
        ProjectPosition = position > 0 ? position : 1;
        // Asked before the cursor moves: the record on display stays the current one.
        if (state().FindText.isEmpty()) {
            MsgBox(QStringLiteral("Please select something to find"),
                   QStringLiteral("Nothing to Find"));
            return;
        }
        if (state().RestartSearch) {
            ProjectRecords().moveFirst();
            state().RestartSearch = false;
        }
        const bool all = state().FindField == allFields;
        if (all ? searchAllFields() : searchOneField())
            setFindCaption(QStringLiteral("Find Next"));
        else
            showNotFound();
    });
}

} // namespace kelvrane
