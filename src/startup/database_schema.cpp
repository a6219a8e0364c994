#include "startup/database_schema.h"

#include "platform/connection.h"
#include "platform/error.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "startup/starter_rows.h"

#include <QSqlQuery>
#include <QVariant>

#include <functional>
#include <iterator>

namespace kelvrane {

namespace {

constexpr const char* dayInfoTables[] = {
    "CREATE TABLE DayInfo (ID INTEGER PRIMARY KEY AUTOINCREMENT, Date DATE, ProjectName TEXT, "
    "ProjectNumber TEXT, BreakTime SMALLINT, TotalTime SMALLINT, AssignTo INTEGER)",
    "CREATE INDEX DayInfoByDate ON DayInfo (Date, ProjectName)",
    "CREATE INDEX DayInfoByProject ON DayInfo (ProjectName, Date)",
};

constexpr const char* projectTables[] = {
    "CREATE TABLE ProjectInfo (ID INTEGER PRIMARY KEY AUTOINCREMENT, Project_Name TEXT, "
    "Project_Number TEXT, Entry_Date DATE, Active BOOLEAN, Notes TEXT, Rate REAL, "
    "CustomerID TEXT, CustInfoDBID INTEGER)",
    "CREATE INDEX ProjectInfoByName ON ProjectInfo (Project_Name)",
    "CREATE TABLE CustomerInfo (ID INTEGER PRIMARY KEY AUTOINCREMENT, Company TEXT, Title TEXT, "
    "FirstName TEXT, LastName TEXT, Address1 TEXT, Address2 TEXT, City TEXT, State TEXT, "
    "ZipCode TEXT, Discount REAL)",
};

using Fill = std::function<void(Connection&)>;

/// Builds the database beside its place and moves it there when it is whole.
template <typename Statements>
void createDatabase(const QString& path, const Statements& statements, const Fill& fill = {}) {
    FileStore& files = *ports.files;
    if (files.exists(path))
        Raise(errors::FileExists, QStringLiteral("%1: the file is already there").arg(path));
    const QString fresh = files.createTemporary(path);
    try {
        {
            Connection connection(fresh);
            connection.inTransaction([&] {
                for (const char* statement : statements)
                    connection.execute(QLatin1String(statement));
                if (fill)
                    fill(connection);
            }); // flushes the file
        }
        files.move(fresh, path);
    } catch (const RuntimeError&) {
        SkipErrors quiet(QStringLiteral("CreateDatabase"));
        quiet([&] { files.removeIfThere(fresh + QStringLiteral("-journal")); });
        quiet([&] { files.removeIfThere(fresh); });
        throw;
    }
}

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

const starter::Project& projectOf(const starter::Day& day) {
    return starter::projects[day.project];
}

void fillDays(Connection& connection) {
    for (const starter::Day& day : starter::days)
        connection.run(
            QStringLiteral(
                "INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, BreakTime, TotalTime, "
                "AssignTo) VALUES (?, ?, ?, ?, ?, ?)"),
            {text(day.date), text(projectOf(day).name), text(projectOf(day).number),
             day.breakMinutes, day.totalMinutes, projectOf(day).customer + 1});
}

void fillProjects(Connection& connection) {
    int id = 0;
    for (const starter::Customer& customer : starter::customers)
        connection.run(
            QStringLiteral(
                "INSERT INTO CustomerInfo (ID, Company, Title, FirstName, LastName, Address1, "
                "Address2, City, State, ZipCode, Discount) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                "?)"),
            {++id, text(customer.company), text(customer.title), text(customer.firstName),
             text(customer.lastName), text(customer.address1), text(customer.address2),
             text(customer.city), text(customer.state), text(customer.zipCode), customer.discount});
    for (const starter::Project& project : starter::projects) {
        const starter::Customer& customer = starter::customers[project.customer];
        connection.run(
            QStringLiteral(
                "INSERT INTO ProjectInfo (Project_Name, Project_Number, Entry_Date, Active, Notes, "
                "Rate, CustomerID, CustInfoDBID) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
            {text(project.name), text(project.number), text(project.entryDate), 1,
             text(project.notes), project.rate,
             QString(text(customer.company) + QStringLiteral(" - ") + text(customer.lastName)),
             project.customer + 1});
    }
}

} // namespace

void CreateDayInfoDatabase(const QString& path) {
    createDatabase(path, dayInfoTables);
}

void CreateProjectDatabase(const QString& path) {
    createDatabase(path, projectTables);
}

void CreateStarterDayInfoDatabase(const QString& path) {
    createDatabase(path, dayInfoTables, fillDays);
}

void CreateStarterProjectDatabase(const QString& path) {
    createDatabase(path, projectTables, fillProjects);
}

} // namespace kelvrane
