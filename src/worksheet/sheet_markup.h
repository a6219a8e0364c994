// Texts within the markup of a sheet. HTML has no way to write some letters that a cell may hold
// (NUL, half a surrogate pair); a cell with such a text carries it once more in an attribute.
#pragma once

#include <QString>

namespace kelvrane {

/// Escaped for use between tags and in attributes with double quotes; line breaks as codes. Letters
/// that HTML can't hold become U+FFFD. "class=" is written so that the comparison of saved sheets
/// doesn't take it for an attribute.
QString EscapedHtml(const QString& text);
/// True when reading EscapedHtml gives the text back.
bool IsHtmlText(const QString& text);

/// Any text as one that HTML can hold, "\" doubled, other letters as "\uXXXX"; and back.
QString ExactText(const QString& text);
QString TextOfExact(const QString& exact);

} // namespace kelvrane
