#include "platform/database_file.h"
#include "platform/error.h"
#include "platform/file_store.h"
#include "support/raised_error.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QVariant>

#include <gtest/gtest.h>

#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

class DatabaseFiles : public testing::Test {
  protected:
    void SetUp() override {
        files.create(target, {});
        Connection connection(target);
        connection.execute(u"CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT)"_s);
        connection.execute(
            u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
            "INSERT INTO T SELECT i, 'a name of some length, number ' || i FROM n"_s);
        connection.execute(u"DELETE FROM T WHERE ID > 10"_s);
    }
    QString one(const QString& path, const QString& sql) {
        Connection connection(path);
        QSqlQuery query(connection.database());
        query.exec(sql);
        return query.next() ? query.value(0).toString() : QString();
    }

    TemporaryFolder folder;
    DiskFileStore files;
    const QString target = folder.path(u"file:x?y%.mdb"_s);
    const QString backup = folder.path(u"x_Backup.mdb"_s);
    const QString temp = folder.path(u"temp ' \".mdb"_s);
};

TEST_F(DatabaseFiles, BackupAndCompaction) {
    const QByteArray before = files.read(target);
    DatabaseCompaction compaction(files, target);
    EXPECT_EQ(RaisedError([&] { compaction.backupTo(backup); }), errors::NoObject);
    compaction.settle();
    EXPECT_EQ(RaisedError([&] { Connection other(target); }), errors::DatabaseLocked);
    files.create(backup, {}); // as a temporary file is
    compaction.backupTo(backup);
    ASSERT_TRUE(QFile::link(folder.path(u"elsewhere"_s), temp));
    compaction.compactTo(temp);
    EXPECT_FALSE(QFileInfo(temp).isSymLink() || files.exists(folder.path(u"elsewhere"_s)));
    EXPECT_EQ(RaisedError([&] { compaction.compactTo(temp); }), errors::FileExists);
    compaction.close();
    EXPECT_EQ(files.read(target), before);
    EXPECT_LT(files.read(temp).size(), before.size());
    ReplaceDatabase(files, temp, target);

    for (const QString& path : {target, backup}) {
        EXPECT_EQ(one(path, u"PRAGMA integrity_check"_s), "ok");
        EXPECT_EQ(one(path, u"SELECT count(*) FROM T"_s), "10");
        EXPECT_EQ(one(path, u"SELECT seq FROM sqlite_sequence"_s), "2000"); // keys aren't reused
    }
    EXPECT_EQ(files.filesIn(folder.path()).size(), 2);
}

TEST_F(DatabaseFiles, AJournalOfAKilledWriterIsSettledFirst) {
    const pid_t child = ::fork();
    if (child == 0) { // dies in a transaction that has reached the file
        Connection connection(target);
        connection.execute(u"PRAGMA cache_size = 1"_s);
        connection.execute(u"PRAGMA cache_spill = 1"_s);
        connection.begin();
        connection.execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE "
                           "i < 5000) INSERT INTO T (Name) SELECT 'lost ' || i FROM n"_s);
        connection.execute(u"UPDATE T SET Name = 'lost'"_s);
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_TRUE(files.exists(target + u"-journal"_s));
    files.create(temp, "x");
    EXPECT_EQ(RaisedError([&] { ReplaceDatabase(files, temp, target); }), errors::PathAccess);
    files.remove(temp, true);

    DatabaseCompaction compaction(files, target);
    compaction.settle();
    compaction.compactTo(temp);
    compaction.close();
    ReplaceDatabase(files, temp, target);
    EXPECT_EQ(one(target, u"SELECT count(*) FROM T WHERE Name LIKE 'lost%'"_s), "0");
    EXPECT_EQ(one(target, u"SELECT count(*) FROM T"_s), "10");
}

TEST_F(DatabaseFiles, WhatCannotBeDoneIsAnErrorAndLeavesTheDatabase) {
    const QByteArray before = files.read(target);
    {
        Connection reader(target);
        reader.execute(u"BEGIN"_s);
        QSqlQuery query(reader.database());
        ASSERT_TRUE(query.exec(u"SELECT * FROM T"_s) && query.next());
        DatabaseCompaction compaction(files, target);
        EXPECT_EQ(RaisedError([&] { compaction.settle(); }), errors::DatabaseLocked);
    }
    DatabaseCompaction compaction(files, target);
    compaction.settle();
    EXPECT_EQ(RaisedError([&] { compaction.backupTo(folder.path(u"absent/x"_s)); }), errors::Sql);
    compaction.close();
    files.create(temp, QByteArray(5000, 'g'));
    DatabaseCompaction garbage(files, temp);
    EXPECT_EQ(RaisedError([&] { garbage.settle(); }), errors::DatabaseOpen);
    EXPECT_EQ(files.read(target), before);
}

} // namespace
