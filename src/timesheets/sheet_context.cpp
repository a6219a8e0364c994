#include "timesheets/sheet_context.h"

#include "frame/error_report.h"
#include "platform/ports.h"

namespace kelvrane {

void CalculationErrors::report(const RuntimeError& error) {
    const QString text = QString::number(error.number) + error.description;
    if (m_told.contains(text))
        return; // a column off the sheet would be told for each of its cells
    m_told.append(text);
    ReportError(error, m_routine);
}

bool CalculationErrors::step(const std::function<void()>& statement) {
    try {
        statement();
        return true;
    } catch (const RuntimeError& error) {
        if (error.number == errors::DatabaseLocked)
            throw;
        report(error);
        return false;
    }
}

bool CalculationErrors::goesOnWithout(const QString& database, const RuntimeError& error) {
    if (error.number == errors::DatabaseOpen)
        TellMissingDatabase(database);
    else
        report(error);
    return error.number != errors::DatabaseOpen && error.number != errors::DatabaseLocked;
}

void TellMissingDatabase(const QString& path) {
    MsgBox(path +
               QStringLiteral(" does not exist.  Please modify the Select Database Output window "
                              "and then recalculate the spread sheet again."),
           QStringLiteral("Invalid file path"), BoxIcon::Stop);
}

DatabaseLine DatabaseOfItem(const QList<QStringList>& lines, int item) {
    const QStringList& fields = At(lines, item);
    return {At(fields, 0), At(fields, 1)};
}

} // namespace kelvrane
