#include "frame/program_folder.h"
#include "frame/settings.h"
#include "platform/recordset.h"
#include "startup/database_schema.h"
#include "startup/install_step.h"
#include "support/fakes.h"
#include "support/raised_error.h"

#include <QDir>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

/// Fails every write from the n-th file operation on, as a killed process would.
class FailingFiles : public DiskFileStore {
  public:
    void create(const QString& path, const QByteArray& bytes) override {
        count();
        DiskFileStore::create(path, bytes);
    }
    void replace(const QString& source, const QString& target) override {
        count();
        DiskFileStore::replace(source, target);
    }
    void move(const QString& source, const QString& target) override {
        count();
        DiskFileStore::move(source, target);
    }
    void createFolder(const QString& path) override {
        count();
        DiskFileStore::createFolder(path);
    }
    int left = 0;

  private:
    void count() {
        if (left-- <= 0)
            Raise(errors::DiskFull, u"No space left"_s);
    }
};

class InstallStep : public ProgramTest {
  protected:
    InstallStep() { reopenSettings(disk); }
    /// As a new process would.
    void reopenSettings(FileStore& files) {
        ports.files = &files;
        settings = std::make_unique<SettingsStore>(files, path(u"settings.json"_s));
        ports.settings = settings.get();
    }
    QString setting(const QString& name, const QString& key = keys::Main) {
        const std::optional<SettingValue> value = settings->value(key, name);
        if (!value)
            return u"(none)"_s;
        if (const auto* number = std::get_if<qint32>(&*value))
            return u"#"_s + QString::number(*number);
        return std::get<QString>(*value);
    }
    int rows(const QString& file, const QString& table) {
        Connection connection(path(file));
        return Recordset(connection, table).count();
    }
    void expectInstalled() {
        EXPECT_EQ(setting(u"Version"_s), KELVRANE_VERSION);
        EXPECT_EQ(setting(u"ShowNumProjects"_s), "#5");
        EXPECT_EQ(setting(u"StopWorkTime"_s), "5:00 PM");
        EXPECT_EQ(setting(u"ProjectDatabase"_s), path(u"kelvrane.mdb"_s));
        EXPECT_EQ(setting(u"StartOfWeek"_s, keys::SpreadSheetInfo), "#2");
        EXPECT_TRUE(settings->keyExists(keys::RecentInfo));
        EXPECT_EQ(rows(u"DayInfo.mdb"_s, u"DayInfo"_s), 0);
        EXPECT_EQ(rows(u"kelvrane.mdb"_s, u"ProjectInfo"_s), 0);
        EXPECT_EQ(rows(u"Starter Databases/dayinfo.mdb"_s, u"DayInfo"_s), 7);
        EXPECT_EQ(rows(u"Starter Databases/kelvrane.mdb"_s, u"CustomerInfo"_s), 3);
        EXPECT_TRUE(disk.read(path(u"data/Timesheet.htm"_s)).contains("#HOURS#"));
        EXPECT_TRUE(disk.read(path(u"data/Invoice.htm"_s)).contains("#COMPANY#"));
        EXPECT_EQ(setting(u"SS_Template"_s, keys::SpreadSheetInfo), path(u"data/Timesheet.htm"_s));
    }
};

TEST_F(InstallStep, TheFirstLaunchPutsEverythingInItsPlaceAndTheNextDoesNothing) {
    RunInstallStep();
    expectInstalled();
    disk.remove(path(u"DayInfo.mdb"_s), false);
    settings->setValue(keys::Main, u"StopWorkTime"_s, u"6:00 PM"_s);
    reopenSettings(disk);
    RunInstallStep();
    EXPECT_FALSE(disk.exists(path(u"DayInfo.mdb"_s))); // a missing file is a missing file
    EXPECT_EQ(setting(u"StopWorkTime"_s), "6:00 PM");
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(InstallStep, ANewerVersionAddsWhatIsMissingAndChangesNothing) {
    RunInstallStep();
    settings->setValue(keys::Main, u"Version"_s, u"0.9.10"_s);
    settings->setValue(keys::Main, u"ShowNumProjects"_s, 9);
    settings->setValue(keys::Main, u"AutoSave"_s, u""_s);
    disk.remove(path(u"DayInfo.mdb"_s), false);
    disk.remove(path(u"Starter Databases/dayinfo.mdb"_s), false);
    disk.create(path(u"kelvrane.mdb"_s), "the user's own");
    disk.create(path(u"data/Timesheet.htm"_s), "the user's own");
    disk.remove(path(u"data/Invoice.htm"_s), false);
    RunInstallStep();
    EXPECT_EQ(disk.read(path(u"data/Timesheet.htm"_s)), "the user's own");
    EXPECT_TRUE(disk.read(path(u"data/Invoice.htm"_s)).contains("#COMPANY#"));
    EXPECT_EQ(setting(u"Version"_s), KELVRANE_VERSION);
    EXPECT_EQ(setting(u"ShowNumProjects"_s), "#9");
    EXPECT_EQ(setting(u"AutoSave"_s), "");
    EXPECT_EQ(disk.read(path(u"kelvrane.mdb"_s)), "the user's own");
    EXPECT_FALSE(disk.exists(path(u"DayInfo.mdb"_s)));
    EXPECT_TRUE(disk.exists(path(u"Starter Databases/dayinfo.mdb"_s)));

    settings->setValue(keys::Main, u"Version"_s, u"99.0"_s); // a newer program was here
    RunInstallStep();
    EXPECT_EQ(setting(u"Version"_s), "99.0");
}

TEST_F(InstallStep, InterruptedAnywhereItCompletesTheNextTime) {
    FailingFiles files;
    int operations = 0;
    for (bool whole = false; !whole; ++operations) {
        ASSERT_LT(operations, 100);
        QDir(folder.path()).removeRecursively();
        QDir().mkpath(folder.path());
        files.left = operations;
        dialogs.shown.clear();
        dialogs.strict = false;
        reopenSettings(files);
        RunInstallStep();
        whole = files.left >= 0;
        EXPECT_EQ(dialogs.shown.isEmpty(), whole) << operations;
        EXPECT_EQ(setting(u"Version"_s) == QStringLiteral(KELVRANE_VERSION), whole) << operations;
        reopenSettings(disk);
        RunInstallStep();
        expectInstalled();
    }
    EXPECT_GT(operations, 10);
}

TEST_F(InstallStep, TheTablesHaveTheirColumnsInOrder) {
    const struct {
        QString file;
        QString table;
        QString columns;
    } cases[] = {
        {u"DayInfo.mdb"_s, u"DayInfo"_s,
         u"ID Date ProjectName ProjectNumber BreakTime TotalTime AssignTo"_s},
        {u"kelvrane.mdb"_s, u"ProjectInfo"_s,
         u"ID Project_Name Project_Number Entry_Date Active Notes Rate CustomerID CustInfoDBID"_s},
        {u"kelvrane.mdb"_s, u"CustomerInfo"_s,
         u"ID Company Title FirstName LastName Address1 Address2 City State ZipCode Discount"_s},
    };
    RunInstallStep();
    for (const auto& row : cases) {
        Connection connection(path(row.file));
        const Recordset rows(connection, row.table);
        QStringList names;
        for (int i = 0; i < rows.fieldCount(); ++i)
            names.append(rows.fieldName(i));
        EXPECT_EQ(names.join(u' '), row.columns);
    }
    EXPECT_EQ(RaisedError([&] { CreateDayInfoDatabase(path(u"DayInfo.mdb"_s)); }),
              errors::FileExists);
}

TEST_F(InstallStep, TheStarterWeekIsOfOnePiece) {
    RunInstallStep();
    Connection days(path(u"Starter Databases/dayinfo.mdb"_s));
    Connection records(path(u"Starter Databases/kelvrane.mdb"_s));
    Recordset week(days, u"DayInfo"_s);
    QSet<QString> projects;
    int day = 0;
    for (week.moveFirst(); !week.atEnd(); week.moveNext()) {
        EXPECT_EQ(week.value(u"Date"_s).toDate(), QDate(2000, 1, ++day));
        EXPECT_GT(week.value(u"BreakTime"_s).toInt(), 0);
        EXPECT_GT(week.value(u"TotalTime"_s).toInt(), week.value(u"BreakTime"_s).toInt());
        Recordset project(records, u"ProjectInfo"_s);
        project.find(u"Project_Name = '"_s + week.text(u"ProjectName"_s) + u"'"_s);
        ASSERT_FALSE(project.atEnd());
        projects.insert(project.text(u"Project_Name"_s));
        EXPECT_EQ(project.text(u"Project_Number"_s), week.text(u"ProjectNumber"_s));
        EXPECT_EQ(project.text(u"CustInfoDBID"_s), week.text(u"AssignTo"_s));
        Recordset customer(records, u"CustomerInfo"_s);
        customer.find(u"ID = '"_s + project.text(u"CustInfoDBID"_s) + u"'"_s);
        EXPECT_EQ(project.text(u"CustomerID"_s),
                  QString(customer.text(u"Company"_s) + u" - "_s + customer.text(u"LastName"_s)));
    }
    EXPECT_EQ(day, 7);
    EXPECT_GT(projects.size(), 3);
}

} // namespace
} // namespace kelvrane::testing
