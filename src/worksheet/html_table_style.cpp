#include "worksheet/html_table_style.h"

#include "worksheet/cell_text.h"

#include <algorithm>
#include <charconv>

namespace kelvrane {

namespace {

constexpr qsizetype mostKeptStyles = 10'000;
constexpr int largestPadding = 2; ///< CSS pixels; wider is an indent

/// A presentational attribute as the declaration that says the same.
void readProperty(QByteArrayView property, QByteArrayView value, CssBox& box) {
    QByteArray declaration = property.toByteArray();
    declaration.append(':').append(value);
    if (!value.contains(';'))
        ReadDeclarations(declaration, box);
}

void readFontElement(const HtmlTag& tag, CellStyle& style) {
    constexpr double sizes[] = {7, 10, 12, 14, 18, 24, 36};
    CssBox box{.style = style};
    if (const auto face = tag.value("face"))
        readProperty("font-family", *face, box);
    if (const auto color = tag.value("color"))
        if (const QRgb ink = ReadCssColor(*color); ink != CellStyle::NoColor)
            box.style.ink = ink;
    if (const auto size = tag.value("size")) {
        int step = 0;
        std::from_chars(size->begin(), size->end(), step);
        if (step >= 1)
            box.style.pointSize = sizes[std::min<size_t>(step, std::size(sizes)) - 1];
    }
    style = box.style;
}

/// Only what text has; an inline element has no fill, border or alignment of the cell.
void takeFont(CellStyle& style, const CellStyle& font) {
    style.fontFamily = font.fontFamily;
    style.pointSize = font.pointSize;
    style.bold = font.bold;
    style.italic = font.italic;
    style.underline = font.underline;
    style.ink = font.ink;
}

/// What the row says counts where the cell says nothing.
void inherit(CellStyle& style, const CellStyle& row) {
    const CellStyle none;
    const auto take = [&](auto CellStyle::*member) {
        if (style.*member == none.*member)
            style.*member = row.*member;
    };
    take(&CellStyle::fontFamily);
    take(&CellStyle::pointSize);
    take(&CellStyle::bold);
    take(&CellStyle::italic);
    take(&CellStyle::underline);
    take(&CellStyle::ink);
    take(&CellStyle::fill);
    take(&CellStyle::horizontal);
    take(&CellStyle::vertical);
    take(&CellStyle::wraps);
    take(&CellStyle::numberFormat);
}

} // namespace

void HtmlTableStyle::addAttributes(const HtmlTag& tag, CellStyle& style) const {
    CssBox box{.style = style};
    const auto declare = [&](const char* attribute, QByteArrayView property) {
        const auto value = tag.value(attribute);
        if (value)
            readProperty(property, *value, box);
    };
    declare("align", "text-align");
    declare("valign", "vertical-align");
    if (const auto fill = tag.value("bgcolor"))
        box.style.fill = ReadCssColor(*fill);
    if (const auto declarations = tag.value("style"))
        ReadDeclarations(*declarations, box);
    style = box.style;
}

CellStyle HtmlTableStyle::classStyle(QByteArrayView element, QByteArrayView classes) {
    const QByteArray key = element.toByteArray() + ' ' + classes.toByteArray();
    if (const auto known = m_classStyles.constFind(key); known != m_classStyles.cend())
        return *known;
    CssBox box;
    if (!m_isOurs)
        box.style = element == "tr" ? CellStyle{} : m_table;
    box.style.bold |= element == "th";
    if (element == "th")
        box.style.horizontal = HorizontalAlign::Center;
    m_rules.apply(element, classes, box);
    if (m_classStyles.size() >= mostKeptStyles)
        m_classStyles.clear();
    return *m_classStyles.insert(key, box.style);
}

void HtmlTableStyle::beginBody(const HtmlTag& tag) {
    CssBox box;
    m_rules.apply("body", tag.value("class").value_or(QByteArrayView()), box);
    takeFont(m_body, box.style);
}

void HtmlTableStyle::beginTable(const HtmlTag& tag, bool isOurs) {
    m_isOurs = isOurs;
    m_classStyles.clear();
    m_bareCell.reset();
    m_row = {};
    m_rowHasStyle = false;
    CssBox box{.style = m_body};
    m_rules.apply("table", tag.value("class").value_or(QByteArrayView()), box);
    m_table = {};
    takeFont(m_table, box.style);
    if (isOurs) {
        keepFont(m_table);
        return;
    }
    CellStyle own = box.style;
    addAttributes(tag, own);
    takeFont(m_table, own);
    m_table.fill = own.fill;
    // The rule for all cells, where there is one, speaks for the sheet.
    CssBox cells{.style = m_table};
    m_rules.apply("td", {}, cells);
    keepFont(cells.style);
}

void HtmlTableStyle::keepFont(const CellStyle& style) {
    const SheetContents plain;
    m_fontFamily = style.fontFamily.isEmpty() && !m_isOurs ? plain.fontFamily : style.fontFamily;
    m_pointSize = style.pointSize == 0 ? plain.pointSize : style.pointSize;
}

void HtmlTableStyle::beginRow(const HtmlTag& tag) {
    if (m_isOurs)
        return;
    m_row = classStyle("tr", tag.value("class").value_or(QByteArrayView()));
    addAttributes(tag, m_row);
    m_rowHasStyle = m_row != CellStyle{};
}

CellStyle HtmlTableStyle::cellStyle(const HtmlTag& tag) {
    const auto classes = tag.value("class");
    if (m_isOurs)
        return classes ? classStyle("td", *classes) : CellStyle{};
    if (tag.isBare() && tag.name == "td" && !m_rowHasStyle) {
        if (!m_bareCell)
            m_bareCell = classStyle("td", {});
        return *m_bareCell;
    }
    CellStyle style = classStyle(tag.name, classes.value_or(QByteArrayView()));
    addAttributes(tag, style);
    if (m_rowHasStyle)
        inherit(style, m_row);
    return style;
}

void HtmlTableStyle::addInline(const HtmlTag& tag, CellStyle& style) const {
    if (tag.name == "b" || tag.name == "strong")
        style.bold = true;
    else if (tag.name == "i" || tag.name == "em")
        style.italic = true;
    else if (tag.name == "u")
        style.underline = true;
    else if (tag.name == "font")
        readFontElement(tag, style);
    CssBox box{.style = style};
    if (const auto classes = tag.value("class"))
        m_rules.apply(tag.name, *classes, box);
    if (const auto declarations = tag.value("style"))
        ReadDeclarations(*declarations, box);
    takeFont(style, box.style);
}

void HtmlTableStyle::tidy(Cell& cell) const {
    CellStyle& style = cell.style;
    if (style.fontFamily == m_fontFamily)
        style.fontFamily.clear();
    if (style.pointSize == m_pointSize)
        style.pointSize = 0;
    if (style.ink == qRgb(0, 0, 0))
        style.ink = CellStyle::NoColor;
    if (style.fill == qRgb(0xff, 0xff, 0xff))
        style.fill = CellStyle::NoColor;
    if (style.horizontal == NaturalAlign(cell))
        style.horizontal = HorizontalAlign::General;
    if (style.indent <= largestPadding)
        style.indent = 0;
    for (CellBorder* border : {&style.left, &style.top, &style.right, &style.bottom})
        if (border->line == CellBorder::Line::None)
            *border = {};
}

void HtmlTableStyle::giveFont(SheetContents& sheet) const {
    sheet.fontFamily = m_fontFamily;
    sheet.pointSize = m_pointSize;
}

std::optional<int> HtmlTableStyle::sideOf(const HtmlTag& tag, Side side) const {
    CssBox box;
    const auto attribute = tag.value(side == Side::Width ? "width" : "height");
    if (attribute && !m_isOurs)
        readProperty(side == Side::Width ? "width" : "height", *attribute, box);
    const auto declarations = tag.value("style");
    if (declarations)
        ReadDeclarations(*declarations, box);
    if (box.isHidden && tag.name != "td")
        return 0;
    return side == Side::Width ? box.width : box.height;
}

} // namespace kelvrane
