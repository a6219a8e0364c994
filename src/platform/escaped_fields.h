// Fields of a text line, with ";" between them. Within a field a ";" or "\" has a backslash before
// it, so that a line reads back as it was written; a line break in a field becomes a blank.
//
//     JoinFields({"Alpha; part 2", "7"})    // Alpha\; part 2;7
//     SplitFields("Alpha\\; part 2;7")      // the same two fields
#pragma once

#include <QString>
#include <QStringList>

namespace kelvrane {

/// The line of these fields, without a line end. CR LF, CR and LF each become one blank.
QString JoinFields(const QStringList& fields);

/// The fields of a line, at least one. A backslash before anything but ";" and "\" is itself, as is
/// one at the end, so lines written without escapes keep their paths.
QStringList SplitFields(const QString& line);

} // namespace kelvrane
