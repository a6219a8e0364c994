// What a cell holds or a formula gives: nothing, a number, a text, a truth value or an error. Dates
// and times are numbers: days since 1899-12-30, the time as the fraction.
#pragma once

#include <QDateTime>
#include <QString>

#include <variant>

namespace kelvrane {

enum class CellError {
    Null,           ///< #NULL!
    DivisionByZero, ///< #DIV/0!
    Value,          ///< #VALUE!
    Reference,      ///< #REF!
    Name,           ///< #NAME?
    Number,         ///< #NUM!
    NotAvailable,   ///< #N/A
    Cycle,          ///< #CYCLE!, a formula that needs itself
};

/// "#DIV/0!".
QString CellErrorText(CellError error);
/// The error of such a text, in any case; false when it is none.
bool ParseCellError(QStringView text, CellError& error);

using CellValue = std::variant<std::monostate, double, QString, bool, CellError>;

inline bool IsEmpty(const CellValue& value) {
    return std::holds_alternative<std::monostate>(value);
}
inline bool IsNumber(const CellValue& value) {
    return std::holds_alternative<double>(value);
}
inline bool IsText(const CellValue& value) {
    return std::holds_alternative<QString>(value);
}
inline bool IsError(const CellValue& value) {
    return std::holds_alternative<CellError>(value);
}

/// Serial number of a date or moment: 2 is 1900-01-01.
double DateSerial(QDate date);
double MomentSerial(const QDateTime& moment);
/// The moment of a serial number, to the nearest second; invalid outside years 1 to 9999. In UTC,
/// since a local clock would skip an hour in spring.
QDateTime MomentOfSerial(double serial);

} // namespace kelvrane
