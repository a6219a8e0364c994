#include "worksheet/formula_tokens.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace kelvrane::formulas {

namespace {

struct OperatorRow {
    QLatin1StringView text;
    Operator op;
};
/// A longer one before those that it begins with.
constexpr OperatorRow operatorRows[] = {
    {QLatin1StringView("<="), Operator::LessEqual},
    {QLatin1StringView(">="), Operator::GreaterEqual},
    {QLatin1StringView("<>"), Operator::NotEqual},
    {QLatin1StringView("="), Operator::Equal},
    {QLatin1StringView("<"), Operator::Less},
    {QLatin1StringView(">"), Operator::Greater},
    {QLatin1StringView("+"), Operator::Add},
    {QLatin1StringView("-"), Operator::Subtract},
    {QLatin1StringView("*"), Operator::Multiply},
    {QLatin1StringView("/"), Operator::Divide},
    {QLatin1StringView("^"), Operator::Power},
    {QLatin1StringView("&"), Operator::Concatenate},
    {QLatin1StringView("%"), Operator::Percent},
};

constexpr CellError errorLiterals[] = {
    CellError::Null, CellError::DivisionByZero, CellError::Value,        CellError::Reference,
    CellError::Name, CellError::Number,         CellError::NotAvailable, CellError::Cycle};

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}
bool isLatinLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}
bool beginsWord(QChar c) {
    return c.isLetter() || c == u'_' || c == u'$';
}
bool continuesWord(QChar c) {
    return beginsWord(c) || c.isDigit() || c == u'.';
}

/// What a corner names: "$C$5" a column and a row, "$C" a column, "5" a row.
struct CornerText {
    bool hasColumn = false;
    bool hasRow = false;
    bool isInSheet = true;
    Corner corner;
};

/// Reads a whole word as a corner; nothing for any other word.
std::optional<CornerText> cornerOf(QStringView word) {
    CornerText result;
    qsizetype at = 0;
    const auto takeDollar = [&] {
        const bool taken = at < word.size() && word[at] == u'$';
        at += taken;
        return taken;
    };
    bool dollar = takeDollar();
    int column = 0;
    const qsizetype letters = at;
    for (; at < word.size() && isLatinLetter(word[at]) && at - letters < 3; ++at)
        column = column * 26 + (word[at].toUpper().unicode() - u'A' + 1);
    result.hasColumn = at > letters;
    if (result.hasColumn) {
        result.corner.fixedColumn = dollar;
        result.corner.cell.column = column - 1;
        dollar = takeDollar();
    }
    int row = 0;
    const qsizetype digits = at;
    for (; at < word.size() && isDigit(word[at]) && at - digits < 7; ++at)
        row = row * 10 + (word[at].unicode() - u'0');
    result.hasRow = at > digits;
    if (result.hasRow) {
        result.corner.fixedRow = dollar;
        result.corner.cell.row = row - 1;
        if (row == 0)
            return {};
    } else if (dollar && result.hasColumn) {
        return {}; // "A$"
    }
    if (at != word.size() || !(result.hasColumn || result.hasRow))
        return {};
    result.isInSheet =
        result.corner.cell.column < SheetColumns && result.corner.cell.row < SheetRows;
    return result;
}

class Tokenizer {
  public:
    explicit Tokenizer(const QString& text) : m_text(text), m_at(text.startsWith(u'=') ? 1 : 0) {}

    QList<Token> run() {
        for (m_at = afterBlanks(m_at); m_at < m_text.size(); m_at = afterBlanks(m_at)) {
            Token token;
            token.begin = m_at;
            take(token);
            token.end = m_at;
            m_tokens.append(token);
        }
        m_tokens.append({.kind = Token::Kind::End, .begin = m_at, .end = m_at});
        return m_tokens;
    }

  private:
    QChar peek(qsizetype at) const { return at < m_text.size() ? m_text[at] : QChar(); }
    qsizetype afterBlanks(qsizetype at) const {
        while (at < m_text.size() && m_text[at].isSpace())
            ++at;
        return at;
    }
    qsizetype wordEnd(qsizetype at) const {
        while (at < m_text.size() && continuesWord(m_text[at]))
            ++at;
        return at;
    }

    void take(Token& token) {
        const QChar c = m_text[m_at];
        if (c == u'"')
            takeText(token);
        else if (c == u'\'')
            takeSheetName(token);
        else if (c == u'#')
            takeError(token);
        else if (isDigit(c) || (c == u'.' && isDigit(peek(m_at + 1))))
            takeNumber(token);
        else if (beginsWord(c))
            takeWord(token);
        else if (!takeMark(token) && !takeOperator(token))
            ++m_at; // Bad
    }

    bool takeMark(Token& token) {
        const QChar c = m_text[m_at];
        if (c == u'(')
            token.kind = Token::Kind::Open;
        else if (c == u')')
            token.kind = Token::Kind::Close;
        else if (c == u',' || c == u';')
            token.kind = Token::Kind::Separator;
        else
            return false;
        ++m_at;
        return true;
    }

    bool takeOperator(Token& token) {
        const QStringView rest = QStringView(m_text).sliced(m_at);
        const auto row = std::ranges::find_if(
            operatorRows, [&](const OperatorRow& r) { return rest.startsWith(r.text); });
        if (row == std::end(operatorRows))
            return false;
        token.kind = Token::Kind::Operator;
        token.op = row->op;
        m_at += row->text.size();
        return true;
    }

    /// The text between two quotes of its kind, doubled ones inside; leaves m_at behind it. False
    /// when it isn't closed, m_at is then at the end.
    bool takeQuoted(QString& text) {
        const QChar quote = m_text[m_at++];
        while (m_at < m_text.size()) {
            if (m_text[m_at] == quote) {
                if (peek(m_at + 1) != quote) {
                    ++m_at;
                    return true;
                }
                ++m_at;
            }
            text += m_text[m_at++];
        }
        return false;
    }

    void takeText(Token& token) {
        if (takeQuoted(token.text))
            token.kind = Token::Kind::Text;
    }

    void takeSheetName(Token& token) {
        QString name;
        if (takeQuoted(name) && peek(m_at) == u'!')
            takeOtherSheet(token);
    }

    /// Behind the name of a sheet, at its "!": there is only this sheet.
    void takeOtherSheet(Token& token) {
        ++m_at;
        m_at = wordEnd(m_at);
        if (peek(m_at) == u':')
            m_at = wordEnd(m_at + 1);
        if (peek(m_at) == u'#')
            takeError(token);
        token.kind = Token::Kind::Error;
        token.error = CellError::Reference;
    }

    void takeError(Token& token) {
        const QStringView rest = QStringView(m_text).sliced(m_at);
        for (const CellError error : errorLiterals) {
            const QString literal = CellErrorText(error);
            if (rest.startsWith(literal, Qt::CaseInsensitive)) {
                token.kind = Token::Kind::Error;
                token.error = error;
                m_at += literal.size();
                return;
            }
        }
        ++m_at;
    }

    void takeNumber(Token& token) {
        const qsizetype begin = m_at;
        while (isDigit(peek(m_at)))
            ++m_at;
        if (takeReference(token, begin, m_at)) // "1:3"
            return;
        if (peek(m_at) == u'.')
            for (++m_at; isDigit(peek(m_at)); ++m_at) {
            }
        if (peek(m_at).toUpper() == u'E') {
            const bool hasSign = peek(m_at + 1) == u'+' || peek(m_at + 1) == u'-';
            const qsizetype digits = m_at + (hasSign ? 2 : 1);
            if (isDigit(peek(digits)))
                for (m_at = digits; isDigit(peek(m_at)); ++m_at) {
                }
        }
        bool ok = false;
        token.number = QStringView(m_text).sliced(begin, m_at - begin).toDouble(&ok);
        if (ok)
            token.kind = Token::Kind::Number;
    }

    void takeWord(Token& token) {
        const qsizetype begin = m_at;
        m_at = wordEnd(begin);
        if (peek(m_at) == u'!') {
            takeOtherSheet(token);
            return;
        }
        if (peek(afterBlanks(m_at)) == u'(')
            token.kind = Token::Kind::Function;
        else if (takeReference(token, begin, m_at))
            return;
        token.text = m_text.sliced(begin, m_at - begin);
        if (token.kind == Token::Kind::Bad && !token.text.contains(u'$'))
            token.kind = Token::Kind::Name;
    }

    /// Tries the word from begin to end as a reference, with what stands behind ":"; leaves m_at
    /// behind it, or where it was.
    bool takeReference(Token& token, qsizetype begin, qsizetype end) {
        const auto first = cornerOf(QStringView(m_text).sliced(begin, end - begin));
        if (!first)
            return false;
        const bool isCell = first->hasColumn && first->hasRow;
        std::optional<CornerText> second;
        qsizetype behind = afterBlanks(end);
        if (peek(behind) == u':') {
            const qsizetype secondBegin = afterBlanks(behind + 1);
            behind = wordEnd(secondBegin);
            second = cornerOf(QStringView(m_text).sliced(secondBegin, behind - secondBegin));
            if (second && (second->hasColumn != first->hasColumn ||
                           second->hasRow != first->hasRow || peek(afterBlanks(behind)) == u'('))
                second.reset();
        }
        if (!second && !isCell)
            return false;
        using Shape = Reference::Shape;
        token.reference.shape = !second            ? Shape::Cell
                                : isCell           ? Shape::Range
                                : first->hasColumn ? Shape::Columns
                                                   : Shape::Rows;
        token.reference.first = first->corner;
        token.reference.second = second.value_or(*first).corner;
        token.kind = Token::Kind::Reference;
        if (!first->isInSheet || (second && !second->isInSheet)) {
            token.kind = Token::Kind::Error;
            token.error = CellError::Reference;
        }
        m_at = second ? behind : end;
        return true;
    }

    const QString& m_text;
    qsizetype m_at;
    QList<Token> m_tokens;
};

QString cornerText(const Corner& corner, Reference::Shape shape) {
    const QLatin1StringView dollar("$");
    QString text;
    if (shape != Reference::Shape::Rows) {
        if (corner.fixedColumn)
            text += dollar;
        text += ColumnName(corner.cell.column);
    }
    if (shape != Reference::Shape::Columns) {
        if (corner.fixedRow)
            text += dollar;
        text += QString::number(corner.cell.row + 1);
    }
    return text;
}

} // namespace

CellRange ReferencedRange(const Reference& reference) {
    CellRange range = RangeBetween(reference.first.cell, reference.second.cell);
    if (reference.shape == Reference::Shape::Columns) {
        range.first.row = 0;
        range.last.row = SheetRows - 1;
    } else if (reference.shape == Reference::Shape::Rows) {
        range.first.column = 0;
        range.last.column = SheetColumns - 1;
    }
    return range;
}

QString ReferenceText(const Reference& reference) {
    const QString first = cornerText(reference.first, reference.shape);
    return reference.shape == Reference::Shape::Cell
               ? first
               : QString(first + u':' + cornerText(reference.second, reference.shape));
}

QList<Token> FormulaTokens(const QString& text) {
    return Tokenizer(text).run();
}

} // namespace kelvrane::formulas
