#include "platform/settings_store.h"

#include "platform/error.h"
#include "platform/file_store.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>
#include <utility>

namespace kelvrane {

namespace {

constexpr char keysName[] = "keys";
constexpr char sectionsName[] = "sections";
/// Far beyond what the settings can grow to; anything larger isn't read as settings.
constexpr qsizetype largestFile = qsizetype(16) * 1024 * 1024;

std::optional<SettingValue> settingFromJson(const QJsonValue& value) {
    if (value.isString())
        return value.toString();
    const double number = value.toDouble(std::nan(""));
    if (number >= std::numeric_limits<qint32>::min() &&
        number <= std::numeric_limits<qint32>::max() && number == std::floor(number))
        return static_cast<qint32>(number);
    return std::monostate();
}

std::optional<QString> textFromJson(const QJsonValue& value) {
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

QJsonValue toJson(const SettingValue& value) {
    if (const auto* text = std::get_if<QString>(&value))
        return *text;
    if (const auto* number = std::get_if<qint32>(&value))
        return *number;
    return QJsonValue::Null;
}

QJsonValue toJson(const QString& text) {
    return text;
}

template <typename Value>
QJsonObject groupsToJson(const QMap<QString, QMap<QString, Value>>& groups) {
    QJsonObject object;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        QJsonObject values;
        for (auto value = group->begin(); value != group->end(); ++value)
            values.insert(value.key(), toJson(value.value()));
        object.insert(group.key(), values);
    }
    return object;
}

/// Reads what is as it is written here and passes over the rest. False when there was such a rest.
template <typename Value, typename Convert>
bool readGroups(const QJsonValue& json, QMap<QString, QMap<QString, Value>>& groups,
                const Convert& convert) {
    if (!json.isObject())
        return json.isUndefined();
    bool sound = true;
    const QJsonObject object = json.toObject();
    for (auto group = object.begin(); group != object.end(); ++group) {
        if (!group->isObject()) {
            sound = false;
            continue;
        }
        QMap<QString, Value>& values = groups[group.key()];
        const QJsonObject members = group->toObject();
        for (auto member = members.begin(); member != members.end(); ++member)
            if (const std::optional<Value> value = convert(member.value()))
                values.insert(member.key(), *value);
    }
    return sound;
}

} // namespace

SettingsStore::SettingsStore(FileStore& files, QString path)
    : m_files(files), m_path(std::move(path)) {
    load();
}

bool SettingsStore::keyExists(const QString& key) const {
    return m_held.keys.contains(key);
}

void SettingsStore::createKey(const QString& key) {
    if (keyExists(key))
        return;
    beginChanges();
    m_held.keys.insert(key, {});
    endChanges();
}

std::optional<SettingValue> SettingsStore::value(const QString& key, const QString& name) const {
    const auto values = m_held.keys.find(key);
    if (values == m_held.keys.end())
        return std::nullopt;
    const auto value = values->find(name);
    if (value == values->end())
        return std::nullopt;
    return *value;
}

bool SettingsStore::setValue(const QString& key, const QString& name, const SettingValue& value) {
    if (!keyExists(key))
        return false;
    beginChanges();
    m_held.keys[key].insert(name, value);
    return endChanges();
}

QString SettingsStore::section(const QString& section, const QString& key,
                               const QString& fallback) const {
    const auto values = m_held.sections.find(section);
    return values == m_held.sections.end() ? fallback : values->value(key, fallback);
}

bool SettingsStore::setSection(const QString& section, const QString& key, const QString& text) {
    beginChanges();
    m_held.sections[section].insert(key, text);
    return endChanges();
}

void SettingsStore::beginChanges() {
    ++m_openChanges;
}

bool SettingsStore::endChanges() {
    if (m_openChanges > 0)
        --m_openChanges;
    if (m_openChanges > 0 || m_held == m_onDisk)
        return true;
    if (!store()) {
        m_held = m_onDisk;
        return false;
    }
    m_onDisk = m_held;
    return true;
}

void SettingsStore::load() {
    QByteArray bytes;
    try {
        bytes = m_files.read(m_path);
    } catch (const RuntimeError& error) {
        if (error.number == errors::FileNotFound)
            return;
        m_damaged = true;
    }
    QJsonDocument document;
    if (!m_damaged && bytes.size() <= largestFile)
        document = QJsonDocument::fromJson(bytes);
    const bool keysSound =
        readGroups(document[QLatin1String(keysName)], m_held.keys, settingFromJson);
    const bool sectionsSound =
        readGroups(document[QLatin1String(sectionsName)], m_held.sections, textFromJson);
    m_damaged = m_damaged || !document.isObject() || !keysSound || !sectionsSound;
    m_onDisk = m_held;
    if (m_damaged)
        keepDamaged();
}

void SettingsStore::keepDamaged() {
    const QString kept = m_path + QStringLiteral(".damaged");
    try {
        m_files.copy(m_path, kept);
    } catch (const RuntimeError&) {
        try { // what can't be read can still be put aside, before a write replaces it
            m_files.replace(m_path, kept);
        } catch (const RuntimeError&) {
            // Then nothing can be written beside it either, and it stays as it is.
        }
    }
}

bool SettingsStore::store() {
    const QJsonObject root{{QLatin1String(keysName), groupsToJson(m_held.keys)},
                           {QLatin1String(sectionsName), groupsToJson(m_held.sections)}};
    try {
        m_files.writeAtomically(m_path, QJsonDocument(root).toJson(QJsonDocument::Indented));
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

} // namespace kelvrane
