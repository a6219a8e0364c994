#include "support/fakes.h"
#include "support/raised_error.h"
#include "timesheets/database_list.h"

#include <QDir>
#include <QFile>

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

constexpr char listFile[] = "SSDBInfo.dat";

class DatabaseListTest : public ProgramTest {
  protected:
    DatabaseListTest() {
        sheetState = {};
        Databases().reset();
        WireDatabaseList();
    }
    ~DatabaseListTest() override {
        QFile::setPermissions(folder.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void Load(const QByteArray& bytes) {
        writeFile(QString::fromLatin1(listFile), bytes);
        LoadDatabaseList();
    }
    QByteArray File() { return fileBytes(QString::fromLatin1(listFile)); }
    /// "1 alias|path|ACCEPT" a line.
    static QString List() {
        QString text;
        for (const KeyedItem& item : Databases().smuiSelectDBs.items()) {
            const ListedDatabase database = DatabaseAt(item.key.toInt());
            text += item.key + u' ' + database.Text + u'|' + database.Location + u'|' +
                    database.State + u'\n';
        }
        return text;
    }
    static void Choose(const char* key) {
        Databases().mnuSelectDBPopup.click(QString::fromLatin1(key));
    }
    /// Fills the open dialog and presses its OK.
    static void Answer(const QString& alias, const QString& location) {
        Databases().frmSSHelper.edit(u"txtAlias"_s, alias);
        Databases().frmSSHelper.edit(u"txtDBLocation"_s, location);
        Databases().frmSSHelper.click(u"OKButton"_s);
    }
    static void Select(int number) { smuiSelectDBs_ItemClick(QString::number(number)); }
    static void Flip() { smuiSelectDBs_MouseUp(Qt::LeftButton, 100); }
};

TEST_F(DatabaseListTest, EveryLineThatIsNotBlankBecomesAnItem) {
    const struct {
        const char* what;
        QByteArray bytes;
        QString list;
    } cases[] = {
        {"first run", "Current User;/a/DayInfo.mdb;\r\n",
         u"1 Current User|/a/DayInfo.mdb|ACCEPT\n"_s},
        {"states", "a;1.mdb;ACCEPT\r\nb;2.mdb;DECLINE\r\nc;3.mdb;decline\r\n",
         u"1 a|1.mdb|ACCEPT\n2 b|2.mdb|DECLINE\n3 c|3.mdb|ACCEPT\n"_s},
        {"no final line end", "a;1.mdb;\r\nb;2.mdb;DECLINE",
         u"1 a|1.mdb|ACCEPT\n2 b|2.mdb|DECLINE\n"_s},
        {"LF alone", "a;1.mdb;DECLINE\nb;2.mdb;\n", u"1 a|1.mdb|DECLINE\n2 b|2.mdb|ACCEPT\n"_s},
        {"blank lines are passed over", "\r\na;1.mdb;\r\n\r\nb;2.mdb;\r\n\r\n",
         u"1 a|1.mdb|ACCEPT\n2 b|2.mdb|ACCEPT\n"_s},
        {"fields too many and too few", "a;b;1.mdb;DECLINE\r\nx\r\n \r\n;\r\n",
         u"1 a|b|ACCEPT\n2 x||ACCEPT\n3  ||ACCEPT\n4 ||ACCEPT\n"_s},
        {"each line its own encoding", "J\xFCrg;1.mdb;\r\nZo\xC3\xAB;2.mdb;\r\n",
         u"1 Jürg|1.mdb|ACCEPT\n2 Zoë|2.mdb|ACCEPT\n"_s},
        {"empty", "", u""_s},
    };
    for (const auto& row : cases) {
        Load(row.bytes);
        EXPECT_EQ(List(), row.list) << row.what;
        EXPECT_EQ(DBCount, row.list.count(u'\n')) << row.what;
        EXPECT_EQ(File(), row.bytes) << row.what;
    }
    QFile::remove(path(QString::fromLatin1(listFile)));
    EXPECT_EQ(RaisedError(LoadDatabaseList), errors::FileNotFound);
}

TEST_F(DatabaseListTest, AFlipRewritesTheLineOfThatNumberAndNoOther) {
    const struct {
        const char* what;
        QByteArray before;
        int item;
        QByteArray after;
    } cases[] = {
        {"first run", "Current User;/a/DayInfo.mdb;\r\n", 1,
         "Current User;/a/DayInfo.mdb;DECLINE\r\n"},
        {"back again", "a;1.mdb;\r\nb;2.mdb;DECLINE\r\n", 2, "a;1.mdb;\r\nb;2.mdb;ACCEPT\r\n"},
        {"no final line end", "a;1.mdb;\r\nb;2.mdb;", 2, "a;1.mdb;\r\nb;2.mdb;DECLINE\r\n"},
        {"a blank line leads to the wrong one", "a;1.mdb;\r\n\r\nb;2.mdb;\r\nc;3.mdb;\r\n", 3,
         "a;1.mdb;\r\n\r\nc;3.mdb;DECLINE\r\nc;3.mdb;\r\n"},
        {"surplus fields go", "a;1.mdb;DECLINE;more\r\n", 1, "a;1.mdb;ACCEPT\r\n"},
        {"neighbours keep their bytes, this one is UTF-8 now", "J\xFC;1.mdb;\r\nK\xFC;2.mdb;x\r\n",
         2, "J\xFC;1.mdb;\r\nK\xC3\xBC;2.mdb;DECLINE\r\n"},
        {"a carriage return within the line", "a\rb;1\r.mdb;\r\n", 1, "a\rb;1\r.mdb;DECLINE\r\n"},
        {"NULs", QByteArray("a\0b;1.mdb;\r\nc;2\0.mdb;\r\n", 21), 2,
         QByteArray("a\0b;1.mdb;\r\nc;2\0.mdb;DECLINE\r\n", 30)},
    };
    for (const auto& row : cases) {
        Load(row.before);
        Select(row.item);
        Flip();
        EXPECT_EQ(File(), row.after) << row.what;
    }
    // Lines that went away behind the list's back: the new one stands at the end.
    Load("a;1.mdb;\r\nb;2.mdb;\r\n");
    writeFile(QString::fromLatin1(listFile), "a;1.mdb;\r\n");
    UpdateDatabaseListLine(2);
    EXPECT_EQ(File(), "a;1.mdb;\r\nb;2.mdb;ACCEPT\r\n");
    EXPECT_EQ(RaisedError([] { UpdateDatabaseListLine(3); }), errors::Subscript);
}

TEST_F(DatabaseListTest, OnlyTheLeftButtonWithinTheIconsFlipsTheSelectedDatabase) {
    const struct {
        Qt::MouseButton button;
        double x;
        bool flips;
    } cases[] = {{Qt::LeftButton, 50, false},   {Qt::LeftButton, 51, true},
                 {Qt::LeftButton, 299, true},   {Qt::LeftButton, 300, false},
                 {Qt::RightButton, 100, false}, {Qt::MiddleButton, 100, false}};
    Load("a;1.mdb;\r\nb;2.mdb;\r\n");
    Flip(); // nothing is selected
    EXPECT_EQ(List(), "1 a|1.mdb|ACCEPT\n2 b|2.mdb|ACCEPT\n");
    int used = 0;
    const auto connection = QObject::connect(&Databases(), &DatabaseList::Used, [&] { ++used; });
    Select(2);
    EXPECT_EQ(SelectedDBIndex, 2);
    for (const auto& row : cases) {
        const QString before = DatabaseAt(2).State;
        smuiSelectDBs_MouseUp(row.button, row.x);
        EXPECT_EQ(DatabaseAt(2).State != before, row.flips) << row.button << " " << row.x;
    }
    EXPECT_EQ(used, 7);
    QObject::disconnect(connection);
    EXPECT_EQ(DatabaseAt(1).State, database_state::Accept);
    EXPECT_EQ(Databases().smuiSelectDBs.item(u"2"_s).image, "accept");
}

TEST_F(DatabaseListTest, AddingAsksForAFileAndThenForItsAlias) {
    Load("a;/1.mdb;\r\n");
    dialogs.expectFile(std::nullopt);
    Choose("mnuAdd");
    EXPECT_EQ(SelectedDBIndex, 1) << "the number of databases";
    ASSERT_EQ(dialogs.fileQuestions.size(), 1);
    EXPECT_EQ(dialogs.fileQuestions[0].folder, folder.path());
    EXPECT_EQ(dialogs.fileQuestions[0].filter, "Kelvrane Database Files |*.mdb");
    EXPECT_EQ(dialogs.fileQuestions[0].defaultExtension, ".mdb");

    dialogs.expectFile(u"/x.mdb.txt"_s);
    dialogs.expect(u"Invalid file, please select an .mdb file"_s);
    EXPECT_FALSE(AddDatabase());
    dialogs.expectFile(u"/1.mdb"_s); // listed, under another alias
    dialogs.expect(u"The same database can not be added twice even it the alias' are different."_s);
    EXPECT_FALSE(AddDatabase());
    EXPECT_EQ(dialogs.shown.last().title, "Database already exists!");
    EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::Stop);
    EXPECT_TRUE(screens.shown.isEmpty());

    dialogs.expectFile(u"/2.MDB"_s);
    EXPECT_TRUE(AddDatabase());
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmSSHelper});
    EXPECT_EQ(Databases().frmSSHelper.value(u"txtAlias"_s), "");
    EXPECT_EQ(Databases().frmSSHelper.value(u"txtDBLocation"_s), "/2.MDB");
    Answer(u"  "_s, u"/2.MDB"_s); // without an alias the path is the name
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmSSHelper});
    EXPECT_EQ(List(), "1 a|/1.mdb|ACCEPT\n2 /2.MDB|/2.MDB|ACCEPT\n");
    EXPECT_EQ(DBCount, 2);
    EXPECT_EQ(File(), "a;/1.mdb;\r\n/2.MDB;/2.MDB;ACCEPT\r\n");

    dialogs.expectFile(u"/3.mdb"_s);
    AddDatabase();
    Answer(u" x'y\n"_s, u"/3\n.mdb"_s); // a line stays a line
    EXPECT_EQ(File(), "a;/1.mdb;\r\n/2.MDB;/2.MDB;ACCEPT\r\n x'y ;/3 .mdb;ACCEPT\r\n");
}

TEST_F(DatabaseListTest, ASemicolonIsRefusedAndTheDialogKeepsWhatWasTyped) {
    const QByteArray bytes = "a;/1.mdb;\r\n";
    Load(bytes);
    const std::pair<QString, QString> refused[] = {
        {u"x;y"_s, u"/2.mdb"_s}, {u"x"_s, u"/a;b/2.mdb"_s}, {QString(), u"/;.mdb"_s}};
    for (const auto& [alias, location] : refused) {
        dialogs.expectFile(location);
        ASSERT_TRUE(AddDatabase());
        dialogs.expect(u"semicolon"_s);
        Answer(alias, location);
        EXPECT_TRUE(screens.unloaded.isEmpty());
        EXPECT_EQ(Databases().frmSSHelper.value(u"txtAlias"_s), alias);
        EXPECT_EQ(File(), bytes);
    }
    Select(1);
    Choose("mnuModify");
    dialogs.expect(u"semicolon"_s);
    Answer(u"a;"_s, u"/1.mdb"_s);
    EXPECT_EQ(List(), "1 a|/1.mdb|ACCEPT\n");
    EXPECT_EQ(File(), bytes);
}

TEST_F(DatabaseListTest, ModifyingKeepsTheStateAndMayListAFileTwice) {
    Load("a;1.mdb;\r\nb;2.mdb;DECLINE\r\n");
    PrepareDatabaseMenu();
    Choose("mnuModify"); // disabled: nothing is selected
    EXPECT_TRUE(screens.shown.isEmpty());
    Select(2);
    smuiSelectDBs_MouseUp(Qt::RightButton, 500);
    Choose("mnuModify");
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmSSHelper});
    EXPECT_EQ(Databases().frmSSHelper.value(u"txtAlias"_s), "b");
    Answer(u"a"_s, u"1.mdb"_s);
    EXPECT_EQ(File(), "a;1.mdb;\r\na;1.mdb;DECLINE\r\n");
    EXPECT_EQ(List(), "1 a|1.mdb|ACCEPT\n2 a|1.mdb|DECLINE\n");
    EXPECT_EQ(DBCount, 2);
}

TEST_F(DatabaseListTest, DeletingTakesALineAwayWithoutAsking) {
    const struct {
        const char* what;
        QByteArray before;
        int item;
        QByteArray after;
        int selected;
    } cases[] = {
        {"the middle", "a;1;\r\nb;2;x\r\nc;3;\r\n", 2, "a;1;\r\nc;3;\r\n", 2},
        {"the end", "a;1;\r\nb;2;", 2, "a;1;\r\n", -1},
        {"the last one", "a;1;\r\n", 1, "", -1},
        {"below a blank line the wrong one", "a;1;\r\n\r\nb;2;\r\n", 2, "a;1;\r\nb;2;\r\n", 2},
    };
    for (const auto& row : cases) {
        Load(row.before);
        Select(row.item);
        EXPECT_TRUE(smuiSelectDBs_KeyDown(Qt::Key_Delete));
        EXPECT_EQ(File(), row.after) << row.what;
        EXPECT_EQ(DBCount, row.after.count('\n')) << row.what;
        EXPECT_EQ(SelectedDBIndex, row.selected) << row.what;
    }
}

TEST_F(DatabaseListTest, WhatCannotBeWrittenIsToldAndNothingIsLost) {
    const QByteArray bytes = "a;1.mdb;\r\nb;2.mdb;\r\n";
    Load(bytes);
    const QString list = List();
    Select(1);
    if (!QFile::setPermissions(path(QString::fromLatin1(listFile)), QFile::ReadOwner))
        GTEST_SKIP();
    const QString report = u"Unable to delete "_s + folder.path() + QDir::separator() +
                           u"SSDBInfo.dat.  Please close the file and retry"_s;
    dialogs.expect(report);
    Choose("mnuDelete");
    EXPECT_EQ(dialogs.shown.last().title, "Unexpected File I/O Error");
    EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::None);
    EXPECT_NE(RaisedError(Flip), 0);
    dialogs.expectFile(u"/3.mdb"_s);
    EXPECT_TRUE(AddDatabase());
    dialogs.expect(u"was generated by"_s);
    Answer(u"c"_s, u"/3.mdb"_s);
    EXPECT_TRUE(screens.unloaded.isEmpty()) << "the dialog keeps what was typed";
    EXPECT_EQ(List(), list);
    EXPECT_EQ(DBCount, 2);
    EXPECT_EQ(File(), bytes);

    QFile::remove(path(QString::fromLatin1(listFile)));
    dialogs.expect(report);
    DeleteDatabase();
    EXPECT_EQ(List(), list);
}

TEST_F(DatabaseListTest, AnyFileIsReadWithinBounds) {
    QByteArray many;
    for (int line = 1; line <= 10'000; ++line)
        many +=
            "name " + QByteArray::number(line) + ";/db/" + QByteArray::number(line) + ".mdb;\r\n";
    Load(many);
    EXPECT_EQ(DBCount, 10'000);
    Select(10'000);
    Flip();
    EXPECT_EQ(File(), many.chopped(2) + "DECLINE\r\n");
    const QString before = List();

    writeFile(QString::fromLatin1(listFile), QByteArray("x\n").repeated(32'768));
    EXPECT_EQ(RaisedError(LoadDatabaseList), errors::Overflow);
    writeFile(QString::fromLatin1(listFile), QByteArray(5'000'000, '\n'));
    EXPECT_EQ(RaisedError(LoadDatabaseList), errors::DeviceError);
    EXPECT_EQ(List(), before);
    EXPECT_EQ(DBCount, 10'000);

    QByteArray noise;
    for (int byte = 0; byte < 1024; ++byte)
        noise += char(byte * 7 + byte / 256);
    Load(noise);
    for (int number = 1; number <= DBCount; ++number)
        UpdateDatabaseListLine(Int16(number));
}

} // namespace
} // namespace kelvrane::testing
