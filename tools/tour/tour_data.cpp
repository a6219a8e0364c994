#include "tour_data.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "frame/recent_projects.h"
#include "platform/recordset.h"

#include <iterator>

namespace kelvrane::tour {

namespace {

struct Customer {
    const char *company, *title, *firstName, *lastName, *address, *city, *state, *zipCode;
    double discount;
};
constexpr Customer customers[] = {
    {"Harbour Light Books", "Ms.", "Nora", "Winslet", "14 Quay Street", "Port Amble", "ME", "04101",
     5},
    {"Okafor & Daughters", "Mr.", "Daniel", "Okafor", "2200 Mill Road", "Larkspur", "CO", "80118",
     0},
    {"Tern Valley Clinic", "Dr.", "Irene", "Castellan", "9 Orchard Lane", "Tern Valley", "WA",
     "98201", 10},
};

struct Project {
    const char *name, *number;
    double rate;
    int customer; ///< 1-based; 0: none
    bool active;
    int share; ///< minutes of a usual day
};
// A calculation by customer wants the projects of a customer next to each other in their order.
constexpr Project projects[] = {
    {"Harbour Catalogue", "HL-101", 75, 1, true, 135},
    {"Harbour Stock Interface", "HL-102", 82.5, 1, true, 80},
    {"Okafor Website", "OD-210", 68, 2, true, 110},
    {"Okafor Newsletter", "OD-214", 55, 2, true, 35},
    {"Tern Calendar", "TV-330", 90, 3, true, 70},
    {"Tern Archive Migration", "TV-331", 90, 3, false, 45},
    {"Okafor Bookkeeping", "OD-220", 45, 2, true, 25},
    {"Okafor Research & Reading", "OD-230", 60, 2, true, 40},
};

constexpr int monthsOfHistory = 5;

void addCustomers(Connection& connection) {
    Recordset rows(connection, QStringLiteral("CustomerInfo"), Recordset::Optimistic);
    for (const Customer& customer : customers) {
        const QPair<const char*, QVariant> fields[] = {
            {"Company", customer.company},     {"Title", customer.title},
            {"FirstName", customer.firstName}, {"LastName", customer.lastName},
            {"Address1", customer.address},    {"City", customer.city},
            {"State", customer.state},         {"ZipCode", customer.zipCode},
            {"Discount", customer.discount},
        };
        rows.addNew();
        for (const auto& [name, value] : fields)
            rows.setValue(QString::fromLatin1(name), value);
        rows.update();
    }
}

void addProjects(Connection& connection, QDate today) {
    Recordset rows(connection, QStringLiteral("ProjectInfo"), Recordset::Optimistic);
    for (const Project& project : projects) {
        rows.addNew();
        rows.setValue(QStringLiteral("Project_Name"), QString::fromUtf8(project.name));
        rows.setValue(QStringLiteral("Project_Number"), QString::fromUtf8(project.number));
        rows.setValue(QStringLiteral("Entry_Date"), today.addMonths(-monthsOfHistory));
        rows.setValue(QStringLiteral("Active"), project.active);
        rows.setValue(QStringLiteral("Notes"), QStringLiteral("< Add Notes >"));
        rows.setValue(QStringLiteral("Rate"), project.rate);
        if (project.customer > 0) {
            const Customer& customer = customers[project.customer - 1];
            const QString name = QString::fromUtf8(customer.company) + QStringLiteral(" - ") +
                                 QString::fromUtf8(customer.lastName);
            rows.setValue(QStringLiteral("CustomerID"), name);
            rows.setValue(QStringLiteral("CustInfoDBID"), project.customer);
        }
        rows.update();
    }
}

/// A fixed sequence, so that every tour shows the same months.
int wobble(int seed) {
    return (seed * 7919 + 104729) % 41 - 20;
}

void addHistory(Connection& connection, QDate today) {
    Recordset rows(connection, QStringLiteral("SELECT * FROM DayInfo WHERE ID < 0"),
                   Recordset::Optimistic);
    int seed = 0;
    for (QDate day = today.addMonths(-monthsOfHistory); day < today; day = day.addDays(1)) {
        if (day.dayOfWeek() > Qt::Friday)
            continue;
        for (int i = 0; i < int(std::size(projects)); ++i) {
            if ((day.dayOfYear() + i) % 3 == 0)
                continue;
            const int minutes = projects[i].share + wobble(++seed);
            if (minutes < 10)
                continue;
            rows.addNew();
            rows.setValue(QStringLiteral("Date"), day);
            rows.setValue(QStringLiteral("ProjectName"), QString::fromUtf8(projects[i].name));
            rows.setValue(QStringLiteral("ProjectNumber"), QString::fromUtf8(projects[i].number));
            rows.setValue(QStringLiteral("BreakTime"), minutes > 60 ? 10 : 0);
            rows.setValue(QStringLiteral("TotalTime"), minutes);
            rows.update();
        }
    }
}

} // namespace

void FillDatabases(QDate today) {
    {
        Connection connection(InAppPath(QString::fromLatin1(files::ProjectDatabase)));
        connection.begin();
        addCustomers(connection);
        addProjects(connection, today);
        connection.commit();
    }
    Connection connection(InAppPath(QString::fromLatin1(files::DayHistory)));
    connection.begin();
    addHistory(connection, today);
    connection.commit();
}

void FillRecentProjects() {
    NoRecentProjects = true;
    ShowNumProjects = 5;
    for (const int project : {6, 4, 2, 1, 0})
        AddRecentProject(QString::fromUtf8(projects[project].name));
}

} // namespace kelvrane::tour
