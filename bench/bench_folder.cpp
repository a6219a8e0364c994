#include "bench_folder.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/connection.h"
#include "quiet_ports.h"
#include "startup/install_step.h"

namespace kelvrane::bench {

namespace {

constexpr int projectsInAll = 5;

void fillHistory(int rows, QDate lastDay) {
    Connection history(InAppPath(QString::fromLatin1(files::DayHistory)));
    history.execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 "
                       "< %1) INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, BreakTime, "
                       "TotalTime) SELECT date('%2', '-' || ((%1 - 1 - i) / %3) || ' days'), "
                       "'Project ' || (i % %3 + 1), '100' || (i % %3 + 1), i % 20, 30 + i % 90 "
                       "FROM n")
            .arg(rows)
            .arg(lastDay.toString(Qt::ISODate))
            .arg(projectsInAll));
    history.execute(QStringLiteral("ANALYZE"));
}

void fillProjects() {
    Connection projects(InAppPath(QString::fromLatin1(files::ProjectDatabase)));
    for (const QString& name : ProjectNames())
        projects.execute(QStringLiteral("INSERT INTO ProjectInfo (Project_Name, Project_Number, "
                                        "Active) VALUES ('%1', '100%2', 1)")
                             .arg(name, name.last(1)));
}

} // namespace

QStringList ProjectNames() {
    QStringList names;
    for (int i = 1; i <= projectsInAll; ++i)
        names.append(QStringLiteral("Project %1").arg(i));
    return names;
}

void PrepareFolder(QuietPorts& quiet, const QString& folder, int rows, QDate lastDay) {
    SetAppPath(folder);
    quiet.openSettings(InAppPath(QString::fromLatin1(files::Settings)));
    RunInstallStep();
    fillProjects();
    fillHistory(rows, lastDay);
}

} // namespace kelvrane::bench
