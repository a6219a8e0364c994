#include "options/about.h"

#include "frame/error_report.h"
#include "frame/maker_hosts.h"
#include "platform/ports.h"

#include <QUrl>

namespace kelvrane {

namespace {

const QString version = QStringLiteral("lblVersion");
const QString moreInfo = QStringLiteral("lblMoreInfo");
const QString url = QStringLiteral("lblURL");

void clicked(const QString& key) {
    if (key == url)
        ports.launcher->open(AboutControls().value(url));
    else
        ports.screens->unload(Screen::frmAbout);
}

bool isWebPage(const QString& address) {
    const QUrl page(address);
    return page.isValid() && !page.host().isEmpty() &&
           (page.scheme() == QLatin1String("http") || page.scheme() == QLatin1String("https"));
}

} // namespace

KeyedItems& AboutControls() {
    static KeyedItems controls(
        {{.key = version},
         {.key = moreInfo, .caption = QStringLiteral("For more information visit on the web at:")},
         {.key = url},
         {.key = QStringLiteral("cmdOK"),
          .caption = QStringLiteral("OK"),
          .kind = ItemKind::Button}});
    [[maybe_unused]] static const auto wired =
        QObject::connect(&controls, &KeyedItems::Clicked, &controls, [](const QString& key) {
            Guarded(QStringLiteral("frmAbout_Click"), [&] { clicked(key); });
        });
    return controls;
}

void LoadAbout() {
    KeyedItems& controls = AboutControls();
    controls.setCaption(version, QStringLiteral("Version " KELVRANE_VERSION));
    const QString address = MakerWebAddress();
    controls.setValue(url, address);
    for (const QString& key : {moreInfo, url})
        controls.setVisible(key, isWebPage(address));
}

} // namespace kelvrane
