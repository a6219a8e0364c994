#include "frame/help_file.h"
#include "frame/help_topics.h"
#include "support/built_files.h"
#include "support/fakes.h"
#include "widgets/find_bar.h"
#include "widgets/help_page_view.h"
#include "widgets/help_window.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class HelpWindowTest : public ProgramTest {
  protected:
    ~HelpWindowTest() override { viewer.close(); }

    template <typename Widget>
    Widget* find(const char* name) {
        return viewer.window()->findChild<Widget*>(QLatin1String(name));
    }
    HelpPageView* page() { return find<HelpPageView>("HelpPageView"); }
    QString shownPage() { return page()->source().path().section('/', 2); }
    void open(int topic) {
        viewer.show(pageOf(topic));
        QApplication::processEvents(); // the window becomes the active one
    }
    static QString pageOf(int topic) { return HelpPage(topic); }
    void press(const char* button) { find<QAbstractButton>(button)->click(); }
    bool turnsTo(const QString& name) {
        return QTest::qWaitFor([&] { return viewer.window() && shownPage() == name; });
    }
    void type(const char* field, const QString& text) {
        find<QLineEdit>(field)->clear();
        QTest::keyClicks(find<QLineEdit>(field), text);
    }
    QAbstractItemModel& hits() { return *find<QAbstractItemView>("HelpHits")->model(); }

    BuiltFiles built;
    HelpViewer viewer;
};

TEST_F(HelpWindowTest, OneWindowShowsThePageAskedForAndTheContentsForAnyOther) {
    open(topics::ControlScreen);
    const QPointer<HelpWindow> window = viewer.window();
    ASSERT_TRUE(window);
    EXPECT_EQ(shownPage(), pageOf(topics::ControlScreen));
    EXPECT_TRUE(window->windowTitle().endsWith(" - Kelvrane Help"));
    open(topics::Tutorial);
    EXPECT_EQ(viewer.window(), window);
    EXPECT_EQ(shownPage(), pageOf(topics::Tutorial));
    viewer.show("No/Such_Page.htm");
    EXPECT_TRUE(turnsTo("index.htm"));
    EXPECT_EQ(find<QAbstractItemView>("HelpContents")->currentIndex().row(), 0);

    window->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window; })) << "nothing of it stays";
    viewer.show({});
    EXPECT_TRUE(turnsTo("index.htm")) << "also before the contents are read";
}

TEST_F(HelpWindowTest, BackAndForwardAndTheKeys) {
    open(topics::ControlScreen);
    EXPECT_FALSE(find<QAbstractButton>("BACK")->isEnabled());
    open(topics::Tutorial);
    press("BACK");
    EXPECT_EQ(shownPage(), pageOf(topics::ControlScreen));
    QTest::keyClick(viewer.window(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(shownPage(), pageOf(topics::Tutorial));
    press("HOME");
    EXPECT_TRUE(turnsTo("index.htm"));

    const double before = page()->font().pointSizeF();
    press("LARGER");
    EXPECT_GT(page()->font().pointSizeF(), before);
    QTest::keyClick(viewer.window(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(find<FindBar>("FindBar")->isVisible());
    QTest::keyClick(find<QLineEdit>("FindText"), Qt::Key_Escape);
    EXPECT_FALSE(find<FindBar>("FindBar")->isVisible());
    viewer.window()->resize(700, 500);
    QTest::keyClick(page(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !viewer.window(); }));

    open(topics::Tutorial);
    EXPECT_EQ(viewer.window()->size(), QSize(700, 500));
    EXPECT_GT(page()->font().pointSizeF(), before);
}

TEST_F(HelpWindowTest, FindGoesRoundThePage) {
    open(topics::ControlScreen);
    press("FIND");
    type("FindText", "break");
    const int first = page()->textCursor().selectionStart();
    EXPECT_EQ(page()->textCursor().selectedText().toLower(), "break");
    press("FindPrevious");
    EXPECT_GT(page()->textCursor().selectionStart(), first) << "from the end again";
    press("FindNext");
    EXPECT_EQ(page()->textCursor().selectionStart(), first);
    type("FindText", "no such words");
    EXPECT_EQ(find<QLabel>("FindAnswer")->text(), "Not on this page");
    EXPECT_FALSE(page()->textCursor().hasSelection());
}

TEST_F(HelpWindowTest, SearchAndIndexLeadToPages) {
    open(topics::Tutorial);
    find<TabStrip>("HelpTabs")->setCurrent("SEARCH");
    type("HelpSearchWords", "control scr");
    ASSERT_GT(hits().rowCount(), 0);
    QTest::keyClick(find<QLineEdit>("HelpSearchWords"), Qt::Key_Return);
    EXPECT_NE(shownPage(), pageOf(topics::Tutorial));
    EXPECT_EQ(page()->textCursor().selectedText().toLower(), "control");
    type("HelpSearchWords", "zzzqx");
    EXPECT_EQ(find<QLabel>("HelpSearchAnswer")->text(), "No page has these words.");

    find<TabStrip>("HelpTabs")->setCurrent("INDEX");
    auto* words = find<QAbstractItemView>("HelpIndex");
    type("HelpIndexWord", "tutorial");
    ASSERT_TRUE(QTest::qWaitFor([&] { return words->model()->rowCount() > 0; }));
    QTest::keyClick(find<QLineEdit>("HelpIndexWord"), Qt::Key_Return);
    EXPECT_EQ(shownPage(), pageOf(topics::Tutorial));
}

TEST_F(HelpWindowTest, LinksOutsideGoToTheDesktopAndNothingElseIsRead) {
    writeFile("secret.txt", "secret");
    open(topics::Tutorial);
    const auto follow = [&](const QUrl& link) { emit page()->anchorClicked(link); };
    follow(QUrl("https://example.org/more"));
    EXPECT_EQ(launcher.opened, QStringList{"https://example.org/more"});
    for (const QUrl& link : {QUrl::fromLocalFile(path("secret.txt")), QUrl("javascript:1"),
                             QUrl("data:text/html,hello"), QUrl("qrc:/icons/app.svg")}) {
        follow(link);
        EXPECT_TRUE(
            page()->loadResource(QTextDocument::HtmlResource, link).toByteArray().isEmpty());
    }
    EXPECT_EQ(launcher.opened.size(), 1);
    EXPECT_EQ(shownPage(), pageOf(topics::Tutorial));
    // A picture that isn't there must not become one of a file of that name.
    EXPECT_EQ(page()
                  ->loadResource(QTextDocument::ImageResource, QUrl("no_such_picture.png"))
                  .value<QImage>()
                  .size(),
              QSize(1, 1));
    follow(QUrl("qthelp://brindlemoor-ware.kelvrane/kelvrane/gone.htm"));
    EXPECT_TRUE(turnsTo("index.htm"));
}

TEST_F(HelpWindowTest, ColoursFollowThePaletteAndTheTextStaysReadable) {
    open(topics::Tutorial);
    const QPalette before = QApplication::palette();
    for (const QColor paper : {QColor(Qt::white), QColor(0x1e, 0x20, 0x24)}) {
        QPalette palette(paper);
        palette.setColor(QPalette::Base, paper);
        QApplication::setPalette(palette);
        QApplication::processEvents();
        for (QTextBlock block = page()->document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QBrush ink = part.fragment().charFormat().foreground();
                if (ink.style() == Qt::NoBrush)
                    continue;
                EXPECT_GE(theme::Contrast(ink.color(), paper), 4.5)
                    << part.fragment().text().toStdString();
            }
    }
    QApplication::setPalette(before);
}

TEST_F(HelpWindowTest, PrintsThePageOnWhitePaper) {
    open(topics::Tutorial);
    press("PRINT");
    ASSERT_EQ(printer.documents.size(), 1);
    EXPECT_TRUE(printer.documents.first().startsWith("%PDF"));
    printer.chooses = false;
    press("PRINT");
    EXPECT_EQ(printer.documents.size(), 1);
}

TEST_F(HelpWindowTest, DamageIsMendedWhereAnythingSoundIsInstalled) {
    open(topics::Tutorial);
    const QByteArray sound = fileBytes("Kelvrane.qch");
    for (const char* name : {"Kelvrane.qch", "Kelvrane.qhc"})
        for (const QByteArray& damaged :
             {QByteArray("no database"), QByteArray(), sound.left(sound.size() / 2)}) {
            SCOPED_TRACE(name);
            viewer.close();
            writeFile(name, damaged);
            open(topics::ControlScreen);
            ASSERT_TRUE(viewer.window());
            EXPECT_EQ(shownPage(), pageOf(topics::ControlScreen));
            type("HelpSearchWords", "control");
            EXPECT_GT(hits().rowCount(), 0);
        }
    EXPECT_EQ(fileBytes("Kelvrane.qch"), sound);
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(HelpWindowTest, TheHelpIsReadWhereNothingCanBeKept) {
    for (const char* name : {"Kelvrane.qhc", "Kelvrane.qch"}) {
        disk.createFolder(path(name)); // no file can come there
        open(topics::Tutorial);
        ASSERT_TRUE(viewer.window()) << name;
        EXPECT_EQ(shownPage(), pageOf(topics::Tutorial));
        viewer.close();
        QFile::remove(path("Kelvrane.qch"));
    }
}

TEST_F(HelpWindowTest, WithoutAnyHelpFileThereIsAMessage) {
    SetInstalledFolder(path("nothing here"));
    for (const char* bytes : {"", "no help", "SQLite format 3"}) {
        if (*bytes)
            writeFile("Kelvrane.qch", bytes);
        dialogs.expect("is missing or damaged");
        open(topics::Tutorial);
        EXPECT_FALSE(viewer.window());
        EXPECT_EQ(dialogs.shown.last().title, "Kelvrane Help");
    }
}

} // namespace
} // namespace kelvrane::testing
