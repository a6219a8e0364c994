#include "timevalues/day_history.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

QString historyPath() {
    return InAppPath(QString::fromLatin1(files::DayHistory));
}

QString dateLiteral(QDate date) {
    return QLatin1Char('#') + DateText(date) + QLatin1Char('#');
}

/// The rows of one project on one day.
QString dayProjectQuery(QDate day, const QString& name) {
    return QStringLiteral("SELECT * FROM DayInfo WHERE Date = ") + dateLiteral(day) +
           QStringLiteral(" and ( ProjectName = '") + name + QStringLiteral("')");
}

DayProjectSummary summaryOf(const DayEntry& entry) {
    return {entry.ProjectName, entry.ProjectNumber, ToMinutes(entry.BreakTime),
            ToMinutes(entry.TotalTime)};
}

QList<DayProjectSummary> rollUp() {
    QList<DayProjectSummary> summaries{summaryOf(At(DayEntries, 0))};
    for (qsizetype i = 1; i < DayEntries.size(); ++i) {
        const DayEntry& entry = DayEntries[i];
        const auto found =
            std::ranges::find(summaries, entry.ProjectName, &DayProjectSummary::ProjectName);
        if (found == summaries.end())
            summaries.append(summaryOf(entry));
        else
            found->TotalMinutes += ToMinutes(entry.TotalTime);
    }
    return summaries;
}

void writeRow(Connection& connection, QDate day, const DayProjectSummary& summary) {
    Recordset rows(connection, dayProjectQuery(day, summary.ProjectName), Recordset::Optimistic);
    if (rows.isEmpty()) {
        rows.addNew();
        rows.setValue(QStringLiteral("Date"), day);
        rows.setValue(QStringLiteral("ProjectName"), summary.ProjectName);
        rows.setValue(QStringLiteral("ProjectNumber"), summary.ProjectNumber);
    }
    rows.setValue(QStringLiteral("BreakTime"), int(summary.BreakMinutes));
    rows.setValue(QStringLiteral("TotalTime"), int(summary.TotalMinutes));
    rows.update();
}

void writeRows(QDate day, const QList<DayProjectSummary>& summaries) {
    try {
        Connection connection(historyPath());
        connection.begin();
        for (const DayProjectSummary& summary : summaries)
            writeRow(connection, day, summary);
        connection.commit();
    } catch (const RuntimeError& error) {
        ReportError(error, QStringLiteral("AddDataToDayInfoDataBase"));
    }
}

} // namespace

void AddDataToDayInfoDataBase() {
    WriteDayInfoRows(rollUp());
}

void RollUpDay(QDate day) {
    writeRows(day, rollUp());
}

void WriteDayInfoRows(const QList<DayProjectSummary>& summaries) {
    writeRows(ports.clock->today(), summaries);
}

void DeleteSpecificProjectFromDB(const QString& Name) {
    try {
        Connection connection(historyPath());
        Recordset rows(connection, dayProjectQuery(ports.clock->today(), Name),
                       Recordset::Optimistic);
        if (!rows.isEmpty())
            rows.deleteRow();
    } catch (const RuntimeError& error) {
        ReportError(error, QStringLiteral("DeleteSpecificProjectFromDB"));
    }
}

bool DayHistoryExists() {
    return ports.files->exists(historyPath());
}

void TellMissingDayHistory() {
    MsgBox(QStringLiteral("The Day Information database (DayInfo.mdb) is missing.\r"
                          "This file must be located in the '") +
               AppPath() + QStringLiteral("' folder.\rPlease reinstall Kelvrane."),
           QStringLiteral("Database Error"), BoxIcon::Stop);
}

int FindRecordByDate(Recordset& rows, QDate Date) {
    rows.moveFirst();
    rows.find(QStringLiteral("Date = '") + DateText(Date) + QLatin1Char('\''));
    return rows.position();
}

QString PeriodQuery(QDate From, QDate To) {
    return QStringLiteral("SELECT * FROM DayInfo WHERE Date BETWEEN ") + dateLiteral(From) +
           QStringLiteral(" and ") + dateLiteral(To) + QStringLiteral(" ORDER BY ProjectName");
}

QString ProjectPeriodQuery(const QString& Name, QDate From, QDate To) {
    return QStringLiteral("SELECT * FROM DayInfo WHERE ( ProjectName = '") + Name +
           QStringLiteral("' ) AND ( Date BETWEEN ") + dateLiteral(From) + QStringLiteral(" and ") +
           dateLiteral(To) + QLatin1Char(')');
}

} // namespace kelvrane
