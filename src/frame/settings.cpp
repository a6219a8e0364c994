#include "frame/settings.h"

#include "frame/globals.h"
#include "platform/ports.h"
#include "platform/texts.h"

namespace kelvrane {

namespace {
constexpr QChar terminator = u'\0';
}

int RegQueryValueTyped(const QString& key, const QString& name, SettingValue& value) {
    value = {};
    const std::optional<SettingValue> stored = ports.settings->value(key, name);
    if (!stored)
        return status::NotFound;
    if (const auto* text = std::get_if<QString>(&*stored))
        value = QString(*text + terminator);
    else if (std::holds_alternative<qint32>(*stored))
        value = *stored;
    else
        return status::Failed;
    return status::Done;
}

QString RegQueryValue(const QString& key, const QString& name) {
    SettingValue value;
    RegQueryValueTyped(key, name, value);
    if (const auto* number = std::get_if<qint32>(&value))
        return StripRegTerminator(QString::number(*number));
    const auto* text = std::get_if<QString>(&value);
    return text ? StripRegTerminator(*text) : QString();
}

int RegSetKeyValue(const QString& key, const QString& name, const SettingValue& value) {
    if (!ports.settings->keyExists(key))
        return status::NotFound;
    if (!ports.settings->setValue(key, name, value))
        return status::Failed;
    emit SettingsSignal().Changed(key, name);
    return status::Done;
}

SettingsChanges& SettingsSignal() {
    static SettingsChanges changes;
    return changes;
}

QString StripRegTerminator(const QString& text) {
    return text.isEmpty() || IsNumeric(text) ? text : text.chopped(1);
}

void SaveRegText(const QString& text, const QString& key, const QString& name) {
    if (RegQueryValue(key, name) != text)
        LastFileStatus = RegSetKeyValue(key, name, text);
}

void SaveRegNumber(qint32 number, const QString& key, const QString& name) {
    if (RegQueryValue(key, name) != QString::number(number))
        LastFileStatus = RegSetKeyValue(key, name, number);
}

void SaveRegMinutes(const QString& choice, const QString& name, const QString& key) {
    const QString& place = key.isEmpty() ? keys::Main : key;
    const QString stored = RegQueryValue(place, name);
    qint32 minutes = 0;
    if (choice.contains(QLatin1String("Hour"))) {
        const QString digit = choice.left(1);
        minutes = ToInt16(digit) * 60;
        if (digit == stored)
            return;
    } else {
        minutes = ToInt16(choice.left(2));
        if (IsNumeric(stored) && minutes == ToDouble(stored))
            return;
    }
    LastFileStatus = RegSetKeyValue(place, name, minutes);
}

} // namespace kelvrane
