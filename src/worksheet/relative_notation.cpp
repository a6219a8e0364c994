#include "worksheet/relative_notation.h"

#include <QRegularExpression>

#include <functional>

namespace kelvrane {

namespace {

/// Changes what the pattern matches outside of quoted texts and names. The first alternative of the
/// pattern is a quoted text, and group 1 tells the others from it.
QString rewritten(const QString& formula, const QRegularExpression& pattern,
                  const std::function<QString(const QRegularExpressionMatch&)>& change) {
    QString result;
    qsizetype done = 0;
    for (auto matches = pattern.globalMatch(formula); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart(1) < 0)
            continue;
        result += QStringView(formula).sliced(done, match.capturedStart() - done);
        result += change(match);
        done = match.capturedEnd();
    }
    return result + QStringView(formula).sliced(done);
}

// A name or a function may hold letters and digits that look like a reference: "LOG10(", "tax2_1".
const QString quoted = QStringLiteral(R"re("(?:[^"]|"")*+"?+|'[^']*+'?+)re");
const QString nameBefore = QStringLiteral(R"re((?<![\w.$\[]))re");
const QString nameBehind = QStringLiteral(R"re((?![\w.(\[]))re");

QString part(char16_t axis, bool isFixed, int place, int own) {
    const QString number = QString::number(isFixed ? place + 1 : place - own);
    return QChar(axis) + (isFixed ? number : QLatin1Char('[') + number + QLatin1Char(']'));
}

/// 0-based place of "", "3" or "[-2]"; -1 outside the sheet.
int placeOf(const QString& text, int own, int end) {
    const bool isStep = text.isEmpty() || text.startsWith(u'[');
    const qint64 number = text.isEmpty() ? 0
                          : isStep       ? text.mid(1, text.size() - 2).toLongLong()
                                         : text.toLongLong() - 1;
    const qint64 place = isStep ? own + number : number;
    return place < 0 || place >= end ? -1 : static_cast<int>(place);
}

} // namespace

QString ToRelativeNotation(const QString& formula, CellAddress cell) {
    static const QRegularExpression reference(
        quoted + QLatin1Char('|') + nameBefore +
        QStringLiteral(R"re((\$?[A-Za-z]{1,3}\$?[0-9]{1,5}))re") + nameBehind);
    static const QRegularExpression wholeLines(
        quoted + QLatin1Char('|') + nameBefore +
        QStringLiteral(R"re((\$?[A-Za-z]{1,3}:\$?[A-Za-z]{1,3}|\$?[0-9]+:\$?[0-9]+))re") +
        nameBehind);
    for (auto lines = wholeLines.globalMatch(formula); lines.hasNext();)
        if (lines.next().capturedStart(1) >= 0)
            return {};
    return rewritten(formula, reference, [cell](const QRegularExpressionMatch& match) -> QString {
        const QString text = match.captured();
        const auto place = ParseAddress(text);
        if (!place)
            return text;
        const bool columnIsFixed = text.startsWith(u'$');
        const bool rowIsFixed = text.indexOf(u'$', 1) > 0;
        return part(u'R', rowIsFixed, place->row, cell.row) +
               part(u'C', columnIsFixed, place->column, cell.column);
    });
}

QString FromRelativeNotation(const QString& formula, CellAddress cell) {
    static const QRegularExpression reference(
        quoted + QLatin1Char('|') + nameBefore +
            QStringLiteral(
                R"re(R((?:\[-?[0-9]{1,9}\]|[0-9]{1,9})?)C(\[-?[0-9]{1,9}\]|[0-9]{1,9})?)re") +
            nameBehind,
        QRegularExpression::CaseInsensitiveOption);
    return rewritten(formula, reference, [cell](const QRegularExpressionMatch& match) -> QString {
        const QString rowText = match.captured(1);
        const QString columnText = match.captured(2);
        const int row = placeOf(rowText, cell.row, SheetRows);
        const int column = placeOf(columnText, cell.column, SheetColumns);
        if (row < 0 || column < 0)
            return QStringLiteral("#REF!");
        const auto mark = [](const QString& text) {
            return text.isEmpty() || text.startsWith(u'[') ? QString() : QStringLiteral("$");
        };
        return mark(columnText) + ColumnName(column) + mark(rowText) + QString::number(row + 1);
    });
}

} // namespace kelvrane
