#include "platform/error.h"
#include "worksheet/cell_text.h"
#include "worksheet/number_format.h"
#include "worksheet/relative_notation.h"
#include "worksheet/sheet_css.h"
#include "worksheet/sheet_html.h"
#include "worksheet/sheet_markup.h"
#include "worksheet/typed_value.h"

#include <QHashFunctions>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace kelvrane {

namespace {

constexpr int longestGap = 8;              ///< bare cells that are written one by one
constexpr qsizetype longestFormula = 8192; ///< that is also written in relative notation

struct StyleHash {
    size_t operator()(const CellStyle& style) const {
        return qHashMulti(0, style.fontFamily, style.pointSize, style.bold, style.italic, style.ink,
                          style.fill, static_cast<int>(style.horizontal), style.indent,
                          style.numberFormat, style.bottom.color, style.top.color);
    }
};

/// The style rules of a sheet: ".s1", ".s2", ... in the order in which its cells ask for them.
class StyleClasses {
  public:
    /// "s1"; "" for a bare style.
    QString nameOf(const CellStyle& style) {
        if (style == CellStyle{})
            return {};
        const auto [known, isNew] = m_numbers.try_emplace(style, m_numbers.size() + 1);
        const QString name = QLatin1Char('s') + QString::number(known->second);
        if (isNew)
            m_rules += QLatin1Char('.') + name + QLatin1Char('{') + StyleDeclarations(style) +
                       QLatin1String("}\n");
        return name;
    }
    const QString& rules() const { return m_rules; }

  private:
    std::unordered_map<CellStyle, size_t, StyleHash> m_numbers;
    QString m_rules;
};

QString attribute(const char* name, const QString& value) {
    return QLatin1Char(' ') + QLatin1String(name) + QLatin1String("=\"") + EscapedHtml(value) +
           QLatin1Char('"');
}

QString attribute(const char* name, int value) {
    return QLatin1Char(' ') + QLatin1String(name) + QLatin1Char('=') + QString::number(value);
}

/// An attribute, and a second one that keeps what the first can't hold.
QString exactAttribute(const char* name, const char* exactName, const QString& value) {
    return attribute(name, value) +
           (IsHtmlText(value) ? QString() : attribute(exactName, ExactText(value)));
}

QString numberText(double number) {
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

/// Spreadsheet programs take from sdnum only the formats that they have built in; this is the one
/// that comes nearest.
QString builtInFormat(const QString& format) {
    constexpr const char* known[] = {"0", "0.00", "#,##0", "#,##0.00", "0%", "0.00%", "@"};
    if (format.isEmpty() ||
        std::ranges::any_of(known, [&](auto* one) { return format == QLatin1String(one); }))
        return format;
    const auto has = [&](const char* what) {
        return format.contains(QLatin1String(what), Qt::CaseInsensitive);
    };
    if (IsDateFormat(format)) {
        if (has("[h"))
            return QStringLiteral("[HH]:MM:SS");
        const bool isDate = has("d") || has("y") || !has("h");
        if (isDate)
            return has("h") ? QStringLiteral("MM/DD/YYYY HH:MM:SS") : QStringLiteral("MM/DD/YYYY");
        return has("am/pm") ? QStringLiteral("HH:MM AM/PM") : QStringLiteral("HH:MM");
    }
    if (has("$"))
        return QStringLiteral("[$$-409]#,##0.00;[RED]-[$$-409]#,##0.00");
    return format;
}

QString sdnum(const QString& format) {
    const QString known = builtInFormat(format);
    return attribute("sdnum",
                     known.isEmpty() ? QStringLiteral("1033;") : QStringLiteral("1033;0;") + known);
}

struct ValueAttributes {
    const QString& numberFormat;

    QString operator()(std::monostate) const { return {}; }
    QString operator()(double number) const {
        if (!std::isfinite(number))
            return (*this)(CellError::Number);
        const QString text = numberText(number);
        return attribute("x:num", text) + attribute("sdval", text) + sdnum(numberFormat);
    }
    QString operator()(const QString& text) const {
        QString attributes = QStringLiteral(" x:str");
        if (IsTextFormat(numberFormat) || NumberOfText(text))
            attributes += sdnum(QStringLiteral("@")); // keeps "02134" a text elsewhere
        if (!IsHtmlText(text))
            attributes += attribute("data-text", ExactText(text));
        return attributes;
    }
    QString operator()(bool truth) const {
        return attribute("x:bool", truth ? QStringLiteral("TRUE") : QStringLiteral("FALSE")) +
               attribute("sdval", int(truth)) +
               attribute("sdnum", QStringLiteral("1033;0;BOOLEAN"));
    }
    QString operator()(CellError error) const { return attribute("x:err", CellErrorText(error)); }
};

QString formulaAttributes(const QString& formula, CellAddress at) {
    if (formula.isEmpty())
        return {};
    QString attributes = exactAttribute("x:fmla", "data-formula", formula);
    if (formula.size() <= longestFormula)
        if (const QString relative = ToRelativeNotation(formula, at); !relative.isEmpty())
            attributes += attribute("data-sheets-formula", relative);
    return attributes;
}

/// What programs that don't read style rules need to know of a cell's style, and where its value
/// stands when no rule says so: browsers don't tell numbers from texts.
QString placingHints(const Cell& cell) {
    const CellStyle& style = cell.style;
    constexpr const char* horizontal[] = {"left", "left", "center", "right"};
    constexpr const char* vertical[] = {"top", "middle", nullptr};
    QString hints;
    if (const auto shown = ShownAlign(cell);
        shown != HorizontalAlign::Left || style.horizontal == shown)
        hints += QLatin1String(" align=") + QLatin1String(horizontal[static_cast<int>(shown)]);
    if (const char* valign = vertical[static_cast<int>(style.vertical)])
        hints += QLatin1String(" valign=") + QLatin1String(valign);
    if (style.fill != CellStyle::NoColor)
        hints += attribute("bgcolor", CssColor(style.fill | 0xff000000U));
    return hints;
}

/// The nearest of the seven sizes of a font element.
int fontSizeStep(double points) {
    constexpr double above[] = {8.5, 11, 13, 16, 21, 30};
    return 1 + static_cast<int>(std::ranges::lower_bound(above, points) - std::begin(above));
}

QString inFontElements(const CellStyle& style, QString markup) {
    const auto wrap = [&](const char* element, const QString& attributes = {}) {
        const QLatin1String name(element);
        markup = QLatin1Char('<') + name + attributes + QLatin1Char('>') + markup +
                 QLatin1String("</") + name + QLatin1Char('>');
    };
    QString font;
    if (!style.fontFamily.isEmpty())
        font += attribute("face", style.fontFamily);
    if (style.pointSize != 0)
        font += attribute("size", fontSizeStep(style.pointSize));
    if (style.ink != CellStyle::NoColor)
        font += attribute("color", CssColor(style.ink | 0xff000000U));
    if (!font.isEmpty())
        wrap("font", font);
    if (style.underline)
        wrap("u");
    if (style.italic)
        wrap("i");
    if (style.bold)
        wrap("b");
    return markup;
}

QString visibleMarkup(const Cell& cell) {
    const QString* const text = std::get_if<QString>(&cell.value);
    const QString shown = text ? *text : FormatCellValue(cell.value, cell.style.numberFormat);
    if (shown.isEmpty())
        return {};
    QString markup = EscapedHtml(shown);
    if (shown.contains(u'\n'))
        markup.replace(QLatin1String("&#10;"), QLatin1String("<br>"));
    return inFontElements(cell.style, markup);
}

class SheetWriter {
  public:
    explicit SheetWriter(const SheetContents& contents) : m_contents(contents) {}

    QString text() {
        writeTable();
        return head() + m_body + QLatin1String("</table>\n</body>\n</html>");
    }

  private:
    /// What a place of a row shows: a cell, the first cell of a merge, or both.
    struct Place {
        int column = 0;
        const Cell* cell = nullptr;
        const CellRange* merge = nullptr;
    };
    using Row = std::map<int, Place>; ///< by column

    QString head() const;
    void writeTable();
    void writeColumns();
    void writeRow(int row, const Row& places);
    void writePlace(int row, const Place& place);
    void writeCovered(CellAddress at, const Cell& cell);
    void writeGap(int first, int columns);
    QString widthHint(int column);
    QString cellMarkup(CellAddress at, const Cell& cell, const QString& placing);

    const SheetContents& m_contents;
    StyleClasses m_classes;
    QString m_body;
    std::set<int> m_sizedColumns;
    std::map<int, const CellRange*> m_openMerges; ///< from rows above, by their first column
};

QString SheetWriter::head() const {
    const QString& title = m_contents.title;
    const QString exactTitle =
        IsHtmlText(title) ? QString() : attribute("data-text", ExactText(title));
    return QLatin1String("<!DOCTYPE html>\n"
                         "<html lang=\"en\">\n"
                         "<head>\n"
                         "<meta charset=\"utf-8\">\n"
                         "<meta name=\"generator\" content=\"Kelvrane\">\n"
                         "<title") +
           exactTitle + QLatin1Char('>') + EscapedHtml(title) +
           QLatin1String("</title>\n"
                         "<style>\n"
                         ".sheet{border-collapse:collapse;table-layout:fixed;") +
           FontDeclarations(m_contents.fontFamily, m_contents.pointSize) +
           QStringLiteral("}\n"
                          ".sheet tr{height:%1px}\n"
                          ".sheet td{padding:0 2px;vertical-align:bottom;white-space:pre}\n")
               .arg(SheetContents::DefaultRowHeight) +
           m_classes.rules() +
           QLatin1String("</style>\n"
                         "</head>\n"
                         "<body>\n"
                         "<!--[if gte mso 9]><xml>\n"
                         "<x:WorksheetOptions>\n") +
           QLatin1String(m_contents.showsGrid ? "" : "<x:DoNotDisplayGridlines/>\n") +
           QLatin1String("</x:WorksheetOptions>\n"
                         "</xml><![endif]-->\n");
}

void SheetWriter::writeTable() {
    writeColumns();
    std::map<int, Row> rows;
    for (auto cell = m_contents.cells.cbegin(); cell != m_contents.cells.cend(); ++cell)
        if (!cell->isBare())
            rows[cell.key().row][cell.key().column].cell = &*cell;
    for (const CellRange& merge : m_contents.merges)
        rows[merge.first.row][merge.first.column].merge = &merge;
    int last = rows.empty() ? -1 : rows.rbegin()->first;
    for (const CellRange& merge : m_contents.merges)
        last = std::max(last, merge.last.row);
    if (!m_contents.rowHeights.isEmpty())
        last = std::max(last, m_contents.rowHeights.lastKey());
    for (int row = 0; row <= last; ++row) {
        const auto found = rows.find(row);
        writeRow(row, found == rows.end() ? Row() : found->second);
    }
}

void SheetWriter::writeColumns() {
    const int count =
        std::max(m_contents.usedRange().last.column + 1,
                 m_contents.columnWidths.isEmpty() ? 0 : m_contents.columnWidths.lastKey() + 1);
    int total = 0;
    QString columns;
    for (int column = 0; column < count; ++column) {
        const int width = m_contents.columnWidth(column);
        total += width;
        columns += QLatin1String("<col") + attribute("width", width);
        if (m_contents.columnWidths.contains(column)) // tells it from a column of standard width
            columns += QStringLiteral(" style=\"width:%1px%2\"")
                           .arg(QString::number(width),
                                width == 0 ? QStringLiteral(";visibility:collapse") : QString());
        columns += QLatin1String(">\n");
    }
    m_body += QLatin1String("<table class=sheet border=0 cellspacing=0 cellpadding=0") +
              attribute("width", total) + QLatin1String(">\n<colgroup>\n") + columns +
              QLatin1String("</colgroup>\n");
}

void SheetWriter::writeRow(int row, const Row& places) {
    std::erase_if(m_openMerges, [&](const auto& merge) { return merge.second->last.row < row; });
    m_body += QLatin1String("<tr");
    if (const auto height = m_contents.rowHeights.constFind(row);
        height != m_contents.rowHeights.cend())
        m_body += attribute("height", *height) +
                  QStringLiteral(" style=\"height:%1px%2\"")
                      .arg(QString::number(*height),
                           *height == 0 ? QStringLiteral(";display:none") : QString());
    m_body += QLatin1String(">\n");
    int column = 0; // the next one to be written
    auto open = m_openMerges.begin();
    std::vector<const CellRange*> opened;
    const auto goTo = [&](int target) {
        for (; open != m_openMerges.end() && open->first < target; ++open) {
            writeGap(column, open->first - column);
            column = open->second->last.column + 1;
        }
        writeGap(column, target - column);
        column = std::max(column, target);
    };
    for (const auto& [at, place] : places) {
        goTo(at);
        const bool isCovered = at < column || (open != m_openMerges.end() && open->first == at);
        if (isCovered) {
            if (place.cell)
                writeCovered({row, at}, *place.cell);
            continue;
        }
        writePlace(row, {.column = at, .cell = place.cell, .merge = place.merge});
        column = place.merge ? place.merge->last.column + 1 : at + 1;
        if (place.merge)
            opened.push_back(place.merge);
    }
    for (const CellRange* merge : opened)
        m_openMerges[merge->first.column] = merge;
    m_body += QLatin1String("</tr>\n");
}

void SheetWriter::writePlace(int row, const Place& place) {
    static const Cell bare;
    QString placing;
    if (!place.merge || place.merge->columns() == 1)
        placing += widthHint(place.column);
    if (place.merge && place.merge->columns() > 1)
        placing += attribute("colspan", place.merge->columns());
    if (place.merge && place.merge->rows() > 1)
        placing += attribute("rowspan", place.merge->rows());
    m_body += cellMarkup({row, place.column}, place.cell ? *place.cell : bare, placing) +
              QLatin1Char('\n');
}

/// Some programs take the widths of columns from cells only; the first of each column has it.
QString SheetWriter::widthHint(int column) {
    if (!m_sizedColumns.insert(column).second)
        return {};
    return attribute("width", m_contents.columnWidth(column));
}

/// What lies under a merge. For other programs it isn't there.
void SheetWriter::writeCovered(CellAddress at, const Cell& cell) {
    QString markup = cellMarkup(at, cell, attribute("data-at", AddressText(at)));
    m_body += QLatin1String("<!--covered ") +
              markup.replace(QLatin1String("--"), QLatin1String("-&#45;")) + QLatin1String("-->\n");
}

/// A long gap is one cell, or a cell far to the right would make a huge file.
void SheetWriter::writeGap(int first, int columns) {
    if (columns > longestGap)
        m_body += QStringLiteral("<td data-gap colspan=%1></td>\n").arg(columns);
    else
        for (int column = first; column < first + columns; ++column)
            m_body += QLatin1String("<td") + widthHint(column) + QLatin1String("></td>\n");
}

/// Behind the class there is always a blank: the comparison of saved sheets skips as far as that.
QString SheetWriter::cellMarkup(CellAddress at, const Cell& cell, const QString& placing) {
    const QString name = m_classes.nameOf(cell.style);
    QString attributes = name.isEmpty() ? QString() : QLatin1String(" class=") + name;
    attributes += placing + placingHints(cell) +
                  std::visit(ValueAttributes{cell.style.numberFormat}, cell.value) +
                  formulaAttributes(cell.formula, at);
    const bool endsWithClass = !name.isEmpty() && attributes.lastIndexOf(u' ') == 0;
    return QLatin1String("<td") + attributes + QLatin1String(endsWithClass ? " >" : ">") +
           visibleMarkup(cell) + QLatin1String("</td>");
}

} // namespace

QString WriteSheetHtml(const SheetContents& contents) {
    if (contents.cells.size() > MostSheetCells)
        Raise(errors::BadArgument, QStringLiteral("The sheet holds too many cells to be saved."));
    const QString text = SheetWriter(contents).text();
    if (text.size() > LargestSheetFile || text.toUtf8().size() > LargestSheetFile)
        Raise(errors::BadArgument, QStringLiteral("The sheet is too large to be saved."));
    return text;
}

} // namespace kelvrane
