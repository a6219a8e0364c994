#include "platform/file_store.h"
#include "platform/recordset.h"
#include "support/raised_error.h"
#include "support/temporary_folder.h"

#include <QDate>

#include <gtest/gtest.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

class Recordsets : public testing::Test {
  protected:
    void SetUp() override {
        files.create(path, {});
        connection = std::make_unique<Connection>(path);
        connection->execute(u"CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT, "
                            "Day DATE, Minutes SMALLINT, Rate REAL, Active BOOLEAN)"_s);
        connection->execute(u"INSERT INTO T (ID, Name, Day, Minutes, Rate, Active) VALUES "
                            "(1, 'beta', #3/14/2002#, 60, 0.5, 1), "
                            "(2, 'Alpha', #3/15/2002#, 30, 75, 0), "
                            "(4, 'alpha', #3/14/2002#, NULL, NULL, NULL), "
                            "(5, 'Beta', NULL, 60, 1, 1)"_s);
    }
    QString names(Recordset& rows) {
        QStringList list;
        for (rows.moveFirst(); !rows.atEnd(); rows.moveNext())
            list.append(rows.text(u"Name"_s));
        return list.join(u',');
    }
    QString stored(const QString& expression, int id) {
        QSqlQuery query(connection->database());
        query.exec(u"SELECT %1 FROM T WHERE ID = %2"_s.arg(expression).arg(id));
        return query.next() ? query.value(0).toString() : u"(no row)"_s;
    }

    TemporaryFolder folder;
    DiskFileStore files;
    const QString path = folder.path(u"x.mdb"_s);
    std::unique_ptr<Connection> connection;
};

TEST_F(Recordsets, OrderIsTheRecordSetsOwn) {
    const struct {
        QString source;
        QString names;
    } cases[] = {
        {u"T"_s, u"beta,Alpha,alpha,Beta"_s},
        {u"SELECT * FROM T"_s, u"beta,Alpha,alpha,Beta"_s},
        {u"SELECT * FROM T ORDER BY Name"_s, u"Alpha,alpha,Beta,beta"_s},
        {u"select * from T where Name <> ' ORDER BY Day' order by name desc ;"_s,
         u"beta,Beta,alpha,Alpha"_s},
        {u"SELECT * FROM T ORDER BY Day"_s, u"Beta,beta,alpha,Alpha"_s},
        {u"SELECT * FROM T ORDER BY Minutes"_s, u"alpha,Alpha,beta,Beta"_s},
        {u"SELECT * FROM T WHERE Day = #3/14/2002# ORDER BY ID DESC"_s, u"alpha,beta"_s},
        {u"SELECT * FROM T ORDER BY Day DESC, ID DESC"_s, u"beta,Alpha,alpha,Beta"_s},
    };
    for (const auto& row : cases) {
        Recordset rows(*connection, row.source);
        EXPECT_EQ(names(rows), row.names) << row.source.toStdString();
    }
    for (const QString& source :
         {u"absent"_s, u"SELECT * FROM absent"_s, u"SELECT 1"_s, u"SELECT * FROM T WHERE x"_s,
          u"SELECT * FROM T ORDER BY x"_s, u"SELECT * FROM T; DELETE FROM T"_s, u""_s})
        EXPECT_EQ(RaisedError([&] { Recordset rows(*connection, source); }), errors::Sql)
            << source.toStdString();
}

TEST_F(Recordsets, ValuesAreBoundAndNoPartOfTheStatement) {
    const QString names_[] = {u"O'Neil's site"_s,        u"a \"b\""_s,
                              u"C#3/14/2002#"_s,         u"why?"_s,
                              u"'; DELETE FROM T; --"_s, u" ORDER BY Day"_s};
    for (const QString& name : names_) {
        Recordset rows(*connection, u"T"_s, Recordset::Optimistic);
        rows.addNew();
        rows.setValue(u"Name"_s, name);
        rows.update();
    }
    for (const QString& name : names_) {
        Recordset rows(*connection,
                       BoundQuery{u"SELECT * FROM T WHERE Name = ? ORDER BY Name"_s, {name}},
                       Recordset::Optimistic);
        ASSERT_EQ(rows.count(), 1) << name.toStdString();
        EXPECT_EQ(rows.text(1), name);
        rows.setValue(u"Minutes"_s, 7);
        rows.update();

        Recordset table(*connection, u"T"_s);
        table.find(u"Name = '"_s + name + u"'"_s);
        EXPECT_EQ(table.text(u"Minutes"_s), "7") << name.toStdString();
    }
    const struct {
        BoundQuery query;
        QString names;
    } cases[] = {
        {{u"SELECT * FROM T WHERE Day = ? AND Minutes = ?"_s, {QDate(2002, 3, 14), 60}}, u"beta"_s},
        {{u"SELECT * FROM T WHERE coalesce(Rate, '') = ? AND ID < 6"_s, {QString()}}, u"alpha"_s},
        {{u"SELECT * FROM T WHERE Day = #3/15/2002# AND Name = ?"_s, {u"Alpha"_s}}, u"Alpha"_s},
    };
    for (const auto& row : cases) {
        Recordset rows(*connection, row.query);
        EXPECT_EQ(names(rows), row.names) << row.query.sql.toStdString();
    }
    const BoundQuery wrong[] = {{u"SELECT * FROM T WHERE ID = ?"_s, {}},
                                {u"SELECT * FROM T WHERE ID = 1"_s, {1}},
                                {u"SELECT * FROM T WHERE ID = ?; DELETE FROM T"_s, {1}}};
    for (const BoundQuery& query : wrong)
        EXPECT_EQ(RaisedError([&] { Recordset rows(*connection, query); }), errors::Sql)
            << query.sql.toStdString();
}

// Both ways of standing on rows: a table that is fetched when it must be, and a query's snapshot.
class Cursors : public Recordsets, public testing::WithParamInterface<const char*> {
  protected:
    std::unique_ptr<Recordset> open(Recordset::Lock lock = Recordset::ReadOnly) {
        return std::make_unique<Recordset>(*connection, QString::fromLatin1(GetParam()), lock);
    }
};
INSTANTIATE_TEST_SUITE_P(TableAndQuery, Cursors, testing::Values("T", "SELECT * FROM T"));

TEST_P(Cursors, PositionsAndMoves) {
    auto rows = open();
    EXPECT_EQ(rows->position(), 1);
    EXPECT_FALSE(rows->atBeginning());
    rows->movePrevious();
    EXPECT_EQ(rows->position(), Recordset::beforeFirst);
    EXPECT_TRUE(rows->atBeginning());
    EXPECT_EQ(RaisedError([&] { rows->movePrevious(); }), errors::NoCurrentRecord);
    EXPECT_EQ(RaisedError([&] { (void)rows->text(1); }), errors::NoCurrentRecord);
    rows->moveNext();
    EXPECT_EQ(rows->position(), 1);

    rows = open();
    rows->moveLast();
    EXPECT_EQ(rows->position(), 4);
    EXPECT_EQ(rows->text(u"NAME"_s), "Beta");
    rows->moveNext();
    EXPECT_EQ(rows->position(), Recordset::afterLast);
    EXPECT_TRUE(rows->atEnd());
    EXPECT_EQ(RaisedError([&] { rows->moveNext(); }), errors::NoCurrentRecord);
    rows->movePrevious();
    EXPECT_EQ(rows->position(), 4);

    rows = open();
    rows->setPosition(3);
    EXPECT_EQ(rows->text(1), "alpha");
    for (const int position : {0, 5, -1})
        EXPECT_EQ(RaisedError([&] { rows->setPosition(position); }), errors::NoCurrentRecord);
    EXPECT_EQ(rows->position(), 3);
}

TEST_P(Cursors, Finds) {
    const struct {
        QString criterion;
        int from;
        int position;
    } cases[] = {
        {u"Name = 'alpha'"_s, 1, 3},
        {u"name='Beta'"_s, 1, 4},
        {u"Name = 'beta'"_s, 1, 1},
        {u"Name = 'beta'"_s, 2, Recordset::afterLast},
        {u"Name = 'BETA'"_s, 1, Recordset::afterLast},
        {u"ID = '5'"_s, 1, 4},
        {u"ID = '4'"_s, 3, 3},
        {u"ID = '4'"_s, 4, Recordset::afterLast},
        {u"ID = '3'"_s, 1, Recordset::afterLast},
        {u"ID = 'x'"_s, 1, Recordset::afterLast},
        {u"Minutes= '60'"_s, 2, 4},
        {u"Rate = '0.50'"_s, 1, 1},
        {u"Minutes = ''"_s, 1, Recordset::afterLast},
        {u"Name = 'alpha''"_s, 1, Recordset::afterLast}, // the quote belongs to the name
        {u"Name = 'a' or 'b'"_s, 1, Recordset::afterLast},
        {u"Day = '3/15/2002'"_s, 1, 2},
        {u"Day = #3/14/2002#"_s, 2, 3},
        {u"Active = 'True'"_s, 2, 4},
    };
    for (const auto& row : cases) {
        auto rows = open();
        if (row.from > 1)
            rows->setPosition(row.from);
        rows->find(row.criterion);
        EXPECT_EQ(rows->position(), row.position) << row.criterion.toStdString() << row.from;
        if (row.position == Recordset::afterLast) {
            EXPECT_EQ(RaisedError([&] { rows->find(row.criterion); }), errors::NoCurrentRecord);
        } else {
            rows->moveNext(); // goes on from the row found, however it was reached
            EXPECT_EQ(rows->atEnd(), row.position == 4);
        }
    }
    auto rows = open();
    for (const QString& criterion :
         {u""_s, u"Name"_s, u"Name = "_s, u"Name = alpha"_s, u"Name = 'alpha' x"_s,
          u"absent = 'x'"_s, u"= 'x'"_s, u"Name = '"_s, u"Day = #2/30/2002#"_s})
        EXPECT_EQ(RaisedError([&] { rows->find(criterion); }), errors::BadFindText)
            << criterion.toStdString();
    EXPECT_EQ(rows->position(), 1);
}

TEST_P(Cursors, AnEmptySetIsAtBothEnds) {
    connection->execute(u"DELETE FROM T"_s);
    auto rows = open(Recordset::Optimistic);
    EXPECT_TRUE(rows->isEmpty() && rows->atBeginning() && rows->atEnd());
    EXPECT_EQ(rows->position(), Recordset::unknown);
    for (const auto move : {&Recordset::moveFirst, &Recordset::moveLast, &Recordset::moveNext,
                            &Recordset::movePrevious})
        EXPECT_EQ(RaisedError([&] { (*rows.*move)(); }), errors::NoCurrentRecord);
    rows = open(Recordset::Optimistic);
    EXPECT_EQ(RaisedError([&] { rows->find(u"ID = '1'"_s); }), errors::NoCurrentRecord);
    rows->addNew();
    EXPECT_FALSE(rows->isEmpty());
    EXPECT_EQ(rows->count(), 1);
    rows->cancelUpdate();
    EXPECT_TRUE(rows->isEmpty());
}

TEST_P(Cursors, ADeletedRowStaysCurrentUntilAMove) {
    auto rows = open(Recordset::Optimistic);
    rows->find(u"ID = '2'"_s);
    rows->deleteRow();
    EXPECT_EQ(rows->count(), 3);
    EXPECT_EQ(rows->position(), Recordset::unknown);
    EXPECT_FALSE(rows->atBeginning() || rows->atEnd());
    EXPECT_EQ(RaisedError([&] { (void)rows->text(1); }), errors::NoCurrentRecord);
    EXPECT_EQ(RaisedError([&] { rows->deleteRow(); }), errors::NoCurrentRecord);
    rows->moveNext();
    EXPECT_EQ(rows->position(), 2);
    EXPECT_EQ(rows->text(u"ID"_s), "4");

    rows->moveLast();
    rows->deleteRow();
    rows->movePrevious();
    EXPECT_EQ(rows->text(u"ID"_s), "4");
    rows->deleteRow();
    rows->moveNext();
    EXPECT_TRUE(rows->atEnd());
    rows->moveFirst();
    rows->deleteRow();
    EXPECT_TRUE(rows->isEmpty());
    EXPECT_EQ(RaisedError([&] { rows->moveFirst(); }), errors::NoCurrentRecord);
    EXPECT_EQ(stored(u"count(*)"_s, 1), "0");
}

TEST_P(Cursors, ANewRowGetsAKeyThatWasNeverUsed) {
    const QString odd = u"O'Brien; \"x\" & <y> 🙂 a\0b"_s + QString(10000, u'n');
    auto rows = open(Recordset::Optimistic);
    rows->moveLast();
    rows->deleteRow(); // key 5
    rows->setPosition(2);
    rows->addNew();
    EXPECT_EQ(rows->count(), 4);
    EXPECT_EQ(rows->position(), 4);
    EXPECT_TRUE(rows->isNull(1));
    EXPECT_EQ(rows->text(1), "");
    rows->setValue(u"Name"_s, u"dropped"_s);
    rows->cancelUpdate();
    EXPECT_EQ(rows->position(), 2);

    rows->addNew();
    rows->setValue(u"Name"_s, odd);
    rows->setValue(u"Day"_s, QDate(2002, 3, 16));
    rows->update();
    EXPECT_FALSE(rows->hasPendingChanges());
    EXPECT_EQ(rows->position(), 4);
    EXPECT_EQ(rows->text(u"ID"_s), "6");
    EXPECT_EQ(rows->text(u"Day"_s), "3/16/2002");
    EXPECT_EQ(stored(u"Day"_s, 6), "2002-03-16");
    auto again = open();
    again->moveLast();
    EXPECT_EQ(again->text(1), odd);
    rows->moveFirst();
    EXPECT_EQ(rows->count(), 4);
}

TEST_P(Cursors, OnlyUpdateWrites) {
    auto rows = open(Recordset::Optimistic);
    rows->find(u"ID = '2'"_s);
    rows->setValue(u"Name"_s, u"new"_s);
    EXPECT_EQ(rows->text(1), "new");
    EXPECT_EQ(stored(u"Name"_s, 2), "Alpha");
    rows->moveNext();
    rows->movePrevious();
    EXPECT_EQ(rows->text(1), "Alpha");

    rows->setValue(u"Name"_s, u"new"_s);
    rows->update();
    EXPECT_EQ(stored(u"Name"_s, 2), "new");
    rows->setValue(u"Name"_s, u"other"_s);
    rows->setValue(u"Name"_s, u"new"_s); // as it was
    rows->setValue(u"Day"_s, u"3/15/2002"_s);
    rows->setValue(u"Rate"_s, u"75.0"_s);
    rows->setValue(u"Active"_s, u"False"_s);
    EXPECT_FALSE(rows->hasPendingChanges());
}

TEST_F(Recordsets, FieldsAreConvertedBothWays) {
    const struct {
        QString field;
        QVariant given;
        QString text;
        QString stored;
    } good[] = {
        {u"Minutes"_s, u"12.5"_s, u"12"_s, u"12"_s},
        {u"Minutes"_s, 7, u"7"_s, u"7"_s},
        {u"Minutes"_s, u""_s, u""_s, u""_s},
        {u"Rate"_s, u"$1,000.25"_s, u"1000.25"_s, u"1000.25"_s},
        {u"Rate"_s, 0.25, u"0.25"_s, u"0.25"_s},
        {u"Active"_s, u"True"_s, u"True"_s, u"1"_s},
        {u"Active"_s, false, u"False"_s, u"0"_s},
        {u"Day"_s, u"2/29/2004"_s, u"2/29/2004"_s, u"2004-02-29"_s},
        {u"Day"_s, u""_s, u""_s, u""_s},
        {u"Name"_s, 0.25, u"0.25"_s, u"0.25"_s},
        {u"Name"_s, u""_s, u""_s, u""_s},
    };
    Recordset rows(*connection, u"T"_s, Recordset::Optimistic);
    for (const auto& row : good) {
        rows.setValue(row.field, row.given);
        rows.update();
        EXPECT_EQ(rows.text(row.field), row.text);
        EXPECT_EQ(stored(row.field, 1), row.stored);
    }
    EXPECT_EQ(stored(u"Minutes IS NULL AND Day IS NULL AND Name IS NOT NULL"_s, 1), "1");

    const struct {
        QString field;
        QVariant given;
        int number;
    } bad[] = {
        {u"Minutes"_s, u"x"_s, errors::TypeMismatch},
        {u"Minutes"_s, u"1e10"_s, errors::Overflow},
        {u"Rate"_s, u"1.2.3"_s, errors::TypeMismatch},
        {u"Active"_s, u"perhaps"_s, errors::TypeMismatch},
        {u"Day"_s, u"2/29/2003"_s, errors::TypeMismatch},
        {u"ID"_s, 9, errors::PermissionDenied},
        {u"absent"_s, 9, errors::BadArgument},
    };
    for (const auto& row : bad)
        EXPECT_EQ(RaisedError([&] { rows.setValue(row.field, row.given); }), row.number)
            << row.field.toStdString();
    EXPECT_FALSE(rows.hasPendingChanges());
    EXPECT_EQ(RaisedError([&] { (void)rows.text(6); }), errors::BadArgument);
    EXPECT_EQ(RaisedError([&] { (void)rows.fieldName(6); }), errors::Subscript);
    EXPECT_EQ(rows.fieldName(1), "Name");

    Recordset readOnly(*connection, u"T"_s);
    EXPECT_EQ(RaisedError([&] { readOnly.setValue(u"Name"_s, u"x"_s); }), errors::PermissionDenied);
    EXPECT_EQ(RaisedError([&] { readOnly.addNew(); }), errors::PermissionDenied);
    EXPECT_EQ(RaisedError([&] { readOnly.deleteRow(); }), errors::PermissionDenied);
}

TEST_F(Recordsets, AFailedUpdateStaysPending) {
    connection->execute(u"CREATE UNIQUE INDEX Once ON T (Name)"_s);
    Recordset rows(*connection, u"T"_s, Recordset::Optimistic);
    rows.setValue(u"Name"_s, u"Beta"_s);
    EXPECT_EQ(RaisedError([&] { rows.update(); }), errors::Sql);
    EXPECT_TRUE(rows.hasPendingChanges());
    rows.setValue(u"Name"_s, u"Gamma"_s);
    rows.update();
    EXPECT_EQ(stored(u"Name"_s, 1), "Gamma");
    connection->execute(u"DELETE FROM T WHERE ID = 1"_s);
    rows.setValue(u"Name"_s, u"Delta"_s);
    EXPECT_EQ(RaisedError([&] { rows.update(); }), errors::Sql);
}

TEST_F(Recordsets, ATableWithoutAnIntegerKeyIsReachedToo) {
    connection->execute(u"CREATE TABLE Foreign_made (Code TEXT PRIMARY KEY, Amount REAL)"_s);
    connection->execute(u"INSERT INTO Foreign_made VALUES ('b', 1), ('a', 2)"_s);
    for (const QString& source : {u"Foreign_made"_s, u"SELECT * FROM Foreign_made"_s,
                                  u"SELECT Amount, Code FROM Foreign_made WHERE Amount > 0"_s}) {
        Recordset rows(*connection, source, Recordset::Optimistic);
        EXPECT_EQ(rows.fieldCount(), 2);
        EXPECT_EQ(rows.text(u"Code"_s), "b");
        rows.find(u"Code = 'a'"_s);
        EXPECT_EQ(rows.position(), 2);
        rows.setValue(u"Amount"_s, rows.value(u"Amount"_s).toDouble() + 1);
        rows.update();
    }
    EXPECT_EQ(Recordset(*connection, u"SELECT * FROM Foreign_made WHERE Amount = 5"_s).count(), 1);
}

TEST_F(Recordsets, OddStoredValuesAreReadAsTheyStand) {
    connection->execute(u"INSERT INTO T VALUES (9, 5, 'soon', 'many', '1.50', 'maybe')"_s);
    connection->execute(u"INSERT INTO T VALUES (10, x'41', '2002-03-14 10:20:30', 1.5, 2, -1)"_s);
    Recordset rows(*connection, u"T"_s);
    const auto texts = [&] {
        QStringList list;
        for (int i = 1; i < rows.fieldCount(); ++i)
            list.append(rows.text(i));
        return list.join(u'|');
    };
    rows.find(u"ID = '9'"_s);
    EXPECT_EQ(texts(), "5|soon|many|1.5|maybe");
    rows.find(u"ID = '10'"_s);
    EXPECT_EQ(texts(), "A|3/14/2002|1.5|2|True");
}

/// Rows 11 to 99 can't be read: their last column overflows. What gets by has read none of them.
TEST_F(Recordsets, OneRecordIsReachedWithoutReadingTheOthers) {
    connection->execute(u"CREATE TABLE Guarded (ID INTEGER PRIMARY KEY, Name TEXT)"_s);
    connection->execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                        "200) INSERT INTO Guarded (ID, Name) SELECT i, 'name' FROM n"_s);
    connection->execute(u"ALTER TABLE Guarded ADD COLUMN Trap AS (CASE WHEN ID BETWEEN 11 AND 99 "
                        "THEN abs(-9223372036854775807 - min(ID, 1)) END)"_s);
    Recordset rows(*connection, u"Guarded"_s, Recordset::Optimistic);
    EXPECT_FALSE(rows.isEmpty());
    EXPECT_EQ(rows.count(), 200);
    rows.find(u"ID = '150'"_s);
    EXPECT_EQ(rows.text(u"ID"_s), "150");
    EXPECT_EQ(rows.position(), 150);
    rows.setValue(u"Name"_s, u"other"_s);
    rows.update();
    rows.moveLast();
    rows.addNew();
    rows.setValue(u"Name"_s, u"x"_s);
    rows.cancelUpdate();
    EXPECT_EQ(rows.text(u"ID"_s), "200");
    rows.addNew();
    rows.setValue(u"Name"_s, u"new"_s);
    rows.update();
    EXPECT_EQ(rows.position(), 201);
    rows.deleteRow();
    EXPECT_EQ(RaisedError([&] { rows.movePrevious(); }), errors::Sql) << "a move reads them all";
}

} // namespace
