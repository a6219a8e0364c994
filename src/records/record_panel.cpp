#include "records/record_panel.h"

#include "frame/error_report.h"
#include "platform/texts.h"
#include "records/record_state.h"
#include "records/record_tables.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr PanelField projectFields[] = {
    {"PROJECT_NAME", "\tProject Name:", "Project_Name"},
    {"PROJECT_NUM", "\tProject Number:", "Project_Number"},
    {"ENTRY_DATE", "\tDate Entered:", "Entry_Date"},
    {"ACTIVE", "\tActive:", "Active"},
    {"NOTES", "\tNotes:", "Notes"},
    {"RATE", "\tRate:", "Rate"},
    {"CUSTID_SHOW", "\tCustomer ID:", "CustomerID"},
    {"CUSTID_HIDE", "\tCustomer ID:", "CustInfoDBID"},
};

constexpr PanelField customerFields[] = {
    {"CUSCOMPANY", "\tCompany:", "Company"},
    {"CUSTITLE", "\tTitle:", "Title"},
    {"CUSFIRSTNAME", "\tFirst Name:", "FirstName"},
    {"CUSLASTNAME", "\tLast Name:", "LastName"},
    {"CUSADDR1", "\tAddress 1:", "Address1"},
    {"CUSADDR2", "\tAddress 2:", "Address2"},
    {"CUSCITY", "\tCity:", "City"},
    {"CUSSTATE", "\tState:", "State"},
    {"CUSZIP", "\tZip Code:", "ZipCode"},
    {"CUSDISCOUNT", "\tDiscount:", "Discount"},
};

const QString active = QStringLiteral("ACTIVE");
const QString shownCustomer = QStringLiteral("CUSTID_SHOW");
const QString hiddenCustomer = QStringLiteral("CUSTID_HIDE");

KeyedItem row(const PanelField& field, ItemKind kind = ItemKind::Text) {
    return {.key = QString::fromLatin1(field.key),
            .caption = QString::fromLatin1(field.caption),
            .kind = kind};
}

ItemKind editorOf(const QString& key) {
    return key == active          ? ItemKind::DropDown
           : key == shownCustomer ? ItemKind::Browse
                                  : ItemKind::Edit;
}

/// The rows as they will stand; shown in one difference, so that views keep their places.
class Rows {
  public:
    explicit Rows(QList<KeyedItem> items = {}) : m_items(std::move(items)) {}

    void add(KeyedItem item) { m_items.append(std::move(item)); }
    void setValue(const char* key, const QString& value) {
        for (KeyedItem& item : m_items)
            if (item.key == QLatin1String(key))
                item.value = value;
    }
    QList<KeyedItem>& items() { return m_items; }

  private:
    QList<KeyedItem> m_items;
};

void fillProject(Rows& rows, bool editable, SkipErrors& step) {
    for (const PanelField& field : projectFields) {
        KeyedItem item = row(field);
        if (editable)
            item.kind = editorOf(item.key);
        item.visible = item.key != hiddenCustomer;
        rows.add(item);
    }
    for (const PanelField& field : projectFields)
        step([&] {
            rows.setValue(field.key, ProjectRecords().text(QString::fromLatin1(field.field)));
        });
    if (!step.condition(ProjectHasCustomer)) {
        rows.setValue("CUSTID_SHOW", NotAssigned);
        rows.setValue("CUSTID_HIDE", NotAssigned);
    }
    for (KeyedItem& item : rows.items())
        if ((item.key == active && item.value == BooleanText(false)) ||
            (item.key == shownCustomer && item.value == NotAssigned))
            item.role = TextRole::Inactive;
}

void findCustomer(SkipErrors& step) {
    step([] { CustomerRecords().moveFirst(); });
    if (step.condition(ProjectHasCustomer))
        step([] {
            CustomerRecords().find(QStringLiteral("ID = '") +
                                   ProjectRecords().text(QStringLiteral("CustInfoDBID")) +
                                   QLatin1Char('\''));
        });
}

void addCustomerRows(Rows& rows, ItemKind kind) {
    for (const PanelField& field : customerFields)
        rows.add(row(field, kind));
}

void fillCustomer(Rows& rows, bool assigned, SkipErrors& step) {
    for (const PanelField& field : customerFields) {
        QString value;
        if (assigned)
            step([&] { value = CustomerRecords().text(QString::fromLatin1(field.field)); });
        rows.setValue(field.key, value);
    }
}

void showNoRecords(const QString& text) {
    RecordPanel().refill({{.key = QStringLiteral("NORECORDS"), .caption = text}});
}

} // namespace

KeyedItems& RecordPanel() {
    static KeyedItems panel;
    return panel;
}

QString PanelText(const char* key) {
    return RecordPanel().value(QString::fromLatin1(key));
}

std::span<const PanelField> CustomerFields() {
    return customerFields;
}

bool ProjectHasCustomer() {
    const QString reference = ProjectRecords().text(QStringLiteral("CustInfoDBID"));
    return !reference.isEmpty() && reference != u"0";
}

void DisplayProject(const ProjectDrawing& drawing) {
    SkipErrors step(QStringLiteral("DisplayProject"));
    if (!step.condition([] { return !ProjectRecords().isEmpty(); })) {
        ShowNoProjects();
        return;
    }
    Rows rows(drawing.showProject ? QList<KeyedItem>() : RecordPanel().items());
    if (drawing.showProject)
        fillProject(rows, drawing.editable, step);
    if (!drawing.keepCustomerCursor)
        findCustomer(step);
    if (drawing.showCustomer) {
        if (!drawing.rowsExist) {
            rows.add({.key = QStringLiteral("CUSTINFOHEADING"),
                      .caption = QStringLiteral("Customer Information"),
                      .kind = ItemKind::Heading});
            addCustomerRows(rows, ItemKind::Text);
        }
        fillCustomer(rows, drawing.force || step.condition(ProjectHasCustomer), step);
    }
    RecordPanel().refill(rows.items());
    if (drawing.showProject && drawing.editable)
        FillCombo(RecordPanel(), active, QStringLiteral("True;False"));
}

void DisplayCustomer(bool goToPosition) {
    SkipErrors step(QStringLiteral("DisplayCustomer"));
    if (!step.condition([] { return !CustomerRecords().isEmpty(); })) {
        showNoRecords(QStringLiteral("Customer database is empty"));
        return;
    }
    if (goToPosition && CustomerPosition)
        step([] { CustomerRecords().setPosition(*CustomerPosition); });
    Rows rows;
    addCustomerRows(rows, ItemKind::Edit);
    fillCustomer(rows, true, step);
    RecordPanel().refill(rows.items());
}

void ShowNoProjects() {
    showNoRecords(QStringLiteral("Project database is empty"));
}

void MarkInactive(const QString& key, const QString& value) {
    if (key == active)
        RecordPanel().setRole(key,
                              value == BooleanText(false) ? TextRole::Inactive : TextRole::Value);
}

void FillCombo(KeyedItems& items, const QString& row, const QString& entries) {
    SkipErrors step = ReportingSteps(QStringLiteral("Database_FillCombo"));
    step([&] { items.setChoices(row, items.item(row).choices + entries.split(u';')); });
}

} // namespace kelvrane
