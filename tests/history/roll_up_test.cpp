// The working day in a history that is locked, damaged, missing or emptied for a while.
#include "frame/day_tail.h"
#include "frame/globals.h"
#include "frame/waiting_questions.h"
#include "history/day_history.h"
#include "history/roll_up.h"
#include "startup/database_schema.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/working_day.h"
#include "timevalues/time_values.h"
#include "tray/minute_tick.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace kelvrane {
namespace {

class PendingRollUp : public testing::WorkingDayTest {
  protected:
    PendingRollUp() {
        wire();
        StopWorkTime = "11:59 PM";
        EndOfDayTimeInterval = 1000;
        LoadControlScreen();
    }
    ~PendingRollUp() override { unlock(); }
    void wire() {
        QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
    }
    /// Another program's lock, by a connection that isn't one of the program's own.
    void lock(const char* statement = "BEGIN EXCLUSIVE") {
        m_other = QSqlDatabase::addDatabase("QSQLITE", "other program");
        m_other.setDatabaseName(path("DayInfo.mdb"));
        ASSERT_TRUE(m_other.open());
        QSqlQuery query(m_other);
        ASSERT_TRUE(query.exec(statement));
        if (query.isSelect()) {
            ASSERT_TRUE(query.next());
            m_reading = std::move(query); // unread rows keep the shared lock
        }
    }
    void unlock() {
        m_reading.reset();
        m_other.close();
        m_other = {};
        QSqlDatabase::removeDatabase("other program");
    }
    void startAgain(const QString& moment) {
        clock.set(moment);
        restart();
        wire();
        LoadControlScreen();
    }

  private:
    QSqlDatabase m_other;
    std::optional<QSqlQuery> m_reading;
};

TEST_F(PendingRollUp, AQuarterHourThatMeetsALockOpensNoBoxAndIsWrittenLater) {
    start("Alpha");
    passMinutes(14);
    for (const char* statement : {"BEGIN EXCLUSIVE", "SELECT * FROM DayInfo"}) {
        lock(statement);
        passMinutes(1); // strict dialogs: a box would fail
        EXPECT_TRUE(RollUpPending()) << statement;
        fireRetry();
        EXPECT_TRUE(RollUpPending());
        unlock();
        fireRetry();
        EXPECT_FALSE(RollUpPending());
        EXPECT_EQ(history().first().section('|', 2, 2),
                  QString::number(ToMinutes(DayEntries[0].TotalTime)));
        passMinutes(14);
    }
    EXPECT_EQ(timers.created.size(), 1);
    EXPECT_FALSE(timers.created[0]->enabled);
}

TEST_F(PendingRollUp, TheDelayDoublesThenAQuestionWaitsAndTheTicksGoOn) {
    start("Alpha");
    lock();
    passMinutes(5);
    TimeCtrlClick("STOP");
    QList<int> delays;
    for (int i = 0; i < 20 && timers.created[0]->enabled; ++i) {
        delays.append(timers.created[0]->interval());
        fireRetry();
    }
    EXPECT_EQ(delays, (QList<int>{50, 100, 200, 400, 800, 1600, 3200, 5000}));
    EXPECT_TRUE(waitingQuestion().endsWith("|Try now"));
    EXPECT_EQ(progress.captions, QStringList{}); // no compaction of what isn't written
    EXPECT_FALSE(QFile::exists(path("DayInfo_Backup.mdb")));
    Questions().answer(Questions().waiting().first(), "Try now");
    EXPECT_TRUE(waitingQuestion().endsWith("|Try now"));
    passMinutes(1);
    unlock();
    passMinutes(1);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|5|0"});
    EXPECT_EQ(waitingQuestion(), "");
    EXPECT_TRUE(QFile::exists(path("DayInfo_Backup.mdb"))); // the backup followed
}

TEST_F(PendingRollUp, NothingIsTriedBehindProgressOrAnOpenHistory) {
    start("Alpha");
    passMinutes(5);
    lock();
    TimeCtrlClick("STOP");
    unlock();
    progress.open = true;
    fireRetry();
    EXPECT_TRUE(RollUpPending());
    progress.open = false;
    {
        const Connection reader(DayHistoryPath());
        fireRetry();
        EXPECT_TRUE(RollUpPending());
    }
    fireRetry();
    EXPECT_FALSE(RollUpPending());
}

TEST_F(PendingRollUp, AStopThatWasNeverWrittenIsWrittenByTheNextDay) {
    start("Alpha");
    passMinutes(75);
    lock();
    TimeCtrlClick("STOP");
    clock.set("2026-03-02 23:58");
    passMinutes(5); // the day is over, its rows aren't there
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_TRUE(QFile::exists(path("Fileinfo.dat.2026-03-02")));
    start("Beta");
    passMinutes(10);
    SaveForLogOut(); // waits a while, in vain
    EXPECT_GE(events.paused, 4000);
    EXPECT_LE(events.paused, 5000);
    EXPECT_FALSE(progress.open);
    startAgain("2026-03-04 09:00");
    EXPECT_EQ(RollUpPending(), true);
    unlock();
    passMinutes(1);
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|75|0", "Beta|3/3/2026|10|0"}));
    EXPECT_FALSE(QFile::exists(path("Fileinfo.dat.2026-03-02")));
    EXPECT_FALSE(QFile::exists(path("Fileinfo.dat.2026-03-03")));
}

TEST_F(PendingRollUp, ARowThatHasToGoGoesLater) {
    start("Alpha");
    passMinutes(10);
    start("Beta");
    passMinutes(10);
    start("Alpha");
    lock();
    BreakDownSelect("STOP TIME1");
    dialogs.expect("Delete this project?", BoxAnswer::Ok);
    SetDataClick("mnuSetDataDeleteProject");
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("\ndelete=Beta\n"));
    startAgain("2026-03-02 09:30");
    unlock();
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|10|0", "Beta|3/2/2026|10|0"}));
    passMinutes(1);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|21|0"});
    EXPECT_EQ(TailValues(tail::Delete), QStringList());
    EXPECT_FALSE(fileBytes("Fileinfo.dat").contains("delete="));
}

TEST_F(PendingRollUp, ACommandByHandSaysWhatIsWrongATickOnlyLetsItWait) {
    start("Alpha");
    passMinutes(14);
    QFile::rename(path("DayInfo.mdb"), path("away.mdb"));
    passMinutes(1);
    EXPECT_TRUE(dialogs.shown.isEmpty());
    dialogs.expect("AddDataToDayInfoDataBase");
    start("Beta");
    QFile::rename(path("away.mdb"), path("DayInfo.mdb"));
    passMinutes(1);
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|15|0", "Beta|3/2/2026|1|0"}));
}

TEST_F(PendingRollUp, NamesAreBoundAndARowThatIsRightIsLeftAlone) {
    start("Alpha");
    DayEntries[0].ProjectName = "O'Neil \"x\"; DROP TABLE DayInfo";
    passMinutes(20);
    TimeCtrlClick("STOP");
    EXPECT_TRUE(history().contains("O'Neil \"x\"; DROP TABLE DayInfo|3/2/2026|20|0"));
    lock("SELECT * FROM DayInfo"); // a reader doesn't matter to a roll-up that has nothing to write
    AddDataToDayInfoDataBase();
    EXPECT_FALSE(RollUpPending());
}

TEST_F(PendingRollUp, AnEmptiedOrForeignHistoryDoesNotReplaceTheBackup) {
    start("Alpha");
    passMinutes(5);
    clock.set("2026-03-03 09:00");
    start("Beta");
    passMinutes(5);
    TimeCtrlClick("STOP");
    const QByteArray backup = fileBytes("DayInfo_Backup.mdb");
    ASSERT_FALSE(backup.isEmpty());
    QFile::remove(path("DayInfo.mdb"));
    CreateDayInfoDatabase(path("DayInfo.mdb"));
    start("Beta");
    TimeCtrlClick("STOP");
    EXPECT_EQ(fileBytes("DayInfo_Backup.mdb"), backup);
    EXPECT_TRUE(tray.notices.last().contains("backup of the history was kept"));
    QFile::remove(path("DayInfo.mdb"));
    CreateProjectDatabase(path("DayInfo.mdb"));
    dialogs.strict = false;
    start("Beta");
    TimeCtrlClick("STOP");
    EXPECT_EQ(fileBytes("DayInfo_Backup.mdb"), backup);
}

} // namespace
} // namespace kelvrane
