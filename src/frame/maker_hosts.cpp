#include "frame/maker_hosts.h"

#include "frame/settings.h"

#include <QUrl>

namespace kelvrane {

namespace {

QString setting(const char* name) {
    // A name that is all digits comes with its terminator.
    return RegQueryValue(keys::Main, QString::fromLatin1(name)).remove(QChar::Null).trimmed();
}

QString address(const char* name, const char* scheme) {
    QString host = setting(name);
    while (host.endsWith(QLatin1Char('/')) && !host.endsWith(QLatin1String("://")))
        host.chop(1);
    if (host.isEmpty())
        return host;
    const qsizetype own = host.indexOf(QLatin1String("://"));
    return own < 0 ? QString(QString::fromLatin1(scheme) + host)
                   : QString(host.left(own).toLower() + host.mid(own));
}

} // namespace

QString MakerWebAddress() {
    return address("UpdateWebHost", "http://");
}

QString MakerFtpAddress() {
    return address("UpdateFtpHost", "ftp://");
}

QString MakerFtpAccount() {
    const QString account = setting("UpdateFtpUser");
    return account.isEmpty() ? QUrl(MakerWebAddress()).host() : account;
}

} // namespace kelvrane
