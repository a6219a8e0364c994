#include "frame/day_tail.h"

#include "frame/globals.h"

namespace kelvrane {

namespace {

QString startOf(const char* key) {
    return QString::fromLatin1(key) + QLatin1Char('=');
}

/// A line break would end the line early; it becomes a blank.
QString oneLine(QString text) {
    return text.replace(QLatin1Char('\r'), QLatin1Char(' '))
        .replace(QLatin1Char('\n'), QLatin1Char(' '));
}

} // namespace

const QStringList& DayTail() {
    return globals.DayTail;
}

void SetDayTail(const QStringList& lines) {
    globals.DayTail = lines;
}

QStringList TailValues(const char* key) {
    return TailValues(globals.DayTail, key);
}

QStringList TailValues(const QStringList& lines, const char* key) {
    const QString start = startOf(key);
    QStringList values;
    for (const QString& line : lines)
        if (line.startsWith(start))
            values.append(line.mid(start.size()));
    return values;
}

QStringList TailLines(const char* key) {
    QStringList lines = globals.DayTail;
    lines.removeIf([start = startOf(key)](const QString& line) { return !line.startsWith(start); });
    return lines;
}

void SetTailValues(const char* key, const QStringList& values) {
    const QString start = startOf(key);
    QStringList& lines = globals.DayTail;
    lines.removeIf([&](const QString& line) { return line.startsWith(start); });
    for (const QString& value : values)
        lines.append(start + oneLine(value));
}

} // namespace kelvrane
