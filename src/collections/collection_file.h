// A collection on disk: the list file <name>.col and, beside it, the folder <name>_data with one
// file for each sheet. The list in its exact form, each line ended by CR LF, the text UTF-8:
//
//     <xml xmlns:o="urn:schemas-microsoft-com:office:office">
//      <o:File HRef="Acme.htm"/>
//     </xml>
//
// It looks like XML and isn't parsed as such: names aren't escaped, and nothing else may stand in
// it. Locations are folders without a trailing separator, names have no extension.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace kelvrane {

class KeyedItems;

/// <location>/<name>.col; a name that holds ".htm" in any case is itself the file's name. An
/// existing file whose extension is in another case is taken.
QString CollectionListFile(const QString& location, const QString& name);
/// <location>/<name>_data.
QString CollectionFolder(const QString& location, const QString& name);
/// The file of a sheet. Raises BadFileName for a name that isn't bare.
QString SheetPath(const QString& location, const QString& name, const QString& sheet);
/// True for a file that can be read as one: not a folder, not a pipe.
bool IsPlainFile(const QString& path);

/// Raises PathAccess when the folder of the sheet, or the sheet itself, is a link, which may lead
/// anywhere.
void RefuseLinks(const QString& sheetPath);

/// Writes the bytes to a new file beside the target, flushed; the name of that file. Whatever lies
/// in its place goes first, so nothing is written through a link. No file is left after an error.
QString StageFile(const QString& path, const QByteArray& bytes);
/// Whether a file that is replaced may be a link: a path that the user chose may be one.
enum class Links { Followed, Refused };
/// Puts a staged file in the place of the target in one step; after an error it is gone.
void TakeStagedFile(const QString& staged, const QString& path, Links links = Links::Followed);
/// Stages, then replaces the file in one step: the old or the new one is there at any instant.
void ReplaceFile(const QString& path, const QByteArray& bytes, Links links = Links::Followed);
/// A sheet's text as its file has it.
QByteArray SheetBytes(const QString& html);

/// Text and percent of the item PROGRESS; nothing where there is no such item.
void ShowFilingProgress(KeyedItems& progress, const QString& text, int percent);

/// Head line, a line for each file, closing line; without line ends.
QStringList BuildCollectionXml(const QStringList& files);
/// The lines as they are in the file. Shows the percent after each one and lets events through.
QByteArray WriteCollectionLines(const QStringList& lines, KeyedItems& progress, int progressValue);
/// Replaces the list file. Raises what the file store raises, and the old list is then still there.
void WriteCollectionFile(const QStringList& files, const QString& name, const QString& location,
                         KeyedItems& progress);

struct CollectionEntries {
    QStringList names;          ///< in the order of the list
    QStringList refused;        ///< the first few names that aren't bare
    qsizetype refusedCount = 0; ///< all of them
};
/// Largest list file that is read, in bytes; some 300,000 sheets.
inline constexpr qsizetype LargestCollectionFile = 16 * 1024 * 1024;
inline constexpr qsizetype MostSheets = 300'000;
/// The text between the first two double quotes of each line up to the closing one; the first line
/// and lines without a quote are passed over. Raises EndOfFile when the closing line is missing,
/// DeviceError for a list beyond the limits.
CollectionEntries ParseCollection(const QByteArray& bytes);

/// The sheets of a collection. std::nullopt when the file is missing or can't be read; the user was
/// told. Names that lead out of the folder are left out, and the user is told.
std::optional<QStringList> ReadCollectionNames(const QString& location, const QString& name);

/// A second reader, by the fixed places of a name in its line; for lists that are only looked at.
/// Lines that are too short and names that aren't bare are left out. Raises what the store raises.
QStringList ReadCollectionHrefs(const QString& path);

} // namespace kelvrane
