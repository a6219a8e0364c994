// A project database of the test's own, with the manager's tables open on it.
#pragma once

#include "frame/globals.h"
#include "records/database_manager.h"
#include "records/manager_model.h"
#include "records/project_changes.h"
#include "records/record_panel.h"
#include "records/record_state.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "startup/database_schema.h"
#include "support/fakes.h"

namespace kelvrane::testing {

class RecordTest : public ProgramTest {
  protected:
    RecordTest() {
        recordState = {};
        selectionSinks = {};
        projectSinks = {};
        ProjectDatabase = path(QStringLiteral("projects.mdb"));
        CreateProjectDatabase(ProjectDatabase);
        screens.onUnload = [](Screen screen) {
            if (screen == Screen::frmDataBase)
                UnloadDataBase();
        };
    }

    ~RecordTest() override {
        ItemSelected = true;
        Manager().state.InManager = false; // nobody is asked about what a test left typed
        UnloadDataBase();
        CloseProjectTable();
        CloseCustomerTable();
        recordState = {};
        selectionSinks = {};
        projectSinks = {};
    }

    static void Execute(const QString& sql) { Connection(ProjectDatabase).execute(sql); }

    /// Customer 0: none.
    static void AddProject(const QString& name, const QString& number = QStringLiteral("N-1"),
                           int customer = 0, bool active = true) {
        Connection connection(ProjectDatabase);
        Recordset rows(connection, QStringLiteral("ProjectInfo"), Recordset::Optimistic);
        rows.addNew();
        rows.setValue(QStringLiteral("Project_Name"), name);
        rows.setValue(QStringLiteral("Project_Number"), number);
        rows.setValue(QStringLiteral("Entry_Date"), QStringLiteral("3/1/2026"));
        rows.setValue(QStringLiteral("Active"), active);
        rows.setValue(QStringLiteral("Notes"), QStringLiteral("note"));
        rows.setValue(QStringLiteral("Rate"), 75);
        if (customer > 0) {
            rows.setValue(QStringLiteral("CustomerID"), QStringLiteral("old - text"));
            rows.setValue(QStringLiteral("CustInfoDBID"), customer);
        }
        rows.update();
    }

    static void AddCustomer(const QString& company, const QString& lastName) {
        Connection connection(ProjectDatabase);
        Recordset rows(connection, QStringLiteral("CustomerInfo"), Recordset::Optimistic);
        rows.addNew();
        const std::pair<const char*, QString> values[] = {
            {"Company", company},
            {"Title", QStringLiteral("Dr.")},
            {"FirstName", QStringLiteral("Ada")},
            {"LastName", lastName},
            {"Address1", QStringLiteral("1 Main St")},
            {"City", QStringLiteral("Springfield")},
            {"State", QStringLiteral("IL")},
            {"ZipCode", QStringLiteral("62701")},
            {"Discount", QStringLiteral("10")},
        };
        for (const auto& [field, value] : values)
            rows.setValue(QString::fromLatin1(field), value);
        rows.update();
    }

    /// A stored text, read with a connection of its own. Rows count from 1.
    static QString Stored(const char* table, int row, const char* field) {
        Connection connection(ProjectDatabase);
        Recordset rows(connection, QString::fromLatin1(table));
        rows.setPosition(row);
        return rows.text(QString::fromLatin1(field));
    }
    static int StoredCount(const char* table) {
        Connection connection(ProjectDatabase);
        return Recordset(connection, QString::fromLatin1(table)).count();
    }

    static QString Row(const char* key) { return RecordPanel().value(QString::fromLatin1(key)); }
    static void Type(const char* key, const QString& text) {
        RecordPanel().edit(QString::fromLatin1(key), text);
    }
    void Open() {
        WireDataBase();
        screens.loaded.insert(Screen::frmDataBase);
        OpenDataBase();
    }
    void OpenManager() {
        Open();
        Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    }
    static void Edit(const char* key) { Manager().smuiPanel1.click(QString::fromLatin1(key)); }
    static void View(const char* key) { Manager().smuiPanel0.click(QString::fromLatin1(key)); }
    static void Step(const char* key) { Manager().buttons.click(QString::fromLatin1(key)); }
    static void ShowTable(int place) {
        Manager().smuiPanel1.choose(QStringLiteral("TABLE"), place);
    }
    static constexpr int Projects = 0;
    static constexpr int Customers = 1;
};

} // namespace kelvrane::testing
