// F1 in the real program: every screen, everything in it that takes the keyboard, its menus, its
// boxes. Only the help itself is a fake.
#include "app/help_key.h"
#include "app/program.h"
#include "frame/globals.h"
#include "frame/help_topics.h"
#include "frame/program_folder.h"
#include "frame/tray_menus.h"
#include "options/options_model.h"
#include "records/manager_model.h"
#include "support/fakes.h"
#include "timekeeping/control_model.h"
#include "timesheets/spreadsheet_model.h"
#include "widgets/sheet_editor.h"

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace kelvrane {
namespace {

class HelpKeyTest : public ::testing::Test {
  protected:
    HelpKeyTest() {
        globals = {};
        SetAppPath(folder.path());
        Control().reset();
        Menus().reset();
        dialogs.strict = false;
        program = std::make_unique<Program>(
            PortChoices{.clock = &clock, .timers = &timers, .dialogs = &dialogs, .help = &help});
        program->start({});
    }
    ~HelpKeyTest() override {
        program.reset();
        globals = {};
        Control().reset();
        Menus().reset();
    }
    /// The page that F1 opens there; "(none)" when it opens none.
    QString pressedAt(QWidget* widget) {
        help.pages.clear();
        QTest::keyClick(widget, Qt::Key_F1);
        return help.pages.size() == 1 ? help.pages.first() : QStringLiteral("(none)");
    }
    QWidget* shown(Screen screen) {
        ports.screens->show(screen);
        return program->screens().widget(screen);
    }

    QTemporaryDir folder;
    testing::FakeClock clock;
    testing::FakeTimers timers;
    testing::FakeDialogs dialogs;
    testing::FakeHelp help;
    std::unique_ptr<Program> program;
};

int topicAtFirst(Screen screen) {
    constexpr std::pair<Screen, int> rows[] = {
        {Screen::frmBrowseForCust, 300},
        {Screen::frmCollectionLoc, 102},
        {Screen::frmCollectionViewer, 1200},
        {Screen::frmDataBase, 300},
        {Screen::frmExit, 400},
        {Screen::frmFileExists, 100},
        {Screen::frmModify, 800},
        {Screen::frmOptions, 902},
        {Screen::frmSSHelper, 1001},
        {Screen::frmSTM, 200},
        {Screen::frmSelFilename, 101},
        {Screen::frmSelNewTime, 800},
        {Screen::frmSpreadsheet, 1000},
        {Screen::frmChart, 500},
        {Screen::frmGraphControl, 0},
    };
    const auto* row = std::ranges::find(rows, screen, &std::pair<Screen, int>::first);
    return row == std::end(rows) ? topics::Contents : row->second;
}

bool isOfSheet(QWidget* window, QWidget* part) {
    const auto* sheet = window->findChild<SheetEditor*>();
    return sheet && (part == sheet || sheet->isAncestorOf(part));
}

TEST_F(HelpKeyTest, EveryScreenOpensItsPageFromWhereverTheFocusIs) {
    for (const ScreenRow& row : ScreenTable()) {
        QWidget* window = shown(row.screen);
        ASSERT_TRUE(window);
        SCOPED_TRACE(window->objectName().toStdString());
        const QString page = HelpPage(topicAtFirst(row.screen));
        EXPECT_EQ(pressedAt(window), page);
        for (QWidget* part : window->findChildren<QWidget*>()) {
            if (part->focusPolicy() == Qt::NoFocus || !part->isVisible() || part->isWindow())
                continue;
            EXPECT_EQ(pressedAt(part), isOfSheet(window, part) ? HelpPage(topics::Sheet) : page)
                << part->metaObject()->className() << ' ' << part->objectName().toStdString();
        }
        ports.screens->unload(row.screen);
    }
}

TEST_F(HelpKeyTest, TheTopicFollowsWhatTheScreenShows) {
    QWidget* options = shown(Screen::frmOptions);
    for (const OptionPage& page : OptionPages()) {
        Options().turnTo(page.key);
        EXPECT_EQ(pressedAt(options), HelpPage(page.helpNumber)) << page.key;
    }
    QWidget* sheets = shown(Screen::frmSpreadsheet);
    for (const bool setUp : {true, false}) {
        Sheets().state.ToolboxVisible = setUp;
        EXPECT_EQ(pressedAt(sheets), HelpPage(setUp ? topics::SheetSetup : topics::Sheet));
    }
    QWidget* manager = shown(Screen::frmDataBase);
    ASSERT_TRUE(manager);
    for (const int topic : {topics::DatabaseViews, topics::Projects, topics::Customers}) {
        Manager().state.HelpTopic = topic;
        EXPECT_EQ(pressedAt(manager), HelpPage(topic));
    }
}

TEST_F(HelpKeyTest, BoxesAndStrangersOpenTheContentsAndMenusTheirWindowsPage) {
    QWidget* control = shown(Screen::frmSTM);
    QMessageBox box(control);
    box.setText("?");
    box.open();
    EXPECT_EQ(pressedAt(box.findChild<QPushButton*>()), "");
    EXPECT_TRUE(box.isVisible());
    box.reject();

    QMenu menu(control);
    menu.addAction("Modify");
    menu.popup({20, 20});
    EXPECT_EQ(pressedAt(&menu), HelpPage(topics::ControlScreen));
    EXPECT_FALSE(menu.isVisible()) << "it would hold the pointer while the help is read";
    QMenu& tray = *program->tray().contextMenu();
    tray.popup({20, 20});
    EXPECT_EQ(pressedAt(&tray), HelpPage(topics::TrayIcon));
}

TEST_F(HelpKeyTest, OtherKeysAreLeftAlone) {
    QWidget* control = shown(Screen::frmSTM);
    QTest::keyClick(control, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(control, Qt::Key_F2);
    EXPECT_TRUE(help.pages.isEmpty());
}

} // namespace
} // namespace kelvrane
