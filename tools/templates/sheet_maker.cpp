#include "sheet_maker.h"

#include "worksheet/sheet_html.h"
#include "worksheet/worksheet.h"

namespace kelvrane::templates {

CellStyle Text(double pointSize, HorizontalAlign align) {
    CellStyle style;
    style.pointSize = pointSize;
    style.horizontal = align;
    style.vertical = VerticalAlign::Middle;
    return style;
}

CellStyle Strong(double pointSize, HorizontalAlign align) {
    CellStyle style = Text(pointSize, align);
    style.bold = true;
    return style;
}

CellStyle Title() {
    CellStyle style = Strong(24);
    style.ink = Accent;
    return style;
}

CellStyle Label(HorizontalAlign align) {
    CellStyle style = Text(8, align);
    style.ink = QuietInk;
    style.vertical = VerticalAlign::Bottom;
    return style;
}

CellStyle Formatted(CellStyle style, const char* numberFormat) {
    style.numberFormat = QString::fromLatin1(numberFormat);
    return style;
}

SheetMaker::SheetMaker(const QString& title) {
    m_contents.title = title;
}

void SheetMaker::setWidths(std::initializer_list<int> pixels) {
    int column = 0;
    for (const int width : pixels)
        m_contents.columnWidths.insert(column++, width);
}

void SheetMaker::setHeight(int row, int pixels) {
    m_contents.rowHeights.insert(row - 1, pixels);
}

void SheetMaker::put(const QString& cell, const QString& text, const CellStyle& style) {
    Cell contents;
    contents.style = style;
    if (text.startsWith(u'='))
        contents.formula = text;
    else
        contents.value = text;
    m_contents.cells.insert(ParseAddress(cell).value(), contents);
}

void SheetMaker::style(const QString& range, const std::function<void(CellStyle&)>& change) {
    const CellRange cells = ParseRange(range).value();
    for (int row = cells.first.row; row <= cells.last.row; ++row)
        for (int column = cells.first.column; column <= cells.last.column; ++column)
            change(m_contents.cells[{row, column}].style);
}

void SheetMaker::ruleBelow(const QString& range, QRgb color, int width) {
    style(range, [&](CellStyle& style) { style.bottom = {CellBorder::Line::Solid, width, color}; });
}

void SheetMaker::ruleAbove(const QString& range, QRgb color, int width) {
    style(range, [&](CellStyle& style) { style.top = {CellBorder::Line::Solid, width, color}; });
}

void SheetMaker::merge(const QString& range) {
    m_contents.merges.append(ParseRange(range).value());
}

QByteArray SheetMaker::html() const {
    Worksheet sheet;
    sheet.setContents(m_contents);
    return WriteSheetHtml(sheet.contents()).toUtf8();
}

} // namespace kelvrane::templates
