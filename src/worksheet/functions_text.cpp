#include "worksheet/formula_functions.h"
#include "worksheet/number_format.h"

#include <algorithm>

namespace kelvrane::formulas {

namespace {

/// A count of characters that must not be negative.
qsizetype lengthAt(FunctionCall& call, int i, int ifAbsent) {
    const int length = call.whole(i, ifAbsent);
    if (length < 0)
        call.fail(CellError::Value);
    return std::max(length, 0);
}

} // namespace

Operand Concatenate(FunctionCall& call) {
    QString joined;
    for (int i = 0; i < call.count() && joined.size() <= LongestText; ++i)
        joined += call.text(i);
    return TextResult(joined);
}

/// The place from 1 on, upper and lower case told apart.
Operand Find(FunctionCall& call) {
    const QString wanted = call.text(0);
    const QString text = call.text(1);
    const int start = call.whole(2, 1);
    if (start < 1 || start > text.size() + 1)
        return call.fail(CellError::Value);
    const qsizetype found = text.indexOf(wanted, start - 1);
    return found < 0 ? call.fail(CellError::Value) : CellValue(double(found + 1));
}

/// With thousands commas unless the third argument says no.
Operand Fixed(FunctionCall& call) {
    constexpr int mostPlaces = 127;
    const double number = call.number(0);
    const int places = call.whole(1, 2);
    if (places > mostPlaces)
        return call.fail(CellError::Value);
    QString picture = call.truth(2, false) ? QStringLiteral("0") : QStringLiteral("#,##0");
    if (places > 0)
        picture += u'.' + QString(places, u'0');
    return TextResult(
        FormatCellValue(NumberResult(Rounded(number, places, Rounding::HalfUp)), picture));
}

Operand Left(FunctionCall& call) {
    const QString text = call.text(0);
    return TextResult(text.left(lengthAt(call, 1, 1)));
}

Operand Len(FunctionCall& call) {
    return CellValue(double(call.text(0).size()));
}

Operand Lower(FunctionCall& call) {
    return TextResult(call.text(0).toLower());
}

Operand Mid(FunctionCall& call) {
    const QString text = call.text(0);
    const int start = call.whole(1);
    if (start < 1)
        return call.fail(CellError::Value);
    return TextResult(text.mid(start - 1, lengthAt(call, 2, 0)));
}

/// A letter is large where none stands before it.
Operand Proper(FunctionCall& call) {
    QString text = call.text(0).toLower();
    bool afterLetter = false;
    for (QChar& c : text) {
        if (!afterLetter)
            c = c.toUpper();
        afterLetter = c.isLetter();
    }
    return TextResult(text);
}

Operand Rept(FunctionCall& call) {
    const QString text = call.text(0);
    const qsizetype times = lengthAt(call, 1, 0);
    if (text.size() * times > LongestText)
        return call.fail(CellError::Value);
    return TextResult(text.repeated(times));
}

Operand Right(FunctionCall& call) {
    const QString text = call.text(0);
    return TextResult(text.right(lengthAt(call, 1, 1)));
}

/// All occurrences, or the one that the fourth argument counts.
Operand Substitute(FunctionCall& call) {
    const QString text = call.text(0);
    const QString before = call.text(1);
    const QString after = call.text(2);
    const int only = call.whole(3, 0);
    if (call.count() > 3 && only < 1)
        return call.fail(CellError::Value);
    if (before.isEmpty())
        return TextResult(text);
    QString result;
    qsizetype copied = 0;
    int occurrence = 0;
    for (qsizetype at = text.indexOf(before); at >= 0 && result.size() <= LongestText;
         at = text.indexOf(before, at + before.size())) {
        if (++occurrence != only && only > 0)
            continue;
        result += QStringView(text).sliced(copied, at - copied);
        result += after;
        copied = at + before.size();
    }
    return TextResult(result + QStringView(text).sliced(copied));
}

Operand Text(FunctionCall& call) {
    CellValue value = call.value(0);
    const QString format = call.text(1);
    if (IsEmpty(value))
        value = 0.0;
    else if (double number = 0; IsText(value) && !TakeNumber(value, number))
        value = number;
    return format.isEmpty() ? CellValue(QString()) : TextResult(FormatCellValue(value, format));
}

/// Outer blanks go, and of inner ones stays one each.
Operand Trim(FunctionCall& call) {
    QString text;
    for (const QChar c : call.text(0))
        if (c != u' ' || (!text.isEmpty() && !text.endsWith(u' ')))
            text += c;
    if (text.endsWith(u' '))
        text.chop(1);
    return TextResult(text);
}

Operand Upper(FunctionCall& call) {
    return TextResult(call.text(0).toUpper());
}

Operand Value(FunctionCall& call) {
    if (std::holds_alternative<bool>(call.value(0)))
        return call.fail(CellError::Value);
    return NumberResult(call.number(0));
}

} // namespace kelvrane::formulas
