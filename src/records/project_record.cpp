#include "records/project_record.h"

#include "frame/error_report.h"
#include "frame/settings.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/manager_model.h"
#include "records/project_changes.h"
#include "records/record_panel.h"
#include "records/record_state.h"
#include "records/record_tables.h"

namespace kelvrane {

namespace {

void writeField(const char* field, const QVariant& value) {
    ProjectRecords().setValue(QString::fromLatin1(field), value);
}

bool isEmpty(const QString& text) {
    return text.isEmpty();
}
bool isNotNumeric(const QString& text) {
    return !IsNumeric(text);
}
bool isNegative(const QString& text) {
    return ToDouble(text) < 0;
}

/// One step of the save: a row whose text is refused with a message, else written to a field.
struct ProjectStep {
    const char* row;
    bool (*refuses)(const QString& text); ///< null: no test
    const char* message;
    const char* field;          ///< null: only tested
    const char* whenEmpty = ""; ///< what an empty row stores
};
// The two rate messages are a pair: the first answers what isn't a number.
constexpr ProjectStep projectSteps[] = {
    {"PROJECT_NAME", isEmpty, "Project name cannot be blank!", "Project_Name"},
    {"PROJECT_NUM", isEmpty, "Project number cannot be blank!", "Project_Number"},
    {"ENTRY_DATE", isEmpty, "Entry Date cannot be blank!", "Entry_Date"},
    {"ACTIVE", nullptr, "", "Active"},
    {"NOTES", nullptr, "", "Notes", "< Add Notes >"},
    {"RATE", isNotNumeric, "Rate must be a numeric value greater than 0!", nullptr},
    {"RATE", isNegative, "Rate must be a numeric value greater than or equal to 0!", "Rate"},
};

constexpr PanelField comparedFields[] = {
    {"PROJECT_NAME", "", "Project_Name"},
    {"PROJECT_NUM", "", "Project_Number"},
    {"ENTRY_DATE", "", "Entry_Date"},
    {"ACTIVE", "", "Active"},
    {"NOTES", "", "Notes"},
    {"RATE", "", "Rate"},
};

/// False when the row is refused.
bool runProjectStep(const ProjectStep& row, SkipErrors& step) {
    bool refused = false;
    step([&] {
        const QString text = PanelText(row.row);
        refused = row.refuses && row.refuses(text);
        if (!refused && row.field)
            writeField(row.field, text.isEmpty() ? QString::fromLatin1(row.whenEmpty) : text);
    });
    if (refused)
        ShowInvalidEntry(QString::fromLatin1(row.message));
    return !refused;
}

/// Takes over the customer that the panel shows. The customer table's cursor says whether it still
/// exists.
void writeCustomer(SkipErrors& step) {
    const bool unassigned = step.condition([] {
        const QString shown = PanelText("CUSTID_SHOW");
        return shown.isEmpty() || shown == NotAssigned;
    });
    if (unassigned) {
        step([] { writeField("CustomerID", QString()); });
        return;
    }
    const bool onRow = step.condition(
        [] { return !CustomerRecords().atEnd() && !CustomerRecords().atBeginning(); });
    if (onRow) {
        step([] {
            writeField("CustomerID",
                       QString(PanelText("CUSCOMPANY") + u" - " + PanelText("CUSLASTNAME")));
        });
        step([] { writeField("CustInfoDBID", int(ToInt16(PanelText("CUSTID_HIDE")))); });
        return;
    }
    const TablesInUse tables;
    MsgBox(QStringLiteral("Customer was deleted from the database.  Deassigning Customer ID"),
           QStringLiteral("Customer Deleted"));
    if (tables.gone())
        return;
    step([] { writeField("CustomerID", QString()); });
    step([] { writeField("CustInfoDBID", QString()); });
}

/// The cursors after a delete. That deleting the last project moves the customer cursor is wanted.
void moveAfterDelete(int position, int rowsBefore) {
    if (position == rowsBefore)
        CustomerRecords().movePrevious();
    else if (rowsBefore == 1)
        ProjectRecords().moveFirst();
    else
        ProjectRecords().moveNext();
    if (ProjectRecords().count() > 1 && position > 1)
        ProjectRecords().movePrevious();
    else
        ProjectRecords().moveFirst();
}

} // namespace

void RedrawProject(bool editable) {
    DisplayProject({.editable = editable, .showProject = true, .showCustomer = true});
}

void ShowInvalidEntry(const QString& text) {
    MsgBox(text, QStringLiteral("Invalid Entry"), BoxIcon::Exclamation);
}

bool record_steps::mayDelete(bool tableIsEmpty, const std::function<QString()>& sentence) {
    if (tableIsEmpty) {
        MsgBox(QStringLiteral("No records to delete"), QStringLiteral("Database Empty"));
        return false;
    }
    QString question = QStringLiteral("Are you sure you want to delete this record");
    SkipErrors uncounted(QStringLiteral("mayDelete"));
    uncounted([&] {
        if (const QString counted = sentence(); !counted.isEmpty())
            question += QStringLiteral("\r\n\r\n") + counted;
    });
    return MsgBox(question, QStringLiteral("Delete this record?"), BoxIcon::Question,
                  BoxButtons::OkCancel) == BoxAnswer::Ok;
}

bool record_steps::saveWanted() {
    return Agrees(QStringLiteral("Save changes to the entry?"), QStringLiteral("Save Changes?"));
}

void AddNewRecord(Int16 customer) {
    const bool customers = customer != 0;
    SetEntryButtons(true, customers);
    Recordset& records = customers ? CustomerRecords() : ProjectRecords();
    if (!records.isEmpty()) {
        (customers ? CustomerPosition : ProjectPosition) = records.position();
        records.moveLast();
    }
    records.addNew();
    if (customers) {
        DisplayCustomer(false);
    } else {
        RedrawProject(true);
        RecordPanel().setValue(QStringLiteral("ENTRY_DATE"), DateText(ports.clock->today()));
        RecordPanel().setValue(QStringLiteral("ACTIVE"), BooleanText(true));
        RecordPanel().setRole(QStringLiteral("ACTIVE"), TextRole::Value);
    }
    ShowList(false);
    EnableStepping(false);
    KeyedItems& panel = Manager().smuiPanel1;
    panel.setVisible(QStringLiteral("TABLE"), false);
    panel.setVisible(customers ? QStringLiteral("ADD_NEW_CUSTOMER") : QStringLiteral("ADD_NEW"),
                     false);
}

Int16 SaveNewProject() {
    SkipErrors step = ReportingSteps(QStringLiteral("SaveNewProject"));
    bool empty = true;
    step([&] { empty = ProjectRecords().isEmpty(); });
    if (empty)
        return status::RecordInvalid;
    const TablesInUse tables;
    RecentProject before;
    step([&] { before = StoredProject(); });
    for (const ProjectStep& row : projectSteps)
        if (!runProjectStep(row, step) || tables.gone())
            return status::RecordInvalid;
    writeCustomer(step);
    if (tables.gone())
        return status::RecordInvalid;
    const RecentProject after{PanelText("PROJECT_NAME"), PanelText("PROJECT_NUM")};
    if (!step.condition([&] { return MaySaveName(before, after); }) || tables.gone())
        return status::RecordInvalid;
    std::optional<RenamedProject> renamed;
    step([&] { renamed = AskBookedTime(before, after); });
    if (tables.gone() || !step([] { ProjectRecords().update(); }))
        return status::RecordInvalid;
    step([] { RedrawProject(true); });
    step([] { ReturnToIdle(false); });
    step([&] { FollowInRecentList(before, after); });
    if (renamed)
        RenameBookedTime(*renamed);
    if (projectSinks.changed)
        step(projectSinks.changed);
    return status::Done;
}

void CancelProjectEntry() {
    ReturnToIdle(false);
    Recordset& records = ProjectRecords();
    records.cancelUpdate();
    if (records.isEmpty()) {
        ShowNoProjects();
        ProjectPosition = records.position();
        return;
    }
    if (ProjectPosition.value_or(0) > 0 && records.count() >= *ProjectPosition) {
        records.setPosition(*ProjectPosition);
    } else {
        records.moveFirst();
        ProjectPosition = records.position();
    }
    RedrawProject(true);
}

void DeleteProject() {
    const TablesInUse tables;
    if (!record_steps::mayDelete(ProjectRecords().isEmpty(), BookedTimeSentence) || tables.gone())
        return;
    Recordset& records = ProjectRecords();
    const int position = records.position();
    const int rows = records.count();
    const RecentProject deleted = StoredProject();
    records.deleteRow();
    SkipErrors step(QStringLiteral("DeleteProject"));
    if (!step([&] { moveAfterDelete(position, rows); }))
        step([&] { records.movePrevious(); });
    RedrawProject(true);
    step([&] { FollowInRecentList(deleted, {}); });
    if (projectSinks.changed)
        step(projectSinks.changed);
}

bool ProjectChanged() {
    Recordset& records = ProjectRecords();
    bool dirty = records.hasPendingChanges(); // left by a save that was refused
    for (const PanelField& field : comparedFields)
        dirty = dirty || PanelText(field.key) != records.text(QString::fromLatin1(field.field));
    const QString customer = PanelText("CUSTID_SHOW");
    dirty = dirty ||
            (customer != records.text(QStringLiteral("CustomerID")) && customer != NotAssigned);
    return dirty;
}

std::optional<Int16> CheckProjectChanged() {
    const TablesInUse tables;
    if (!ProjectChanged() || !record_steps::saveWanted() || tables.gone())
        return std::nullopt;
    return SaveNewProject();
}

} // namespace kelvrane
