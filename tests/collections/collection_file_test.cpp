#include "collections/collection_file.h"
#include "collections/collection_fixture.h"
#include "collections/sheet_file_name.h"
#include "platform/texts.h"
#include "support/raised_error.h"

#include <QFile>

#include <sys/stat.h>

namespace kelvrane::testing {
namespace {

class CollectionFile : public CollectionTest {};

const QByteArray head = "<xml xmlns:o=\"urn:schemas-microsoft-com:office:office\">\r\n";

TEST_F(CollectionFile, TheListIsWrittenByteForByteAndComesBack) {
    WriteCollectionFile({"Acme.htm", "1_5_2003.htm"}, "Week", folder.path(), progress_);
    EXPECT_EQ(fileBytes("Week.col"), head + " <o:File HRef=\"Acme.htm\"/>\r\n"
                                            " <o:File HRef=\"1_5_2003.htm\"/>\r\n</xml>\r\n");
    EXPECT_EQ(progress_.value("PROGRESS"), "95");
    EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"),
              QStringList({"Acme.htm", "1_5_2003.htm"}));
    const QString odd = QString::fromUtf8("M\xc3\xbcller & S\xc3\xb6hne <1>'s.htm");
    WriteCollectionFile({odd}, "Week", folder.path(), progress_);
    EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), QStringList{odd});
    EXPECT_EQ(ReadCollectionHrefs(path("Week.col")), QStringList{odd});
    WriteCollectionFile({"a.htm"}, "Page.HTM", folder.path(), progress_);
    EXPECT_FALSE(fileBytes("Page.HTM").isEmpty()) << "such a name is the file's own";
}

TEST_F(CollectionFile, BothReadersTakeWhatStandsInAList) {
    const QByteArray entry = " <o:File HRef=\"a.htm\"/>";
    const struct {
        QByteArray bytes;
        QStringList names, hrefs;
    } rows[] = {
        {head + "</xml>\r\n", {}, {}},
        {head + entry + "\r\n</xml>\r\n", {"a.htm"}, {"a.htm"}},
        {QByteArray(head).replace("\r", "") + entry + "\n</xml>", {"a.htm"}, {"a.htm"}},
        {head + "no quote\r\n\r\n<x y=\"b.htm\">\r\n</xml>\r\n" + entry, {"b.htm"}, {"a.htm"}},
        {head + "\"half\r\n \"c.htm\"\r\n</xml>\r\n", {"c.htm"}, {}},
        {head + " <o:File HRef=\"M\xfcller.htm\"/>\r\n</xml>\r\n",
         {QString::fromLatin1("M\xfcller.htm")},
         {QString::fromLatin1("M\xfcller.htm")}},
    };
    for (const auto& row : rows) {
        writeFile("Week.col", row.bytes);
        EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), row.names) << row.bytes.toStdString();
        EXPECT_EQ(ReadCollectionHrefs(path("Week.col")), row.hrefs) << row.bytes.toStdString();
    }
}

TEST_F(CollectionFile, AMissingOrBrokenListIsTold) {
    dialogs.expect("File '" + path("Week.col") +
                   "' was not found. Please select a valid colleciton");
    EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), std::nullopt);
    const QByteArray middle = head + " <o:File HRef=\"a.htm\"/>\r\n</xm";
    for (const QByteArray& cut : {QByteArray(), head, middle}) {
        writeFile("Week.col", cut);
        dialogs.expect("Error # 62");
        EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), std::nullopt);
    }
    disk.remove(path("Week.col"), true);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("Week.col")).constData(), 0600), 0);
    dialogs.expect("Error # 75");
    EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), std::nullopt) << "and nobody waits";
    EXPECT_EQ(RaisedError([] { ParseCollection(QByteArray(LargestCollectionFile + 1, ' ')); }),
              errors::DeviceError);
}

TEST_F(CollectionFile, NamesThatLeadElsewhereAreRefused) {
    const struct {
        QString name;
        bool bare;
        QString safe;
    } rows[] = {
        {"Acme.htm", true, "Acme.htm"},
        {"..htm", true, "..htm"},
        {"a..b", true, "a..b"},
        {"console.htm", true, "console.htm"},
        {"", false, "_"},
        {".", false, "._"},
        {"..", false, ".._"},
        {"../x.htm", false, ".._x.htm"},
        {"/etc/x", false, "_etc_x"},
        {"..\\x", false, ".._x"},
        {"C:x", false, "C_x"},
        {QStringLiteral("a\0b"), false, "a_b"},
        {"a\nb", false, "a_b"},
        {"nul", false, "nul_"},
        {"COM1.htm", false, "COM1_.htm"},
        {"A*?\"<>|b", true, "A______b"},
    };
    QStringList names;
    for (const auto& row : rows) {
        EXPECT_EQ(IsBareFileName(row.name), row.bare) << row.name.toStdString();
        EXPECT_EQ(SafeSheetName(row.name), row.safe) << row.name.toStdString();
        EXPECT_TRUE(IsBareFileName(SafeSheetName(row.name))) << row.name.toStdString();
        if (!row.bare) {
            EXPECT_EQ(RaisedError([&] { SheetPath(folder.path(), "Week", row.name); }),
                      errors::BadFileName);
        }
    }
    writeList({"good.htm", "../x.htm", "/etc/passwd", "..\\x", "", ".", "..", "nul"});
    dialogs.expect("names files outside of its folder");
    EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), QStringList{"good.htm"});
    EXPECT_TRUE(dialogs.shown.last().text.contains("'/etc/passwd'"));
    EXPECT_TRUE(dialogs.shown.last().text.endsWith("and 2 more"));
    EXPECT_EQ(ReadCollectionHrefs(path("Week.col")), QStringList{"good.htm"});
}

TEST_F(CollectionFile, PathsAreSplitAtTheLastFolderThatExists) {
    QDir(folder.path()).mkpath("a/b");
    const QString root = folder.path();
    const struct {
        QString path, folder, file;
    } rows[] = {
        {root + "/x.col", root, "x.col"},
        {root + "/a/b/x.col", root + "/a/b", "x.col"},
        {root + "/a/none/x.col", root + "/a", "none/x.col"},
        {root + "/a\\x.col", root + "/a", "x.col"},
        {root + "/we\\ird.col", root, "we\\ird.col"},
        {"/x.col", "/", "x.col"},
        {"C:\\x.col", "C:", "x.col"},
        {"x.col", ".", "x.col"},
        {"", ".", ""},
    };
    for (const auto& row : rows) {
        QString found, file;
        SepPathAndFilenames(row.path, found, file);
        EXPECT_EQ(found, row.folder) << row.path.toStdString();
        EXPECT_EQ(file, row.file) << row.path.toStdString();
    }
}

TEST_F(CollectionFile, NothingIsWrittenThroughWhatLiesInTheWay) {
    writeFile("outside", "mine");
    const QString staged = StageFile(path("probe"), "x");
    disk.remove(staged, true);
    ASSERT_TRUE(QFile::link(path("outside"), staged));
    ReplaceFile(path("probe"), "new");
    EXPECT_EQ(fileBytes("outside"), "mine");
    EXPECT_EQ(fileBytes("probe"), "new");
    ASSERT_TRUE(QFile::link(path("outside"), path("linked")));
    EXPECT_EQ(RaisedError([&] { ReplaceFile(path("linked"), "new", Links::Refused); }),
              errors::PathAccess);
    EXPECT_EQ(fileBytes("outside"), "mine");
    const QStringList names = disk.filesIn(folder.path());
    ReplaceFile(path("linked"), "new"); // a path that the user chose
    EXPECT_EQ(fileBytes("outside"), "new");
    EXPECT_EQ(disk.filesIn(folder.path()), names);
}

TEST_F(CollectionFile, AHundredThousandSheetsComeBack) {
    QStringList names;
    for (int sheet = 0; sheet < 100'000; ++sheet)
        names.append(QStringLiteral("Customer %1.htm").arg(sheet));
    WriteCollectionFile(names, "Week", folder.path(), progress_);
    EXPECT_EQ(ReadCollectionNames(folder.path(), "Week"), names);
}

} // namespace
} // namespace kelvrane::testing
