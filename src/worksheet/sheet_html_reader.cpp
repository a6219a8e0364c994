#include "platform/error.h"
#include "worksheet/formula.h"
#include "worksheet/html_cell_value.h"
#include "worksheet/html_page.h"
#include "worksheet/html_table_style.h"
#include "worksheet/sheet_html.h"
#include "worksheet/sheet_markup.h"
#include "worksheet/table_grid.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>
#include <utility>

namespace kelvrane {

namespace {

constexpr QByteArrayView coveredMark = "covered ";

int wholeNumber(const std::optional<QByteArrayView>& value, int otherwise) {
    bool isNumber = false;
    const qlonglong number = value ? value->toByteArray().trimmed().toLongLong(&isNumber) : 0;
    return isNumber ? static_cast<int>(std::clamp<qlonglong>(number, 0, SheetRows)) : otherwise;
}

/// False for formulas that aren't ours, and for those that look at another sheet.
bool canCompute(const QString& formula) {
    static const QRegularExpression textsAndErrors(QStringLiteral(R"re("[^"]*+"?|#[A-Z0/]++!)re"),
                                                   QRegularExpression::CaseInsensitiveOption);
    return Formula(formula).isValid() && !QString(formula).remove(textsAndErrors).contains(u'!');
}

class SheetReader : public HtmlEvents {
  public:
    SheetContents takeSheet();
    /// Cells that lie under merges stand in comments of our own files; they are read in a second
    /// pass, as a table of their own.
    QByteArray coveredCells() const;
    void readCovered(const QByteArray& page);

    void opened(const HtmlTag& tag) override;
    void closed(QByteArrayView name) override;
    void text(QByteArrayView utf8) override;
    void styleText(QByteArrayView utf8) override;
    void comment(QByteArrayView utf8) override;
    bool wantsMore() const override { return m_state != State::Done; }

  private:
    enum class State { Before, Inside, Done };
    struct OpenCell {
        CellRange range;
        bool isMerge = false;
        Cell cell;
        CellSource source;
        QString text;
    };

    void openMeta(const HtmlTag& tag);
    void openTitle(const HtmlTag& tag);
    void openTable(const HtmlTag& tag);
    void openColumnGroup(const HtmlTag& tag);
    void openColumn(const HtmlTag& tag);
    void openRow(const HtmlTag& tag);
    void openCell(const HtmlTag& tag);
    void breakLine(const HtmlTag& tag);
    void openFont(const HtmlTag& tag);
    void closeStyle();
    void closeTable();
    void closeColumnGroup();
    void closeCell();
    void addColumns(int count, std::optional<int> width);
    void placeCell(const HtmlTag& tag);
    void store(OpenCell&& open);
    void startTable();
    QString tidyText(const QString& text) const;

    struct Element {
        QByteArrayView name;
        void (SheetReader::*open)(const HtmlTag& tag);
        void (SheetReader::*close)();
    };
    static const Element elements[];
    static const Element* elementOf(QByteArrayView name);

    State m_state = State::Before;
    bool m_isOurs = false; ///< written by WriteSheetHtml: what it says is taken as it stands
    PlainCells m_plain = PlainCells::Typed;
    HtmlTableStyle m_styles;
    SheetContents m_sheet;
    TableGrid m_grid;
    std::optional<OpenCell> m_cell;
    QString m_title;
    bool m_isInTitle = false;
    bool m_hasTable = false;
    bool m_hasValues = false;
    bool m_readsCovered = false;
    int m_innerTables = 0; ///< within the cell
    int m_nextColumn = 0;
    std::optional<std::pair<int, std::optional<int>>> m_columnGroup; ///< without columns so far
    QByteArray m_rules; ///< of a style element that is still open
    QByteArray m_covered;
};

/// By name.
const SheetReader::Element SheetReader::elements[] = {
    {"b", &SheetReader::openFont, nullptr},
    {"body", &SheetReader::openFont, nullptr},
    {"br", &SheetReader::breakLine, nullptr},
    {"col", &SheetReader::openColumn, nullptr},
    {"colgroup", &SheetReader::openColumnGroup, &SheetReader::closeColumnGroup},
    {"div", &SheetReader::breakLine, nullptr},
    {"em", &SheetReader::openFont, nullptr},
    {"font", &SheetReader::openFont, nullptr},
    {"i", &SheetReader::openFont, nullptr},
    {"li", &SheetReader::breakLine, nullptr},
    {"meta", &SheetReader::openMeta, nullptr},
    {"p", &SheetReader::breakLine, nullptr},
    {"span", &SheetReader::openFont, nullptr},
    {"strong", &SheetReader::openFont, nullptr},
    {"style", nullptr, &SheetReader::closeStyle},
    {"table", &SheetReader::openTable, &SheetReader::closeTable},
    {"td", &SheetReader::openCell, &SheetReader::closeCell},
    {"th", &SheetReader::openCell, &SheetReader::closeCell},
    {"title", &SheetReader::openTitle, nullptr},
    {"tr", &SheetReader::openRow, nullptr},
    {"u", &SheetReader::openFont, nullptr},
};

const SheetReader::Element* SheetReader::elementOf(QByteArrayView name) {
    const auto found = std::ranges::lower_bound(elements, name, std::less<>(), &Element::name);
    return found != std::end(elements) && found->name == name ? found : nullptr;
}

void SheetReader::opened(const HtmlTag& tag) {
    if (const Element* element = elementOf(tag.name); element && element->open)
        (this->*element->open)(tag);
}

void SheetReader::closed(QByteArrayView name) {
    if (name == "title")
        m_isInTitle = false;
    if (const Element* element = elementOf(name); element && element->close)
        (this->*element->close)();
}

void SheetReader::text(QByteArrayView utf8) {
    if (m_isInTitle)
        m_title += QString::fromUtf8(utf8);
    else if (m_cell && !(m_cell->source.value && m_isOurs))
        m_cell->text += QString::fromUtf8(utf8);
}

void SheetReader::styleText(QByteArrayView utf8) {
    m_rules.append(utf8);
}

void SheetReader::closeStyle() {
    m_styles.addRules(std::exchange(m_rules, {}));
}

/// Conditional comments hold the settings of the sheet.
void SheetReader::comment(QByteArrayView utf8) {
    if (utf8.indexOf("<x:WorksheetOptions>") >= 0)
        m_sheet.showsGrid = utf8.indexOf("<x:DoNotDisplayGridlines/>") < 0;
    if (m_isOurs && m_state == State::Inside && utf8.startsWith(coveredMark))
        m_covered.append(utf8.sliced(coveredMark.size()));
}

void SheetReader::openMeta(const HtmlTag& tag) {
    if (m_state != State::Before || tag.value("name") != QByteArrayView("generator"))
        return;
    const QByteArrayView generator = tag.value("content").value_or(QByteArrayView());
    m_isOurs = generator == "Kelvrane";
    if (generator.startsWith("LibreOffice"))
        m_plain = PlainCells::Text;
}

void SheetReader::openTitle(const HtmlTag& tag) {
    if (m_state != State::Before || !m_title.isEmpty())
        return;
    if (const auto exact = tag.value("data-text"))
        m_title = TextOfExact(QString::fromUtf8(*exact));
    else
        m_isInTitle = true;
}

void SheetReader::startTable() {
    const bool showsGrid = m_sheet.showsGrid;
    m_sheet = {};
    m_sheet.showsGrid = showsGrid;
    m_grid = {};
    m_cell.reset();
    m_columnGroup.reset();
    m_nextColumn = 0;
    m_innerTables = 0;
    m_hasValues = false;
}

void SheetReader::openTable(const HtmlTag& tag) {
    if (m_readsCovered)
        return;
    const bool isLayout = m_cell && !m_hasValues && !m_isOurs && m_cell->text.trimmed().isEmpty();
    if (m_state == State::Inside && !isLayout) {
        ++m_innerTables;
        return;
    }
    startTable();
    m_state = State::Inside;
    m_hasTable = true;
    m_styles.beginTable(tag, m_isOurs);
}

void SheetReader::closeTable() {
    if (m_state != State::Inside)
        return;
    if (m_innerTables > 0) {
        --m_innerTables;
        return;
    }
    m_cell.reset();
    m_state = m_hasValues || m_isOurs ? State::Done : State::Before;
}

void SheetReader::addColumns(int count, std::optional<int> width) {
    const int end = std::min(m_nextColumn + std::max(count, 1), SheetColumns);
    for (; m_nextColumn < end; ++m_nextColumn)
        if (width)
            m_sheet.columnWidths.insert(m_nextColumn, *width);
}

void SheetReader::openColumnGroup(const HtmlTag& tag) {
    if (m_state == State::Inside && m_innerTables == 0)
        m_columnGroup = {wholeNumber(tag.value("span"), 1), m_styles.sideOf(tag, Side::Width)};
}

void SheetReader::closeColumnGroup() {
    if (const auto group = std::exchange(m_columnGroup, std::nullopt); group && !m_isOurs)
        addColumns(group->first, group->second);
}

void SheetReader::openColumn(const HtmlTag& tag) {
    if (m_state != State::Inside || m_innerTables > 0)
        return;
    m_columnGroup.reset();
    addColumns(wholeNumber(tag.value("span"), 1), m_styles.sideOf(tag, Side::Width));
}

void SheetReader::openRow(const HtmlTag& tag) {
    if (m_state != State::Inside)
        return;
    if (m_innerTables > 0) {
        breakLine(tag);
        return;
    }
    m_grid.beginRow();
    m_styles.beginRow(tag);
    if (!m_grid.isWithinSheet())
        return;
    if (const auto height = m_styles.sideOf(tag, Side::Height))
        m_sheet.rowHeights.insert(m_grid.row(), *height);
}

void SheetReader::openCell(const HtmlTag& tag) {
    if (m_state != State::Inside && !m_readsCovered)
        return;
    if (m_innerTables > 0) {
        if (m_cell)
            m_cell->text += u' ';
        return;
    }
    if (m_readsCovered) {
        const auto at = ParseAddress(QString::fromUtf8(tag.value("data-at").value_or("")));
        m_cell.reset();
        if (at)
            m_cell = OpenCell{.range = {.first = *at, .last = *at}};
    } else {
        placeCell(tag);
    }
    if (!m_cell)
        return;
    if (!tag.isBare())
        m_cell->source = CellSourceOf(tag, m_cell->range.first);
    QString& formula = m_cell->source.formula;
    if (!m_isOurs && !formula.isEmpty() && !canCompute(formula))
        formula.clear(); // the value it was saved with says more than #NAME? or #REF!
    m_cell->cell.style = m_styles.cellStyle(tag);
    if (m_isOurs)
        m_cell->source.numberFormat.clear(); // the style has it
}

void SheetReader::placeCell(const HtmlTag& tag) {
    m_cell.reset();
    const auto range =
        m_grid.place(wholeNumber(tag.value("colspan"), 1), wholeNumber(tag.value("rowspan"), 1));
    if (!range)
        return;
    const bool isMerge = range->first != range->last && !(m_isOurs && tag.has("data-gap"));
    m_cell = OpenCell{.range = *range, .isMerge = isMerge};
    if (m_isOurs || tag.isBare())
        return;
    if (const auto height = m_styles.sideOf(tag, Side::Height); height && range->rows() == 1) {
        int& row = m_sheet.rowHeights[range->first.row];
        row = std::max(row, *height);
    }
    const int column = range->first.column;
    if (const auto width = m_styles.sideOf(tag, Side::Width);
        width && range->columns() == 1 && !m_sheet.columnWidths.contains(column))
        m_sheet.columnWidths.insert(column, *width);
}

void SheetReader::closeCell() {
    if (m_innerTables == 0 && m_cell)
        store(std::move(*std::exchange(m_cell, std::nullopt)));
}

void SheetReader::store(OpenCell&& open) {
    Cell& cell = open.cell;
    const QString text = m_isOurs ? std::move(open.text) : tidyText(open.text);
    FillCell(cell, open.source, text, m_plain);
    if (!m_isOurs)
        m_styles.tidy(cell);
    if (open.isMerge)
        m_sheet.merges.append(open.range);
    m_hasValues = m_hasValues || !IsEmpty(cell.value) || !cell.formula.isEmpty();
    if (cell.isBare())
        return;
    if (m_sheet.cells.size() >= MostSheetCells)
        Raise(errors::BadArgument, QStringLiteral("The table has too many cells for a sheet."));
    m_sheet.cells.insert(open.range.first, std::move(cell));
}

void SheetReader::breakLine(const HtmlTag& tag) {
    if (!m_cell)
        return;
    const bool isBreak = tag.name == "br";
    if (!isBreak)
        openFont(tag);
    if (isBreak || !m_cell->text.trimmed().isEmpty())
        m_cell->text += m_isOurs ? u'\n' : QChar(QChar::LineSeparator);
}

/// Elements that stand before a cell's text format the whole cell.
void SheetReader::openFont(const HtmlTag& tag) {
    if (tag.name == "body")
        m_styles.beginBody(tag);
    else if (m_cell && !m_isOurs && m_cell->text.trimmed().isEmpty())
        m_styles.addInline(tag, m_cell->cell.style);
}

/// As a browser shows it: blanks and line ends are one blank, breaks are line ends.
QString SheetReader::tidyText(const QString& text) const {
    QString tidy;
    tidy.reserve(text.size());
    bool isBlankDue = false;
    int breaksDue = 0;
    for (const QChar letter : text) {
        if (letter == QChar::LineSeparator) {
            ++breaksDue;
        } else if (letter.isSpace()) {
            isBlankDue = true;
        } else {
            if (tidy.isEmpty())
                breaksDue = 0;
            for (; breaksDue > 0; --breaksDue, isBlankDue = false)
                tidy += u'\n';
            if (std::exchange(isBlankDue, false) && !tidy.isEmpty())
                tidy += u' ';
            tidy += letter;
        }
    }
    return tidy;
}

QByteArray SheetReader::coveredCells() const {
    return m_covered.isEmpty() ? QByteArray() : "<table><tr>" + m_covered + "</tr></table>";
}

void SheetReader::readCovered(const QByteArray& page) {
    m_readsCovered = true;
    m_state = State::Before;
    ParseHtml(page, *this);
}

SheetContents SheetReader::takeSheet() {
    if (!m_hasTable)
        Raise(errors::BadArgument, QStringLiteral("The file holds no table."));
    for (CellRange& merge : m_sheet.merges) // cells don't span rows that never came
        merge.last.row = std::min(merge.last.row, std::max(m_grid.row(), merge.first.row));
    m_sheet.merges.removeIf([](const CellRange& merge) { return merge.first == merge.last; });
    m_sheet.title = m_isOurs ? m_title : m_title.simplified();
    m_styles.giveFont(m_sheet);
    return std::move(m_sheet);
}

} // namespace

SheetContents ReadSheetHtml(const QByteArray& bytes) {
    if (bytes.size() > LargestSheetFile)
        Raise(errors::BadArgument, QStringLiteral("The file is too large to be a sheet."));
    SheetReader reader;
    ParseHtml(Utf8Page(bytes), reader);
    if (const QByteArray covered = reader.coveredCells(); !covered.isEmpty())
        reader.readCovered(covered);
    return reader.takeSheet();
}

} // namespace kelvrane
