// A folder as an older version left it, under the install step of this one.
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "startup/database_schema.h"
#include "startup/install_step.h"
#include "support/fakes.h"

#include <QDir>
#include <QDirIterator>
#include <QMap>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

// What 1.0.0 wrote on a day of use: values that the user changed, one of a program that is not
// ours to know, a layout. Two values of today are not there yet.
constexpr char oldSettings[] = R"({
    "keys": {
        "Software\\brindlemoor-ware\\Kelvrane": {
            "AutoDayReminder": "On", "AutoDayReminderValue": 45, "AutoSave": "",
            "AutoStartDay": "Off", "EndDayReminder": "Off", "EndOfDayTimeInterval": 30,
            "ProjectDatabase": "%1/Büro/kelvrane.mdb", "Show Tips at Startup": "No",
            "ShowNumProjects": 9, "Someone's own": "kept",
            "StartWorkTime": "7:15 AM", "StopWorkTime": "4:15 PM",
            "UpdateWebHost": "updates.example", "Version": "%2"
        },
        "Software\\brindlemoor-ware\\Kelvrane\\RecentInfo": {"File1": "Alpha & Beta"},
        "Software\\brindlemoor-ware\\Kelvrane\\SpreadSheetInfo": {
            "CollectionFileName": "2026", "CollectionLoc": "/elsewhere/sheets",
            "SS_Template": "/elsewhere/mine.htm", "SortOrder": "By Customer", "StartOfWeek": 1,
            "TimeIncrements": "30 Minutes"
        }
    },
    "sections": {"SingleTimerView": {"iLastMeWidth": "12000"}}
})";

class Upgrade : public ProgramTest {
  protected:
    /// By name below the program's folder, without the settings.
    QMap<QString, QByteArray> files() const {
        QMap<QString, QByteArray> found;
        QDirIterator each(folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (each.hasNext()) {
            const QString name = QDir(folder.path()).relativeFilePath(each.next());
            if (name != QLatin1String(kelvrane::files::Settings))
                found.insert(name, fileBytes(name));
        }
        return found;
    }
    void startAs(const QString& version) {
        writeFile(u"settings.json"_s,
                  QString::fromUtf8(oldSettings).arg(folder.path(), version).toUtf8());
        settings = std::make_unique<SettingsStore>(disk, path(u"settings.json"_s));
        ports.settings = settings.get();
        ports.files = &disk;
    }
};

TEST_F(Upgrade, EveryFileOfTheUserStaysByteForByteAndOnlyWhatIsMissingIsAdded) {
    CreateDayInfoDatabase(path(u"DayInfo.mdb"_s));
    writeFile(u"DayInfo_Backup.mdb"_s, "the history before the last stop");
    writeFile(u"DayInfo.mdb.orig"_s, "the history before the example data");
    writeFile(u"Fileinfo.dat"_s, "Time: 9:00 AM\nDate: 3/2/2026\nDay Info:\n"
                                 "Alpha;1;8:00 AM;;0 Minutes;1 Hours 0 Minutes\n\n\n");
    writeFile(u"SSDBInfo.dat"_s, "Current User;/home/old/DayInfo.mdb;DECLINE\r\n");
    QDir(folder.path()).mkdir(u"Starter Databases"_s);
    writeFile(u"Starter Databases/kelvrane.mdb"_s, "a starter of their own");
    QDir(folder.path()).mkdir(u"data"_s);
    writeFile(u"data/Timesheet.htm"_s, "a ready template, redesigned");
    writeFile(u"data/mine.htm"_s, "a template");
    const QMap<QString, QByteArray> before = files();

    startAs(u"1.0.0"_s);
    RunInstallStep();

    EXPECT_TRUE(dialogs.shown.isEmpty());
    QMap<QString, QByteArray> after = files();
    for (auto file = before.begin(); file != before.end(); ++file)
        EXPECT_EQ(after.take(file.key()), file.value()) << qPrintable(file.key());
    EXPECT_TRUE(after.remove(u"data/Invoice.htm"_s));
    EXPECT_TRUE(after.remove(u"Starter Databases/dayinfo.mdb"_s));
    // The project database lies elsewhere by the user's choice: none appears here.
    EXPECT_FALSE(after.contains(u"kelvrane.mdb"_s));
}

TEST_F(Upgrade, EveryStoredValueStaysAndTheMissingOnesCome) {
    for (const QString& version : {u"1.0.0"_s, u"1.1.0"_s}) {
        startAs(version);
        RunInstallStep();

        SettingsStore stored(disk, path(u"settings.json"_s)); // as the next process reads it
        writeFile(u"before.json"_s,
                  QString::fromUtf8(oldSettings).arg(folder.path(), version).toUtf8());
        const SettingsStore old(disk, path(u"before.json"_s));
        for (const QString& key : {keys::Main, keys::RecentInfo, keys::SpreadSheetInfo})
            for (const char* name :
                 {"AutoDayReminder", "AutoDayReminderValue", "AutoSave", "EndDayReminder",
                  "ProjectDatabase", "Show Tips at Startup", "ShowNumProjects", "Someone's own",
                  "StopWorkTime", "UpdateWebHost", "File1", "CollectionFileName", "CollectionLoc",
                  "SS_Template", "SortOrder", "StartOfWeek", "TimeIncrements"})
                if (const auto kept = old.value(key, QLatin1String(name)))
                    EXPECT_EQ(stored.value(key, QLatin1String(name)), kept) << name;
        EXPECT_EQ(stored.section(u"SingleTimerView"_s, u"iLastMeWidth"_s, {}), "12000");
        EXPECT_EQ(stored.value(keys::Main, u"UpdateFtpUser"_s), SettingValue(QString()));
        EXPECT_EQ(stored.value(keys::SpreadSheetInfo, u"CalcNumDays"_s), SettingValue(7));
        EXPECT_EQ(stored.value(keys::Main, u"Version"_s),
                  SettingValue(QStringLiteral(KELVRANE_VERSION)));
    }
}

TEST_F(Upgrade, ASecondStartOfTheSameVersionWritesNothing) {
    startAs(u"1.1.0"_s);
    RunInstallStep();
    const QMap<QString, QByteArray> before = files();
    const QByteArray stored = fileBytes(u"settings.json"_s);
    QFile::remove(path(u"data/Invoice.htm"_s)); // thrown away by the user
    RunInstallStep();
    EXPECT_FALSE(disk.exists(path(u"data/Invoice.htm"_s)));
    EXPECT_EQ(files().size(), before.size() - 1);
    EXPECT_EQ(fileBytes(u"settings.json"_s), stored);
}

} // namespace
} // namespace kelvrane::testing
