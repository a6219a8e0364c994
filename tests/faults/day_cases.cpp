// A day that is cut off, or runs into a full disk, at each of its file calls in turn: the day file,
// the history, the project database and the settings are then as before or as after the command
// that was under way, whole, and the next start goes on from there.
#include "child.h"
#include "fault_shim.h"
#include "frame/program_folder.h"
#include "history/roll_up.h"
#include "platform/connection.h"
#include "platform/recordset.h"
#include "startup/install_step.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/working_day.h"
#include "timevalues/day_file.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QSqlQuery>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <vector>

namespace kelvrane::faults {
namespace {

constexpr int pastDays = 40;

/// What the disk holds of the day.
struct Saved {
    QByteArray dayFile;
    QStringList history; ///< every row as text, in the order of the keys
};

class DayUnderFaults : public kelvrane::testing::WorkingDayTest {
  protected:
    DayUnderFaults();
    ~DayUnderFaults() override {
        Disarm();
        munmap(commandsDone, sizeof(int));
    }

    std::string root() const { return folder.path().toStdString(); }
    std::string log() const { return outside.filePath("log").toStdString(); }

    /// Runs the day's commands up to a number of them; counts them as they return.
    void runDay(size_t count);
    /// The folder as it was prepared.
    void restoreFolder();
    Saved saved() const;
    /// What the disk holds after 0, 1, ... all commands, from runs without a fault.
    std::vector<Saved> statesOfTheDay();
    /// The disk holds, for the file and for the history, a state around the command under way.
    void expectBeforeOrAfter(const std::vector<Saved>& states);
    /// A new process on what is there: loads the day, works on a third project and stops it.
    void expectNextStartGoesOn();
    /// Fails all calls of the kinds from the n-th on, for each n; the day must stay whole, some
    /// message must tell of it, and the next save must succeed.
    void sweepFailures(int failWith, unsigned kinds);

    const std::vector<std::function<void()>> commands = {
        [] { LoadControlScreen(); },
        [] { StartProjectByName(QStringLiteral("Alpha")); },
        [this] {
            clock.advanceMinutes(65);
            StartProjectByName(QStringLiteral("Beta"));
        },
        [this] {
            clock.advanceMinutes(30);
            StopDay();
        },
    };
    int* commandsDone = nullptr; ///< shared with the children
    QList<QPair<QString, QByteArray>> prepared;
    QTemporaryDir outside;
};

DayUnderFaults::DayUnderFaults() {
    commandsDone = static_cast<int*>(
        mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    RunInstallStep();
    {
        Connection history(path("DayInfo.mdb"));
        history.begin();
        for (int day = 1; day <= pastDays; ++day)
            history.execute(QStringLiteral("INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, "
                                           "BreakTime, TotalTime) VALUES ('%1', 'Alpha', '10', 5, "
                                           "%2)")
                                .arg(clock.today().addDays(-day).toString(Qt::ISODate))
                                .arg(day));
        history.commit();
    }
    // Left behind by earlier misfortunes.
    writeFile("temp.mdb", "not a database");
    writeFile("DayInfo_Backup.mdb", "an old backup");
    writeFile("Fileinfo.dat.temp", "half a day");
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
        prepared.append({name, fileBytes(name)});
}

void DayUnderFaults::runDay(size_t count) {
    *commandsDone = 0;
    for (size_t i = 0; i < count; ++i) {
        commands[i]();
        ++*commandsDone;
    }
}

void DayUnderFaults::restoreFolder() {
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
        QFile::remove(path(name));
    for (const auto& [name, bytes] : prepared)
        writeFile(name, bytes);
}

Saved DayUnderFaults::saved() const {
    Saved state{.dayFile = fileBytes("Fileinfo.dat"), .history = {}};
    Connection history(path("DayInfo.mdb"));
    QSqlQuery integrity(QStringLiteral("PRAGMA integrity_check"), history.database());
    EXPECT_TRUE(integrity.next() && integrity.value(0).toString() == QStringLiteral("ok"));
    QSqlQuery rows(QStringLiteral("SELECT * FROM DayInfo ORDER BY ID"), history.database());
    while (rows.next()) {
        QStringList fields;
        for (int field = 0; field < 6; ++field)
            fields.append(rows.value(field).toString());
        state.history.append(fields.join(QLatin1Char('|')));
    }
    return state;
}

std::vector<Saved> DayUnderFaults::statesOfTheDay() {
    std::vector<Saved> states;
    for (size_t count = 0; count <= commands.size(); ++count) {
        restoreFolder();
        EXPECT_EQ(RunInChild([&] {
                      Arm({.root = root(), .flushes = false});
                      runDay(count);
                      const Saved now = saved();
                      QFile file(outside.filePath("state"));
                      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
                      QDataStream stream(&file);
                      stream << now.dayFile << now.history;
                  }),
                  0);
        QFile file(outside.filePath("state"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        Saved state;
        QDataStream stream(&file);
        stream >> state.dayFile >> state.history;
        states.push_back(state);
    }
    restoreFolder();
    return states;
}

void DayUnderFaults::expectBeforeOrAfter(const std::vector<Saved>& states) {
    const Saved now = saved();
    const Saved& before = states[static_cast<size_t>(*commandsDone)];
    const Saved& after = states[std::min<size_t>(*commandsDone + 1, states.size() - 1)];
    EXPECT_TRUE(now.dayFile == before.dayFile || now.dayFile == after.dayFile)
        << now.dayFile.toStdString();
    EXPECT_TRUE(now.history == before.history || now.history == after.history)
        << now.history.join('\n').toStdString();
}

void DayUnderFaults::expectNextStartGoesOn() {
    Arm({.root = root(), .flushes = false});
    installSettings();
    EXPECT_FALSE(settings->wasDamaged());
    RunInstallStep();
    LoadControlScreen();
    const qsizetype found = DayEntries.size();
    StartProjectByName(QStringLiteral("Gamma"));
    clock.advanceMinutes(10);
    StopDay();
    ASSERT_EQ(DayEntries.size(), found + 1);
    const Saved end = saved();
    EXPECT_TRUE(end.dayFile.contains("Gamma;Alpha;")) << end.dayFile.toStdString();
    EXPECT_TRUE(end.history.last().contains(QStringLiteral("|Gamma|Alpha|")));
    EXPECT_GE(end.history.size(), pastDays + 1);
    EXPECT_FALSE(disk.exists(path("temp.mdb")));
    EXPECT_NO_THROW(Connection(path("DayInfo_Backup.mdb")).columns(QStringLiteral("DayInfo")));
}

void DayUnderFaults::sweepFailures(int failWith, unsigned kinds) {
    const std::vector<Saved> states = statesOfTheDay();
    bool reached = true;
    for (long at = 1; reached; ++at) {
        SCOPED_TRACE(at);
        ASSERT_LT(at, 2000);
        restoreFolder();
        const int status = RunInChild([&] {
            dialogs.strict = false;
            Arm({.root = root(), .at = at, .failWith = failWith, .kinds = kinds, .flushes = false});
            runDay(commands.size());
            const bool hit = CallsSeen() >= at;
            Arm({.root = root(), .flushes = false});
            if (!hit)
                _exit(ChildDone);
            const Saved now = saved();
            const auto sameFile = [&](const Saved& state) { return state.dayFile == now.dayFile; };
            const auto sameRows = [&](const Saved& state) { return state.history == now.history; };
            EXPECT_TRUE(std::ranges::any_of(states, sameFile)) << now.dayFile.toStdString();
            EXPECT_TRUE(std::ranges::any_of(states, sameRows));
            const bool lost =
                now.dayFile != states.back().dayFile || now.history != states.back().history;
            if (lost) {
                EXPECT_TRUE(!dialogs.shown.isEmpty() || !tray.notices.isEmpty());
            }
            SaveDayFile();
            AddDataToDayInfoDataBase();
            EXPECT_EQ(saved().dayFile, states.back().dayFile);
            EXPECT_EQ(saved().history, states.back().history);
        });
        reached = status != ChildDone;
        ASSERT_TRUE(status == 0 || status == ChildDone) << status;
    }
}

TEST_F(DayUnderFaults, KilledBeforeAnyCall) {
    const std::vector<Saved> states = statesOfTheDay();
    ASSERT_NE(states[0].history, states.back().history);
    int status = Killed;
    for (long at = 1; status == Killed; ++at) {
        SCOPED_TRACE(at);
        ASSERT_LT(at, 2000);
        restoreFolder();
        status = RunInChild([&] {
            Arm({.root = root(), .at = at, .flushes = false});
            runDay(commands.size());
        });
        ASSERT_TRUE(status == Killed || status == 0) << status;
        ASSERT_EQ(RunInChild([&] { expectBeforeOrAfter(states); }), 0);
        ASSERT_EQ(RunInChild([&] { expectNextStartGoesOn(); }), 0);
    }
    EXPECT_EQ(*commandsDone, static_cast<int>(commands.size()));
}

TEST_F(DayUnderFaults, DiskFullFromAnyCallOn) {
    sweepFailures(ENOSPC, Write | Resize);
}

TEST_F(DayUnderFaults, FolderReadOnlyFromAnyCallOn) {
    sweepFailures(EACCES, Create | Rename | Remove | Folder);
}

TEST_F(DayUnderFaults, EachReplacementIsFlushedBeforeAndAfter) {
    ASSERT_EQ(RunInChild([&] {
                  Arm({.root = root(), .flushes = false, .log = log()});
                  runDay(commands.size());
              }),
              0);
    const std::vector<LoggedCall> calls = ReadLog(log());
    for (const std::string& fault : UnsafeReplacements(calls))
        ADD_FAILURE() << fault;
    const auto dayFile = std::ranges::find(calls, "Fileinfo.dat", &LoggedCall::target);
    const auto history = std::ranges::find(calls, "DayInfo.mdb", &LoggedCall::target);
    const auto backup = std::ranges::find_if(calls, [](const LoggedCall& call) {
        return call.call == "flush" && call.path == "DayInfo_Backup.mdb.new";
    });
    EXPECT_TRUE(dayFile < history);
    EXPECT_TRUE(backup < history) << "the backup must be safe before the history is replaced";
    EXPECT_TRUE(history < calls.end());
}

TEST_F(DayUnderFaults, SavingTheDayFlushesOneFileAndItsFolder) {
    DayEntries = {{"Alpha", "10", "9:00 AM", "", "0 Minutes", "0 Minutes"}};
    Arm({.root = root(), .log = log()});
    SaveDayFile();
    Disarm();
    std::vector<std::string> order; // one line a step, however many writes it takes
    for (const LoggedCall& call : ReadLog(log())) {
        const std::string line = call.call + ' ' + call.path;
        if (call.call != "open" && (order.empty() || order.back() != line))
            order.push_back(line);
    }
    const std::vector<std::string> end = {"write Fileinfo.dat.temp", "flush Fileinfo.dat.temp",
                                          "rename Fileinfo.dat.temp", "flush ."};
    ASSERT_GE(order.size(), end.size());
    EXPECT_TRUE(std::equal(end.rbegin(), end.rend(), order.rbegin()));
    EXPECT_EQ(
        std::ranges::count_if(order, [](const auto& line) { return line.starts_with("flush"); }),
        2);
}

TEST_F(DayUnderFaults, ReadOnlyFolderAsAnOrdinaryUser) {
    constexpr uid_t nobody = 65534;
    const std::vector<Saved> states = statesOfTheDay();
    const QByteArray name = QFile::encodeName(folder.path());
    const bool superuser = geteuid() == 0;
    const int status = RunInChild([&] {
        dialogs.strict = false;
        runDay(3);
        const Saved before = saved();
        for (const QString& file : QDir(folder.path()).entryList(QDir::Files))
            ASSERT_EQ(chmod(QFile::encodeName(path(file)).constData(), 0444), 0);
        if (superuser) {
            ASSERT_EQ(chown(name.constData(), nobody, nobody), 0);
        }
        ASSERT_EQ(chmod(name.constData(), 0500), 0);
        if (superuser) {
            ASSERT_EQ(setuid(nobody), 0);
        }
        clock.advanceMinutes(30);
        StopDay();
        EXPECT_TRUE(!dialogs.shown.isEmpty() || !tray.notices.isEmpty());
        const Saved after = saved();
        EXPECT_EQ(after.dayFile, before.dayFile);
        EXPECT_EQ(after.history, before.history);
    });
    ASSERT_EQ(chmod(name.constData(), 0700), 0);
    EXPECT_EQ(status, 0);
    for (const QString& file : QDir(folder.path()).entryList(QDir::Files))
        ASSERT_EQ(chmod(QFile::encodeName(path(file)).constData(), 0600), 0);
    EXPECT_EQ(RunInChild([&] { expectNextStartGoesOn(); }), 0);
}

} // namespace
} // namespace kelvrane::faults
