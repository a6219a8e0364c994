#include "platform/escaped_fields.h"

namespace kelvrane {

namespace {

constexpr QChar separator = u';';
constexpr QChar escape = u'\\';

void appendField(QString& line, const QString& field) {
    for (qsizetype i = 0; i < field.size(); ++i) {
        const QChar c = field[i];
        if (c == u'\r' && i + 1 < field.size() && field[i + 1] == u'\n')
            continue; // its line feed is the blank
        if (c == separator || c == escape)
            line += escape;
        line += c == u'\r' || c == u'\n' ? QChar(u' ') : c;
    }
}

} // namespace

QString JoinFields(const QStringList& fields) {
    QString line;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += separator;
        appendField(line, fields[i]);
    }
    return line;
}

QStringList SplitFields(const QString& line) {
    QStringList fields{QString()};
    for (qsizetype i = 0; i < line.size(); ++i) {
        const bool escapes = line[i] == escape && i + 1 < line.size() &&
                             (line[i + 1] == separator || line[i + 1] == escape);
        if (escapes)
            fields.last() += line[++i];
        else if (line[i] == separator)
            fields.append(QString());
        else
            fields.last() += line[i];
    }
    return fields;
}

} // namespace kelvrane
