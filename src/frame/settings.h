// The layer over the settings store that the screens and modules use. Failures are statuses, never
// raised; the last one is in LastFileStatus.
#pragma once

#include "platform/settings_store.h"

#include <QObject>
#include <QString>

namespace kelvrane {

/// Says that a stored value changed, whoever changed it: what shows or uses a setting follows this
/// one signal. Variables that hold the setting have their new value by then.
class SettingsChanges : public QObject {
    Q_OBJECT
  signals:
    void Changed(const QString& key, const QString& name);
};
SettingsChanges& SettingsSignal();

namespace keys {
inline const QString Main = QStringLiteral("Software\\brindlemoor-ware\\Kelvrane");
inline const QString RecentInfo = Main + QStringLiteral("\\RecentInfo");
inline const QString SpreadSheetInfo = Main + QStringLiteral("\\SpreadSheetInfo");
} // namespace keys

namespace status {
inline constexpr int Done = 0;
inline constexpr int Failed = -1; ///< also: a value that is neither text nor number
inline constexpr int NotFound = 2;
inline constexpr int NoRunningEntry = 101;
inline constexpr int NoRecentProjects = 102;
inline constexpr int RecordInvalid = 103;
inline constexpr int NoDayFile = 105;
} // namespace status

/// The value as text; "" for a missing key or value. A text that is all digits keeps the terminator
/// (NUL) that a read brings along, since numeric texts aren't stripped.
QString RegQueryValue(const QString& key, const QString& name);
/// Fills value with the text, terminator included, or the number. Leaves it empty on failure.
int RegQueryValueTyped(const QString& key, const QString& name, SettingValue& value);
/// Writes under an existing key, and says so in SettingsSignal(); otherwise returns a status and
/// stores nothing.
int RegSetKeyValue(const QString& key, const QString& name, const SettingValue& value);
/// An empty or numeric text stays; any other loses its last character.
QString StripRegTerminator(const QString& text);

/// Writes a text only if it differs from the stored one; status to LastFileStatus.
void SaveRegText(const QString& text, const QString& key, const QString& name);
/// The same for a number.
void SaveRegNumber(qint32 number, const QString& key, const QString& name);
/// Writes "15 Minutes" as 15 and "2 Hours" as 120 under key ("" means the main key) unless it is
/// stored already. An hour is compared as its digit, so it is written each time; that is wanted.
void SaveRegMinutes(const QString& choice, const QString& name, const QString& key = {});

} // namespace kelvrane
