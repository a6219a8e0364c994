// A program with two customers, their projects, a week of history and templates for both kinds of
// sheet. Week of Sunday, January 5, 2003.
#pragma once

#include "frame/globals.h"
#include "platform/recordset.h"
#include "startup/database_schema.h"
#include "support/fakes.h"
#include "timesheets/sheet_context.h"
#include "timesheets/template_scan.h"
#include "worksheet/spreadsheet.h"

namespace kelvrane::testing {

class SheetTest : public ProgramTest {
  protected:
    SheetTest() {
        clock.set(QStringLiteral("2003-01-05 09:00"));
        sheetState = {};
        InitSpreadsheetTables();
        ProjectDatabase = path(QStringLiteral("kelvrane.mdb"));
        CreateProjectDatabase(ProjectDatabase);
        CreateDayInfoDatabase(history());
        addCustomer("Acme", "Road", 10);
        addCustomer("Birch & Sons", "Beck", 0);
        addProject("Alpha", "1001", 80, 1);
        addProject("Beta", "1002", 60, 2);
    }

    QString history() const { return path(QStringLiteral("DayInfo.mdb")); }

    static void addCustomer(const char* company, const char* lastName, double discount) {
        Connection connection(ProjectDatabase);
        connection.execute(QStringLiteral("PRAGMA synchronous = OFF")); // no disk to wait for
        Recordset rows(connection, QStringLiteral("CustomerInfo"), Recordset::Optimistic);
        rows.addNew();
        rows.setValue(QStringLiteral("Company"), QString::fromLatin1(company));
        rows.setValue(QStringLiteral("LastName"), QString::fromLatin1(lastName));
        rows.setValue(QStringLiteral("City"), QStringLiteral("Springfield"));
        rows.setValue(QStringLiteral("ZipCode"), QStringLiteral("02134"));
        rows.setValue(QStringLiteral("Discount"), discount);
        rows.update();
    }
    /// Customer 0: none.
    static void addProject(const char* name, const char* number, double rate, int customer) {
        Connection connection(ProjectDatabase);
        connection.execute(QStringLiteral("PRAGMA synchronous = OFF")); // no disk to wait for
        Recordset rows(connection, QStringLiteral("ProjectInfo"), Recordset::Optimistic);
        rows.addNew();
        rows.setValue(QStringLiteral("Project_Name"), QString::fromLatin1(name));
        rows.setValue(QStringLiteral("Project_Number"), QString::fromLatin1(number));
        rows.setValue(QStringLiteral("Active"), true);
        rows.setValue(QStringLiteral("Rate"), rate);
        if (customer > 0)
            rows.setValue(QStringLiteral("CustInfoDBID"), customer);
        rows.update();
    }
    void addDay(const char* date, const char* project, int total, int pause = 0) {
        addDayTo(history(), date, project, total, pause);
    }
    static void addDayTo(const QString& database, const char* date, const char* project, int total,
                         int pause = 0) {
        Connection connection(database);
        connection.execute(QStringLiteral("PRAGMA synchronous = OFF"));
        Recordset rows(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
        rows.addNew();
        rows.setValue(QStringLiteral("Date"), QString::fromLatin1(date));
        rows.setValue(QStringLiteral("ProjectName"), QString::fromLatin1(project));
        rows.setValue(QStringLiteral("ProjectNumber"), QStringLiteral("1001"));
        rows.setValue(QStringLiteral("TotalTime"), total);
        rows.setValue(QStringLiteral("BreakTime"), pause);
        rows.update();
    }

    /// The list file: "alias;path;state" a line.
    void listDatabases(const QStringList& lines) {
        writeFile(QStringLiteral("SSDBInfo.dat"),
                  (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8());
    }
    QString ownLine() const {
        return QStringLiteral("Me;") + history() + QStringLiteral(";ACCEPT");
    }

    /// A template from its cells, saved under that name; the path.
    QString saveTemplate(const QString& name,
                         std::initializer_list<std::pair<const char*, const char*>> cells) {
        Spreadsheet sheet;
        for (const auto& [cell, text] : cells)
            sheet.Range(QString::fromLatin1(cell)).setValue(QString::fromUtf8(text));
        writeFile(name, sheet.HTMLData().toUtf8() + '\n');
        return path(name);
    }
    /// Hours from C5, seven days, totals in J and in row 12.
    QString weekTemplate() {
        return saveTemplate(QStringLiteral("week.htm"), {{"A1", "Week #WEEK#, #DATE2#"},
                                                         {"A2", "#ALIAS#"},
                                                         {"A5", "#NAME#"},
                                                         {"B5", "#NUMBER#"},
                                                         {"C5", "#HOURS#"},
                                                         {"J4", "#HTOTAL#"},
                                                         {"C12", "#VTOTAL#"}});
    }
    QString invoiceTemplate() {
        return saveTemplate(QStringLiteral("invoice.htm"), {{"A1", "#COMPANY#"},
                                                            {"A2", "#CITY# #ZIPCODE#"},
                                                            {"F3", "=SUM(F7:F50)"},
                                                            {"B7", "#DAY#"},
                                                            {"C7", "#NAME#"},
                                                            {"D7", "#HOURS#"},
                                                            {"E7", "#RATE#"},
                                                            {"F7", "#TOTAL#"}});
    }

    /// As the screen does it up to the calculation itself.
    SheetContext scanned(const QString& path, QDate end, QList<bool> accepted) {
        ss1.setHTMLURL(path);
        ResetSSVariables();
        ScanTemplate(ss1, {QStringLiteral("1/5/2003"), end, 2});
        return {.sheet = ss1,
                .startDate = QStringLiteral("1/5/2003"),
                .isAccepted = std::move(accepted),
                .templatePath = path,
                .addSheet = [this](const QString& name) {
                    filed.append({name, ss1.HTMLData()});
                }};
    }
    QString text(const char* cell) const {
        return ss1.worksheet().text(ParseAddress(QString::fromLatin1(cell)).value());
    }
    static Spreadsheet& opened(Spreadsheet& sheet, const QString& html) {
        sheet.setHTMLData(html);
        return sheet;
    }

    Spreadsheet ss1;
    QList<QPair<QString, QString>> filed; ///< name, HTML
    const QDate end{2003, 1, 11};
};

} // namespace kelvrane::testing
