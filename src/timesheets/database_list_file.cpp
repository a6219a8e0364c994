#include "timesheets/database_list_file.h"

#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/texts.h"

#include <QByteArrayList>

namespace kelvrane::database_list_file {

namespace {

constexpr qsizetype largestFile = 4 * 1024 * 1024;
constexpr char lineEnd[] = "\r\n";

QString filePath() {
    return InAppPath(QString::fromLatin1(files::DatabaseList));
}

/// Without their ends.
QByteArrayList readLines() {
    const QByteArray bytes = ports.files->read(filePath());
    if (bytes.size() > largestFile)
        Raise(errors::DeviceError, QStringLiteral("%1: the file is too large").arg(filePath()));
    QByteArrayList lines = bytes.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& line : lines)
        if (line.endsWith('\r'))
            line.chop(1);
    return lines;
}

void writeLines(const QByteArrayList& lines) {
    QByteArray bytes;
    for (const QByteArray& line : lines)
        bytes += line + lineEnd;
    ports.files->writeAtomically(filePath(), bytes);
}

QStringList fieldsOf(const QByteArray& line) {
    return FromFileBytes(line).split(QLatin1Char(';'));
}

ListedDatabase parsed(const QByteArray& line) {
    const QStringList fields = fieldsOf(line);
    const bool declined = fields.value(2) == database_state::Decline;
    return {fields.value(0), fields.value(1),
            declined ? database_state::Decline : database_state::Accept};
}

QByteArray lineOf(const ListedDatabase& database) {
    QString line = QStringList{database.Text, database.Location, database.State}.join(u';');
    line.replace(u'\n', u' ');
    return ToFileBytes(line);
}

} // namespace

QList<QStringList> Lines() {
    QList<QStringList> lines;
    for (const QByteArray& line : readLines())
        lines.append(fieldsOf(line));
    return lines;
}

QList<ListedDatabase> Read() {
    QList<ListedDatabase> databases;
    for (const QByteArray& line : readLines())
        if (!line.isEmpty())
            databases.append(parsed(line));
    return databases;
}

bool Lists(const QString& location) {
    for (const QByteArray& line : readLines())
        if (!line.trimmed().isEmpty() && parsed(line).Location == location)
            return true;
    return false;
}

void SetLine(int number, const ListedDatabase& database) {
    QByteArrayList lines = readLines();
    if (number >= 1 && number <= lines.size())
        lines[number - 1] = lineOf(database);
    else
        lines.append(lineOf(database));
    writeLines(lines);
}

void RemoveLine(int number) {
    QByteArrayList lines = readLines();
    if (number >= 1 && number <= lines.size())
        lines.removeAt(number - 1);
    writeLines(lines);
}

} // namespace kelvrane::database_list_file
