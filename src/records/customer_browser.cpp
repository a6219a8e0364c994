#include "records/customer_browser.h"

#include "frame/error_report.h"
#include "platform/item_rows.h"
#include "platform/ports.h"
#include "records/record_panel.h"
#include "records/record_tables.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr ItemRow barRows[] = {
    {"PREVIOUS", "Previous", "Previous record", "prev"},
    {"NEXT", "Next", "Next record", "next"},
    {.key = "RECORDNUM", .caption = "Record", .toolTip = "Current record", .kind = ItemKind::Text},
    {"SELECT", "Select", "Select customer", "select"},
    {.key = "SHOWFIND", .toolTip = "Show/Hide Find", .image = "down"}, // no command behind it
    {.key = "FINDWHAT", .toolTip = "Place text to find here", .kind = ItemKind::Edit},
    {"FIND", "Find", "Find text in database", "search"},
};

const QString findWhat = QStringLiteral("FINDWHAT");

bool onLastRecord() {
    return CustomerRecords().position() == CustomerRecords().count();
}

void showRecordNumber() {
    const int position = CustomerRecords().position();
    if (position >= 0)
        Browser().SmartStatusBar.setCaption(
            QStringLiteral("RECORDNUM"),
            QStringLiteral("Record %1 of %2").arg(position).arg(CustomerRecords().count()));
}

/// The search begins at the first row: the cursor may stand behind the customer after an earlier
/// browsing, or off the table.
void goToCustomerOfProject() {
    CustomerRecords().moveFirst();
    if (!ProjectHasCustomer())
        return;
    CustomerRecords().find(QStringLiteral("ID = '") +
                           ProjectRecords().text(QStringLiteral("CustInfoDBID")) +
                           QLatin1Char('\''));
    if (CustomerRecords().position() >= 0)
        return;
    MsgBox(
        QStringLiteral("Customer ID was deleted from the database. Please select a new customer"),
        QStringLiteral("Invalid Customer ID"));
    CustomerRecords().moveFirst();
}

void stepTo(bool forward) {
    if (CustomerRecords().position() == (forward ? CustomerRecords().count() : 1))
        return;
    forward ? CustomerRecords().moveNext() : CustomerRecords().movePrevious();
    Browser().markRow({}); // a former match says nothing about this record
    DisplayCustInfo();
}

/// Looks through the fields of the current record that are still to be tested.
bool searchRecord(const QString& wanted) {
    SkipErrors step(QStringLiteral("SearchCustomer"));
    CustomerBrowser& browser = Browser();
    browser.RecordMissed = false;
    const int fields = CustomerRecords().fieldCount();
    int field = browser.BrowseColumn;
    bool found = false;
    for (; !found && field < fields; ++field)
        found = step.condition([&] {
            return !CustomerRecords().isNull(field) &&
                   CustomerRecords().text(field).toLower().contains(wanted);
        });
    browser.RecordMissed = field >= fields;
    browser.BrowseColumn = Int16(found ? field : 1);
    return found;
}

bool searchOn(const QString& wanted) {
    if (!Browser().RecordMissed) {
        if (searchRecord(wanted))
            return true;
        if (!onLastRecord())
            CustomerRecords().moveNext();
    }
    while (!CustomerRecords().atEnd()) {
        if (searchRecord(wanted))
            return true;
        CustomerRecords().moveNext();
    }
    return false;
}

/// A match in the table's key has no row.
void markMatch() {
    const int row = Browser().BrowseColumn - 1; // 1-based
    if (row >= 1 && row <= Browser().smuiCustInfo.count())
        Browser().markRow(Browser().smuiCustInfo.items().at(row - 1).key);
}

void select() {
    AddInfo2DBForm();
    ports.screens->unload(Screen::frmBrowseForCust);
}

} // namespace

CustomerBrowser::CustomerBrowser() {
    reset();
}

void CustomerBrowser::reset() {
    BrowseColumn = Int16(0);
    RecordMissed = BrowseRestart = false;
    QList<KeyedItem> rows;
    for (const PanelField& field : CustomerFields())
        rows.append(
            {.key = QString::fromLatin1(field.key), .caption = QString::fromLatin1(field.caption)});
    smuiCustInfo.refill(rows);
    SmartStatusBar.refill(ItemsOf(barRows));
}

CustomerBrowser& Browser() {
    static CustomerBrowser browser;
    return browser;
}

void FrmBrowseForCustomer_Load() {
    SkipErrors step = ReportingSteps(QStringLiteral("FrmBrowseForCustomer_Load"));
    Browser().reset();
    const TablesInUse tables;
    step(goToCustomerOfProject);
    if (tables.gone()) // the manager went behind the box
        return;
    step(DisplayCustInfo);
    step(showRecordNumber);
}

void DisplayCustInfo() {
    SkipErrors step = ReportingSteps(QStringLiteral("DisplayCustInfo"));
    for (const PanelField& field : CustomerFields())
        step([&] {
            Browser().smuiCustInfo.setValue(
                QString::fromLatin1(field.key),
                CustomerRecords().text(QString::fromLatin1(field.field)));
        });
}

void SmartStatusBar_Click(const QString& key) {
    SkipErrors step = ReportingSteps(QStringLiteral("SmartStatusBar_Click"));
    if (key == u"SELECT") {
        step(select);
        return;
    }
    if (key == u"PREVIOUS")
        step([] { stepTo(false); });
    else if (key == u"NEXT")
        step([] { stepTo(true); });
    else if (key == u"FIND")
        step(FrmBrowseForCustomer_FindInSMUIView);
    step(showRecordNumber);
}

void SmartStatusBar_Change(const QString& key) {
    if (key != findWhat)
        return;
    Browser().BrowseRestart = Browser().RecordMissed = true;
    Browser().BrowseColumn = Int16(0);
}

void FrmBrowseForCustomer_FindInSMUIView() {
    SkipErrors step = ReportingSteps(QStringLiteral("FrmBrowseForCustomer_FindInSMUIView"));
    step([] {
        const int position = CustomerRecords().position();
        const QString wanted = Browser().SmartStatusBar.value(findWhat).toLower();
        if (wanted.isEmpty())
            return;
        if (std::exchange(Browser().BrowseRestart, false))
            CustomerRecords().moveFirst();
        if (searchOn(wanted)) {
            DisplayCustInfo();
            Browser().markRow({});
            markMatch();
            return;
        }
        MsgBox(QStringLiteral("No records found"), QStringLiteral(" No records"));
        Browser().BrowseRestart = true;
        if (CustomerRecords().position() < 0 && position >= 0)
            CustomerRecords().setPosition(position);
    });
}

void AddInfo2DBForm() {
    SkipErrors step = ReportingSteps(QStringLiteral("AddInfo2DBForm"));
    const auto text = [](const char* field) {
        return CustomerRecords().text(QString::fromLatin1(field));
    };
    const QString shown = QStringLiteral("CUSTID_SHOW");
    step([&] {
        RecordPanel().setValue(shown, text("Company") + QStringLiteral(" - ") + text("LastName"));
    });
    step([&] { RecordPanel().setRole(shown, TextRole::Value); });
    step([&] { RecordPanel().setValue(QStringLiteral("CUSTID_HIDE"), text("ID")); });
    for (const PanelField& field : CustomerFields())
        step([&] { RecordPanel().setValue(QString::fromLatin1(field.key), text(field.field)); });
}

void WireCustomerBrowser() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    KeyedItems& bar = Browser().SmartStatusBar;
    QObject::connect(&bar, &KeyedItems::Clicked, &Browser(), [](const QString& key) {
        Guarded(QStringLiteral("SmartStatusBar_Click"), [&] { SmartStatusBar_Click(key); });
    });
    QObject::connect(&bar, &KeyedItems::Edited, &Browser(),
                     [](const QString& key, const QString&) { SmartStatusBar_Change(key); });
}

} // namespace kelvrane
