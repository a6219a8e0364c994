#include "records/frmDataBase.h"
#include "records/frmDataBaseList.h"
#include "records/record_fixture.h"
#include "widgets/keyed_panel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>

namespace kelvrane::testing {
namespace {

class frmDataBaseTest : public RecordTest {
  protected:
    void Show() {
        screens.loaded.insert(Screen::frmDataBase);
        screens.visible.insert(Screen::frmSTM);
        selectionSinks.day.select = [this](const QString& name, const QString&) {
            taken.append(name);
        };
        screen = std::make_unique<frmDataBase>();
        screen->show();
    }
    template <typename Widget>
    Widget* Find(const char* panel, const char* name) {
        QWidget* parent =
            *panel ? screen->findChild<QWidget*>(QString::fromLatin1(panel)) : screen.get();
        auto* found = parent ? parent->findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
        EXPECT_TRUE(found) << panel << ' ' << name;
        return found;
    }
    void Click(const char* panel, const char* name) {
        // Near the left: a check takes clicks on its mark and words only.
        auto* control = Find<QWidget>(panel, name);
        QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
    }
    QPoint CellOf(int row, int column) {
        auto* list = Find<frmDataBaseList>("", "ListView1");
        return list->visualRect(list->model()->index(row, column)).center();
    }

    QStringList taken;
    std::unique_ptr<frmDataBase> screen;
};

TEST_F(frmDataBaseTest, EveryItemHasItsControl) {
    AddProject(QStringLiteral("Alpha"));
    Show();
    EXPECT_EQ(screen->windowTitle(), "Project Database Information");
    ManagerModel& manager = Manager();
    const std::pair<const char*, KeyedItems*> panels[] = {{"smuiToolBar", &manager.smuiToolBar},
                                                          {"smuiPanel0", &manager.smuiPanel0},
                                                          {"smuiPanel1", &manager.smuiPanel1},
                                                          {"smuiFind", &manager.smuiFind},
                                                          {"", &manager.buttons}};
    for (const auto& [panel, items] : panels)
        for (const KeyedItem& item : items->items())
            if (!item.key.isEmpty())
                Find<QWidget>(panel, item.key.toLatin1().constData());
    auto* rows = Find<KeyedPanel>("", "smuiDataBase");
    EXPECT_FALSE(rows->rowRect(QStringLiteral("CUSDISCOUNT")).isEmpty());
    EXPECT_TRUE(rows->rowRect(QStringLiteral("CUSTID_HIDE")).isEmpty());
}

TEST_F(frmDataBaseTest, AProjectIsPickedInTheListByMouse) {
    for (const char* name : {"beta", "Alpha", "Gamma"})
        AddProject(QString::fromLatin1(name));
    Show();
    Click("smuiPanel0", "LIST_VIEW");
    auto* list = Find<frmDataBaseList>("", "ListView1");
    ASSERT_TRUE(list->isVisible());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellOf(0, 0));
    EXPECT_EQ(Manager().state.SelectedIndex, 1);

    QHeaderView* heads = list->header();
    QTest::mouseClick(heads->viewport(), Qt::LeftButton, {}, QPoint(20, heads->height() / 2));
    EXPECT_EQ(heads->sortIndicatorSection(), 0);
    EXPECT_EQ(heads->sortIndicatorOrder(), Qt::AscendingOrder);
    EXPECT_EQ(list->currentIndex().data(), "beta");
    EXPECT_EQ(Manager().state.SelectedIndex, 2);

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellOf(2, 0));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, CellOf(2, 0));
    EXPECT_EQ(taken, QStringList("Gamma"));
    EXPECT_EQ(screens.unloaded.value(0), Screen::frmDataBase);
}

TEST_F(frmDataBaseTest, KeysStepSelectHelpAndClose) {
    for (const char* name : {"A", "B"})
        AddProject(QString::fromLatin1(name));
    Show();
    Click("", "CmdUp");
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
    Click("", "cmdDown");
    EXPECT_EQ(Row("PROJECT_NAME"), "A");
    Click("smuiToolBar", "HELP");
    EXPECT_EQ(help.pages.size(), 1);

    Click("smuiPanel0", "LIST_VIEW");
    auto* list = Find<frmDataBaseList>("", "ListView1");
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(taken.size(), 1);

    screens.unloaded.clear();
    screens.loaded.insert(Screen::frmDataBase);
    screen.reset();
    Show();
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_EQ(screens.unloaded.value(0), Screen::frmDataBase);
    EXPECT_FALSE(ProjectTable);
}

TEST_F(frmDataBaseTest, WhatIsTypedStaysWithItsRecord) {
    for (const char* name : {"A", "B"})
        AddProject(QString::fromLatin1(name));
    Show();
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    auto* panel = Find<KeyedPanel>("", "smuiDataBase");
    panel->activate(QStringLiteral("NOTES"));
    auto* editor = panel->viewport()->findChild<QLineEdit*>(QStringLiteral("NOTES"));
    ASSERT_TRUE(editor);
    editor->setText(QStringLiteral("meant for A"));
    dialogs.expect(QStringLiteral("Save changes to the entry?"), BoxAnswer::Yes);
    Click("", "CmdUp"); // a click on it doesn't take the focus from the editor
    EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), "meant for A");
    EXPECT_EQ(Stored("ProjectInfo", 2, "Notes"), "note");
}

TEST_F(frmDataBaseTest, WhatIsStillBeingTypedIsAskedAboutWhenTheWindowCloses) {
    AddProject(QStringLiteral("A"));
    Show();
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    auto* panel = Find<KeyedPanel>("", "smuiDataBase");
    panel->activate(QStringLiteral("NOTES"));
    auto* editor = panel->viewport()->findChild<QLineEdit*>(QStringLiteral("NOTES"));
    ASSERT_TRUE(editor);
    editor->setText(QStringLiteral("last words"));
    dialogs.expect(QStringLiteral("Save changes to the entry?"), BoxAnswer::Yes);
    screen->close();
    EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), "last words");
}

TEST_F(frmDataBaseTest, ASearchThatFindsNothingMarksNothing) {
    for (const char* name : {"A", "B"})
        AddProject(QString::fromLatin1(name));
    Show();
    Click("smuiPanel0", "LIST_VIEW");
    auto* list = Find<frmDataBaseList>("", "ListView1");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellOf(1, 0));
    Click("smuiPanel0", "FIND");
    QTest::keyClicks(Find<QLineEdit>("smuiFind", "FIND"), QStringLiteral("nowhere"));
    dialogs.expect(QStringLiteral("found"));
    Click("", "cmdFind");
    EXPECT_FALSE(list->selectionModel()->hasSelection());
    dialogs.expect(QStringLiteral("Please select a record"));
    Click("smuiPanel0", "SELECT");
    EXPECT_TRUE(taken.isEmpty());
}

TEST_F(frmDataBaseTest, AClickOnTheMarkedRowTakesThatRow) {
    for (const char* name : {"A", "B", "C"})
        AddProject(QString::fromLatin1(name), QStringLiteral("N-") + QString::fromLatin1(name));
    Show();
    Click("smuiPanel0", "LIST_VIEW");
    auto* list = Find<frmDataBaseList>("", "ListView1");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellOf(0, 0));
    Manager().state.SelectedIndex = 2; // where a search went on to
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellOf(0, 0));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, CellOf(0, 0));
    EXPECT_EQ(taken, QStringList("A"));
}

TEST_F(frmDataBaseTest, CloseBoxIsRefusedWhileTheListFills) {
    AddProject(QStringLiteral("Alpha"));
    Show();
    events.onYield = [this] {
        events.onYield = nullptr;
        dialogs.expect(QStringLiteral("Can't close while loading database"));
        EXPECT_FALSE(screen->close());
        EXPECT_TRUE(Find<QWidget>("", "smuiProgress")->isVisible());
    };
    Click("smuiPanel0", "LIST_VIEW");
    EXPECT_TRUE(screens.unloaded.isEmpty());
    screen->close();
    EXPECT_EQ(screens.unloaded.value(0), Screen::frmDataBase);
}

TEST_F(frmDataBaseTest, FindPanelSearchesWhatIsTyped) {
    for (const char* name : {"Alpha", "beta"})
        AddProject(QString::fromLatin1(name));
    Show();
    Click("smuiPanel0", "FIND");
    auto* text = Find<QLineEdit>("smuiFind", "FIND");
    ASSERT_TRUE(text->isVisible());
    QTest::keyClicks(text, QStringLiteral("BET"));
    Click("", "cmdFind");
    EXPECT_EQ(Row("PROJECT_NAME"), "beta");
    EXPECT_EQ(Find<QAbstractButton>("", "cmdFind")->text(), "Find Next");
    Click("", "ImgClose");
    EXPECT_FALSE(text->isVisible());
}

TEST_F(frmDataBaseTest, LongAndOddNamesStayOnOneLine) {
    AddProject(QString(10'000, u'W'), QStringLiteral("<b>1</b> & 2"));
    AddProject(QStringLiteral("two\nlines"));
    Show();
    Click("smuiPanel0", "LIST_VIEW");
    auto* list = Find<frmDataBaseList>("", "ListView1");
    const QModelIndex first = list->model()->index(0, 0);
    EXPECT_EQ(list->visualRect(first).height(),
              list->visualRect(list->model()->index(1, 0)).height());
    EXPECT_LT(list->visualRect(first).width(), screen->width());
    EXPECT_FALSE(screen->grab().isNull());
}

} // namespace
} // namespace kelvrane::testing
