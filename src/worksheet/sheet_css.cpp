#include "worksheet/sheet_css.h"

#include "worksheet/css_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kelvrane {

namespace {

constexpr qsizetype mostRules = 65'536;
constexpr qsizetype longestSelector = 4096; ///< bytes
constexpr int largestSide = 4000;           ///< CSS pixels; what a page asks beyond it is cut
constexpr double largestFont = 409;
constexpr double pixelsToPoints = 0.75;

int pixels(double length, int most) {
    return static_cast<int>(std::lround(std::clamp(length, 0.0, static_cast<double>(most))));
}

void readFamily(CssBox& box, QByteArrayView value) {
    box.style.fontFamily = StringOf(TakeTo(',', value), EscapeCodes::UpToSix);
}

void readFontSize(CssBox& box, QByteArrayView value) {
    // The words as spreadsheet programs use them for the seven sizes of a font element.
    constexpr struct {
        const char* word;
        double points;
    } sizes[] = {{"xx-small", 7}, {"x-small", 10}, {"small", 12},   {"medium", 14},
                 {"large", 18},   {"x-large", 24}, {"xx-large", 36}};
    for (const auto& size : sizes)
        if (IsWord(value, size.word))
            box.style.pointSize = size.points;
    double points = 0;
    const auto [end, fault] = std::from_chars(value.begin(), value.end(), points);
    if (fault != std::errc())
        return;
    if (!IsWord(QByteArrayView(end, value.end()), "pt"))
        points = ReadCssLength(value).value_or(0) * pixelsToPoints;
    if (points > 0)
        box.style.pointSize = std::clamp(points, 1.0, largestFont);
}

void readWeight(CssBox& box, QByteArrayView value) {
    box.style.bold = IsWord(value, "bold") || IsWord(value, "bolder") ||
                     (value.size() == 3 && value[0] >= '6' && value[0] <= '9');
}

void readFontStyle(CssBox& box, QByteArrayView value) {
    box.style.italic = IsWord(value, "italic") || IsWord(value, "oblique");
}

void readDecoration(CssBox& box, QByteArrayView value) {
    box.style.underline = false;
    for (QByteArrayView word = TakeWord(value); !word.isEmpty(); word = TakeWord(value))
        box.style.underline |= IsWord(word, "underline");
}

void readInk(CssBox& box, QByteArrayView value) {
    box.style.ink = ReadCssColor(value);
}

/// The colour may stand among other words: "url(x.png) #ff0000".
void readFill(CssBox& box, QByteArrayView value) {
    box.style.fill = CellStyle::NoColor;
    for (QByteArrayView word = TakeWord(value); !word.isEmpty(); word = TakeWord(value))
        if (const QRgb color = ReadCssColor(word); color != CellStyle::NoColor)
            box.style.fill = color;
}

void readHorizontal(CssBox& box, QByteArrayView value) {
    using enum HorizontalAlign;
    box.style.horizontal = IsWord(value, "left")     ? Left
                           : IsWord(value, "center") ? Center
                           : IsWord(value, "right")  ? Right
                                                     : General;
}

void readVertical(CssBox& box, QByteArrayView value) {
    using enum VerticalAlign;
    box.style.vertical = IsWord(value, "top") ? Top : IsWord(value, "middle") ? Middle : Bottom;
}

void readWhiteSpace(CssBox& box, QByteArrayView value) {
    box.style.wraps = IsWord(value, "normal") || IsWord(value, "pre-wrap");
}

void readIndent(CssBox& box, QByteArrayView value) {
    constexpr int most = 1000;
    if (const auto length = ReadCssLength(value))
        box.style.indent = pixels(*length, most);
}

CellBorder borderOf(QByteArrayView value) {
    using enum CellBorder::Line;
    constexpr struct {
        const char* word;
        CellBorder::Line line;
    } lines[] = {{"none", None},     {"hidden", None},   {"solid", Solid},  {"dashed", Dashed},
                 {"dotted", Dotted}, {"double", Double}, {"groove", Solid}, {"ridge", Solid},
                 {"inset", Solid},   {"outset", Solid}};
    constexpr struct {
        const char* word;
        int width;
    } widths[] = {{"thin", 1}, {"medium", 2}, {"thick", 3}};
    CellBorder border;
    for (QByteArrayView word = TakeWord(value); !word.isEmpty(); word = TakeWord(value)) {
        const auto line =
            std::ranges::find_if(lines, [&](auto& row) { return IsWord(word, row.word); });
        const auto width =
            std::ranges::find_if(widths, [&](auto& row) { return IsWord(word, row.word); });
        if (line != std::end(lines))
            border.line = line->line;
        else if (width != std::end(widths))
            border.width = width->width;
        else if (const auto length = ReadCssLength(word))
            border.width = std::max(1, pixels(*length, 9));
        else if (const QRgb color = ReadCssColor(word); color != CellStyle::NoColor)
            border.color = color;
    }
    return border;
}

void readBorder(CssBox& box, QByteArrayView value) {
    box.style.left = box.style.top = box.style.right = box.style.bottom = borderOf(value);
}

/// The codes of a number format have four digits. Words stand for formats of their own.
void readNumberFormat(CssBox& box, QByteArrayView value) {
    constexpr struct {
        const char* word;
        const char* format;
    } names[] = {
        {"General", ""},
        {"Fixed", "0.00"},
        {"Standard", "#,##0.00"},
        {"Percent", "0.00%"},
        {"Scientific", "0.00E+00"},
        {"Currency", "$#,##0.00"},
        {"\"Short Date\"", "m/d/yyyy"},
        {"\"Medium Date\"", "d-mmm-yy"},
        {"\"Long Date\"", "dddd, mmmm d, yyyy"},
        {"\"General Date\"", "m/d/yyyy h:mm"},
        {"\"Short Time\"", "h:mm"},
        {"\"Medium Time\"", "h:mm AM/PM"},
        {"\"Long Time\"", "h:mm:ss AM/PM"},
    };
    for (const auto& name : names)
        if (IsWord(value, name.word)) {
            box.style.numberFormat = QLatin1String(name.format);
            return;
        }
    box.style.numberFormat = StringOf(value, EscapeCodes::Four);
}

void readSide(std::optional<int>& side, QByteArrayView value) {
    if (const auto length = ReadCssLength(value))
        side = pixels(*length, largestSide);
}

struct Property {
    QByteArrayView name;
    void (*read)(CssBox& box, QByteArrayView value);
};

/// By name.
constexpr Property properties[] = {
    {"background", readFill},
    {"background-color", readFill},
    {"border", readBorder},
    {"border-bottom",
     [](CssBox& box, QByteArrayView value) { box.style.bottom = borderOf(value); }},
    {"border-left", [](CssBox& box, QByteArrayView value) { box.style.left = borderOf(value); }},
    {"border-right", [](CssBox& box, QByteArrayView value) { box.style.right = borderOf(value); }},
    {"border-top", [](CssBox& box, QByteArrayView value) { box.style.top = borderOf(value); }},
    {"color", readInk},
    {"display", [](CssBox& box, QByteArrayView value) { box.isHidden = IsWord(value, "none"); }},
    {"font-family", readFamily},
    {"font-size", readFontSize},
    {"font-style", readFontStyle},
    {"font-weight", readWeight},
    {"height", [](CssBox& box, QByteArrayView value) { readSide(box.height, value); }},
    {"mso-number-format", readNumberFormat},
    {"padding-left", readIndent},
    {"padding-right", readIndent},
    {"text-align", readHorizontal},
    {"text-decoration", readDecoration},
    {"vertical-align", readVertical},
    {"white-space", readWhiteSpace},
    {"width", [](CssBox& box, QByteArrayView value) { readSide(box.width, value); }},
};

/// Calls the visitor with a function for each member that a declaration can set, in a fixed order.
template <typename Visit>
void forEachMember(Visit visit) {
    const auto inStyle = [&](auto... members) {
        (visit([members](auto& box) -> auto& { return box.style.*members; }), ...);
    };
    inStyle(&CellStyle::fontFamily, &CellStyle::pointSize, &CellStyle::bold, &CellStyle::italic,
            &CellStyle::underline, &CellStyle::ink, &CellStyle::fill, &CellStyle::horizontal,
            &CellStyle::vertical, &CellStyle::wraps, &CellStyle::indent, &CellStyle::left,
            &CellStyle::top, &CellStyle::right, &CellStyle::bottom, &CellStyle::numberFormat);
    visit([](auto& box) -> auto& { return box.width; });
    visit([](auto& box) -> auto& { return box.height; });
    visit([](auto& box) -> auto& { return box.isHidden; });
}

/// A box that differs from a bare one in every member.
CssBox unlikeBare() {
    CssBox box;
    CellStyle& style = box.style;
    style.fontFamily = style.numberFormat = QStringLiteral("-");
    style.pointSize = style.indent = -1;
    style.bold = style.italic = style.underline = style.wraps = true;
    style.ink = style.fill = ~CellStyle::NoColor;
    style.horizontal = HorizontalAlign::Right;
    style.vertical = VerticalAlign::Top;
    style.left.width = style.top.width = style.right.width = style.bottom.width = -1;
    box.width = box.height = -1;
    box.isHidden = true;
    return box;
}

} // namespace

void ReadDeclarations(QByteArrayView declarations, CssBox& box) {
    constexpr QByteArrayView important = "!important";
    while (!declarations.isEmpty()) {
        QByteArrayView declaration = TakeTo(';', declarations);
        const QByteArrayView name = TakeTo(':', declaration);
        QByteArrayView value = declaration.trimmed();
        if (value.size() > important.size() && IsWord(value.last(important.size()), important))
            value = value.chopped(important.size()).trimmed();
        const QByteArray lower = name.toByteArray().toLower();
        const auto property = std::ranges::lower_bound(properties, QByteArrayView(lower),
                                                       std::less<>(), &Property::name);
        if (property != std::end(properties) && property->name == lower && !value.isEmpty())
            property->read(box, value);
    }
}

CssChanges::CssChanges(QByteArrayView declarations) {
    // Read over two boxes that differ in every member: where they agree afterwards, it was set.
    CssBox other = unlikeBare();
    ReadDeclarations(declarations, m_box);
    ReadDeclarations(declarations, other);
    forEachMember([&, bit = 1U](auto member) mutable {
        m_changed |= member(m_box) == member(other) ? bit : 0;
        bit <<= 1;
    });
}

void CssChanges::apply(CssBox& box) const {
    forEachMember([&, bit = 1U](auto member) mutable {
        if (m_changed & bit)
            member(box) = member(m_box);
        bit <<= 1;
    });
}

void CssChanges::add(const CssChanges& later) {
    later.apply(m_box);
    m_changed |= later.m_changed;
}

QRgb ReadCssColor(QByteArrayView text) {
    text = text.trimmed();
    if (text.startsWith('#')) {
        const QByteArrayView digits = text.sliced(1);
        if (!std::ranges::all_of(digits, [](char digit) { return HexDigit(digit) >= 0; }))
            return CellStyle::NoColor;
        uint value = 0;
        std::from_chars(digits.begin(), digits.end(), value, 16);
        if (digits.size() == 3)
            return qRgb((value >> 8 & 0xf) * 17, (value >> 4 & 0xf) * 17, (value & 0xf) * 17);
        if (digits.size() == 6)
            return 0xff000000U | value;
        if (digits.size() == 8)
            return value >> 8 | value << 24;
        return CellStyle::NoColor;
    }
    if (text.startsWith("rgb")) {
        int parts[3] = {};
        int count = 0;
        const char* at = text.begin();
        while (at < text.end() && count < 3) {
            const auto [next, fault] = std::from_chars(at, text.end(), parts[count]);
            count += fault == std::errc();
            at = fault == std::errc() ? next : at + 1;
        }
        return count == 3 ? qRgb(std::clamp(parts[0], 0, 255), std::clamp(parts[1], 0, 255),
                                 std::clamp(parts[2], 0, 255))
                          : CellStyle::NoColor;
    }
    if (IsWord(text, "windowtext"))
        return qRgb(0, 0, 0);
    constexpr qsizetype longestName = 30;
    if (text.isEmpty() || text.size() > longestName || IsWord(text, "transparent"))
        return CellStyle::NoColor;
    const QColor named(QString::fromLatin1(text));
    return named.isValid() ? named.rgb() : CellStyle::NoColor;
}

std::optional<double> ReadCssLength(QByteArrayView text) {
    constexpr struct {
        const char* unit;
        double pixels;
    } units[] = {{"", 1},           {"px", 1},          {"pt", 4.0 / 3}, {"in", 96},
                 {"cm", 96 / 2.54}, {"mm", 9.6 / 2.54}, {"pc", 16},      {"em", 13}};
    text = text.trimmed();
    double number = 0;
    const auto [end, fault] = std::from_chars(text.begin(), text.end(), number);
    if (fault != std::errc() || !std::isfinite(number))
        return std::nullopt;
    const QByteArrayView unit(end, text.end());
    for (const auto& row : units)
        if (IsWord(unit, row.unit))
            return number * row.pixels;
    return std::nullopt;
}

void StyleSheet::add(QByteArrayView css) {
    while (!css.isEmpty()) {
        css = css.trimmed();
        if (css.startsWith("/*")) {
            const qsizetype end = css.indexOf("*/", 2);
            css = end < 0 ? QByteArrayView() : css.sliced(end + 2);
            continue;
        }
        if (css.startsWith("<!--") || css.startsWith("-->")) {
            css = css.sliced(css.startsWith('<') ? 4 : 3);
            continue;
        }
        if (css.startsWith('@')) {
            SkipAtRule(css);
            continue;
        }
        const QByteArrayView selectors = TakeTo('{', css);
        addRule(selectors, TakeTo('}', css));
    }
}

void StyleSheet::addRule(QByteArrayView selectors, QByteArrayView declarations) {
    const CssChanges changes(declarations);
    while (!selectors.isEmpty()) {
        const QByteArrayView selector = TakeTo(',', selectors);
        if (selector.isEmpty() || selector.size() > longestSelector || selector.contains(' '))
            continue;
        const QByteArray key = selector.toByteArray();
        if (const auto known = m_rules.find(key); known != m_rules.end())
            known->add(changes);
        else if (m_rules.size() < mostRules)
            m_rules.insert(key, changes);
    }
}

void StyleSheet::applyRule(const QByteArray& selector, CssBox& box) const {
    const auto rule = m_rules.constFind(selector);
    if (rule != m_rules.cend())
        rule->apply(box);
}

void StyleSheet::apply(QByteArrayView element, QByteArrayView classes, CssBox& box) const {
    if (m_rules.isEmpty())
        return;
    applyRule(element.toByteArray(), box);
    for (QByteArrayView word = TakeWord(classes); !word.isEmpty(); word = TakeWord(classes)) {
        const QByteArray selector = '.' + word.toByteArray();
        applyRule(selector, box);
        applyRule(element.toByteArray() + selector, box);
    }
}

} // namespace kelvrane
