#include "platform/file_store.h"
#include "support/raised_error.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

class DiskFiles : public testing::Test {
  protected:
    int openDescriptors() const { return static_cast<int>(QDir(u"/proc/self/fd"_s).count()); }
    void setMode(const QString& path, mode_t mode) const {
        ASSERT_EQ(::chmod(path.toUtf8().constData(), mode), 0);
    }
    mode_t modeOf(const QString& path) const {
        struct stat status = {};
        EXPECT_EQ(::stat(path.toUtf8().constData(), &status), 0);
        return status.st_mode & 07777;
    }

    TemporaryFolder folder;
    DiskFileStore files;
    const QString a = folder.path(u"a"_s);
    const QString b = folder.path(u"b"_s);
};

TEST_F(DiskFiles, ASaveGoesThroughATemporaryFile) {
    files.create(a, "head\n");
    files.appendAndFlush(a, "body\n");
    files.create(b, "old, and longer than what comes");
    files.replace(a, b);
    EXPECT_EQ(files.read(b), "head\nbody\n");
    EXPECT_EQ(files.filesIn(folder.path()), QStringList{u"b"_s});

    files.writeAtomically(b, QByteArray("x\0y", 3));
    EXPECT_EQ(files.read(b), QByteArray("x\0y", 3));
    EXPECT_EQ(files.filesIn(folder.path()), QStringList{u"b"_s});
}

TEST_F(DiskFiles, AReadOnlyTargetIsRefusedAndKept) {
    files.create(a, "new");
    files.create(b, "old");
    setMode(b, 0444);
    for (const std::function<void()>& step : std::initializer_list<std::function<void()>>{
             [&] { files.replace(a, b); }, [&] { files.copy(a, b); },
             [&] { files.writeAtomically(b, "new"); }, [&] { files.remove(b, false); }})
        EXPECT_EQ(RaisedError(step), errors::PermissionDenied);
    EXPECT_EQ(files.read(b), "old");
    files.remove(b, true);
    EXPECT_FALSE(files.exists(b));
}

TEST_F(DiskFiles, CopyOverwritesAndMoveDoesNot) {
    const QByteArray large(200'000, 'x'); // more than one buffer
    files.create(a, large);
    files.create(b, "old");
    EXPECT_EQ(RaisedError([&] { files.move(a, b); }), errors::FileExists);
    EXPECT_EQ(files.read(b), "old");
    files.copy(a, b);
    EXPECT_EQ(files.read(b), large);
    files.remove(b, false);
    files.move(a, b);
    EXPECT_EQ(files.read(b), large);
    EXPECT_FALSE(files.exists(a));
}

TEST_F(DiskFiles, EveryFailureHasItsNumberAndNamesThePath) {
    const QString inside = folder.path() + u"/absent/file"_s;
    files.create(a, "a file, no folder");
    const struct {
        const char* name;
        std::function<void()> step;
        int number;
    } cases[] = {
        {"read absent", [&] { (void)files.read(b); }, errors::FileNotFound},
        {"read a folder", [&] { (void)files.read(folder.path()); }, errors::PathAccess},
        {"append to absent", [&] { files.appendAndFlush(b, "x"); }, errors::FileNotFound},
        {"create in an absent folder", [&] { files.create(inside, "x"); }, errors::FileNotFound},
        {"create under a file", [&] { files.create(a + u"/x"_s, "x"); }, errors::PathAccess},
        {"create over a folder", [&] { files.create(folder.path(), "x"); }, errors::PathAccess},
        {"replace by absent", [&] { files.replace(b, a); }, errors::FileNotFound},
        {"replace a folder", [&] { files.replace(a, folder.path()); }, errors::PathAccess},
        {"copy absent", [&] { files.copy(b, a); }, errors::FileNotFound},
        {"remove absent", [&] { files.remove(b, true); }, errors::FileNotFound},
        {"folder over a file", [&] { files.createFolder(a); }, errors::PathAccess},
        {"folder under a file", [&] { files.createFolder(a + u"/x/y"_s); }, errors::PathAccess},
        {"no name", [&] { (void)files.read({}); }, errors::BadFileName},
        {"a NUL", [&] { files.create(u"a\0b"_s, "x"); }, errors::BadFileName},
        {"too long", [&] { files.create(folder.path(QString(300, u'x')), "x"); },
         errors::BadFileName},
        {"device full", [&] { files.appendAndFlush(u"/dev/full"_s, "x"); }, errors::DiskFull},
    };
    const int before = openDescriptors();
    for (const auto& row : cases)
        EXPECT_EQ(RaisedError(row.step), row.number) << row.name;
    EXPECT_EQ(openDescriptors(), before);
    try {
        (void)files.read(b);
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.description.startsWith(b)) << error.what();
    }
}

TEST_F(DiskFiles, AFullDiskLeavesTheOldFileAndTheNextSaveSucceeds) {
    files.create(a, "old");
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small = {.rlim_cur = 1000, .rlim_max = before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const int number = RaisedError([&] { files.writeAtomically(a, QByteArray(5000, 'n')); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(number, errors::DiskFull);
    EXPECT_EQ(files.read(a), "old");
    EXPECT_EQ(files.filesIn(folder.path()), QStringList{u"a"_s});
    files.writeAtomically(a, "new");
    EXPECT_EQ(files.read(a), "new");
    EXPECT_EQ(files.filesIn(folder.path()), QStringList{u"a"_s});
}

TEST_F(DiskFiles, AReplacedFileKeepsItsMode) {
    for (const std::function<void()>& step : std::initializer_list<std::function<void()>>{
             [&] { files.replace(a, b); }, [&] { files.copy(a, b); },
             [&] { files.writeAtomically(b, "new"); }}) {
        files.create(a, "new");
        files.create(b, "old");
        setMode(a, 0644);
        setMode(b, 0620);
        step();
        EXPECT_EQ(modeOf(b), 0620U);
        EXPECT_EQ(files.read(b), "new");
    }
    files.create(a, "private");
    setMode(a, 0600);
    files.copy(a, folder.path(u"c"_s));
    EXPECT_EQ(modeOf(folder.path(u"c"_s)), 0600U) << "a copy is no more open than what it is of";
}

TEST_F(DiskFiles, ALinkIsFollowedToItsFile) {
    files.createFolder(folder.path(u"far"_s));
    const QString target = folder.path(u"far/target"_s);
    ASSERT_TRUE(QFile::link(u"far/second"_s, a)); // a -> second -> target, relative and absolute
    ASSERT_TRUE(QFile::link(target, folder.path(u"far/second"_s)));
    files.writeAtomically(a, "first"); // it leads nowhere yet
    EXPECT_EQ(files.read(target), "first");
    for (const std::function<void()>& step : std::initializer_list<std::function<void()>>{
             [&] { files.replace(b, a); }, [&] { files.copy(b, a); },
             [&] { files.writeAtomically(a, "new"); }}) {
        files.create(target, "old");
        files.create(b, "new");
        step();
        EXPECT_EQ(files.read(target), "new");
    }
    EXPECT_TRUE(QFileInfo(a).isSymLink() && QFileInfo(folder.path(u"far/second"_s)).isSymLink());
    EXPECT_EQ(files.filesIn(folder.path(u"far"_s)), (QStringList{u"second"_s, u"target"_s}));

    files.remove(b, true);
    ASSERT_TRUE(QFile::link(b, b));
    EXPECT_EQ(RaisedError([&] { files.writeAtomically(b, "x"); }), errors::PathAccess);
}

TEST_F(DiskFiles, ALinkToAnotherDiskIsFollowedToo) {
    QTemporaryDir elsewhere(u"/dev/shm/test-XXXXXX"_s);
    struct stat here = {};
    struct stat there = {};
    if (!elsewhere.isValid() || ::stat(folder.path().toUtf8().constData(), &here) != 0 ||
        ::stat(elsewhere.path().toUtf8().constData(), &there) != 0 || here.st_dev == there.st_dev)
        GTEST_SKIP() << "there is one file system only";
    const QString target = elsewhere.filePath(u"target"_s);
    files.create(target, "old");
    setMode(target, 0640);
    ASSERT_TRUE(QFile::link(target, a));
    files.create(b, "new");
    files.replace(b, a);
    EXPECT_EQ(files.read(target), "new");
    EXPECT_EQ(modeOf(target), 0640U);
    EXPECT_TRUE(QFileInfo(a).isSymLink());
    EXPECT_FALSE(files.exists(b));
}

TEST_F(DiskFiles, NothingIsWrittenThroughALinkAtATemporaryName) {
    const QString victim = folder.path(u"victim"_s);
    files.create(victim, "the user's");
    ASSERT_TRUE(QFile::link(victim, a));
    files.create(a, "head\n");
    EXPECT_EQ(files.read(a), "head\n");
    EXPECT_FALSE(QFileInfo(a).isSymLink());

    ASSERT_EQ(::link(victim.toUtf8().constData(), b.toUtf8().constData()), 0);
    files.create(b, "x");
    files.remove(a, true);
    ASSERT_TRUE(QFile::link(victim, a));
    EXPECT_EQ(RaisedError([&] { files.appendAndFlush(a, "x"); }), errors::PathAccess);
    EXPECT_EQ(files.read(victim), "the user's");
}

TEST_F(DiskFiles, OnlyWhatAKilledProcessLeftIsRemoved) {
    const QStringList users = {u".kelvrane-notes.new"_s, u"a.new"_s, u"a.temp"_s};
    for (const QString& name : users)
        files.create(folder.path(name), "the user's");
    const QString living = files.createTemporary(a);
    if (const pid_t child = ::fork(); child == 0) {
        const QString left = DiskFileStore().createTemporary(a);
        files.create(left + u"-journal"_s, "x"); // of a database that was being built
        ::_exit(0);
    } else {
        ::waitpid(child, nullptr, 0);
    }
    EXPECT_EQ(files.filesIn(folder.path()).size(), users.size() + 1 + 2);

    DiskFileStore nextProcess;
    nextProcess.writeAtomically(a, "new");
    EXPECT_EQ(files.filesIn(folder.path()).size(), users.size() + 2);
    EXPECT_TRUE(files.exists(living));
    for (const QString& name : users)
        EXPECT_EQ(files.read(folder.path(name)), "the user's") << name.toStdString();
}

TEST_F(DiskFiles, FoldersAndNames) {
    const QString deep = folder.path(u"x/y/z"_s);
    files.createFolder(deep);
    files.createFolder(deep);
    EXPECT_FALSE(files.exists(deep));
    for (const QString& name : {u"b.dat"_s, u"B.dat"_s, u"ä 🙂.dat"_s, u".hidden"_s})
        files.create(deep + u'/' + name, "x");
    EXPECT_EQ(files.filesIn(deep),
              (QStringList{u".hidden"_s, u"B.dat"_s, u"b.dat"_s, u"ä 🙂.dat"_s}));
    EXPECT_EQ(files.filesIn(folder.path(u"absent"_s)), QStringList());
    EXPECT_FALSE(files.exists(u"a\0b"_s));
}

} // namespace
