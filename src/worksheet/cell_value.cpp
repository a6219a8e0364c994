#include "worksheet/cell_value.h"

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
#include <QTimeZone>
#endif

#include <array>
#include <cmath>

namespace kelvrane {

namespace {

struct ErrorName {
    CellError error;
    const char16_t* text;
};
constexpr std::array<ErrorName, 8> errorNames = {{
    {CellError::Null, u"#NULL!"},
    {CellError::DivisionByZero, u"#DIV/0!"},
    {CellError::Value, u"#VALUE!"},
    {CellError::Reference, u"#REF!"},
    {CellError::Name, u"#NAME?"},
    {CellError::Number, u"#NUM!"},
    {CellError::NotAvailable, u"#N/A"},
    {CellError::Cycle, u"#CYCLE!"},
}};

constexpr QDate firstDay() {
    return QDate::fromJulianDay(2415019); // 1899-12-30
}
constexpr double millisecondsOfDay = 86'400'000.0;
constexpr qint64 secondsOfDay = 86'400;

// UTC stands for "no zone": local clocks skip an hour in spring.
QDateTime withoutZone(QDate date, QTime time) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return {date, time, QTimeZone(QTimeZone::UTC)};
#else
    return {date, time, Qt::UTC};
#endif
}

} // namespace

QString CellErrorText(CellError error) {
    for (const ErrorName& row : errorNames)
        if (row.error == error)
            return QString::fromUtf16(row.text);
    return QStringLiteral("#VALUE!");
}

bool ParseCellError(QStringView text, CellError& error) {
    for (const ErrorName& row : errorNames) {
        if (text.compare(QStringView(row.text), Qt::CaseInsensitive) == 0) {
            error = row.error;
            return true;
        }
    }
    return false;
}

double DateSerial(QDate date) {
    return double(firstDay().daysTo(date));
}

double MomentSerial(const QDateTime& moment) {
    return DateSerial(moment.date()) + moment.time().msecsSinceStartOfDay() / millisecondsOfDay;
}

QDateTime MomentOfSerial(double serial) {
    // Beyond these the years have left 1 to 9999 anyway; asked first, so that no cast overflows.
    if (!(std::abs(serial) < 4e6))
        return {};
    const qint64 seconds = std::llround(serial * double(secondsOfDay));
    const qint64 day = seconds / secondsOfDay - (seconds % secondsOfDay < 0 ? 1 : 0);
    const QDate date = firstDay().addDays(day);
    if (date.year() < 1 || date.year() > 9999)
        return {};
    return withoutZone(date,
                       QTime::fromMSecsSinceStartOfDay(int(seconds - day * secondsOfDay) * 1000));
}

} // namespace kelvrane
