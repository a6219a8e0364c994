#include "timesheets/project_calculation.h"

#include "frame/error_report.h"
#include "frame/program_folder.h"
#include "history/period_query.h"
#include "platform/ports.h"
#include "platform/recordset.h"
#include "platform/texts.h"
#include "timesheets/database_list_file.h"
#include "timesheets/sheet_context.h"
#include "timesheets/sheet_files.h"
#include "timesheets/template_variables.h"
#include "timevalues/time_values.h"
#include "worksheet/spreadsheet.h"

namespace kelvrane {

namespace {

constexpr int totalColumns = 7; // a week of day columns, whatever the period

void writeHours(SheetContext& context, Recordset& rows, int project, const QString& increment,
                CalculationErrors& errors) {
    const SSVariable& hours = SSVariables[anchor::Hours];
    const QDate start = DateFromText(context.startDate);
    for (; !rows.atEnd(); rows.moveNext())
        errors.step([&] {
            const double minutes = ToDouble(rows.text(QStringLiteral("TotalTime"))) -
                                   ToDouble(rows.text(QStringLiteral("BreakTime")));
            const qint64 day = start.daysTo(rows.value(QStringLiteral("Date")).toDate());
            const SheetRange cell =
                context.sheet.Range(CellName(int(hours.Col + day), hours.Row + project));
            cell.setValue(RoundToIncrement(float(minutes), increment));
            cell.setHorizontalAlignment(SheetRange::Center);
        });
}

void writeProject(SheetContext& context, Connection& history, int project, QDate endDate,
                  const QString& increment, CalculationErrors& errors) {
    // The totals are computed once for the whole row.
    const Worksheet::Changes changes(context.sheet.worksheet());
    const SSVariable& name = SSVariables[anchor::Name];
    const SSVariable& number = SSVariables[anchor::Number];
    errors.step([&] {
        context.sheet.Range(CellName(name.Col, name.Row + project))
            .setValue(QLatin1Char('\'') + ProjectNames[project]);
    });
    if (HasNumberColumn)
        errors.step([&] {
            context.sheet.Range(CellName(number.Col, number.Row + project))
                .setValue(QLatin1Char('\'') + ProjectNumbers[project]);
        });
    errors.step([&] {
        Recordset rows(history, ProjectPeriodRows(ProjectNames[project],
                                                  DateFromText(context.startDate), endDate));
        writeHours(context, rows, project, increment, errors);
    });
}

/// The distinct projects of the period, in the order of their rows.
void collectProjects(Recordset& rows) {
    for (; !rows.atEnd(); rows.moveNext()) {
        const QString name = rows.text(QStringLiteral("ProjectName"));
        if (!ProjectNames.isEmpty() && ProjectNames.last() == name)
            continue;
        ProjectNames.append(name);
        ProjectNumbers.append(rows.text(QStringLiteral("ProjectNumber")));
    }
}

/// False when the table has no rows at all: later databases aren't reached then, and that is
/// wanted.
bool fillFrom(SheetContext& context, const DatabaseLine& line, Connection& history, QDate endDate,
              const QString& increment, CalculationErrors& errors) {
    bool hasRows = true;
    errors.step([&] { hasRows = !Recordset(history, QStringLiteral("DayInfo")).isEmpty(); });
    if (!hasRows)
        return false;
    errors.step([&] {
        Recordset rows(history, PeriodRows(DateFromText(context.startDate), endDate));
        collectProjects(rows);
    });
    for (int project = 0; project < ProjectNames.size(); ++project) {
        writeProject(context, history, project, endDate, increment, errors);
        errors.step([&] { WriteRowTotals(context); });
        errors.step([&] { WriteColumnTotals(context); });
        if (context.accepted() > 1)
            errors.step([&] { context.addSheet(line.alias); });
    }
    return true;
}

/// False ends the calculation: the database can't be opened.
bool fillEach(SheetContext& context, const QList<QStringList>& lines, QDate endDate,
              const QString& increment, CalculationErrors& errors) {
    // From memory: a copy that can't be read would lay one database's hours over another's.
    const QString scanned = context.sheet.HTMLData();
    for (int item = 0; item < context.isAccepted.size(); ++item) {
        if (!context.isAccepted[item])
            continue;
        ProjectNames.clear();
        ProjectNumbers.clear();
        DatabaseLine line;
        if (!errors.step([&] { line = DatabaseOfItem(lines, item); }))
            continue;
        QString own = scanned;
        own.replace(QLatin1String("#ALIAS#"), line.alias);
        if (!errors.step([&] { context.sheet.setHTMLData(own); }))
            return false;
        try {
            Connection history(line.path);
            if (!fillFrom(context, line, history, endDate, increment, errors))
                return true;
        } catch (const RuntimeError& error) {
            if (!errors.goesOnWithout(line.path, error))
                return false;
        }
    }
    return true;
}

} // namespace

void SetUpByProjectCalculations(SheetContext& context, QDate endDate, const QString& increment) {
    CalculationErrors errors(QStringLiteral("SetUpByProjectCalculations"));
    const QString scanned = InAppPath(QString::fromLatin1(sheet_files::ScannedTemplate));
    errors.step([&] { ports.files->create(scanned, SheetFileBytes(context.sheet)); });
    QList<QStringList> lines;
    errors.step([&] { lines = database_list_file::Lines(); });
    if (fillEach(context, lines, endDate, increment, errors))
        errors.step([&] { ports.files->remove(scanned, true); });
}

void WriteRowTotals(SheetContext& context) {
    const SSVariable& hours = SSVariables[anchor::Hours];
    const SSVariable& under = SSVariables[anchor::VTotal];
    const SSVariable& behind = SSVariables[anchor::HTotal];
    if (under.Row < 1)
        return;
    for (int row = hours.Row; row < under.Row; ++row) {
        const SheetRange total = context.sheet.Range(CellName(under.Col + totalColumns, row));
        total.setFormula(QStringLiteral("=SUM(") + CellName(hours.Col, row) + QLatin1Char(':') +
                         CellName(behind.Col - 1, row) + QLatin1Char(')'));
        total.setHorizontalAlignment(SheetRange::Center);
        if (total.Value() == u"0")
            total.setValue(QString());
    }
}

void WriteColumnTotals(SheetContext& context) {
    const SSVariable& hours = SSVariables[anchor::Hours];
    const SSVariable& under = SSVariables[anchor::VTotal];
    const SSVariable& behind = SSVariables[anchor::HTotal];
    if (behind.Row < 1)
        return;
    for (int column = under.Col; column < behind.Col; ++column) {
        const SheetRange total = context.sheet.Range(CellName(column, under.Row));
        total.setFormula(QStringLiteral("=SUM(") + CellName(column, hours.Row) + QLatin1Char(':') +
                         CellName(column, under.Row - 1) + QLatin1Char(')'));
        total.setHorizontalAlignment(SheetRange::Center);
    }
}

} // namespace kelvrane
