#include "frame/maker_hosts.h"

#include "frame/settings.h"

namespace kelvrane {

QString MakerWebAddress() {
    QString host = RegQueryValue(keys::Main, QStringLiteral("UpdateWebHost")).trimmed();
    while (host.endsWith(QLatin1Char('/')) && !host.endsWith(QLatin1String("://")))
        host.chop(1);
    if (host.isEmpty() || host.contains(QLatin1String("://")))
        return host;
    return QStringLiteral("http://") + host;
}

} // namespace kelvrane
