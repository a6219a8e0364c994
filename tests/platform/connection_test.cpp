#include "platform/connection.h"
#include "platform/file_store.h"
#include "support/raised_error.h"
#include "support/temporary_folder.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

class Connections : public testing::Test {
  protected:
    void SetUp() override {
        files.create(path, {}); // an empty file is an empty database
        Connection(path).execute(
            u"CREATE TABLE T (ID INTEGER PRIMARY KEY, Name TEXT NOT NULL, Day DATE)"_s);
    }
    int rows() {
        Connection connection(path);
        QSqlQuery query(connection.database());
        query.exec(u"SELECT count(*) FROM T"_s);
        query.next();
        return query.value(0).toInt();
    }

    TemporaryFolder folder;
    DiskFileStore files;
    const QString path = folder.path(u"50% #1 ü?&x.mdb"_s);
};

TEST_F(Connections, WhatIsNoDatabaseIsFoundOutAtOnceAndNothingIsCreated) {
    const QString garbage = folder.path(u"garbage.mdb"_s);
    files.create(garbage, QByteArray(5000, 'g'));
    const QString truncated = folder.path(u"truncated.mdb"_s);
    files.create(truncated, files.read(path).left(1000));
    const QString absent = folder.path(u"absent.mdb"_s);
    for (const QString& name : QStringList{garbage, truncated, absent, folder.path(), QString(),
                                           path + u"\0x"_s, absent + u"/x"_s}) {
        EXPECT_EQ(RaisedError([&] { Connection connection(name); }), errors::DatabaseOpen)
            << name.toStdString();
    }
    EXPECT_FALSE(files.exists(absent));
    EXPECT_EQ(files.read(garbage), QByteArray(5000, 'g'));
    try {
        Connection connection(absent);
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.source, "SQLite");
        EXPECT_TRUE(error.description.contains(absent));
    }
    EXPECT_EQ(QSqlDatabase::connectionNames(), QStringList());
}

TEST_F(Connections, ALockedDatabaseIsAnErrorAndNoFreeze) {
    Connection holder(path);
    holder.execute(u"BEGIN EXCLUSIVE"_s);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(RaisedError([&] { Connection connection(path); }), errors::DatabaseLocked);
    EXPECT_LT(timer.elapsed(), 2000);
    holder.execute(u"COMMIT"_s);
    EXPECT_EQ(RaisedError([&] { Connection connection(path); }), 0);
}

TEST_F(Connections, OneStatementIsRunAndDatesAreStored) {
    Connection connection(path);
    connection.execute(u"INSERT INTO T (Name, Day) VALUES ('C#3/14/2002#', #3/14/2002#);"_s);
    QSqlQuery query(connection.database());
    ASSERT_TRUE(query.exec(u"SELECT Name, Day FROM T"_s) && query.next());
    EXPECT_EQ(query.value(0).toString(), "C#3/14/2002#");
    EXPECT_EQ(query.value(1).toString(), "2002-03-14");
    query.finish();

    for (const QString& sql :
         {u"DELETE FROM T; DELETE FROM T"_s, u"DELETE FROM absent"_s, u"DELETE FROM T WHERE 'a"_s,
          u"DELETE FROM T WHERE Name = 'a\0b'"_s, u"DELETE FROM T WHERE Day = #2/30/2002#"_s})
        EXPECT_EQ(RaisedError([&] { connection.execute(sql); }), errors::Sql) << sql.toStdString();
    EXPECT_EQ(rows(), 1);
}

TEST_F(Connections, DateLiterals) {
    const struct {
        QString sql;
        QString stored;
    } cases[] = {
        {u"a #1/2/2003# b"_s, u"a '2003-01-02' b"_s},
        {u"#12/31/1999##1/1/2000#"_s, u"'1999-12-31''2000-01-01'"_s},
        {u"'it''s #1/2/2003#' #1/2/2003#"_s, u"'it''s #1/2/2003#' '2003-01-02'"_s},
        {u"\"#1/2/2003#\""_s, u"\"#1/2/2003#\""_s},
        {u"C# and #"_s, u"C# and #"_s},
        {u"#13/40/2003#"_s, u"#13/40/2003#"_s},
        {u"x # y #1/2/2003#"_s, u"x # y '2003-01-02'"_s},
        {u"#"_s, u"#"_s},
    };
    for (const auto& row : cases)
        EXPECT_EQ(WithStoredDates(row.sql), row.stored);
}

TEST_F(Connections, ColumnsKnowTheirTypes) {
    Connection connection(path);
    connection.execute(u"CREATE TABLE \"Odd \"\"name\" (a VARCHAR(50), b SMALLINT, c CURRENCY, "
                       "d YESNO, e DATETIME, f, PRIMARY KEY (a, b))"_s);
    const QList<Column>& columns = connection.columns(u"Odd \"name"_s);
    const ColumnType expected[] = {ColumnType::Text,    ColumnType::Integer, ColumnType::Number,
                                   ColumnType::Boolean, ColumnType::Date,    ColumnType::Text};
    ASSERT_EQ(columns.size(), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(columns[i].type, expected[i]) << i;
        EXPECT_FALSE(columns[i].isKey);
    }
    EXPECT_TRUE(connection.columns(u"T"_s)[0].isKey);
    EXPECT_FALSE(connection.columns(u"T"_s)[1].allowsNull);
    EXPECT_EQ(RaisedError([&] { connection.columns(u"absent"_s); }), errors::Sql);
}

TEST_F(Connections, WhatWasWrittenBeforeAFailureStays) {
    try {
        Connection connection(path);
        connection.begin();
        connection.execute(u"INSERT INTO T (Name) VALUES ('first')"_s);
        connection.execute(u"INSERT INTO T (Name) VALUES (NULL)"_s);
        connection.commit();
    } catch (const RuntimeError&) {
    }
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(files.filesIn(folder.path()).size(), 1); // no journal is left
}

} // namespace
