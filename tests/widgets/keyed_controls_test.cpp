// Tool bar, buttons, tabs and menus over keyed items.
#include "widgets/flat_button.h"
#include "widgets/keyed_buttons.h"
#include "widgets/keyed_menu.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/tab_strip.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

class KeyedToolBarTest : public testing::Test {
  protected:
    FlatButton* button(const QString& key) { return bar.findChild<FlatButton*>(key); }

    KeyedItems items{QList<KeyedItem>{
        {.key = "PANEL", .caption = "Control Panel  ", .kind = ItemKind::Button, .image = "LEFT1"},
        {.key = {}, .caption = {}, .kind = ItemKind::Separator},
        {.key = "SAVE",
         .caption = "Quit && Save",
         .kind = ItemKind::Button,
         .toolTip = "Quit and Save",
         .image = "Save"},
        {.key = {}, .caption = {}, .kind = ItemKind::Spacer},
        {.key = "HELP", .caption = "Help", .kind = ItemKind::Button, .image = "Help"}}};
    KeyedToolBar bar{&items};
};

TEST_F(KeyedToolBarTest, ShowsWordsWhereThereIsRoom) {
    bar.resize(bar.sizeHint());
    bar.show();
    EXPECT_TRUE(bar.showsWords());
    EXPECT_EQ(button("SAVE")->caption(), "Quit & Save");
    EXPECT_EQ(button("SAVE")->toolTip(), "Quit and Save");

    bar.resize(bar.sizeHint().width() - 1, bar.height());
    EXPECT_FALSE(bar.showsWords());
    EXPECT_EQ(button("SAVE")->toolTip(), "Quit & Save\nQuit and Save");
    EXPECT_EQ(button("SAVE")->accessibleName(), "Quit & Save");
    EXPECT_LE(button("HELP")->geometry().right(), bar.width());

    bar.resize(bar.sizeHint());
    EXPECT_TRUE(bar.showsWords());
}

TEST_F(KeyedToolBarTest, FollowsItsItemsAndClicksThem) {
    bar.resize(600, 40);
    bar.show();
    QSignalSpy clicked(&items, &KeyedItems::Clicked);
    QTest::mouseClick(button("SAVE"), Qt::LeftButton);
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(clicked[0][0], "SAVE");

    items.setEnabled("SAVE", false);
    QTest::mouseClick(button("SAVE"), Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 1);

    items.setCaption("PANEL", "");
    items.setImage("PANEL", "RIGHT1");
    EXPECT_EQ(button("PANEL")->caption(), "");
    items.setVisible("HELP", false);
    EXPECT_FALSE(button("HELP")->isVisible());

    const FlatButton* kept = button("SAVE");
    QList<KeyedItem> rows = items.items();
    rows.prepend({.key = "NEW", .caption = "New", .kind = ItemKind::Button});
    items.refill(rows);
    EXPECT_EQ(button("SAVE"), kept);
    EXPECT_NE(button("NEW"), nullptr);
}

TEST(KeyedButtonsTest, ControlsFollowTheirItems) {
    KeyedItems items(QList<KeyedItem>{
        {.key = "GRAPH", .caption = "Graph", .kind = ItemKind::Check, .ticked = true},
        {.key = "OPEN", .caption = "R&&D", .kind = ItemKind::Button, .toolTip = "Opens it"},
        {.key = "FIND", .caption = "Find:", .value = "a", .kind = ItemKind::Edit},
        {.key = "TABLE",
         .caption = "Table",
         .value = "Projects",
         .kind = ItemKind::DropDown,
         .choices = {"Projects", "Customer"}}});
    KeyedButtons buttons(&items, "Views");
    buttons.resize(240, 240);
    buttons.show();
    QSignalSpy clicked(&items, &KeyedItems::Clicked);
    QSignalSpy edited(&items, &KeyedItems::Edited);

    auto* check = buttons.findChild<QCheckBox*>("GRAPH");
    ASSERT_NE(check, nullptr);
    EXPECT_TRUE(check->isChecked());
    QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(10, check->height() / 2));
    EXPECT_EQ(clicked.size(), 1);
    EXPECT_TRUE(check->isChecked()) << "the item wasn't changed";
    items.setTicked("GRAPH", false);
    EXPECT_FALSE(check->isChecked());

    auto* open = buttons.findChild<FlatButton*>("OPEN");
    EXPECT_EQ(open->caption(), "R&D");
    QTest::mouseClick(open, Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 2);
    items.setEnabled("OPEN", false);
    EXPECT_EQ(open->toolTip(), "Opens it");
    QTest::mouseClick(open, Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 2);

    auto* find = buttons.findChild<QLineEdit*>("FIND");
    QTest::keyClicks(find, "bc");
    EXPECT_EQ(items.value("FIND"), "abc");
    EXPECT_EQ(edited.size(), 2);

    auto* table = buttons.findChild<QComboBox*>("TABLE");
    QTest::keyClick(table, Qt::Key_Down);
    EXPECT_EQ(items.value("TABLE"), "Customer");
    items.setValue("TABLE", "Projects");
    EXPECT_EQ(table->currentText(), "Projects");

    QList<KeyedItem> rows = items.items();
    rows.prepend({.key = "NEW", .caption = "New", .kind = ItemKind::Check});
    items.refill(rows);
    EXPECT_EQ(buttons.findChild<QLineEdit*>("FIND"), find);
    items.setVisible("FIND", false);
    EXPECT_FALSE(find->isVisible());
}

TEST(TabStripTest, TurnsPages) {
    KeyedItems pages(
        QList<KeyedItem>{{.key = "OPTIONS", .caption = "Kelvrane Layout", .kind = ItemKind::Button},
                         {.key = "VIEWS", .caption = "Launch", .kind = ItemKind::Button}});
    TabStrip strip(&pages);
    QWidget first;
    QWidget second;
    strip.bindPage("OPTIONS", &first);
    strip.bindPage("VIEWS", &second);
    strip.resize(300, 200);
    strip.show();
    QSignalSpy clicked(&pages, &KeyedItems::Clicked);
    QSignalSpy changed(&strip, &TabStrip::changed);
    EXPECT_EQ(strip.current(), "OPTIONS");
    EXPECT_TRUE(first.isVisible());

    auto* tabs = strip.findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    EXPECT_EQ(strip.current(), "VIEWS");
    EXPECT_TRUE(second.isVisible());
    EXPECT_EQ(clicked.size(), 1);
    EXPECT_EQ(changed.size(), 1);

    strip.setCurrent("OPTIONS");
    EXPECT_TRUE(first.isVisible());
    EXPECT_EQ(clicked.size(), 1) << "only the user clicks";
    EXPECT_EQ(changed.size(), 2);
    strip.setCurrent("ABSENT");
    EXPECT_EQ(strip.current(), "OPTIONS");

    QTest::keyClick(tabs, Qt::Key_Right);
    EXPECT_EQ(strip.current(), "VIEWS");
    pages.setCaption("VIEWS", "Screens");
    EXPECT_EQ(tabs->tabText(1), "Screens");
    EXPECT_EQ(strip.current(), "VIEWS");
    first.setParent(nullptr);
    second.setParent(nullptr);
}

TEST(KeyedMenuTest, MirrorsItemsAndSubmenus) {
    KeyedItems items(
        QList<KeyedItem>{{.key = "about", .caption = "About", .kind = ItemKind::Button},
                         {.key = "sep", .caption = {}, .kind = ItemKind::Separator},
                         {.key = "status", .caption = "Status", .kind = ItemKind::SubMenu},
                         {.key = "start",
                          .caption = "Start",
                          .kind = ItemKind::Button,
                          .enabled = false,
                          .parent = "status"},
                         {.key = "quit",
                          .caption = "Quit && Save Day",
                          .kind = ItemKind::Button,
                          .parent = "status"},
                         {.key = "user", .caption = "R&D", .kind = ItemKind::Button}});
    QMenu menu;
    BindMenu(&menu, &items);
    QSignalSpy clicked(&items, &KeyedItems::Clicked);

    ASSERT_EQ(menu.actions().size(), 4);
    EXPECT_TRUE(menu.actions()[1]->isSeparator());
    EXPECT_EQ(menu.actions()[3]->text(), "R&&D") << "no mnemonic";
    QMenu* status = menu.actions()[2]->menu();
    ASSERT_NE(status, nullptr);
    ASSERT_EQ(status->actions().size(), 2);
    EXPECT_FALSE(status->actions()[0]->isEnabled());
    EXPECT_EQ(status->actions()[1]->text(), "Quit && Save Day");
    status->actions()[1]->trigger();
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(clicked[0][0], "quit");

    QAction* user = menu.actions()[3];
    items.setCaption("user", "Other");
    items.setVisible("about", false);
    EXPECT_EQ(user->text(), "Other");
    EXPECT_FALSE(menu.actions()[0]->isVisible());

    QList<KeyedItem> rows = items.items();
    rows.removeAt(1);
    rows.append(
        {.key = "more", .caption = "More ... ", .kind = ItemKind::Button, .parent = "status"});
    items.refill(rows);
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_EQ(menu.actions()[2], user) << "an open menu keeps what stays";
    EXPECT_EQ(status->actions().size(), 3);
    items.clear();
    EXPECT_TRUE(menu.isEmpty());
}

} // namespace
} // namespace kelvrane
