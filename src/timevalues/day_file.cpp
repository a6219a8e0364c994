#include "timevalues/day_file.h"

#include "frame/program_folder.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <QStringList>

namespace kelvrane {

namespace {

constexpr int headerLines = 3;
constexpr int dateLine = 1;
constexpr int fieldCount = 6;

#ifdef Q_OS_WIN
constexpr char lineEnd[] = "\r\n";
#else
constexpr char lineEnd[] = "\n";
#endif

QString dayFile() {
    return InAppPath(QString::fromLatin1(files::DayFile));
}

QString temporaryFile() {
    return dayFile() + QStringLiteral(".temp");
}

QString reformatFile() {
    return dayFile() + QStringLiteral(".tmp");
}

/// A kept copy that nothing reads: the last day that was thrown away, or a damaged file.
QString lastFile() {
    return dayFile() + QStringLiteral(".last");
}

QStringList readLines() {
    QStringList lines = FromFileBytes(ports.files->read(dayFile())).split(QLatin1Char('\n'));
    for (QString& line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

QString entryLine(const DayEntry& entry) {
    return QStringList{entry.ProjectName, entry.ProjectNumber, entry.StartTime,
                       entry.StopTime,    entry.BreakTime,     entry.TotalTime}
        .join(QLatin1Char(';'));
}

/// Line breaks would end an entry early; inside a field they become blanks.
QString oneLine(QString line) {
    return line.replace(QLatin1Char('\r'), QLatin1Char(' '))
        .replace(QLatin1Char('\n'), QLatin1Char(' '));
}

DayEntry entryOf(const QString& line) {
    const QStringList fields = line.split(QLatin1Char(';'));
    if (fields.size() < fieldCount)
        Raise(errors::Subscript);
    return {fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
}

/// Brings TotalTime up to date. True when a finished entry had to be corrected.
bool recompute(DayEntry& entry) {
    const bool running = entry.StopTime.isEmpty();
    const QString stop = running ? SystemTimeText(ports.clock->time()) : entry.StopTime;
    const QString total = MinutesToText(Int16(ToMinutes(stop) - ToMinutes(entry.StartTime)));
    ToMinutes(entry.BreakTime); // unused, but a break that can't be read ends the load
    if (total == entry.TotalTime)
        return false;
    entry.TotalTime = total;
    return !running;
}

/// Reads the lines after the header up to the first blank one; true when one was corrected.
bool readEntries(const QStringList& lines, QList<DayEntry>& entries) {
    bool reformat = false;
    for (qsizetype i = headerLines; i < lines.size() && !lines[i].isEmpty(); ++i) {
        DayEntry entry = entryOf(lines[i]);
        reformat = recompute(entry) || reformat;
        entries.append(entry); // only one that can be read, or every later roll-up would fail
    }
    return reformat;
}

void keepCopy() {
    SkipErrors step(QStringLiteral("VerifyDayFile"));
    step([] { ports.files->copy(dayFile(), lastFile()); });
}

void reportUnsaved(const RuntimeError& error) {
    SetStatusText(QStringLiteral("Saving Data ... Failed"));
    if (ports.tray)
        ports.tray->notify(QStringLiteral("The day could not be saved"),
                           error.description +
                               QStringLiteral("\nThe last saved state is untouched. Kelvrane tries "
                                              "again at the next save."));
}

} // namespace

void SaveDayFile() {
    SetStatusText(QStringLiteral("Saving Data ... "));
    try {
        WriteDayFileHeader(temporaryFile());
    } catch (const RuntimeError& error) {
        reportUnsaved(error);
        return;
    }
    WriteDayFileBody(temporaryFile(), dayFile());
}

void WriteDayFileHeader(const QString& path) {
    const QDateTime now = ports.clock->now();
    const QString header = QStringLiteral("Time: ") + ClockText(now.time()) +
                           QLatin1String(lineEnd) + QStringLiteral("Date: ") +
                           DateText(now.date()) + QLatin1String(lineEnd) +
                           QStringLiteral("Day Info:") + QLatin1String(lineEnd);
    ports.files->create(path, ToFileBytes(header));
}

bool WriteDayFileBody(const QString& temporary, const QString& final) {
    if (DayEntries.isEmpty())
        return false; // nothing to write is an error that leaves silently, the old file untouched
    QString body;
    for (const DayEntry& entry : DayEntries)
        body += oneLine(entryLine(entry)) + QLatin1String(lineEnd);
    body += QLatin1String(lineEnd);
    body += QLatin1String(lineEnd);
    try {
        ports.files->appendAndFlush(temporary, ToFileBytes(body));
        ports.files->replace(temporary, final);
    } catch (const RuntimeError& error) {
        reportUnsaved(error);
        return false;
    }
    SetStatusText(QStringLiteral("Saving Data ... Complete"));
    SetStatusText(StatusHeading);
    return true;
}

Int16 VerifyDayFile() {
    SetStatusText(QStringLiteral("Verifying File Data ... "));
    Int16 result = status::NoDayFile;
    if (ports.files->exists(dayFile())) {
        const QStringList lines = readLines();
        if (lines.size() > dateLine && lines[dateLine].contains(DateText(ports.clock->today()))) {
            result = status::Done;
        } else {
            keepCopy();
            ports.files->remove(dayFile(), true);
        }
    }
    SetStatusText(QStringLiteral("Verifying File Data ... Complete"));
    return result;
}

void LoadDayFile(const QString& /*mode*/, QList<DayEntry>& entries) {
    SetStatusText(QStringLiteral("Loading Data ... "));
    bool reformat = false;
    LastFileStatus = VerifyDayFile();
    entries.clear();
    if (LastFileStatus != status::Done) {
        CurrentEntryIndex = -1;
    } else {
        try {
            reformat = readEntries(readLines(), entries);
        } catch (const RuntimeError&) {
            keepCopy(); // the next save overwrites the damaged file
            throw;
        }
        CurrentEntryIndex = entries.size();
    }
    SetStatusText(QStringLiteral("Loading Data ... Complete"));
    if (reformat) {
        SetStatusText(QStringLiteral("Reformating Data File"));
        WriteDayFileHeader(reformatFile());
        WriteDayFileBody(reformatFile(), dayFile());
    }
    // The index lies one above the last entry here, so this shows nothing; it stays.
    if (CurrentEntryIndex >= 0 && CurrentEntryIndex < entries.size())
        SetStatusText(entries[CurrentEntryIndex].ProjectName);
}

} // namespace kelvrane
