#include "worksheet/cell_address.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int letters = 26;

void skipDollar(QStringView& text) {
    if (text.startsWith(u'$'))
        text = text.sliced(1);
}

/// 0-based column of leading letters, which are cut off; -1 when there is none of the sheet's.
int takeColumn(QStringView& text) {
    int column = 0;
    qsizetype length = 0;
    for (; length < text.size() && column <= SheetColumns; ++length) {
        const char16_t letter = text[length].unicode() & ~u' '; // upper case, for ASCII letters
        if (letter < u'A' || letter > u'Z')
            break;
        column = column * letters + (letter - u'A' + 1);
    }
    text = text.sliced(length);
    return column > SheetColumns ? -1 : column - 1;
}

/// 0-based row; the text must end with it. -1 for none of the sheet's.
int rowOf(QStringView text) {
    if (text.isEmpty() || text[0] == u'0')
        return -1;
    int row = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return -1;
        row = row * 10 + (digit.unicode() - u'0');
        if (row > SheetRows)
            return -1;
    }
    return row - 1;
}

} // namespace

CellRange RangeBetween(CellAddress one, CellAddress other) {
    return {.first = {std::min(one.row, other.row), std::min(one.column, other.column)},
            .last = {std::max(one.row, other.row), std::max(one.column, other.column)}};
}

QString ColumnName(int column) {
    QString name;
    for (int rest = column + 1; rest > 0; rest = (rest - 1) / letters)
        name.prepend(QChar(u'A' + (rest - 1) % letters));
    return name;
}

QString AddressText(CellAddress address) {
    return ColumnName(address.column) + QString::number(address.row + 1);
}

QString RangeText(const CellRange& range) {
    const QString first = AddressText(range.first);
    return range.first == range.last ? first : first + QLatin1Char(':') + AddressText(range.last);
}

std::optional<CellAddress> ParseAddress(QStringView text) {
    skipDollar(text);
    const int column = takeColumn(text);
    skipDollar(text);
    const int row = rowOf(text);
    if (column < 0 || row < 0)
        return std::nullopt;
    return CellAddress{.row = row, .column = column};
}

std::optional<CellRange> ParseRange(QStringView text) {
    const qsizetype colon = text.indexOf(u':');
    const auto first = ParseAddress(colon < 0 ? text : text.first(colon));
    const auto last = colon < 0 ? first : ParseAddress(text.sliced(colon + 1));
    if (!first || !last)
        return std::nullopt;
    return RangeBetween(*first, *last);
}

} // namespace kelvrane
