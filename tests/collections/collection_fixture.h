// A current collection "Week" in the program's folder, its list and its sheets.
#pragma once

#include "collections/collection_file.h"
#include "collections/current_collection.h"
#include "collections/file_clash.h"
#include "frame/globals.h"
#include "support/fakes.h"

#include <QDir>

namespace kelvrane::testing {

class CollectionTest : public ProgramTest {
  protected:
    CollectionTest() {
        StoreCollection(folder.path(), QStringLiteral("Week"));
        WireFileExists();
        progress_.append({.key = QStringLiteral("PROGRESS"), .kind = ItemKind::Progress});
    }

    /// The list file, and a sheet of its name's text for each entry.
    void fileSheets(const QStringList& names) {
        QDir(folder.path()).mkpath(QStringLiteral("Week_data"));
        writeList(names);
        for (const QString& name : names)
            writeFile(QStringLiteral("Week_data/") + name, name.toUtf8());
    }
    void writeList(const QStringList& names) {
        QByteArray bytes;
        for (const QString& line : BuildCollectionXml(names))
            bytes += line.toUtf8() + "\r\n";
        writeFile(QStringLiteral("Week.col"), bytes);
    }
    QStringList listed() const { return ParseCollection(fileBytes("Week.col")).names; }
    QByteArray sheet(const char* name) const {
        return fileBytes(QStringLiteral("Week_data/") + QString::fromUtf8(name));
    }
    QStringList sheets() const { return disk.filesIn(path(QStringLiteral("Week_data"))); }

    KeyedItems progress_;
};

} // namespace kelvrane::testing
