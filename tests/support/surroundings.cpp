#include "support/surroundings.h"

#include <QDir>

namespace kelvrane::testing {

Surroundings::Surroundings() : m_home(QDir::tempPath() + QStringLiteral("/kelvrane-home-XXXXXX")) {
    const QByteArray home = QFile::encodeName(m_home.path());
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, home);
    qputenv("FONTCONFIG_FILE", KELVRANE_FONTS_FILE);
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    for (const char* name :
         {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "FONTCONFIG_PATH", "KELVRANE_HOME", "LANGUAGE",
          "QT_FONT_DPI", "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE",
          "WAYLAND_DISPLAY", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_CURRENT_DESKTOP",
          "XDG_DATA_HOME"})
        qunsetenv(name);
}

} // namespace kelvrane::testing
