#include "platform/file_store.h"
#include "support/raised_error.h"
#include "support/temporary_folder.h"

#include <QDir>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

class DiskFiles : public testing::Test {
  protected:
    int openDescriptors() const { return static_cast<int>(QDir(u"/proc/self/fd"_s).count()); }
    void makeReadOnly(const QString& path) const { ::chmod(path.toUtf8().constData(), 0444); }

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
    makeReadOnly(b);
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
    files.writeAtomically(a, "new");
    EXPECT_EQ(files.read(a), "new");
    EXPECT_EQ(files.filesIn(folder.path()), QStringList{u"a"_s});
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
