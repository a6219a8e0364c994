#include "widgets/captions.h"

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

} // namespace kelvrane
