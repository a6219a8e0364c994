#include "frame/day_tail.h"
#include "support/fakes.h"
#include "timevalues/day_file.h"

#include <QFile>

namespace kelvrane {
namespace {

const DayEntry finished{"Alpha", "1001", "9:05 AM", "10:10 AM", "5 Minutes", "1 Hours 5 Minutes"};
const DayEntry running{"Beta", "1002", "10:10 AM", "", "0 Minutes", "1 Hours 32 Minutes"};

class DayFileTest : public testing::ProgramTest {
  protected:
    DayFileTest() { clock.set("2002-03-14 11:42"); }
    void load() { LoadDayFile("Single Timer Mode", DayEntries); }
    void writeDay(const QByteArray& lines, const QByteArray& date = "3/14/2002") {
        writeFile("Fileinfo.dat",
                  "Time: 9:00 AM\nDate: " + date + "\nDay Info:\n" + lines + "\n\n");
    }
};

TEST_F(DayFileTest, WritesTheGivenForm) {
    DayEntries = {finished, running};
    SaveDayFile();
    EXPECT_EQ(fileBytes("Fileinfo.dat"),
              QByteArray("Time: 11:42 AM\nDate: 3/14/2002\nDay Info:\n"
                         "Alpha;1001;9:05 AM;10:10 AM;5 Minutes;1 Hours 5 Minutes\n"
                         "Beta;1002;10:10 AM;;0 Minutes;1 Hours 32 Minutes\n\n\n"));
    EXPECT_FALSE(QFile::exists(path("Fileinfo.dat.temp")));
}

TEST_F(DayFileTest, ComesBackAsItWentInWithTheRunningTotalUpToNow) {
    DayEntries = {finished, running};
    SaveDayFile();
    clock.advanceMinutes(18);
    const QByteArray before = fileBytes("Fileinfo.dat");
    load();
    ASSERT_EQ(DayEntries.size(), 2);
    EXPECT_EQ(DayEntries[0], finished);
    EXPECT_EQ(DayEntries[1].TotalTime, "1 Hours 50 Minutes");
    EXPECT_EQ(CurrentEntryIndex, 2); // one above the last
    EXPECT_EQ(fileBytes("Fileinfo.dat"), before);
}

TEST_F(DayFileTest, KeepsNamesAsTheyAre) {
    for (const QString& name :
         {QStringLiteral("O'Neil & \"Sons\" <x>"), QStringLiteral("C# tool; phase 2"),
          QStringLiteral("C:\\work\\"), QString::fromUtf8("Été 🙂 日本"),
          QString(10'000, QLatin1Char('n'))}) {
        DayEntries = {finished};
        DayEntries[0].ProjectName = name;
        SaveDayFile();
        load();
        ASSERT_EQ(DayEntries.size(), 1);
        EXPECT_EQ(DayEntries[0].ProjectName, name);
    }
    // A line break can't end an entry early.
    DayEntries[0].ProjectName = QStringLiteral("two\nlines");
    SaveDayFile();
    load();
    EXPECT_EQ(DayEntries[0].ProjectName, QStringLiteral("two lines"));
}

TEST_F(DayFileTest, CorrectsAFinishedTotalAndRewritesTheFile) {
    writeDay("Alpha;1001;11:05 AM;1:10 PM;5 Minutes;9 Hours 9 Minutes\n"
             "Beta;1;2:00 PM;1:55 PM;0 Minutes;0 Minutes\n");
    load();
    EXPECT_EQ(DayEntries[0].TotalTime, "2 Hours 5 Minutes");
    EXPECT_EQ(DayEntries[1].TotalTime, "0 Minutes"); // never below zero
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("2 Hours 5 Minutes"));
    EXPECT_TRUE(fileBytes("Fileinfo.dat").startsWith("Time: 11:42 AM"));
}

TEST_F(DayFileTest, HandsAnotherDateBackAsItWasSaved) {
    writeDay("Alpha;1001;9:05 AM;;0 Minutes;0 Minutes\n", "3/13/2002");
    const QByteArray before = fileBytes("Fileinfo.dat");
    load();
    EXPECT_EQ(LastFileStatus, 105);
    EXPECT_EQ(VerifyDayFile(), 105);
    EXPECT_EQ(DayDate, QDate(2002, 3, 13));
    ASSERT_EQ(DayEntries.size(), 1);
    EXPECT_EQ(DayEntries[0].TotalTime, "0 Minutes"); // not up to a now of another date
    EXPECT_EQ(fileBytes("Fileinfo.dat"), before);
    PutDayFileBy();
    EXPECT_FALSE(QFile::exists(path("Fileinfo.dat")));
    EXPECT_EQ(fileBytes("Fileinfo.dat.last"), before);
}

TEST_F(DayFileTest, KeepsWhatStandsBehindTheEntries) {
    const QByteArray tail = "break=10:05 AM;5\nfrom a later version=1;2\n";
    writeDay("Beta;1002;10:10 AM;;0 Minutes;1 Hours 32 Minutes\n\n\n" + tail);
    load();
    EXPECT_EQ(TailValues(tail::Break), QStringList{"10:05 AM;5"});
    SetTailValues(tail::Break, {});
    SetTailValues(tail::Delete, {"a", "two\nlines"});
    SaveDayFile();
    EXPECT_TRUE(fileBytes("Fileinfo.dat")
                    .endsWith("32 Minutes\n\n\nfrom a later version=1;2\ndelete=a\ndelete=two "
                              "lines\n"));
    load();
    EXPECT_EQ(TailValues(tail::Delete).size(), 2);
}

TEST_F(DayFileTest, BrokenFilesNeverCrash) {
    const struct {
        const char* what;
        QByteArray bytes;
        qsizetype entries;
        bool raises;
    } rows[] = {
        {"header only", "Time: x\nDate: 3/14/2002\nDay Info:\n\n\n", 0, false},
        {"empty", "", 0, false},
        {"one line", "Date: 3/14/2002", 0, false},
        {"cut off",
         "Time: x\nDate: 3/14/2002\nDay Info:\nAlpha;1;9:00 AM;10:00 AM;0 Minutes;1 Hours 0 "
         "Minutes\nBeta;2;10",
         1, true},
        {"bad time", "Time: x\nDate: 3/14/2002\nDay Info:\nA;1;25:99 XM;;0 Minutes;0 Minutes\n", 0,
         true},
        {"binary", QByteArray("\x00\xff\xfe\x01\n\x80\x81 3/14/2002\n\x00\n\x00;\n", 24), 0, true},
        {"DOS lines",
         "Time: x\r\nDate: 3/14/2002\r\nDay Info:\r\nA;1;9:00 AM;9:30 AM;0 Minutes;30 "
         "Minutes\r\n\r\n",
         1, false},
        {"huge", "Time: x\nDate: 3/14/2002\nDay Info:\n" + QByteArray(20'000'000, ';') + "\n", 0,
         true},
    };
    for (const auto& row : rows) {
        writeFile("Fileinfo.dat", row.bytes);
        bool raisedError = false;
        try {
            load();
        } catch (const RuntimeError&) {
            raisedError = true;
            EXPECT_EQ(fileBytes("Fileinfo.dat.last"), row.bytes) << row.what;
        }
        EXPECT_EQ(raisedError, row.raises) << row.what;
        EXPECT_EQ(DayEntries.size(), row.entries) << row.what;
    }
}

TEST_F(DayFileTest, AFailedSaveLeavesTheOldFileAndSaysSo) {
    DayEntries = {finished};
    SaveDayFile();
    const QByteArray before = fileBytes("Fileinfo.dat");
    QFile::setPermissions(path("Fileinfo.dat"), QFile::ReadOwner);
    DayEntries = {finished, running};
    SaveDayFile();
    EXPECT_EQ(fileBytes("Fileinfo.dat"), before);
    SaveDayFile(); // said once
    ASSERT_EQ(tray.notices.size(), 1);
    EXPECT_TRUE(DayUnsaved);
    QFile::setPermissions(path("Fileinfo.dat"), QFile::ReadOwner | QFile::WriteOwner);
    SaveDayFile();
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Beta"));
    EXPECT_FALSE(DayUnsaved);
    DayEntries.clear(); // a day without entries is a file with its header alone
    SaveDayFile();
    EXPECT_TRUE(fileBytes("Fileinfo.dat").endsWith("Day Info:\n\n\n"));
    load();
    EXPECT_TRUE(DayEntries.isEmpty());
}

} // namespace
} // namespace kelvrane
