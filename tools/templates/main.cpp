// Makes the two ready templates, which the program's resources hold:
//
//     make_templates resources/templates
//
// Run it again after a change of the sheets' HTML. Both fit one page in width on A4 and Letter.
#include "sheet_maker.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>

#include <cstdio>

namespace kelvrane::templates {

namespace {

using Align = HorizontalAlign;

constexpr int firstRow = 9; ///< of the timesheet's projects
constexpr int projectRows = 30;
constexpr int totalRow = firstRow + projectRows;
constexpr int days = 7;

QString cell(char column, int row) {
    return QLatin1Char(column) + QString::number(row);
}

QString cells(char first, int firstCellRow, char last, int lastCellRow) {
    return cell(first, firstCellRow) + QLatin1Char(':') + cell(last, lastCellRow);
}

char dayColumn(int day) {
    return static_cast<char>('D' + day);
}

void addPeriod(SheetMaker& sheet) {
    sheet.setHeight(1, 14);
    sheet.setHeight(2, 40);
    sheet.put("B2", "Timesheet", Title());
    sheet.style("F2:K2", [](CellStyle& style) { style = Text(); });
    sheet.ruleBelow("F2:K2", QuietInk);
    sheet.setHeight(3, 22);
    CellStyle signature = Label();
    signature.vertical = VerticalAlign::Top;
    sheet.put("F3", "SIGNATURE", signature);
    sheet.put("B3", "#DATE8#", Formatted(Text(11), "@"));
    sheet.setHeight(4, 16);
    sheet.setHeight(5, 16);
    sheet.put("B5", "NAME", Label());
    sheet.put("D5", "WEEK", Label());
    sheet.put("K5", "TOTAL HOURS", Label(Align::Right));
    sheet.setHeight(6, 30);
    sheet.put("B6", "#ALIAS#", Formatted(Strong(12), "@"));
    sheet.put("D6", "#WEEK#", Strong(12, Align::Left));
    // Projects beyond the last line count too.
    CellStyle total = Formatted(Strong(18, Align::Right), "0.00");
    total.ink = Accent;
    sheet.put("I6",
              "=SUM(" + cells('D', firstRow, dayColumn(days - 1), totalRow - 1) + ")+SUM(" +
                  cells('D', totalRow + 1, dayColumn(days - 1), 500) + ")",
              total);
    sheet.merge("I6:K6");
    sheet.setHeight(7, 16);
}

void addDayHeadings(SheetMaker& sheet) {
    const int row = firstRow - 1;
    sheet.setHeight(row, 26);
    sheet.put(cell('B', row), "Project", Strong(9));
    sheet.put(cell('C', row), "Number", Strong(9));
    for (int day = 0; day < days; ++day)
        sheet.put(cell(dayColumn(day), row),
                  QString("=IFERROR(VALUE(LEFT($B$3,FIND(\" - \",$B$3)-1))+%1,\"Day %2\")")
                      .arg(day)
                      .arg(day + 1),
                  Formatted(Strong(9, Align::Center), "ddd d"));
    sheet.put(cell('K', row), "Total", Strong(9, Align::Center));
    sheet.ruleBelow(cells('B', row, 'K', row), Accent, 2);
}

void addProjectRows(SheetMaker& sheet) {
    for (int row = firstRow; row < totalRow; ++row)
        sheet.setHeight(row, 22);
    sheet.style(cells('B', firstRow, 'K', totalRow - 1),
                [](CellStyle& style) { style = Text(9.5); });
    sheet.style(cells('D', firstRow, 'K', totalRow - 1), [](CellStyle& style) {
        style.horizontal = Align::Center;
        style.numberFormat = "0.00";
    });
    sheet.put(cell('B', firstRow), "#NAME#", Text(9.5));
    sheet.put(cell('C', firstRow), "#NUMBER#", Text(9.5));
    sheet.put(cell('D', firstRow), "#HOURS#", Formatted(Text(9.5, Align::Center), "0.00"));
    sheet.put(cell('K', firstRow), "#HTOTAL#", Formatted(Text(9.5, Align::Center), "0.00"));
    sheet.style(cells('K', firstRow, 'K', totalRow - 1),
                [](CellStyle& style) { style.bold = true; });
    sheet.ruleBelow(cells('B', firstRow, 'K', totalRow - 2), Hairline);
}

void addTotals(SheetMaker& sheet) {
    sheet.setHeight(totalRow, 30);
    const CellStyle number = Formatted(Strong(10, Align::Center), "0.00");
    sheet.style(cells('B', totalRow, 'K', totalRow), [&](CellStyle& style) { style = number; });
    sheet.put(cell('B', totalRow), "Total", Strong(10));
    sheet.put(cell('C', totalRow), "", Strong(10));
    sheet.put(cell('D', totalRow), "#VTOTAL#", number);
    sheet.put(cell('K', totalRow), "=SUM(" + cells('K', firstRow, 'K', totalRow - 1) + ")", number);
    sheet.style(cells('B', totalRow, 'K', totalRow),
                [](CellStyle& style) { style.fill = AccentWash; });
    sheet.style(cells('K', totalRow, 'K', totalRow), [](CellStyle& style) { style.ink = Accent; });
    sheet.ruleAbove(cells('B', totalRow, 'K', totalRow), Accent, 2);
}

/// A row a project and a column a day; the columns B to K lie as the row totals ask for, seven
/// columns right of #VTOTAL#.
QByteArray timesheet() {
    SheetMaker sheet("Timesheet");
    sheet.setWidths({16, 180, 80, 50, 50, 50, 50, 50, 50, 50, 62});
    addPeriod(sheet);
    addDayHeadings(sheet);
    addProjectRows(sheet);
    addTotals(sheet);
    return sheet.html();
}

/// A list that grows downwards, so its total stands above it. Below the heading no cell has a
/// style: a row past the first looks like any other.
QByteArray invoice() {
    SheetMaker sheet("Invoice");
    sheet.setWidths({16, 76, 300, 80, 100, 110});
    sheet.setHeight(1, 14);
    sheet.setHeight(2, 40);
    sheet.put("B2", "Invoice", Title());
    sheet.put("F2", "Your company", Strong(11, Align::Right));
    sheet.put("B3", "=TODAY()", Formatted(Text(11, Align::Left), "mmmm d, yyyy"));
    sheet.merge("B3:C3");
    sheet.put("F3", "Your street", Text(10, Align::Right));
    sheet.put("F4", "Your city", Text(10, Align::Right));
    sheet.setHeight(5, 24);
    sheet.setHeight(6, 18);
    sheet.put("B6", "BILL TO", Label());
    sheet.put("D6", "HOURS", Label(Align::Right));
    sheet.put("F6", "AMOUNT DUE", Label(Align::Right));
    sheet.setHeight(7, 30);
    sheet.put("B7", "#COMPANY#", Formatted(Strong(12), "@"));
    sheet.put("D7", "=SUM(D13:D10000)", Formatted(Strong(12, Align::Right), "0.00"));
    CellStyle due = Formatted(Strong(18, Align::Right), "$#,##0.00");
    due.ink = Accent;
    sheet.put("E7", "=SUM(F13:F10000)", due);
    sheet.merge("E7:F7");
    const CellStyle address = Formatted(Text(), "@");
    sheet.put("B8", "#TITLE# #FIRSTNAME# #LASTNAME#", address);
    sheet.put("B9", "#ADDRESS1# #ADDRESS2#", address); // no gap where there is no second line
    sheet.put("B10", "#CITY#, #STATE# #ZIPCODE#", address);
    sheet.setHeight(11, 24);
    sheet.setHeight(12, 26);
    sheet.put("B12", "Date", Strong(9));
    sheet.put("C12", "Project", Strong(9));
    sheet.put("D12", "Hours", Strong(9, Align::Center));
    sheet.put("E12", "Rate", Strong(9, Align::Right));
    sheet.put("F12", "Amount", Strong(9, Align::Right));
    sheet.ruleBelow("B12:F12", Accent, 2);
    sheet.put("B13", "#DAY#", {});
    sheet.put("C13", "#NAME#", {});
    sheet.put("D13", "#HOURS#", {});
    sheet.put("E13", "#RATE#", {});
    sheet.put("F13", "#TOTAL#", {});
    return sheet.html();
}

bool write(const QDir& folder, const QString& name, const QByteArray& bytes) {
    QSaveFile file(folder.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

} // namespace kelvrane::templates

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    using namespace kelvrane::templates;
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_templates FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    return write(folder, "Timesheet.htm", timesheet()) && write(folder, "Invoice.htm", invoice())
               ? 0
               : 1;
}
