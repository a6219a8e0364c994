#include "collections/collection_builder.h"
#include "collections/collection_fixture.h"
#include "collections/sheet_name.h"

#include <QFile>

#include <sys/stat.h>

namespace kelvrane::testing {
namespace {

class CollectionBuilder : public CollectionTest {
  protected:
    /// The replies of the clash dialog, one a question: "Overwrite", "Skip", or a new name.
    void answer(const QStringList& replies) {
        m_replies = replies;
        events.onYield = [this] {
            if (!screens.isLoaded(Screen::frmFileExists) || !Clash().FE_Response.isEmpty())
                return;
            questions.append(Clash().controls.item("Label1").caption);
            ASSERT_FALSE(m_replies.isEmpty()) << questions.last().toStdString();
            const QString reply = m_replies.takeFirst();
            if (reply == replies::Overwrite || reply == replies::Skip) {
                Clash().controls.click("cmd" + reply);
                return;
            }
            Clash().controls.click("cmdRename");
            Clash().controls.edit("txtFileName", reply);
            Clash().controls.click("OKButton");
        };
    }
    QString add(QString name, const QString& html = "new") {
        filed = AddSheetToCollection(name, html, progress_);
        EXPECT_TRUE(m_replies.isEmpty());
        return name;
    }

    bool filed = false;
    QStringList questions;

  private:
    QStringList m_replies;
};

TEST_F(CollectionBuilder, TheFirstSheetMakesTheCollection) {
    QStringList steps;
    QObject::connect(&progress_, &QAbstractItemModel::dataChanged, &progress_, [&] {
        const KeyedItem& item = progress_.item("PROGRESS");
        if (const QString step = item.caption + ' ' + item.value;
            steps.isEmpty() || steps.last() != step)
            steps.append(step);
    });
    EXPECT_EQ(add("Acme", QString::fromUtf8("<p>\xe2\x82\xac</p>")), "Acme.htm");
    EXPECT_TRUE(filed);
    EXPECT_EQ(listed(), QStringList{"Acme.htm"});
    EXPECT_EQ(sheet("Acme.htm"), "<p>\xe2\x82\xac</p>\n");
    EXPECT_EQ(sheets(), QStringList{"Acme.htm"}) << "nothing is left beside it";
    EXPECT_TRUE(steps.contains("Creating File List 95"));
    EXPECT_TRUE(steps.contains("Creating Data File 95"));
    EXPECT_EQ(steps.last(), " 0");
    add("Bold");
    EXPECT_EQ(listed(), QStringList({"Acme.htm", "Bold.htm"}));
}

TEST_F(CollectionBuilder, EachReplyToAClash) {
    const struct {
        QStringList before;
        QString name;
        QStringList replies, after; ///< after: the list
        QString written;            ///< "" for none
    } rows[] = {
        {{"acme.htm"}, "Acme", {"Overwrite"}, {"acme.htm"}, "acme.htm"},
        {{"acme.htm"}, "Acme", {"Skip"}, {"acme.htm"}, ""},
        {{"acme.htm"}, "Acme", {"Acme May.htm"}, {"acme.htm", "Acme May"}, "Acme May"},
        {{"a.htm", "b"}, "A", {"B", "Overwrite"}, {"a.htm", "b"}, "b"},
        {{"a.htm", "b"}, "A", {"B", "Skip"}, {"a.htm", "b"}, ""},
        {{"a.htm", "b"}, "A", {"B", "c"}, {"a.htm", "b", "c"}, "c"},
        // An earlier entry isn't looked at again.
        {{"b", "a.htm"}, "A", {"B"}, {"b", "a.htm", "B"}, "B"},
        {{"a.htm"}, "A", {"../x"}, {"a.htm", ".._x"}, ".._x"},
        {{"a.htm"}, "A", {".."}, {"a.htm", ".._"}, ".._"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before.join('|').toStdString() + " " +
                     row.replies.join('|').toStdString());
        QDir(path("Week_data")).removeRecursively();
        fileSheets(row.before);
        answer(row.replies);
        add(row.name);
        EXPECT_TRUE(filed);
        EXPECT_EQ(listed(), row.after);
        for (const QString& name : sheets())
            EXPECT_EQ(sheet(name.toUtf8().constData()),
                      name == row.written ? QByteArray("new\n") : name.toUtf8());
        EXPECT_EQ(sheets().contains(row.written), !row.written.isEmpty());
    }
    EXPECT_EQ(questions.constFirst(), "The name, Acme.htm already exists in the collection.\r"
                                      "How do you want to handle this file?");
    EXPECT_FALSE(screens.isLoaded(Screen::frmFileExists));
}

TEST_F(CollectionBuilder, AClashThatNobodyAnswersIsSkipped) {
    fileSheets({"acme.htm"});
    add("Acme"); // the wait ends with the program
    EXPECT_EQ(listed(), QStringList{"acme.htm"});
    events.onYield = [] { UnloadFileExists(); }; // its frame
    add("Acme");
    EXPECT_EQ(sheet("acme.htm"), "acme.htm");
}

TEST_F(CollectionBuilder, NamesOfCustomersBecomeNamesOfFiles) {
    for (const char* name : {"A/B: \"C\"", "..", "../../x", "con", "a\nb"})
        add(QString::fromLatin1(name));
    EXPECT_EQ(listed(),
              QStringList({"A_B_ _C_.htm", "...htm", ".._.._x.htm", "con_.htm", "a_b.htm"}));
    EXPECT_EQ(sheets().size(), 5);
}

TEST_F(CollectionBuilder, WhatCannotBeFiledIsToldAndNothingIsLost) {
    fileSheets({"acme.htm"});
    const QByteArray list = fileBytes("Week.col");
    dialogs.expect("File name too long");
    add(QString(300, 'x'));
    EXPECT_FALSE(filed);
    EXPECT_EQ(fileBytes("Week.col"), list);

    writeFile("Week.col", "cut off"); // its sheets must not be dropped by a new list
    dialogs.expect("Error # 62");
    add("Bold");
    EXPECT_EQ(fileBytes("Week.col"), "cut off");
    EXPECT_EQ(sheets(), QStringList{"acme.htm"});
    writeFile("Week.col", list);

    ASSERT_EQ(::chmod(QFile::encodeName(path("Week_data/acme.htm")).constData(), 0400), 0);
    answer({"Overwrite"});
    dialogs.expect("Permission denied");
    add("acme");
    EXPECT_FALSE(filed);
    EXPECT_EQ(sheet("acme.htm"), "acme.htm");
    EXPECT_EQ(sheets().size(), 1);

    StoreCollection({}, "Week");
    dialogs.expect("There is no collection");
    add("Bold");
    StoreCollection(folder.path(), "../Week");
    dialogs.expect("There is no collection");
    add("Bold");
}

TEST_F(CollectionBuilder, ADataFolderThatIsALinkIsNotFollowed) {
    QDir(folder.path()).mkpath("elsewhere");
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("Week_data")));
    dialogs.expect("a link to another place");
    add("Acme");
    EXPECT_FALSE(filed);
    EXPECT_TRUE(disk.filesIn(path("elsewhere")).isEmpty());
    EXPECT_FALSE(disk.exists(path("Week.col")));
}

/// Fails from the given write on, as a full disk does.
class FullDisk final : public DiskFileStore {
  public:
    void appendAndFlush(const QString& path, const QByteArray& bytes) override {
        if (--writesLeft < 0)
            Raise(errors::DiskFull, path + ": No space left on device");
        DiskFileStore::appendAndFlush(path, bytes);
    }
    int writesLeft = 0;
};

TEST_F(CollectionBuilder, AFullDiskLeavesWhatThereWas) {
    FullDisk full;
    ports.files = &full;
    for (const int writes : {0, 1}) { // at the sheet, at the list
        fileSheets({"acme.htm", "bold.htm"});
        const QByteArray list = fileBytes("Week.col");
        full.writesLeft = writes;
        dialogs.expect("No space left on device");
        add("Crisp");
        EXPECT_FALSE(filed);
        EXPECT_EQ(fileBytes("Week.col"), list);
        EXPECT_EQ(sheet("acme.htm"), "acme.htm");
        EXPECT_EQ(sheets().size(), writes == 0 ? 2 : 3) << "the sheet is there, unlisted";
        EXPECT_EQ(disk.filesIn(folder.path()).filter("Week").size(), 1);
    }
    full.writesLeft = 0;
    answer({"Overwrite"});
    dialogs.expect("No space left on device");
    add("acme");
    EXPECT_EQ(sheet("acme.htm"), "acme.htm");
}

TEST_F(CollectionBuilder, TheNameIsAskedBesideTheSheetsThatAreThere) {
    fileSheets({"acme.htm", "bold"});
    CollectionFileName = QStringLiteral("Week\0x");
    WireSelFilename();
    screens.onLoad = [&](Screen screen) {
        if (screen != Screen::frmSelFilename)
            return;
        LoadSelFilename();
        EXPECT_EQ(Naming().controls.value("txtFileName"), "1_5_2003");
        EXPECT_EQ(Naming().smuiXMLFiles.item("NAME").caption, "Week");
        EXPECT_EQ(Naming().smuiXMLFiles.item("I1").caption, "bold");
        Naming().controls.edit("txtFileName", "  ");
        dialogs.expect("Please select a valid filename.");
        Naming().controls.click("OKButton");
        EXPECT_TRUE(screens.isLoaded(Screen::frmSelFilename));
        Naming().controls.edit("txtFileName", QStringLiteral("May\0rest"));
        Naming().controls.click("OKButton");
    };
    AskSheetName(
        SheetNameOfDate("1/5/2003"), [] { return QStringLiteral("text"); }, progress_);
    EXPECT_EQ(listed(), QStringList({"acme.htm", "bold", "May.htm"}));
    EXPECT_EQ(sheet("May.htm"), "text\n");
    EXPECT_FALSE(screens.isLoaded(Screen::frmSelFilename));
}

} // namespace
} // namespace kelvrane::testing
