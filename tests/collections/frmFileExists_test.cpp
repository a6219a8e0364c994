#include "collections/collection_fixture.h"
#include "collections/frmFileExists.h"
#include "collections/frmSelFilename.h"
#include "collections/sheet_name.h"
#include "widgets/entry_list.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace kelvrane::testing {
namespace {

template <typename Window>
class DialogTest : public CollectionTest {
  protected:
    void show() {
        screen = std::make_unique<Window>();
        screen->show();
    }
    template <typename Control>
    Control* find(const char* name) {
        return screen->template findChild<Control*>(QString::fromLatin1(name));
    }
    void click(const char* button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    void type(const QString& text) {
        find<QLineEdit>("txtFileName")->selectAll();
        QTest::keyClicks(find<QLineEdit>("txtFileName"), text);
    }

    std::unique_ptr<Window> screen;
};

class frmFileExistsTest : public DialogTest<frmFileExists> {
  protected:
    /// What the filing gets to hear after the steps.
    QString reply(const std::function<void()>& steps) {
        Clash().DefaultName = "1_5_2003";
        show();
        bool done = false;
        events.onYield = [&] {
            if (!std::exchange(done, true))
                steps();
        };
        QString response;
        name = "Acme.htm";
        FileExists_Response(name, response);
        return response;
    }

    QString name;
};

TEST_F(frmFileExistsTest, EachButtonIsItsReply) {
    EXPECT_EQ(reply([&] { click("cmdOverwrite"); }), "Overwrite");
    EXPECT_EQ(name, "Acme.htm");
    EXPECT_EQ(screen->windowTitle(), "File Exists");
    EXPECT_EQ(find<QLabel>("Label1")->text(),
              "The name, Acme.htm already exists in the collection.\n"
              "How do you want to handle this file?");
    EXPECT_EQ(reply([&] { click("cmdSkip"); }), "Skip");
    EXPECT_EQ(name, "");
    EXPECT_EQ(reply([&] { QTest::keyClick(screen.get(), Qt::Key_Escape); }), "Skip");
    EXPECT_EQ(reply([&] { QTest::keyClick(screen.get(), Qt::Key_Return); }), "Skip");
    EXPECT_EQ(reply([&] { screen->close(); }), "Skip");
}

TEST_F(frmFileExistsTest, ANewNameIsAskedInASecondFrame) {
    fileSheets({"acme.htm"});
    const QString response = reply([&] {
        const int before = screen->height();
        click("cmdRename");
        EXPECT_FALSE(find<QWidget>("FraMain")->isVisible());
        EXPECT_GT(screen->height(), before);
        EXPECT_EQ(find<QLineEdit>("txtFileName")->text(), "1_5_2003");
        EXPECT_FALSE(find<EntryList>("smuiXMLFiles")->rowRect("I0").isEmpty());
        QTest::keyClick(screen.get(), Qt::Key_Escape);
        EXPECT_TRUE(find<QWidget>("FraMain")->isVisible());
        EXPECT_EQ(screen->height(), before);
        EXPECT_EQ(Clash().FE_Response, "");
        click("cmdRename");
        type(" ");
        dialogs.expect("Please select a valid filename.");
        click("OKButton");
        type("May.htm");
        QTest::keyClick(find<QLineEdit>("txtFileName"), Qt::Key_Return);
    });
    EXPECT_EQ(response, "Rename");
    EXPECT_EQ(name, "May");
}

class frmSelFilenameTest : public DialogTest<frmSelFilename> {};

TEST_F(frmSelFilenameTest, TheSheetIsFiledUnderTheNameTyped) {
    fileSheets({"acme.htm"});
    screens.show(Screen::frmSelFilename);
    Naming().sheetHtml = [] { return QStringLiteral("text"); };
    Naming().progress = &progress_;
    show();
    EXPECT_EQ(screen->windowTitle(), "Please select a filename");
    EXPECT_EQ(find<QLabel>("lblPrompt")->text(),
              "Please select a filename to add to the collection:");
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_FALSE(screens.isLoaded(Screen::frmSelFilename));
    type("../May");
    QTest::keyClick(find<QLineEdit>("txtFileName"), Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(listed(), QStringList({"acme.htm", ".._May.htm"}));
    EXPECT_EQ(sheet(".._May.htm"), "text\n");
}

} // namespace
} // namespace kelvrane::testing
