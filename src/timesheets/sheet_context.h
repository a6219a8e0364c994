// What a calculation works with: the sheet, the period, the databases, and where finished sheets
// go. Handed in, so that the calculations know neither screen nor collection.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace kelvrane {

class RuntimeError;
class Spreadsheet;

struct SheetContext {
    Spreadsheet& sheet;     ///< ss1
    QString startDate;      ///< text of STARTDATE, m/d/yyyy
    QList<bool> isAccepted; ///< state of each item of the database list, in its order
    QString templatePath;   ///< SS_Template, as stored
    /// Files the sheet under a name without extension, in the current collection.
    std::function<void(const QString& name)> addSheet;
    bool noData = false; ///< no row lies in the period: "No Data to Display" instead of the sheet

    int accepted() const { return int(isAccepted.count(true)); }
};

/// Errors of one calculation, by the rules that both kinds share: a database that can't be opened
/// ends it with the given message, and so does one that somebody else holds, with a report: hours
/// would be missing. Anything else is reported once and passed over.
class CalculationErrors {
  public:
    explicit CalculationErrors(QString routine) : m_routine(std::move(routine)) {}
    void report(const RuntimeError& error);
    /// What went wrong with a database's hours. False ends the calculation.
    bool goesOnWithout(const QString& database, const RuntimeError& error);
    /// Runs a statement; false when it failed and was reported. Raises DatabaseLocked.
    bool step(const std::function<void()>& statement);

  private:
    QString m_routine;
    QStringList m_told;
};

/// Tells that the database isn't there, in the given words.
void TellMissingDatabase(const QString& path);

/// What line number i of the list file says of item i, blank lines and all.
struct DatabaseLine {
    QString alias;
    QString path;
};
/// Of the lines as database_list_file::Lines() gives them. Raises Subscript for a line that isn't
/// there or has too few fields.
DatabaseLine DatabaseOfItem(const QList<QStringList>& lines, int item);

} // namespace kelvrane
