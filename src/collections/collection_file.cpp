#include "collections/collection_file.h"

#include "collections/sheet_file_name.h"
#include "frame/error_report.h"
#include "platform/keyed_items.h"
#include "platform/ports.h"
#include "platform/texts.h"

#include <QFileInfo>

namespace kelvrane {

namespace {

const QString headLine =
    QStringLiteral("<xml xmlns:o=\"urn:schemas-microsoft-com:office:office\">");
const QString entryStart = QStringLiteral(" <o:File HRef=\"");
const QString entryEnd = QStringLiteral("\"/>");
const QString closingLine = QStringLiteral("</xml>");
const QString lineEnd = QStringLiteral("\r\n");
const QString stagedEnding = QStringLiteral(".kelvrane-new"); // no sheet of the user's ends so
constexpr int linesBetweenYields = 64;
constexpr qsizetype mostRefusedShown = 5;
constexpr qsizetype longestNameShown = 60;

bool isListName(const QString& name) {
    return name.contains(u".htm", Qt::CaseInsensitive);
}

/// Walks the lines of a text, whichever line ends it has, without a copy of them all.
class LineReader {
  public:
    explicit LineReader(QStringView text) : m_rest(text) {}

    std::optional<QStringView> next() {
        if (m_rest.isEmpty())
            return std::nullopt;
        const qsizetype end = m_rest.indexOf(u'\n');
        QStringView line = end < 0 ? m_rest : m_rest.left(end);
        m_rest = end < 0 ? QStringView() : m_rest.mid(end + 1);
        return line.endsWith(u'\r') ? line.chopped(1) : line;
    }

  private:
    QStringView m_rest;
};

QString readList(const QByteArray& bytes) {
    if (bytes.size() > LargestCollectionFile)
        Raise(errors::DeviceError, QStringLiteral("The collection's list is too large"));
    return FromFileBytes(bytes);
}

void tellRefused(const QString& path, const CollectionEntries& entries) {
    QString text = QStringLiteral("The collection '") + path +
                   QStringLiteral("' names files outside of its folder. They are left out:");
    for (const QString& name : entries.refused)
        text += QStringLiteral("\r'") + name + u'\'';
    if (const qsizetype more = entries.refusedCount - entries.refused.size(); more > 0)
        text += QStringLiteral("\rand %1 more").arg(more);
    MsgBox(text, {}, BoxIcon::Exclamation);
}

} // namespace

QString CollectionListFile(const QString& location, const QString& name) {
    if (isListName(name))
        return location + u'/' + name;
    const QString stem = location + u'/' + name;
    const QString usual = stem + QStringLiteral(".col");
    if (const QString upper = stem + QStringLiteral(".COL");
        !ports.files->exists(usual) && ports.files->exists(upper))
        return upper;
    return usual;
}

QString CollectionFolder(const QString& location, const QString& name) {
    return location + u'/' + name + QStringLiteral("_data");
}

QString SheetPath(const QString& location, const QString& name, const QString& sheet) {
    if (!IsBareFileName(sheet))
        Raise(errors::BadFileName,
              u'\'' + sheet + QStringLiteral("' is not the name of a sheet in this collection"));
    return CollectionFolder(location, name) + u'/' + sheet;
}

bool IsPlainFile(const QString& path) {
    return ports.files->exists(path) && QFileInfo(path).isFile();
}

void RefuseLinks(const QString& sheetPath) {
    const QFileInfo sheet(sheetPath);
    for (const QString& path : {sheet.path(), sheetPath})
        if (QFileInfo(path).isSymLink())
            Raise(errors::PathAccess,
                  path + QStringLiteral(": a link to another place is not part of a collection"));
}

QString StageFile(const QString& path, const QByteArray& bytes) {
    const QString fresh = path + stagedEnding;
    SkipErrors quiet(QStringLiteral("StageFile"));
    const auto clear = [&] {
        if (const QFileInfo there(fresh); there.exists() || there.isSymLink())
            ports.files->remove(fresh, true);
    };
    clear();
    try {
        ports.files->create(fresh, {});
        ports.files->appendAndFlush(fresh, bytes);
    } catch (const RuntimeError&) {
        quiet(clear);
        throw;
    }
    return fresh;
}

void TakeStagedFile(const QString& staged, const QString& path, Links links) {
    try {
        if (links == Links::Refused) // again: events ran since the file was staged
            RefuseLinks(path);
        ports.files->replace(staged, path);
    } catch (const RuntimeError&) {
        SkipErrors quiet(QStringLiteral("TakeStagedFile"));
        quiet([&] { ports.files->remove(staged, true); });
        throw;
    }
}

void ReplaceFile(const QString& path, const QByteArray& bytes, Links links) {
    TakeStagedFile(StageFile(path, bytes), path, links);
}

QByteArray SheetBytes(const QString& html) {
    return ToFileBytes(html) + '\n';
}

void ShowFilingProgress(KeyedItems& progress, const QString& text, int percent) {
    const QString key = QStringLiteral("PROGRESS");
    if (!progress.contains(key))
        return;
    progress.setCaption(key, text);
    progress.setValue(key, QString::number(percent));
}

QStringList BuildCollectionXml(const QStringList& files) {
    QStringList lines;
    lines.reserve(files.size() + 2);
    lines.append(headLine);
    for (const QString& file : files)
        lines.append(entryStart + file + entryEnd);
    lines.append(closingLine);
    return lines;
}

QByteArray WriteCollectionLines(const QStringList& lines, KeyedItems& progress, int progressValue) {
    QString text;
    for (qsizetype line = 0; line < lines.size(); ++line) {
        text += lines[line] + lineEnd;
        if (line % linesBetweenYields == 0) {
            ShowFilingProgress(progress, QStringLiteral("Creating File List"), progressValue);
            ports.events->yield();
        }
    }
    return ToFileBytes(text);
}

void WriteCollectionFile(const QStringList& files, const QString& name, const QString& location,
                         KeyedItems& progress) {
    ShowFilingProgress(progress, QStringLiteral("Creating Collection"), 0);
    const QString target = CollectionListFile(location, name);
    ShowFilingProgress(progress, QStringLiteral("Creating File List"), 0);
    ReplaceFile(target, WriteCollectionLines(BuildCollectionXml(files), progress, 95));
}

CollectionEntries ParseCollection(const QByteArray& bytes) {
    const QString text = readList(bytes);
    LineReader lines(text);
    lines.next();
    CollectionEntries entries;
    while (const auto line = lines.next()) {
        if (*line == closingLine)
            return entries;
        const qsizetype first = line->indexOf(u'"');
        const qsizetype second = first < 0 ? -1 : line->indexOf(u'"', first + 1);
        if (second < 0)
            continue;
        const QString name = line->mid(first + 1, second - first - 1).toString();
        if (IsBareFileName(name)) {
            entries.names.append(name);
        } else if (++entries.refusedCount <= mostRefusedShown) {
            entries.refused.append(name.left(longestNameShown));
        }
        if (entries.names.size() > MostSheets)
            Raise(errors::DeviceError, QStringLiteral("The collection's list is too long"));
    }
    Raise(errors::EndOfFile, QStringLiteral("The end of the collection's list is missing"));
}

std::optional<QStringList> ReadCollectionNames(const QString& location, const QString& name) {
    const QString path = CollectionListFile(location, name);
    if (!ports.files->exists(path)) {
        MsgBox(QStringLiteral("File '") + path +
               QStringLiteral("' was not found. Please select a valid colleciton"));
        return std::nullopt;
    }
    CollectionEntries entries;
    SkipErrors step = ReportingSteps(QStringLiteral("ReadCollectionNames"));
    const bool read = step([&] {
        if (!IsPlainFile(path))
            Raise(errors::PathAccess, path + QStringLiteral(": not a file"));
        entries = ParseCollection(ports.files->read(path));
    });
    if (!read)
        return std::nullopt;
    if (entries.refusedCount > 0)
        tellRefused(path, entries);
    return entries.names;
}

QStringList ReadCollectionHrefs(const QString& path) {
    if (!IsPlainFile(path))
        return {};
    const QString text = readList(ports.files->read(path));
    LineReader lines(text);
    lines.next();
    QStringList names;
    while (const auto line = lines.next()) {
        const qsizetype length = line->size() - entryStart.size() - entryEnd.size();
        if (*line == closingLine || length <= 0)
            continue;
        const QString name = line->mid(entryStart.size(), length).toString();
        if (IsBareFileName(name) && names.size() < MostSheets)
            names.append(name);
    }
    return names;
}

} // namespace kelvrane
