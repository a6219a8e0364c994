// The settings: a tree of keys that hold typed values, and beside it the sections of the window
// layout, both in one readable file that is replaced in one step at each change.
//
// Keys are objects: writing a value under a key that doesn't exist fails and stores nothing. Only
// the install step creates keys. Key paths are joined by "\".
#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <optional>
#include <variant>

namespace kelvrane {

class FileStore;

/// A value is a text or a 32-bit number; anything else in the file reads as neither.
using SettingValue = std::variant<std::monostate, QString, qint32>;

class SettingsStore {
  public:
    /// Reads the file at once. A missing file is an empty store. Of a damaged one what can be read
    /// is kept, which may be nothing, after a copy of it was put beside it as "<path>.damaged".
    SettingsStore(FileStore& files, QString path);

    bool keyExists(const QString& key) const;
    /// Nothing when it exists.
    void createKey(const QString& key);
    /// std::nullopt: no such key or value.
    std::optional<SettingValue> value(const QString& key, const QString& name) const;
    /// False when the key doesn't exist or the file can't be written; the store is then unchanged.
    bool setValue(const QString& key, const QString& name, const SettingValue& value);

    /// The section store of the window layout; texts only.
    QString section(const QString& section, const QString& key, const QString& fallback) const;
    bool setSection(const QString& section, const QString& key, const QString& text);

    /// Collects all writes between begin and end into one replacement of the file; nothing is
    /// written when nothing changed. Calls may nest. False when the file can't be written: all
    /// changes since the outermost begin are then dropped.
    void beginChanges();
    bool endChanges();

    bool wasDamaged() const { return m_damaged; }

  private:
    struct Contents {
        QMap<QString, QMap<QString, SettingValue>> keys;
        QMap<QString, QMap<QString, QString>> sections;
        bool operator==(const Contents&) const = default;
    };
    void load();
    void keepDamaged();
    bool store();

    FileStore& m_files;
    QString m_path;
    Contents m_held;
    Contents m_onDisk;
    int m_openChanges = 0;
    bool m_damaged = false;
};

} // namespace kelvrane
