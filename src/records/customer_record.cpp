#include "records/customer_record.h"

#include "frame/error_report.h"
#include "frame/settings.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/manager_model.h"
#include "records/project_changes.h"
#include "records/project_record.h"
#include "records/record_panel.h"
#include "records/record_state.h"
#include "records/record_tables.h"

namespace kelvrane {

namespace {

bool isEmpty(const QString& text) {
    return text.isEmpty();
}
bool exceedsAll(const QString& text) {
    return ToDouble(text) > 100;
}

struct CustomerStep {
    const char* tested;
    bool (*refuses)(const QString& text); ///< null: no test
    const char* message;
    const char* row;   ///< whose text is written
    const char* field; ///< null: only tested
};
// The company's message hangs on the first name's row; the company itself may be empty. A discount
// has no lower bound.
constexpr CustomerStep customerSteps[] = {
    {"CUSFIRSTNAME", isEmpty, "Company name cannot cannot be blank!", "CUSCOMPANY", "Company"},
    {"CUSFIRSTNAME", isEmpty, "Customer's first name cannot be blank!", "CUSFIRSTNAME",
     "FirstName"},
    {"CUSLASTNAME", isEmpty, "Customer's last name cannot be blank!", "CUSLASTNAME", "LastName"},
    {"CUSTITLE", nullptr, "", "CUSTITLE", "Title"},
    {"CUSADDR1", isEmpty, "Customer address(1) cannot be blank!", "CUSADDR1", "Address1"},
    {"CUSADDR2", nullptr, "", "CUSADDR2", "Address2"},
    {"CUSCITY", isEmpty, "City cannot be blank!", "CUSCITY", "City"},
    {"CUSSTATE", isEmpty, "State cannot be blank!", "CUSSTATE", "State"},
    {"CUSZIP", isEmpty, "Zip Code cannot be blank!", "CUSZIP", "ZipCode"},
    {"CUSDISCOUNT", isEmpty, "Discount cannot be blank!", "CUSDISCOUNT", nullptr},
    {"CUSDISCOUNT", exceedsAll, "Customer discount cannot exceed 100%", "CUSDISCOUNT", "Discount"},
};

/// False when the row is refused.
bool runCustomerStep(const CustomerStep& row, SkipErrors& step) {
    bool refused = false;
    step([&] {
        refused = row.refuses && row.refuses(PanelText(row.tested));
        if (!refused && row.field)
            CustomerRecords().setValue(QString::fromLatin1(row.field), PanelText(row.row));
    });
    if (refused)
        ShowInvalidEntry(QString::fromLatin1(row.message));
    return !refused;
}

/// Writes the customer's new name to the projects that refer to it. They are found by the
/// customer's position in its table, not by its ID, and that is to stay so.
void carryNameToProjects(int customerPosition) {
    Recordset& projects = ProjectRecords();
    Recordset& customers = CustomerRecords();
    if (projects.position() <= 0)
        return;
    const QString name = customers.text(QStringLiteral("Company")) + u" - " +
                         customers.text(QStringLiteral("LastName"));
    const QString criterion = QStringLiteral("CustInfoDBID= '%1'").arg(customerPosition);
    int lastWritten = 0;
    projects.moveFirst();
    projects.find(criterion);
    while (projects.position() > lastWritten) {
        projects.setValue(QStringLiteral("CustomerID"), name);
        projects.update();
        lastWritten = projects.position();
        if (lastWritten == projects.count())
            break;
        projects.moveNext();
        projects.find(criterion);
    }
}

void reportCustomerError(const RuntimeError& error) {
    if (error.number == errors::NoObject)
        MsgBox(QStringLiteral("Nothing to update: Database is empty"),
               QStringLiteral("Empty Database"));
    else
        ReportError(error, QStringLiteral("SaveNewCustomerProject"));
}

} // namespace

Int16 SaveNewCustomerProject() {
    SkipErrors step(QStringLiteral("SaveNewCustomerProject"), reportCustomerError);
    const bool ready = step([] {
        if (CustomerRecords().isEmpty())
            Raise(errors::NoObject);
    });
    if (!ready)
        return status::RecordInvalid;
    const TablesInUse tables;
    for (const CustomerStep& row : customerSteps)
        if (!runCustomerStep(row, step) || tables.gone())
            return status::RecordInvalid;

    step([] { CustomerRecords().update(); });
    int customerPosition = 0;
    int projectPosition = 0;
    step([&] { customerPosition = CustomerRecords().position(); });
    step([&] { projectPosition = ProjectRecords().position(); });
    step([&] { carryNameToProjects(customerPosition); });
    // The project on display stays the current one.
    if (projectPosition > 0)
        step([&] { ProjectRecords().setPosition(projectPosition); });
    CustomerPosition = customerPosition;
    ProjectPosition = projectPosition;
    DisplayCustomer();
    ReturnToIdle(true);
    return status::RecordInvalid;
}

void CancelCustomerEntry() {
    ReturnToIdle(true);
    Recordset& records = CustomerRecords();
    records.cancelUpdate();
    if (!records.isEmpty() && CustomerPosition.value_or(0) > 0 &&
        records.count() >= *CustomerPosition) {
        records.setPosition(*CustomerPosition);
    } else if (!records.isEmpty()) {
        records.moveFirst();
        CustomerPosition = records.position();
    }
    DisplayCustomer();
}

void DeleteCustomer() {
    const TablesInUse tables;
    if (!record_steps::mayDelete(CustomerRecords().isEmpty(), CustomerUseSentence) || tables.gone())
        return;
    Recordset& records = CustomerRecords();
    const int position = records.position();
    const int rows = records.count();
    records.deleteRow();
    SkipErrors step(QStringLiteral("DeleteCustomer"));
    const bool moved = step([&] {
        if (position == rows)
            records.movePrevious();
        else if (rows == 1 || position == 1)
            records.moveFirst();
        else
            records.moveNext();
    });
    if (!moved)
        step([&] { records.movePrevious(); });
    CustomerPosition = records.position();
    DisplayCustomer();
    SetEntryButtons(false, true);
}

bool CustomerChanged() {
    bool dirty = CustomerRecords().hasPendingChanges();
    for (const PanelField& field : CustomerFields())
        dirty = dirty ||
                PanelText(field.key) != CustomerRecords().text(QString::fromLatin1(field.field));
    return dirty;
}

std::optional<Int16> CheckCustomerChanged() {
    const TablesInUse tables;
    if (!CustomerChanged() || !record_steps::saveWanted() || tables.gone())
        return std::nullopt;
    return SaveNewCustomerProject();
}

} // namespace kelvrane
