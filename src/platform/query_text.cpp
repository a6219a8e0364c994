#include "platform/query_text.h"

#include "platform/error.h"
#include "platform/texts.h"

#include <QRegularExpression>

namespace kelvrane {

namespace {

/// The text with everything between quotes blanked, so that words in names aren't taken for SQL.
QString withoutLiterals(const QString& sql) {
    QString plain = sql;
    QChar quote;
    for (QChar& c : plain) {
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
            else
                c = u'_';
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        }
    }
    return plain;
}

QString withoutQuotes(const QString& name) {
    if (name.size() >= 2 && (name.startsWith(u'"') || name.startsWith(u'[')))
        return name.mid(1, name.size() - 2);
    return name;
}

} // namespace

QueryText ReadQueryText(const QString& source) {
    static const QRegularExpression select(
        QStringLiteral("^\\s*SELECT\\s+(.*?)\\s+FROM\\s+(\"[^\"]*\"|\\[[^\\]]*\\]|\\w+)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression selectWord(QStringLiteral("^\\s*SELECT\\b"),
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression order(
        QStringLiteral(
            "\\s+ORDER\\s+BY\\s+(\"[^\"]*\"|\\[[^\\]]*\\]|\\w+)(?:\\s+(ASC|DESC))?[\\s;]*$"),
        QRegularExpression::CaseInsensitiveOption);

    if (!selectWord.match(source).hasMatch())
        return {.sql = {}, .table = source};
    const QString plain = withoutLiterals(source);
    const QRegularExpressionMatch head = select.match(plain);
    if (!head.hasMatch())
        Raise(errors::Sql, QStringLiteral("The statement names no table"));

    QueryText query{.sql = source};
    query.table = withoutQuotes(source.mid(head.capturedStart(2), head.capturedLength(2)));
    query.allColumns = head.capturedView(1) == u"*";
    if (const QRegularExpressionMatch tail = order.match(plain, head.capturedEnd(0));
        tail.hasMatch()) {
        query.orderField = withoutQuotes(source.mid(tail.capturedStart(1), tail.capturedLength(1)));
        query.descending = tail.captured(2).compare(u"DESC", Qt::CaseInsensitive) == 0;
        query.sql.truncate(tail.capturedStart(0));
    }
    return query;
}

std::optional<FindText> ReadFindText(const QString& criterion) {
    const qsizetype equals = criterion.indexOf(u'=');
    if (equals < 0)
        return std::nullopt;
    const QString field = withoutQuotes(criterion.left(equals).trimmed());
    const QString right = criterion.mid(equals + 1).trimmed();
    if (field.isEmpty())
        return std::nullopt;
    if (right.size() >= 2 && right.startsWith(u'#') && right.endsWith(u'#')) {
        const QString date = right.mid(1, right.size() - 2);
        return DateFromText(date).isValid() ? std::optional(FindText{field, date}) : std::nullopt;
    }
    if (right.size() < 2 || !right.startsWith(u'\'') || !right.endsWith(u'\''))
        return IsNumeric(right) ? std::optional(FindText{field, right}) : std::nullopt;
    return FindText{field, right.mid(1, right.size() - 2)};
}

} // namespace kelvrane
