// The text of style rules taken apart, whatever it holds: words, quoted texts, escapes.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace kelvrane {

/// -1 for a letter that is no hexadecimal digit.
int HexDigit(char letter);
/// The same word, in any case.
bool IsWord(QByteArrayView text, QByteArrayView word);
/// The text up to a mark that stands outside quotes, brackets and escapes; the mark is cut off
/// together with it.
QByteArrayView TakeTo(char mark, QByteArrayView& text);
/// The next of the words that blanks separate; empty behind the last.
QByteArrayView TakeWord(QByteArrayView& text);
/// Cuts off "@import ...;" or "@media ... {...}" with all that is in it.
void SkipAtRule(QByteArrayView& css);

enum class EscapeCodes {
    UpToSix, ///< hexadecimal digits of an escape; a blank behind them belongs to it
    Four,    ///< exactly, as in number formats
};
/// The text of a value with or without quotes.
QString StringOf(QByteArrayView value, EscapeCodes codes);

} // namespace kelvrane
