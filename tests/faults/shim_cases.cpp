// The shim itself: what it counts, where it ends a process, what it lets fail, for the program's
// own calls, Qt's and the database driver's.
#include "child.h"
#include "fault_shim.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace kelvrane::faults {
namespace {

/// Saves a file the way the program does: write, flush, rename, flush the folder. False at the
/// first call that fails.
bool Save(const QString& folder, bool flushing = true) {
    const QByteArray temporary = QFile::encodeName(folder + "/day.new");
    const QByteArray target = QFile::encodeName(folder + "/day");
    const int file = open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0)
        return false;
    const bool written = write(file, "new", 3) == 3 && (!flushing || fsync(file) == 0);
    close(file);
    if (!written || rename(temporary.constData(), target.constData()) != 0)
        return false;
    const int directory = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    const bool flushed = directory >= 0 && fsync(directory) == 0;
    close(directory);
    return flushed;
}

class Shim : public ::testing::Test {
  protected:
    ~Shim() override { Disarm(); }
    std::string root() const { return folder.path().toStdString(); }
    QByteArray bytes(const QString& name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    std::vector<std::string> logged(const std::function<void()>& run) {
        const std::string log = outside.filePath("log").toStdString();
        Arm({.root = root(), .log = log});
        run();
        Disarm();
        calls = ReadLog(log);
        std::vector<std::string> lines;
        for (const LoggedCall& call : calls)
            lines.push_back(call.call + ' ' + call.path +
                            (call.target.empty() ? "" : " -> " + call.target));
        return lines;
    }
    QTemporaryDir folder, outside;
    std::vector<LoggedCall> calls;
};

TEST_F(Shim, LogsCallsBelowTheRootInTheirOrder) {
    const std::vector<std::string> expected = {"create day.new", "write day.new",
                                               "flush day.new",  "rename day.new -> day",
                                               "open .",         "flush ."};
    EXPECT_EQ(logged([&] { Save(folder.path()); }), expected);
    EXPECT_TRUE(UnsafeReplacements(calls).empty());

    std::vector<std::string> elsewhere = logged([&] { Save(outside.path()); });
    EXPECT_EQ(elsewhere.size(), expected.size()) << "the log of another root must not grow";
}

TEST_F(Shim, TellsUnsafeReplacements) {
    logged([&] { Save(folder.path(), false); });
    EXPECT_EQ(UnsafeReplacements(calls).size(), 1U);

    const std::vector<LoggedCall> journal = {
        {"create", "a.mdb-journal", ""}, {"rename", "temp.mdb", "a.mdb"}, {"flush", ".", ""}};
    EXPECT_EQ(UnsafeReplacements(journal).size(), 1U);
    const std::vector<LoggedCall> folderFlushedBefore = {{"flush", ".", ""},
                                                         {"rename", "temp.mdb", "a.mdb"}};
    EXPECT_EQ(UnsafeReplacements(folderFlushedBefore).size(), 1U);
}

TEST_F(Shim, EndsTheProcessBeforeTheNthCall) {
    for (long at = 1; at <= 7; ++at) {
        QFile(folder.filePath("day.new")).remove();
        QFile old(folder.filePath("day"));
        ASSERT_TRUE(old.open(QIODevice::WriteOnly | QIODevice::Truncate));
        old.write("old");
        old.close();
        const int status = RunInChild([&] {
            Arm({.root = root(), .at = at});
            EXPECT_TRUE(Save(folder.path()));
        });
        EXPECT_EQ(status, at <= 6 ? Killed : 0) << at;
        EXPECT_EQ(bytes("day"), at <= 4 ? "old" : "new") << at;
        EXPECT_EQ(bytes("day.new"), at == 1 || at > 4 ? "none" : at == 2 ? "" : "new") << at;
    }
}

TEST_F(Shim, LetsCallsOfAKindFail) {
    Arm({.root = root(), .at = 1, .failWith = ENOSPC, .kinds = Write});
    EXPECT_FALSE(Save(folder.path()));
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(CallsSeen(), 1);
    EXPECT_TRUE(Save(outside.path())) << "a full disk below the root is not full elsewhere";

    QFile file(folder.filePath("by Qt"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_EQ(file.write("x"), -1);
    Arm({.root = root(), .at = 1, .failWith = EROFS, .kinds = Create | Rename | Remove});
    EXPECT_FALSE(QFile::rename(folder.filePath("by Qt"), folder.filePath("renamed")));
    EXPECT_FALSE(QFile::remove(folder.filePath("by Qt")));
    Disarm();
    EXPECT_TRUE(Save(folder.path()));
}

TEST_F(Shim, SeesTheDatabaseDriver) {
    const std::vector<std::string> lines = logged([&] {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "shim");
            database.setDatabaseName(folder.filePath("a.mdb"));
            ASSERT_TRUE(database.open());
            QSqlQuery query(database);
            ASSERT_TRUE(query.exec("CREATE TABLE a (b)"));
        }
        QSqlDatabase::removeDatabase("shim");
    });
    for (const char* line : {"create a.mdb", "create a.mdb-journal", "flush a.mdb-journal",
                             "write a.mdb", "flush a.mdb", "remove a.mdb-journal"})
        EXPECT_TRUE(std::ranges::find(lines, line) != lines.end()) << line;
}

} // namespace
} // namespace kelvrane::faults
