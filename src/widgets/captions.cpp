#include "widgets/captions.h"

#include <QTextDocument>

namespace kelvrane {

QString ShownCaption(const QString& caption) {
    QString shown = caption;
    while (shown.startsWith(QLatin1Char('\t')))
        shown.remove(0, 1);
    while (shown.endsWith(QLatin1Char('\t')))
        shown.chop(1);
    return shown.replace(QLatin1String("&&"), QLatin1String("&"));
}

QString ControlCaption(const QString& caption) {
    return EscapeMnemonics(ShownCaption(caption));
}

QString EscapeMnemonics(const QString& text) {
    QString escaped = text;
    return escaped.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString PlainToolTip(const QString& text) {
    constexpr qsizetype Longest = 2000;
    if (text.size() < 60 && !Qt::mightBeRichText(text))
        return text;
    const QString shown = text.size() > Longest ? text.left(Longest) + QChar(0x2026) : text;
    return QStringLiteral("<p style=\"white-space:pre-wrap\">") + shown.toHtmlEscaped() +
           QStringLiteral("</p>");
}

QString OneLine(const QString& text) {
    constexpr qsizetype Longest = 400;
    QString line = text;
    if (line.size() > Longest)
        line = line.left(Longest / 2) + QChar(0x2026) + line.right(Longest / 2);
    for (QChar& character : line)
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char(' ');
    return line;
}

} // namespace kelvrane
