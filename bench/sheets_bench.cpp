#include "sheets_bench.h"

#include "bench_folder.h"
#include "collections/collection_builder.h"
#include "collections/collection_viewer.h"
#include "collections/viewer_model.h"
#include "floors.h"
#include "folder_steps.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "history/day_history.h"
#include "platform/connection.h"
#include "platform/texts.h"
#include "quiet_ports.h"
#include "startup/database_schema.h"
#include "timesheets/customer_calculation.h"
#include "timesheets/project_calculation.h"
#include "timesheets/sheet_context.h"
#include "timesheets/template_scan.h"
#include "worksheet/spreadsheet.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>

namespace kelvrane::bench {

namespace {

constexpr int projects = 25;
constexpr int historyRows = 125'000;
constexpr int customers = 40;
constexpr int formulas = 1'000;
constexpr int collectionSheets = 500;

constexpr char weekly[] = "weekly sheet of 25 projects";
constexpr char recalculation[] = "1,000 dependent formulas";
constexpr char invoices[] = "a year's invoices";
constexpr char collection[] = "open a collection";

class SheetFolder {
  public:
    SheetFolder(QuietPorts& quiet, QDate present)
        : m_quiet(quiet), m_folder(QDir::currentPath() + QStringLiteral("/bench-XXXXXX")),
          m_present(present) {
        PrepareFolder(quiet, m_folder.path(), 1, present);
        fillHistory(history(), historyRows, projects);
        CreateDayInfoDatabase(yearHistory());
        fillHistory(yearHistory(), 366 * customers, customers);
        fillProjects();
        const QString list = QStringLiteral("Me;%1;ACCEPT\r\nYear;%2;DECLINE\r\n");
        m_quiet.files().create(path(QStringLiteral("SSDBInfo.dat")),
                               list.arg(history(), yearHistory()).toUtf8());
    }

    QString path(const QString& name) const { return QDir(m_folder.path()).filePath(name); }
    QString history() const { return path(QString::fromLatin1(files::DayHistory)); }
    QString yearHistory() const { return path(QStringLiteral("year.mdb")); }
    QString sheetTemplate(const char* name) const {
        return path(QStringLiteral("data/") + QString::fromLatin1(name));
    }
    QDate monday() const { return m_present.addDays(1 - m_present.dayOfWeek()); }
    QDate present() const { return m_present; }

    void enter() const {
        globals = {};
        SetAppPath(m_folder.path());
        m_quiet.openSettings(InAppPath(QString::fromLatin1(files::Settings)));
        ProjectDatabase = path(QString::fromLatin1(files::ProjectDatabase));
        InitSpreadsheetTables();
    }

  private:
    /// A row a day for each project, up to today.
    void fillHistory(const QString& database, int rows, int projectCount) const {
        Connection connection(database);
        connection.execute(QStringLiteral("DELETE FROM DayInfo"));
        connection.execute(
            QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < %1) "
                "INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, BreakTime, TotalTime) "
                "SELECT date('%2', '-' || (i / %3) || ' days'), "
                "'Project ' || substr('0' || (i % %3), -2), '100' || (i % %3), i % 10, 30 + i % 90 "
                "FROM n")
                .arg(rows)
                .arg(m_present.toString(Qt::ISODate))
                .arg(projectCount));
        connection.execute(QStringLiteral("ANALYZE"));
    }
    void fillProjects() const {
        Connection connection(path(QString::fromLatin1(files::ProjectDatabase)));
        connection.execute(QStringLiteral("DELETE FROM ProjectInfo"));
        connection.begin();
        for (int i = 0; i < customers; ++i)
            connection.execute(QStringLiteral("INSERT INTO ProjectInfo (Project_Name, "
                                              "Project_Number, Active, Rate, CustInfoDBID) VALUES "
                                              "('Project %1', '100%1', 1, 75, %2)")
                                   .arg(i, 2, 10, QLatin1Char('0'))
                                   .arg(i + 1));
        for (int i = 0; i < customers; ++i)
            connection.execute(QStringLiteral("INSERT INTO CustomerInfo (Company, LastName, "
                                              "Discount) VALUES ('Company %1', 'Name', 5)")
                                   .arg(i));
        connection.commit();
    }

    QuietPorts& m_quiet;
    QTemporaryDir m_folder;
    QDate m_present;
};

using Folder = std::shared_ptr<SheetFolder>;
using Step = std::function<void(const SheetFolder&)>;

SheetContext contextOf(Spreadsheet& sheet, const QString& path, QDate start, QDate end) {
    sheet.setHTMLURL(path);
    ResetSSVariables();
    ScanTemplate(sheet, {DateText(start), end, 10});
    return {.sheet = sheet,
            .startDate = DateText(start),
            .isAccepted = {true},
            .templatePath = path,
            .addSheet = {}};
}

void weeklySheet(const SheetFolder& on) {
    Spreadsheet sheet;
    const QDate end = on.monday().addDays(6);
    SheetContext context = contextOf(sheet, on.sheetTemplate("Timesheet.htm"), on.monday(), end);
    SetUpByProjectCalculations(context, end, QStringLiteral("15 Minutes"));
    ports.files->create(on.path(QStringLiteral("week.htm")), sheet.HTMLData().toUtf8());
}

/// The template, and the scanned sheet with its alias: twice a sheet is read.
void weeklyFloor(const SheetFolder& on) {
    FloorHtmlParses(ports.files->read(on.path(QStringLiteral("week.htm"))), 2);
    const QString week = QStringLiteral("Date BETWEEN #%1# AND #%2#")
                             .arg(DateText(on.monday()), DateText(on.monday().addDays(6)));
    QStringList queries = {WithStoredDates(QStringLiteral("SELECT * FROM DayInfo WHERE ") + week)};
    for (int i = 0; i < projects; ++i)
        queries.append(WithStoredDates(
            QStringLiteral("SELECT * FROM DayInfo WHERE ProjectName = 'Project %1' AND ")
                .arg(i, 2, 10, QLatin1Char('0')) +
            week));
    FloorQueries(on.history(), queries);
}

void yearOfInvoices(const SheetFolder& on) {
    static int run = 0;
    CollectionLoc = on.path(QStringLiteral("year%1").arg(++run)); // nothing is filed twice
    CollectionFileName = QStringLiteral("Year");
    ports.files->createFolder(CollectionLoc);
    Spreadsheet sheet;
    const QDate start = on.present().addYears(-1);
    SheetContext context = contextOf(sheet, on.sheetTemplate("Invoice.htm"), start, on.present());
    context.isAccepted = {false, true};
    KeyedItems progress({{.key = QStringLiteral("PROGRESS")}});
    context.addSheet = [&](QString name) {
        AddSheetToCollection(name, sheet.HTMLData(), progress);
    };
    SetUpByCustomerCalculations(context, on.present(), QStringLiteral("15 Minutes"));
}

void fileMany(const SheetFolder& on) {
    CollectionLoc = on.path(QStringLiteral("many"));
    CollectionFileName = QStringLiteral("Many");
    ports.files->createFolder(CollectionLoc + QStringLiteral("/Many_data"));
    const QByteArray sheet = ports.files->read(on.sheetTemplate("Invoice.htm"));
    QByteArray list = "<xml xmlns:o=\"urn:schemas-microsoft-com:office:office\">\r\n";
    for (int i = 0; i < collectionSheets; ++i) {
        const QByteArray name = "Sheet " + QByteArray::number(i) + ".htm";
        ports.files->create(
            CollectionLoc + QStringLiteral("/Many_data/") + QString::fromLatin1(name), sheet);
        list += " <o:File HRef=\"" + name + "\"/>\r\n";
    }
    ports.files->create(CollectionLoc + QStringLiteral("/Many.col"), list + "</xml>\r\n");
}

/// One cell that all others need, half of them through another.
Worksheet& thousandFormulas() {
    static Worksheet sheet;
    if (!sheet.contents().cells.isEmpty())
        return sheet;
    const Worksheet::Changes changes(sheet);
    sheet.enter({0, 0}, QStringLiteral("1"));
    for (int i = 0; i < formulas; ++i)
        sheet.enter({1 + i % 200, i / 200},
                    i % 2 == 0
                        ? QStringLiteral("=$A$1*%1").arg(i + 2)
                        : QStringLiteral("=SUM(%1:%1)+$A$1").arg(AddressText({i % 200, i / 200})));
    return sheet;
}

} // namespace

std::vector<Limit> AddSheetBenchmarks(QuietPorts& quiet, QDate present) {
    const auto folder = std::make_shared<SheetFolder>(quiet, present);
    const Step nothing = [](const SheetFolder&) {};
    AddStep(folder, weekly, historyRows, 9, weeklySheet, weeklySheet);
    AddStep(folder, std::string(weekly) + " floor", historyRows, 9, weeklySheet, weeklyFloor);
    AddStep(folder, recalculation, formulas, 9, nothing, [](const SheetFolder&) {
        static int value = 0;
        thousandFormulas().enter({0, 0}, QString::number(++value));
    });
    AddStep(folder, invoices, customers, 3, nothing, yearOfInvoices);
    AddStep(folder, collection, collectionSheets, 5, fileMany, [](const SheetFolder& on) {
        LoadNewCollections(on.path(QStringLiteral("many/Many.col")));
        LoadCollectionViewer();
    });
    return {{weekly, 3, 0, false},
            {recalculation, 0, 2, false},
            {invoices, 0, 2000, false},
            {collection, 0, 200, false}};
}

} // namespace kelvrane::bench
