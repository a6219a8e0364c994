// Where a cell is, and the names of such places: "C5", "$A$1", "B2:D9". Rows and columns count from
// 0 everywhere but in these names.
#pragma once

#include <QHash>
#include <QString>

#include <compare>
#include <optional>

namespace kelvrane {

/// The sheet ends here, for typed addresses as for files: columns A to ZZ, 10,000 rows.
inline constexpr int SheetColumns = 702;
inline constexpr int SheetRows = 10'000;

struct CellAddress {
    int row = 0;
    int column = 0;
    auto operator<=>(const CellAddress&) const = default; ///< row by row
};
inline size_t qHash(CellAddress address, size_t seed = 0) {
    return qHashMulti(seed, address.row, address.column);
}

/// Both ends are included, first above and left of last. A range of one cell has first == last.
struct CellRange {
    CellAddress first;
    CellAddress last;

    int rows() const { return last.row - first.row + 1; }
    int columns() const { return last.column - first.column + 1; }
    bool contains(CellAddress cell) const {
        return cell.row >= first.row && cell.row <= last.row && cell.column >= first.column &&
               cell.column <= last.column;
    }
    bool intersects(const CellRange& other) const {
        return first.row <= other.last.row && other.first.row <= last.row &&
               first.column <= other.last.column && other.first.column <= last.column;
    }
    bool operator==(const CellRange&) const = default;
};

/// The range that two corners span, in whatever order.
CellRange RangeBetween(CellAddress one, CellAddress other);

/// "A", "Z", "AA"; column counts from 0.
QString ColumnName(int column);
/// "C5".
QString AddressText(CellAddress address);
/// "B2:D9"; a single cell as "B2".
QString RangeText(const CellRange& range);
/// Reads "c5" and "$C$5"; nothing for any other text or a place outside the sheet.
std::optional<CellAddress> ParseAddress(QStringView text);
/// Reads "B2:D9", also "D9:B2", and "B2".
std::optional<CellRange> ParseRange(QStringView text);

} // namespace kelvrane
