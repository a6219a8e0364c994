#include "records/shown_record.h"

#include "frame/error_report.h"
#include "frame/settings.h"
#include "records/customer_record.h"
#include "records/manager_model.h"
#include "records/project_record.h"
#include "records/record_panel.h"
#include "records/record_state.h"
#include "records/record_tables.h"

#include <algorithm>
#include <array>

namespace kelvrane {

namespace {

ManagerState& state() {
    return Manager().state;
}

bool isNew(Recordset& records) {
    return records.hasPendingChanges() && records.isNull(0);
}

/// The rows that AddNewRecord leaves empty.
bool isUntouched(bool customers) {
    if (customers)
        return std::ranges::all_of(CustomerFields(), [](const PanelField& field) {
            return PanelText(field.key).isEmpty();
        });
    constexpr std::array rows = {"PROJECT_NAME", "PROJECT_NUM", "NOTES", "RATE"};
    return std::ranges::all_of(rows, [](const char* row) { return PanelText(row).isEmpty(); }) &&
           PanelText("CUSTID_SHOW") == NotAssigned;
}

void drop(bool customers) {
    Recordset& records = customers ? CustomerRecords() : ProjectRecords();
    if (isNew(records)) {
        customers ? CancelCustomerEntry() : CancelProjectEntry();
        return;
    }
    records.cancelUpdate();
    if (customers)
        DisplayCustomer(false);
    else
        RedrawProject(true);
}

/// What was typed into a new record, or differs from the stored one.
bool isEdited(bool customers) {
    Recordset& records = customers ? CustomerRecords() : ProjectRecords();
    if (records.isEmpty() || (isNew(records) && isUntouched(customers)))
        return false;
    return customers ? CustomerChanged() : ProjectChanged();
}

bool askAndLeave(bool customers) {
    Recordset& records = customers ? CustomerRecords() : ProjectRecords();
    if (records.isEmpty())
        return true;
    if (isNew(records) && isUntouched(customers)) {
        drop(customers);
        return true;
    }
    if (!isEdited(customers))
        return true;
    const TablesInUse tables;
    const bool saves = record_steps::saveWanted();
    if (tables.gone())
        return false;
    if (!saves) {
        drop(customers);
        return true;
    }
    const Int16 saved = customers ? SaveNewCustomerProject() : SaveNewProject();
    if (tables.gone())
        return false;
    // The status of a customer is the same whether it was saved or not.
    return customers ? !CustomerChanged() : saved == status::Done;
}

} // namespace

void ChooseListRow(int row) {
    state().SelectedIndex = row;
    if (row > 0 && !GoToProject(Manager().ListView1.key(row)))
        state().SelectedIndex = 0;
}

bool MayLeaveRecord() {
    if (!state().InManager)
        return true;
    bool leaves = true; // a record that can't be read holds nobody
    SkipErrors step = ReportingSteps(QStringLiteral("MayLeaveRecord"));
    step([&] { leaves = askAndLeave(CurrentTable == current_table::Customers); });
    return leaves;
}

bool RecordIsEdited() {
    bool edited = false;
    SkipErrors step(QStringLiteral("MayLeaveRecord"));
    if (state().InManager)
        step([&] { edited = isEdited(CurrentTable == current_table::Customers); });
    return edited;
}

QString CurrentProjectKey() {
    return ProjectRecords().position() < 1 ? QString() : ProjectRecords().text(0);
}

bool GoToProject(const QString& key) {
    Recordset& records = ProjectRecords();
    if (records.isEmpty() || key.isEmpty())
        return false;
    const int before = records.position();
    records.moveFirst();
    records.find(records.fieldName(0) + QStringLiteral(" = '") + key + QLatin1Char('\''));
    if (!records.atEnd())
        return true;
    records.setPosition(std::max(before, 1));
    return false;
}

} // namespace kelvrane
