// What a cell of an HTML table holds, from the attributes by which spreadsheet programs carry it
// and from the text that a browser shows.
#pragma once

#include "worksheet/html_page.h"
#include "worksheet/sheet_contents.h"

#include <QString>

#include <optional>

namespace kelvrane {

/// The attributes of a cell that speak of its value.
struct CellSource {
    std::optional<CellValue> value; ///< in full
    bool isText = false;            ///< the text on view is the value
    bool isNumber = false;          ///< so is the number that it shows
    QString formula;                ///< "=...", "" for none
    QString numberFormat;           ///< "": not said
};

/// At is where the cell stands, for formulas with relative references.
CellSource CellSourceOf(const HtmlTag& tag, CellAddress at);

enum class PlainCells {
    Typed, ///< a cell without such attributes is read as if it were typed
    Text,  ///< programs that mark all numbers leave texts unmarked
};

/// Gives the cell its value, formula and number format; the text as it is on view.
void FillCell(Cell& cell, const CellSource& source, const QString& text, PlainCells plain);

} // namespace kelvrane
