#include "support/raised_error.h"
#include "worksheet/sheet_css.h"
#include "worksheet/sheet_html.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStringEncoder>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace kelvrane;

namespace {

QByteArray page(const QByteArray& table, const QByteArray& head = {}) {
    return "<html><head>" + head + "</head><body>" + table + "</body></html>";
}

Cell cellAt(const SheetContents& sheet, const char* address) {
    return sheet.cells.value(*ParseAddress(QString::fromLatin1(address)));
}

/// The value as a test writes it: "1.5", "'text", "TRUE", "#N/A", "".
std::string shown(const CellValue& value) {
    if (const double* number = std::get_if<double>(&value))
        return QString::number(*number, 'g', 15).toStdString();
    if (const QString* text = std::get_if<QString>(&value))
        return QString(QLatin1Char('\'') + *text).toStdString();
    if (const bool* truth = std::get_if<bool>(&value))
        return *truth ? "TRUE" : "FALSE";
    if (const CellError* error = std::get_if<CellError>(&value))
        return CellErrorText(*error).toStdString();
    return "";
}

/// The first cell of a table of one.
Cell onlyCell(const QByteArray& td, const QByteArray& head = {}) {
    return cellAt(ReadSheetHtml(page("<table><tr>" + td + "</tr></table>", head)), "A1");
}

class RandomSheets {
  public:
    explicit RandomSheets(quint32 seed) : m_random(seed) {}

    SheetContents next() {
        SheetContents sheet;
        for (int count = m_random.bounded(40); count > 0; --count) {
            const CellAddress at{m_random.bounded(12),
                                 m_random.bounded(m_random.bounded(2) ? 6 : 40)};
            const Cell cell{.value = value(),
                            .formula = pick({"", "", "=A1+\"<b>&\"", "=SUM($A$1:B2)"}),
                            .style = style()};
            if (!cell.isBare())
                sheet.cells[at] = cell;
        }
        for (int count = m_random.bounded(5); count > 0; --count) {
            const CellAddress first{m_random.bounded(10), m_random.bounded(6)};
            const CellRange range{
                first, {first.row + m_random.bounded(3), first.column + m_random.bounded(3)}};
            const bool isFree = std::ranges::none_of(
                sheet.merges, [&](const CellRange& other) { return other.intersects(range); });
            if (range.first != range.last && isFree)
                sheet.merges.append(range);
        }
        std::ranges::sort(sheet.merges, {}, &CellRange::first);
        for (int count = m_random.bounded(4); count > 0; --count) {
            sheet.columnWidths[m_random.bounded(20)] = m_random.bounded(3) * 64;
            sheet.rowHeights[m_random.bounded(20)] = m_random.bounded(3) * 20;
        }
        sheet.fontFamily = text();
        sheet.title = text();
        sheet.pointSize = 7 + m_random.bounded(80) / 8.0;
        sheet.showsGrid = m_random.bounded(2);
        return sheet;
    }

  private:
    QString pick(const QStringList& choices) { return choices[m_random.bounded(choices.size())]; }

    /// Everything that markup, style rules and attributes could stumble over.
    QString text() {
        static const QStringList parts = {" ",
                                          "  ",
                                          "a",
                                          "Z9",
                                          "class=",
                                          "\"",
                                          "'",
                                          "<",
                                          ">",
                                          "&",
                                          "&amp;",
                                          "</td>",
                                          "</style>",
                                          "<head>",
                                          "\n",
                                          "\r\n",
                                          "\t",
                                          "\\",
                                          "\\u0041",
                                          "--",
                                          "-->",
                                          "{",
                                          "}",
                                          ";",
                                          ",",
                                          "/*",
                                          "#ALIAS#",
                                          "02134",
                                          "1/5/2003",
                                          "=A1",
                                          "\u00e4",
                                          "\u00a0",
                                          "\u2028",
                                          "\ufeff",
                                          "\U0001F600",
                                          QString(QChar(0)),
                                          QString(QChar(1)),
                                          QString(QChar(0x85)),
                                          QString(QChar(0xd800)),
                                          QString(QChar(0xffff))};
        QString text;
        for (int count = m_random.bounded(5); count > 0; --count)
            text += pick(parts);
        return text;
    }

    CellValue value() {
        static const double numbers[] = {0,
                                         1,
                                         -1.5,
                                         0.1,
                                         1e-300,
                                         1e300,
                                         40000.25,
                                         1.0 / 3,
                                         std::numeric_limits<double>::denorm_min(),
                                         123456789012345678.0};
        switch (m_random.bounded(6)) {
        case 0:
            return {};
        case 1:
            return numbers[m_random.bounded(int(std::size(numbers)))];
        case 2:
            return m_random.bounded(2) == 1;
        case 3:
            return static_cast<CellError>(m_random.bounded(8));
        default:
            return text();
        }
    }

    CellBorder border() {
        if (m_random.bounded(2))
            return {};
        return {.line = static_cast<CellBorder::Line>(m_random.bounded(5)),
                .width = 1 + m_random.bounded(9),
                .color = m_random.generate()};
    }

    CellStyle style() {
        if (m_random.bounded(3) == 0)
            return {};
        CellStyle style;
        if (m_random.bounded(4) == 0)
            style.fontFamily = text();
        style.pointSize = m_random.bounded(2) ? 0 : 1 + m_random.bounded(100) / 4.0;
        style.bold = m_random.bounded(2);
        style.italic = m_random.bounded(2);
        style.underline = m_random.bounded(2);
        style.ink = m_random.bounded(2) ? CellStyle::NoColor : m_random.generate();
        style.fill = m_random.bounded(2) ? CellStyle::NoColor : 0xff000000U | m_random.generate();
        style.horizontal = static_cast<HorizontalAlign>(m_random.bounded(4));
        style.vertical = static_cast<VerticalAlign>(m_random.bounded(3));
        style.wraps = m_random.bounded(2);
        style.indent = m_random.bounded(3);
        style.left = border();
        style.bottom = border();
        style.numberFormat =
            pick({"", "General", "Fixed", "Short Date", "0.00", "$###0.00", "d mmm", "@", "[h]:mm",
                  "\"Abc\" 0;[Red]-0", "\\x0.0 \"\u20ac\"", "\"</style>{;}\"", text()});
        return style;
    }

    QRandomGenerator m_random;
};

QByteArray saved(const char* name) {
    // Tests run at the root of the source.
    QFile file(QStringLiteral("tests/worksheet/data/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

} // namespace

TEST(SheetHtml, EverythingComesBackAndIsWrittenTheSameAgain) {
    RandomSheets sheets(20021);
    for (int count = 0; count < 400; ++count) {
        const SheetContents sheet = sheets.next();
        const QString text = WriteSheetHtml(sheet);
        SheetContents again = ReadSheetHtml(text.toUtf8());
        ASSERT_EQ(WriteSheetHtml(again).toStdString(), text.toStdString());
        for (auto cell = sheet.cells.cbegin(); cell != sheet.cells.cend(); ++cell)
            ASSERT_TRUE(again.cells.value(cell.key()) == *cell)
                << AddressText(cell.key()).toStdString() << shown(cell->value) << "|"
                << shown(again.cells.value(cell.key()).value) << "\n";
        ASSERT_TRUE(again == sheet) << text.toStdString();
    }
}

TEST(SheetHtml, TheLinesAreThoseThatTheComparisonReads) {
    SheetContents sheet;
    sheet.title = QStringLiteral("Week 3");
    sheet.cells[{0, 1}] = {.value = 1.5,
                           .formula = QStringLiteral("=1+0.5"),
                           .style = {.bold = true, .numberFormat = QStringLiteral("0.00")}};
    sheet.cells[{0, 0}] = {.value = QStringLiteral("Hours\nof all"), .style = {.italic = true}};
    const QStringList lines = WriteSheetHtml(sheet).split('\n');
    EXPECT_EQ(lines.count("<head>"), 1);
    EXPECT_EQ(lines.count("</head>"), 1);
    EXPECT_EQ(lines.last(), "</html>");
    const auto first = lines.indexOf("<style>");
    const auto rules = lines.mid(first + 1, lines.indexOf("</style>") - first - 1);
    for (const QString& rule : rules)
        EXPECT_TRUE(rule.startsWith('.')) << rule.toStdString();
    EXPECT_TRUE(lines.contains(".s1{font-style:italic}")); // in the order of the cells
    EXPECT_TRUE(lines.contains("<td class=s1 width=64 x:str><i>Hours<br>of all</i></td>"));
    EXPECT_TRUE(lines.contains(
        "<td class=s2 width=64 align=right x:num=\"1.5\" sdval=\"1.5\" sdnum=\"1033;0;0.00\" "
        "x:fmla=\"=1+0.5\" data-sheets-formula=\"=1+0.5\"><b>1.50</b></td>"));
}

TEST(SheetHtml, FarAndHugeSheetsStayWithinTheirFile) {
    SheetContents sheet;
    for (int row = 0; row < SheetRows; row += 100)
        sheet.cells[{row, SheetColumns - 1}].value = double(row);
    const QString text = WriteSheetHtml(sheet);
    EXPECT_LT(text.size(), 1'000'000);
    EXPECT_TRUE(ReadSheetHtml(text.toUtf8()) == sheet);

    for (int count = 0; count <= MostSheetCells; ++count)
        sheet.cells[{count / 100, count % 100}].value = 1.0;
    EXPECT_EQ(RaisedError([&] { WriteSheetHtml(sheet); }), errors::BadArgument);
    sheet = {};
    sheet.cells[{0, 0}].value = QString(LargestSheetFile, 'x');
    EXPECT_EQ(RaisedError([&] { WriteSheetHtml(sheet); }), errors::BadArgument);
}

TEST(SheetHtml, ValuesAreReadFromTheAttributesOfOtherPrograms) {
    const struct {
        const char* td;
        const char* value;
        const char* formula = "";
        const char* format = "";
    } rows[] = {
        {"<td sdval=\"1.5\" sdnum=\"1033;0;0.00\">1.50</td>", "1.5", "", "0.00"},
        {"<td sdval=\"1.5\" sdnum=\"1033;\">2</td>", "1.5"},
        {"<td sdval=\"1\" sdnum=\"1033;0;BOOLEAN\">TRUE</td>", "TRUE"},
        {"<td sdval=\"1.5\" sdnum=\"1031;0;0,00\">1,50</td>", "1.5"},
        {"<td sdnum=\"1033;0;@\">02134</td>", "'02134", "", "@"},
        {"<td sdval=\"nonsense\">12</td>", "12"},
        {"<td x:num>1,234.50</td>", "1234.5"},
        {"<td x:num=\"0.5\">1/2</td>", "0.5"},
        {"<td x:num=\"inf\">7</td>", "7"},
        {"<td x:num=\"3\" x:fmla=\"=SUM(A2:A3)\">3</td>", "3", "=SUM(A2:A3)"},
        {"<td x:num=3 x:fmla='=A2&amp;\"!\"&amp;#REF!'>3</td>", "3", "=A2&\"!\"&#REF!"},
        {"<td x:num=3 x:fmla='=Sheet2!A2'>3</td>", "3"}, // of what isn't there,
        {"<td x:num=3 x:fmla='=A2+'>3</td>", "3"},       // or can't be read
        {"<td x:str>02134</td>", "'02134"},
        {"<td x:str=\"a  b \">a b</td>", "'a  b "},
        {"<td x:bool=\"FALSE\">no</td>", "FALSE"},
        {"<td x:err=\"#DIV/0!\">#DIV/0!</td>", "#DIV/0!"},
        {"<td data-sheets-value='{\"1\":2,\"2\":\"02134\"}'>02134</td>", "'02134"},
        {"<td data-sheets-value='{\"1\":3,\"3\":12.5}' data-sheets-numberformat='{\"1\":2,\"2\":"
         "\"0.0\"}' data-sheets-formula=\"=R[1]C[0]*R2C3\">12.5</td>",
         "12.5", "=A2*$C$2", "0.0"},
        {"<td data-sheets-value='{\"1\":4,\"4\":1}'>TRUE</td>", "TRUE"},
        {"<td data-sheets-value='{{{'>5</td>", "5"},
        {"<td data-sheets-formula=\"=R[-1]C[0]\">1</td>", "1", "=#REF!"},
        // Nothing said: as if it were typed.
        {"<td>$1,080.00</td>", "1080", "", "$#,##0.00"},
        {"<td> 12% </td>", "0.12", "", "0%"},
        {"<td>1&nbsp;&lt;&nbsp;2 &amp; 3</td>", "'1 < 2 & 3"},
        {"<td>a<br>  b<br></td>", "'a\nb"},
        {"<td><p>a</p><p>b</p></td>", "'a\nb"},
        {"<td>a<script>alert(1)</script><style>x</style><a href=\"http://x/\">b</a></td>", "'ab"},
        {"<td>&nbsp;</td>", ""},
        {"<td style='mso-number-format:\"\\@\"'>02134</td>", "'02134", "", "@"},
    };
    for (const auto& row : rows) {
        const Cell cell = onlyCell(row.td);
        EXPECT_EQ(shown(cell.value), row.value) << row.td;
        EXPECT_EQ(cell.formula, row.formula) << row.td;
        EXPECT_EQ(cell.style.numberFormat, row.format) << row.td;
    }
}

TEST(SheetHtml, StylesAreReadFromRulesAttributesAndElements) {
    const CellStyle bare;
    const auto style = [](auto change) {
        CellStyle changed;
        change(changed);
        return changed;
    };
    const CellStyle bold = style([](auto& s) { s.bold = true; });
    const CellStyle red = style([](auto& s) { s.ink = qRgb(255, 0, 0); });
    const CellStyle green = style([](auto& s) { s.fill = qRgb(0, 128, 0); });
    const auto format = [&](const char* text) {
        return style([&](auto& s) { s.numberFormat = QString::fromUtf8(text); });
    };
    const struct {
        const char* rules;
        const char* td;
        CellStyle style;
    } rows[] = {
        {"td{font-size:11pt;font-family:Calibri,sans-serif;color:black;padding-left:1px}",
         "<td>x</td>", bare}, // the sheet's font
        {".a{font-weight:700}", "<td class=a>x</td>", bold},
        {"td.a,th{font-weight:bold}", "<td class='b a'>x</td>", bold},
        {"p.a{font-weight:bold}td .a{font-weight:bold}", "<td class=a>x</td>", bare},
        {"/* .a{} */ @media print{.a{color:#f00}} .b{color:#F00 !important}", "<td class=b>x</td>",
         red},
        {".a{color:rgb( 255, 0,0)}", "<td class=a>x</td>", red},
        {"", "<td><font color=red>x</font></td>", red},
        {"", "<td>x <font color=red>y</font></td>", bare}, // a part of the cell
        {"", "<td><b><span>x</span></b></td>", bold},
        {"", "<td><span style='font-weight:bold;background:red'>x</span></td>", bold},
        {"", "<td bgcolor=green>x</td>", green},
        {"", "<td style='background:url(a;b.png) #008000'>x</td>", green},
        {".a{mso-number-format:\"0\\.00_\\)\\;\\\\-0\"}", "<td class=a x:num=1>1</td>",
         format("0.00_);\\-0")},
        {".a{mso-number-format:\"\\0022AED\\0022\\#\\,\\#\\#0\"}", "<td class=a x:num=1>1</td>",
         format("\"AED\"#,##0")},
        {".a{mso-number-format:Percent}", "<td class=a x:num=1>1</td>", format("0.00%")},
        {".a{mso-number-format:\"Short Date\"}", "<td class=a x:num=1>1</td>", format("m/d/yyyy")},
        {"", "<td align=right valign=top nowrap>x</td>", style([](auto& s) {
             s.horizontal = HorizontalAlign::Right;
             s.vertical = VerticalAlign::Top;
         })},
        {"", "<td align=right>12</td>", bare}, // numbers stand there anyway
        {".a{mso-number-format:\"\\@\"}", "<td class=a align=right x:num=12>12</td>",
         style([](auto& s) { // but not those that are shown as texts
             s.horizontal = HorizontalAlign::Right;
             s.numberFormat = QStringLiteral("@");
         })},
        {"", "<td style='border-top:.5pt solid windowtext;border-left:none'>x</td>",
         style([](auto& s) { s.top.line = CellBorder::Line::Solid; })},
        {".a{border:2px dashed #ff0000", "<td class=a>x</td>", style([](auto& s) {
             s.left = s.top = s.right = s.bottom = {
                 .line = CellBorder::Line::Dashed, .width = 2, .color = qRgb(255, 0, 0)};
         })},
        {"", "<th>x</th>", style([](auto& s) {
             s.bold = true;
             s.horizontal = HorizontalAlign::Center;
         })},
        {".a{font-size:20pt;color:#123}.a{color:red;font-size:large-ish}.a{color:transparent}",
         "<td class=a>x</td>",
         style([](auto& s) { s.pointSize = 20; })}, // the last that can be read
        {"/*/.a{font-weight:bold}/**/", "<td class=a>x</td>", bare},
        {".a{font-size:1e999pt;color:#12;width:;:;;border:zz zz", "<td class=a>x</td>", bare},
    };
    for (const auto& row : rows) {
        const Cell cell = onlyCell(row.td, QByteArray("<style>") + row.rules + "</style>");
        EXPECT_TRUE(cell.style == row.style)
            << row.rules << row.td << StyleDeclarations(cell.style).toStdString();
    }
}

TEST(SheetHtml, SpansWidthsAndHeightsShapeTheSheet) {
    const SheetContents sheet = ReadSheetHtml(
        page("<table><colgroup width=90 span=2></colgroup><col width=30><col style='width:48pt'>"
             "<tr height=40><td rowspan=2>a</td><td colspan=2>b</td><td rowspan=99>c</td></tr>"
             "<tr><td colspan=999999999>d</td><td>lost?</td></tr>"
             "<tr style='display:none'><td rowspan=0 colspan=0>e</td><td width=70 height=33>f</td>"
             "</table>"));
    EXPECT_EQ(shown(cellAt(sheet, "A1").value), "'a");
    EXPECT_EQ(shown(cellAt(sheet, "B1").value), "'b");
    EXPECT_EQ(shown(cellAt(sheet, "D1").value), "'c");
    EXPECT_EQ(shown(cellAt(sheet, "B2").value), "'d");
    EXPECT_EQ(shown(cellAt(sheet, "E2").value), "'lost?");
    EXPECT_EQ(shown(cellAt(sheet, "A3").value), "'e");
    EXPECT_EQ(shown(cellAt(sheet, "B3").value), "'f");
    QStringList merges;
    for (const CellRange& merge : sheet.merges)
        merges += RangeText(merge);
    EXPECT_EQ(merges.join(' '), "A1:A2 B1:C1 D1:D3 B2:C2");
    EXPECT_EQ(sheet.columnWidths, (QMap<int, int>{{0, 90}, {1, 90}, {2, 30}, {3, 64}}));
    EXPECT_EQ(sheet.rowHeights, (QMap<int, int>{{0, 40}, {2, 33}}));
}

TEST(SheetHtml, OfSeveralTablesTheFirstWithAValueIsTaken) {
    const struct {
        const char* tables;
        const char* a1;
    } rows[] = {
        {"<table><tr><td>&nbsp;</table><table><tr><td>1</table><table><tr><td>2</table>", "1"},
        {"<table><tr><td><table><tr><td>inner</table><td>menu</table>", "'inner"},
        {"<table><tr><td>text<table><tr><td>a<td>b<tr><td>c</table></table>", "'text\na b\nc"},
        {"<table></table>", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(cellAt(ReadSheetHtml(page(row.tables)), "A1").value), row.a1) << row.tables;
}

TEST(SheetHtml, EncodingsAreThoseOfMarkContentAndDeclaration) {
    const QString text =
        QStringLiteral("<meta charset=utf-16><table><td>Z\u00fcrich \u20ac</table>");
    const QByteArray latin = "<table><td>Z\xfcrich \x80</table>";
    const struct {
        const char* what;
        QByteArray bytes;
    } rows[] = {
        {"UTF-8", text.toUtf8()},
        {"UTF-8 with a mark", "\xef\xbb\xbf" + text.toUtf8()},
        {"UTF-8 that says it is another", "<meta charset=iso-8859-1>" + text.toUtf8()},
        {"UTF-16, little end",
         QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom)(text)},
        {"UTF-16, big end",
         QStringEncoder(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom)(text)},
        {"Windows-1252", "<meta charset=windows-1252>" + latin},
        {"Windows-1252, not declared", latin},
        {"declared wrongly", "<meta charset=utf-16>" + latin},
        {"declared as no one knows", "<meta charset=klingon>" + latin},
        {"with NULs", text.toUtf8().replace("r", QByteArray("\0r", 2))},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(cellAt(ReadSheetHtml(row.bytes), "A1").value), "'Z\u00fcrich \u20ac")
            << row.what;
    EXPECT_EQ(shown(onlyCell("<td>\xe4\xc1</td>", "<meta charset=koi8-r>").value), "'\u0414\u0430");
}

/// One that takes more than its size is stopped by the time limit that each test has.
struct HostilePage {
    const char* what;
    QByteArray bytes;
    bool isRefused;
};

QByteArray many(const QByteArray& what, qsizetype count) {
    return what.repeated(count);
}

QByteArray manySelectors(int count) {
    QByteArray selectors;
    for (int i = 0; i < count; ++i)
        selectors += ".s" + QByteArray::number(i) + ',';
    return selectors;
}

void expectRefusedOrRead(const QList<HostilePage>& pages) {
    for (const HostilePage& page : pages) {
        SheetContents sheet;
        const int error = RaisedError([&] { sheet = ReadSheetHtml(page.bytes); });
        EXPECT_EQ(error, page.isRefused ? errors::BadArgument : 0) << page.what;
        EXPECT_LT(sheet.usedRange().last.row, SheetRows) << page.what;
        EXPECT_LT(sheet.usedRange().last.column, SheetColumns) << page.what;
    }
}

// Two tests, so that they can run beside each other.
TEST(SheetHtml, HostileTablesAreRefusedOrRead) {
    expectRefusedOrRead({
        {"nothing", "", true},
        {"no table", "<html><body><p>Hello", true},
        {"a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), true},
        {"too large", many("<table><td>1", LargestSheetFile / 12 + 1), true},
        {"10,000 columns", "<table><tr>" + many("<td>1", 10'000), false},
        {"100,000 rows", "<table>" + many("<tr><td>1", 100'000), false},
        {"a million cells", "<table>" + many("<tr>" + many("<td>1", 700), 1500), true},
        {"two million empty cells", "<table>" + many("<tr>" + many("<td>", 700), 3000), false},
        {"nested tags", "<table><td>" + many("<b>", 20'000), true},
        {"nested tables", many("<table><tr><td>", 20'000), true},
        {"end tags without a start", "<table>" + many("<b>", 200) + many("</i>", 2'000'000), true},
        {"attributes", "<table><td " + many("a1 b", 1'000'000), true},
        {"attributes in quotes", "<table><td " + many("a='<' ", 1'000'000), true},
        {"spans", "<table>" + many("<tr><td colspan=999999999 rowspan=999999999>1", 50'000), false},
        {"columns", "<table>" + many("<col span=999999999 width=99999999999>", 100'000), false},
    });
}

TEST(SheetHtml, HostileStylesAndTextsAreRefusedOrRead) {
    const QByteArray ours = "<meta name=generator content=Kelvrane>";
    expectRefusedOrRead({
        {"rules", "<style>" + many(".a{color:red}", 500'000) + "</style><table><td class=a>1",
         false},
        {"other rules", "<style>" + many(".a,", 2'000'000) + "b{}</style><table><td class=a>1",
         false},
        {"a long rule for many selectors",
         "<style>" + manySelectors(300'000) + "a{" + many("color:red;", 400) +
             "}</style><table><td class=s9>1",
         false},
        {"an open rule", "<style>.a{" + many("(\"\\", 1'000'000) + "</style><table><td>1", false},
        {"long rules for many cells",
         "<style>td{" + many("color:red;", 100'000) + "}</style><table>" +
             many("<tr><td>1", 10'000),
         false},
        {"classes", "<table><td class='" + many("a ", 3'000'000) + "'>1", false},
        {"classes of long rules",
         "<style>.a{" + many("color:red;", 400) + "}</style><table><td class='" +
             many("a ", 1'000'000) + "'>1",
         false},
        {"one long text", "<table><td>" + many("1", 10'000'000), false},
        {"breaks", "<table><td>x" + many("<br>", 2'000'000), false},
        {"covered cells",
         ours + "<table><!--covered " + many("<td data-at=A1 x:num=1>", 100'000) +
             "--><tr><td x:num=1></table>",
         false},
        {"covered cells in each other",
         ours + "<table><!--covered <table><table><td><td data-at=ZZZ9>--><tr><td x:num=1></table>",
         false},
    });
}

TEST(SheetHtml, FilesThatLibreOfficeSavedAreReadWithValuesAndLooks) {
    const SheetContents sheet = ReadSheetHtml(saved("calc_invoice.html"));
    const struct {
        const char* address;
        const char* value;
        const char* format = "";
    } rows[] = {
        {"A1", "'Invoice & #NAME#"},
        {"D1", "'12"},
        {"D2", "'02134", "@"},
        {"A3", "37626", "D MMM"},
        {"B3", "'Z\u00fcrich\nsecond line"},
        {"C3", "7.25"},
        {"D3", "75", "[$$-409]#,##0.00"},
        {"A4", "1.10416666666667", "[H]:MM"},
        {"B4", "1234.5678"},
        {"D4", "543.75", "[$$-409]#,##0.00"},
        {"A5", "#DIV/0!"},
        {"B5", "1"},
        {"C5", "'ab"},
        {"A6", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(cellAt(sheet, row.address).value), row.value) << row.address;
        EXPECT_EQ(cellAt(sheet, row.address).style.numberFormat, row.format) << row.address;
    }
    EXPECT_EQ(sheet.fontFamily, "Liberation Sans");
    EXPECT_EQ(sheet.pointSize, 10);
    EXPECT_EQ(sheet.columnWidths, (QMap<int, int>{{0, 96}, {1, 240}, {2, 96}, {3, 96}}));
    EXPECT_EQ(sheet.merges, QList<CellRange>{*ParseRange(u"A1:C2")});
    EXPECT_EQ(StyleDeclarations(cellAt(sheet, "A1").style),
              "font-size:14pt;font-weight:bold;font-style:italic;text-decoration:underline;"
              "color:#ffffff;background:#3b78d8;text-align:center;vertical-align:middle;"
              "border-bottom:2px solid #ff0000");
    EXPECT_EQ(StyleDeclarations(cellAt(sheet, "C3").style), "");

    // A sheet of our own that was opened and saved there.
    const SheetContents resaved = ReadSheetHtml(saved("calc_resaved.html"));
    EXPECT_EQ(resaved.columnWidths,
              (QMap<int, int>{{0, 90}, {1, 200}, {2, 64}, {3, 64}, {4, 120}}));
    EXPECT_EQ(shown(cellAt(resaved, "B2").value), "'02134");
    EXPECT_EQ(shown(cellAt(resaved, "D2").value), "TRUE");
    EXPECT_EQ(shown(cellAt(resaved, "A5").value), "38353");
    EXPECT_EQ(shown(cellAt(resaved, "E8").value), "1912.5");
    EXPECT_TRUE(cellAt(resaved, "A1").style.italic);
    EXPECT_EQ(resaved.spanAt({9, 4}), *ParseRange(u"D9:E10"));
}

TEST(SheetHtml, APageCutOffAnywhereIsReadAsFarAsItGoes) {
    RandomSheets sheets(7);
    const QByteArray bytes = WriteSheetHtml(sheets.next()).toUtf8();
    const QByteArray other = saved("calc_invoice.html");
    for (const QByteArray& whole : {bytes, other})
        for (qsizetype length = 0; length < whole.size(); length += 37) {
            const int error = RaisedError([&] { ReadSheetHtml(whole.first(length)); });
            EXPECT_EQ(error, whole.first(length).contains("<table") ? 0 : errors::BadArgument);
        }
}
