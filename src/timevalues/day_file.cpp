#include "timevalues/day_file.h"

#include "frame/day_tail.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "platform/escaped_fields.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

constexpr int headerLines = 3;
constexpr int dateLine = 1;
constexpr int fieldCount = 6;
constexpr char dateWord[] = "Date: ";

#ifdef Q_OS_WIN
constexpr char lineEnd[] = "\r\n";
#else
constexpr char lineEnd[] = "\n";
#endif

QString temporaryFile() {
    return DayFilePath() + QStringLiteral(".temp");
}

QString reformatFile() {
    return DayFilePath() + QStringLiteral(".tmp");
}

QStringList linesOf(const QString& text) {
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

/// The given date when its text stands anywhere in the line, else what follows the line's word.
QDate dateOf(const QString& line, QDate given) {
    if (line.contains(DateText(given)))
        return given;
    return line.startsWith(QLatin1String(dateWord))
               ? DateFromText(line.mid(qsizetype(std::size(dateWord)) - 1))
               : QDate();
}

QString entryLine(const DayEntry& entry) {
    return JoinFields({entry.ProjectName, entry.ProjectNumber, entry.StartTime, entry.StopTime,
                       entry.BreakTime, entry.TotalTime});
}

DayEntry entryOf(const QString& line) {
    const QStringList fields = SplitFields(line);
    if (fields.size() < fieldCount)
        Raise(errors::Subscript);
    return {fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
}

/// Below zero, or longer than a day, it was never worked.
bool isTotal(const QString& text) {
    try {
        const Int16 minutes = ToMinutes(text);
        return minutes >= 0 && minutes <= MinutesOfDay;
    } catch (const RuntimeError&) {
        return false;
    }
}

/// Raises what an unreadable time raises; later roll-ups would fail at it. A total can be computed
/// anew.
DayEntry withReadableTimes(DayEntry entry) {
    ToMinutes(entry.StartTime);
    if (!entry.StopTime.isEmpty())
        ToMinutes(entry.StopTime);
    ToMinutes(entry.BreakTime);
    if (!isTotal(entry.TotalTime))
        entry.TotalTime = entry.StopTime.isEmpty()
                              ? MinutesToText(0)
                              : MinutesToText(SpanBetween(entry.StartTime, entry.StopTime));
    return entry;
}

StoredDay parse(const QStringList& lines) {
    StoredDay day;
    day.date = dateOf(lines.value(dateLine), ports.clock->today());
    qsizetype at = headerLines;
    try {
        for (; at < lines.size() && !lines[at].isEmpty(); ++at)
            day.entries.append(withReadableTimes(entryOf(lines[at])));
    } catch (const RuntimeError& error) {
        day.damage = error;
        return day;
    }
    while (at < lines.size() && lines[at].isEmpty())
        ++at;
    for (; at < lines.size(); ++at)
        if (!lines[at].isEmpty())
            day.tail.append(lines[at]);
    return day;
}

QString headerText(QDate date) {
    return QStringLiteral("Time: ") + ClockText(ports.clock->time()) + QLatin1String(lineEnd) +
           QLatin1String(dateWord) + DateText(date) + QLatin1String(lineEnd) +
           QStringLiteral("Day Info:") + QLatin1String(lineEnd);
}

QString bodyText(const QList<DayEntry>& entries, const QStringList& tailLines) {
    QString body;
    for (const DayEntry& entry : entries)
        body += entryLine(entry) + QLatin1String(lineEnd);
    body += QLatin1String(lineEnd);
    body += QLatin1String(lineEnd);
    for (const QString& line : tailLines)
        body += line + QLatin1String(lineEnd);
    return body;
}

/// Brings TotalTime up to date. True when a finished entry had to be corrected.
bool recompute(DayEntry& entry) {
    const bool running = entry.StopTime.isEmpty();
    const QString stop = running ? SystemTimeText(ports.clock->time()) : entry.StopTime;
    const Int16 span = SpanBetween(entry.StartTime, stop);
    const QString total =
        MinutesToText(running ? std::max<int>(span, ToMinutes(entry.TotalTime)) : int(span));
    if (total == entry.TotalTime)
        return false;
    entry.TotalTime = total;
    return !running;
}

/// The running entry's break as of now, so that the file holds it beside the total as of now.
void countOpenBreak(QList<DayEntry>& entries) {
    if (&entries != &DayEntries || entries.isEmpty() || !entries.last().StopTime.isEmpty())
        return;
    const Int16 index = std::exchange(CurrentEntryIndex, Int16(entries.size() - 1));
    ReadBreakFromTail();
    UpdateCurrentEntry();
    CurrentEntryIndex = index;
}

void keepCopy() {
    SkipErrors step(QStringLiteral("VerifyDayFile"));
    step([] { ports.files->copy(DayFilePath(), LastDayFilePath()); });
}

void reportUnsaved(const RuntimeError& error) {
    SetStatusText(QStringLiteral("Saving Data ... Failed"));
    if (std::exchange(DayUnsaved, true) || !ports.tray)
        return;
    ports.tray->notify(QStringLiteral("The day could not be saved"),
                       error.description +
                           QStringLiteral("\nThe last saved state is untouched. Kelvrane tries "
                                          "again each minute."));
}

} // namespace

QString DayFilePath() {
    return InAppPath(QString::fromLatin1(files::DayFile));
}

QString LastDayFilePath() {
    return DayFilePath() + QStringLiteral(".last");
}

QString ClosedDayFilePath(QDate date) {
    return DayFilePath() + QLatin1Char('.') + StoredDateText(date);
}

QList<QDate> ClosedDayFiles() {
    const QString start = QString::fromLatin1(files::DayFile) + QLatin1Char('.');
    QList<QDate> dates;
    for (const QString& name : ports.files->filesIn(AppPath()))
        if (name.startsWith(start))
            if (const QDate date = QDate::fromString(name.mid(start.size()), Qt::ISODate);
                date.isValid())
                dates.append(date);
    std::ranges::sort(dates);
    return dates;
}

std::optional<StoredDay> ReadStoredDay(const QString& path) {
    if (!ports.files->exists(path))
        return std::nullopt;
    return parse(linesOf(FromFileBytes(ports.files->read(path))));
}

void WriteStoredDay(const QString& path, const StoredDay& day) {
    ports.files->writeAtomically(
        path, ToFileBytes(headerText(day.date) + bodyText(day.entries, day.tail)));
}

bool RecomputeTotals(QList<DayEntry>& entries) {
    bool corrected = false;
    for (DayEntry& entry : entries)
        corrected = recompute(entry) || corrected;
    return corrected;
}

void SaveDayFile() {
    if (!KeepsDay)
        return;
    SkipErrors step(QStringLiteral("SaveDayFile"));
    step([] { UpdateCurrentEntry(); });
    SetStatusText(QStringLiteral("Saving Data ... "));
    try {
        WriteDayFileHeader(temporaryFile());
    } catch (const RuntimeError& error) {
        reportUnsaved(error);
        return;
    }
    WriteDayFileBody(temporaryFile(), DayFilePath());
}

void WriteDayFileHeader(const QString& path) {
    ports.files->create(
        path, ToFileBytes(headerText(DayDate.isValid() ? DayDate : ports.clock->today())));
}

bool WriteDayFileBody(const QString& temporary, const QString& final) {
    try {
        ports.files->appendAndFlush(temporary, ToFileBytes(bodyText(DayEntries, DayTail())));
        ports.files->replace(temporary, final);
    } catch (const RuntimeError& error) {
        reportUnsaved(error);
        return false;
    }
    DayUnsaved = false;
    SetStatusText(QStringLiteral("Saving Data ... Complete"));
    SetStatusText(StatusHeading);
    return true;
}

Int16 VerifyDayFile() {
    SetStatusText(QStringLiteral("Verifying File Data ... "));
    Int16 result = status::NoDayFile;
    if (ports.files->exists(DayFilePath())) {
        const QString line =
            linesOf(FromFileBytes(ports.files->read(DayFilePath()))).value(dateLine);
        if (line.contains(DateText(ports.clock->today())))
            result = status::Done;
    }
    SetStatusText(QStringLiteral("Verifying File Data ... Complete"));
    return result;
}

void LoadDayFile(const QString& /*mode*/, QList<DayEntry>& entries) {
    SetStatusText(QStringLiteral("Loading Data ... "));
    SetStatusText(QStringLiteral("Verifying File Data ... "));
    std::optional<StoredDay> stored = ReadStoredDay(DayFilePath());
    SetStatusText(QStringLiteral("Verifying File Data ... Complete"));
    const StoredDay day = stored.value_or(StoredDay());
    const QDate today = ports.clock->today();
    const bool isToday = day.date == today;
    LastFileStatus = isToday ? status::Done : status::NoDayFile;
    if (stored && (day.damage || !day.date.isValid()))
        keepCopy(); // the next save overwrites the damaged file
    entries = day.date.isValid() ? day.entries : QList<DayEntry>();
    DayDate = day.date;
    SetDayTail(day.tail);
    CurrentEntryIndex = day.date.isValid() ? qint64(entries.size()) : -1;
    bool reformat = false;
    for (DayEntry& entry : entries) // a day that is over keeps what was known of it
        if (isToday || (day.date > today && !entry.StopTime.isEmpty()))
            reformat = recompute(entry) || reformat;
    SetStatusText(QStringLiteral("Loading Data ... Complete"));
    if (reformat) {
        SetStatusText(QStringLiteral("Reformating Data File"));
        countOpenBreak(entries);
        WriteDayFileHeader(reformatFile());
        WriteDayFileBody(reformatFile(), DayFilePath());
    }
    if (day.damage)
        throw RuntimeError(*day.damage);
    // The index lies one above the last entry here, so this shows nothing; it stays.
    if (CurrentEntryIndex >= 0 && CurrentEntryIndex < entries.size())
        SetStatusText(entries[CurrentEntryIndex].ProjectName);
}

void RemoveDayFile() {
    SkipErrors step(QStringLiteral("VerifyDayFile"));
    step([] { ports.files->removeIfThere(DayFilePath()); });
}

void PutDayFileBy() {
    if (!ports.files->exists(DayFilePath()))
        return;
    SkipErrors step(QStringLiteral("VerifyDayFile"));
    step([] {
        ports.files->copy(DayFilePath(), LastDayFilePath());
        ports.files->remove(DayFilePath(), true);
    });
}

} // namespace kelvrane
