#include "widgets/choice_popup.h"
#include "widgets/keyed_panel.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QAccessible>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

namespace kelvrane {
namespace {

QList<KeyedItem> Rows() {
    return {{.key = "NAME",
             .caption = "Project Name:",
             .value = "Website",
             .kind = ItemKind::DropDown,
             .choices = {"Website", "Garden", "R&D", "More ... "}},
            {.key = {}, .caption = "Details", .kind = ItemKind::Heading},
            {.key = "NOTES", .caption = "\tNotes:", .value = "short", .kind = ItemKind::Edit},
            {.key = "RATE", .caption = "\tRate:", .value = "75", .kind = ItemKind::Edit},
            {.key = "CUSTOMER", .caption = "Customer:", .value = "7", .kind = ItemKind::Browse},
            {.key = "CASE", .caption = "Case Sensitive", .kind = ItemKind::Check},
            {.key = "HIDDEN", .caption = "Hidden:", .visible = false},
            {.key = "TOTAL", .caption = "Total:", .value = "1 Hours 5 Minutes"}};
}

/// A view that is handed an editor of another one, or of a row that is gone, only says so here.
void FailOnViewWarning(QtMsgType, const QMessageLogContext&, const QString& text) {
    EXPECT_FALSE(text.contains("QAbstractItemView::")) << text.toStdString();
}

class KeyedPanelTest : public testing::Test {
  protected:
    ~KeyedPanelTest() override { qInstallMessageHandler(m_messageHandler); }
    KeyedPanelTest() {
        panel.resize(360, 320);
        panel.show();
        QCoreApplication::processEvents();
    }

    QPoint in(const QString& key) {
        return panel.viewport()->mapFrom(&panel, panel.rowRect(key).center());
    }
    void click(const QString& key, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(panel.viewport(), button, {}, in(key));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(panel.findChild<QListView*>(), key, modifiers);
    }
    ChoicePopup* popup() { return panel.findChild<ChoicePopup*>(); }
    bool isOpen() { return popup() != nullptr && popup()->isVisible(); }
    QLineEdit* editor(const QString& key) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return panel.viewport()->findChild<QLineEdit*>(key);
    }

    KeyedItems items{Rows()};
    KeyedPanel panel{&items, "Current Project"};
    QSignalSpy edited{&items, &KeyedItems::Edited};
    QSignalSpy chosen{&items, &KeyedItems::Chosen};
    QSignalSpy pressed{&items, &KeyedItems::ButtonPressed};
    QSignalSpy clicked{&items, &KeyedItems::Clicked};
    QSignalSpy selected{&items, &KeyedItems::Selected};

  private:
    const QtMessageHandler m_messageHandler = qInstallMessageHandler(FailOnViewWarning);
};

TEST_F(KeyedPanelTest, ShowsVisibleRowsInTheirOrderAndHeight) {
    EXPECT_TRUE(panel.rowRect("HIDDEN").isEmpty());
    EXPECT_LT(panel.rowRect("NAME").top(), panel.rowRect("NOTES").top());
    EXPECT_LT(panel.rowRect("NOTES").top(), panel.rowRect("TOTAL").top());
    EXPECT_GE(panel.rowRect("TOTAL").height(), 24);
    EXPECT_LE(panel.rowRect("TOTAL").height(), 28);

    items.setVisible("HIDDEN", true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(panel.rowRect("HIDDEN").isEmpty());

    panel.setProminent({"TOTAL"});
    QCoreApplication::processEvents();
    EXPECT_GT(panel.rowRect("TOTAL").height(), panel.rowRect("RATE").height());
}

TEST_F(KeyedPanelTest, ChoosesFromTheDropDownByMouse) {
    click("NAME");
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(popup()->choices(), items.item("NAME").choices);
    QListView* list = popup()->list();
    const QRect third = list->visualRect(list->model()->index(2, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, third.center());
    EXPECT_FALSE(popup()->isVisible());
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0], QVariantList({"NAME", 2, "R&D"}));
}

TEST_F(KeyedPanelTest, OpensAndChoosesByKeyboard) {
    panel.setCurrentKey("NAME");
    struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    } const opening[] = {{Qt::Key_F4, {}}, {Qt::Key_Down, Qt::AltModifier}, {Qt::Key_Return, {}}};
    for (const auto& way : opening) {
        press(way.key, way.modifiers);
        ASSERT_TRUE(isOpen()) << way.key;
        QTest::keyClick(popup()->list(), Qt::Key_Escape);
        EXPECT_FALSE(isOpen());
    }
    EXPECT_EQ(chosen.size(), 0);

    press(Qt::Key_G); // typing opens it at the first choice that begins so
    ASSERT_TRUE(isOpen());
    QTest::keyClick(popup()->list(), Qt::Key_Return);
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(items.value("NAME"), "Garden");
}

TEST_F(KeyedPanelTest, RefillKeepsDropDownEditorAndSelection) {
    click("NAME");
    QList<KeyedItem> rows = Rows();
    rows[0].choices.prepend("New one");
    rows[7].value = "1 Hours 6 Minutes";
    rows.insert(1, {.key = "NUMBER", .caption = "Project Number:", .value = "9"});
    items.refill(rows);
    QCoreApplication::processEvents();
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(popup()->choices().first(), "New one");
    EXPECT_EQ(popup()->list()->currentIndex().data(), "Website");
    QTest::keyClick(popup()->list(), Qt::Key_Escape);

    click("NOTES");
    ASSERT_NE(editor("NOTES"), nullptr);
    QTest::keyClicks(editor("NOTES"), "typed");
    rows[0].value = "Garden";
    rows.removeAt(1);
    rows[2].value = "from elsewhere";
    items.refill(rows);
    QCoreApplication::processEvents();
    ASSERT_NE(editor("NOTES"), nullptr);
    EXPECT_EQ(editor("NOTES")->text(), "typed");
    EXPECT_EQ(panel.currentKey(), "NOTES");
    EXPECT_EQ(edited.size(), 0);
}

TEST_F(KeyedPanelTest, ARowThatGoesTakesItsDropDownAlong) {
    click("NAME");
    QList<KeyedItem> rows = Rows();
    rows.removeFirst();
    items.refill(rows);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(panel.currentKey(), "");
}

TEST_F(KeyedPanelTest, EditsInPlace) {
    click("NOTES");
    ASSERT_NE(editor("NOTES"), nullptr);
    EXPECT_EQ(editor("NOTES")->selectedText(), "short");
    QTest::keyClicks(editor("NOTES"), "a & b");
    QTest::keyClick(editor("NOTES"), Qt::Key_Return);
    QCoreApplication::processEvents(); // the editor sees the key first
    ASSERT_EQ(edited.size(), 1);
    EXPECT_EQ(edited[0], QVariantList({"NOTES", "a & b"}));
    EXPECT_EQ(editor("NOTES"), nullptr) << "Enter ends it for good";

    panel.setCurrentKey("RATE");
    press(Qt::Key_F2);
    ASSERT_NE(editor("RATE"), nullptr);
    QTest::keyClicks(editor("RATE"), "99");
    QTest::keyClick(editor("RATE"), Qt::Key_Escape);
    EXPECT_EQ(items.value("RATE"), "75");

    press(Qt::Key_8); // typing replaces the value
    QTest::keyClicks(editor("RATE"), "0");
    CommitOpenEditor(); // as every command does first
    EXPECT_EQ(items.value("RATE"), "80");
    EXPECT_EQ(edited.size(), 2);

    panel.activate("NOTES");
    QTest::keyClick(editor("NOTES"), Qt::Key_Tab);
    EXPECT_NE(editor("RATE"), nullptr) << "Tab goes on to the next field";
    EXPECT_EQ(edited.size(), 2) << "what wasn't changed isn't reported";
}

TEST_F(KeyedPanelTest, ARowThatGoesTakesItsEditorAlong) {
    QList<KeyedItem> without = Rows();
    without.removeAt(2);
    const auto refill = [&] { items.refill(without); };
    QObject::connect(&items, &KeyedItems::Edited, &panel, refill);
    QObject::connect(&items, &KeyedItems::Chosen, &panel, refill);
    const auto chooseFromTheList = [&] {
        panel.activate("NAME");
        QTest::keyClick(popup()->list(), Qt::Key_Down);
        QTest::keyClick(popup()->list(), Qt::Key_Return);
        CommitOpenEditor();
    };
    const struct {
        const char* what;
        std::function<void()> end;
    } rows[] = {
        {"Enter", [&] { QTest::keyClick(editor("NOTES"), Qt::Key_Return); }},
        {"Enter and a command",
         [&] {
             QTest::keyClick(editor("NOTES"), Qt::Key_Return);
             CommitOpenEditor();
         }},
        {"Tab", [&] { QTest::keyClick(editor("NOTES"), Qt::Key_Tab); }},
        {"a command", [] { CommitOpenEditor(); }},
        {"a click on another row", [&] { click("TOTAL"); }},
        {"a choice", chooseFromTheList},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        items.refill(Rows());
        edited.clear();
        panel.activate("NOTES");
        ASSERT_NE(editor("NOTES"), nullptr);
        QTest::keyClicks(editor("NOTES"), "typed");
        row.end();
        QCoreApplication::processEvents();
        EXPECT_EQ(editor("NOTES"), nullptr);
        EXPECT_EQ(edited.count(QVariantList({"NOTES", "typed"})), 1);
        CommitOpenEditor();
    }
}

TEST_F(KeyedPanelTest, PressesTogglesAndSelects) {
    click("CUSTOMER");
    EXPECT_EQ(pressed.size(), 0);
    QTest::mouseClick(panel.viewport(), Qt::LeftButton, {},
                      QPoint(panel.valueRect("CUSTOMER").right() - 10, in("CUSTOMER").y()));
    EXPECT_EQ(pressed.size(), 1);
    press(Qt::Key_F4);
    EXPECT_EQ(pressed.size(), 2);

    click("CASE");
    press(Qt::Key_Space);
    EXPECT_EQ(clicked.size(), 2);
    EXPECT_FALSE(items.item("CASE").ticked) << "the tick is the module's to set";

    selected.clear();
    press(Qt::Key_Down);
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(selected[0][0], "TOTAL");

    panel.setCurrentKey("NAME");
    press(Qt::Key_Down); // passes over the heading
    EXPECT_EQ(panel.currentKey(), "NOTES");

    items.setEnabled("CASE", false);
    clicked.clear();
    click("CASE");
    EXPECT_EQ(clicked.size(), 0);
}

TEST_F(KeyedPanelTest, ContextMenuByRightButtonAndKey) {
    QSignalSpy wanted(&panel, &KeyedPanel::contextMenuWanted);
    click("TOTAL", Qt::RightButton);
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted[0][0], "TOTAL");
    EXPECT_EQ(selected.last()[0], "TOTAL");

    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(panel.viewport(), &key);
    EXPECT_EQ(wanted.size(), 2);
}

TEST_F(KeyedPanelTest, NamesItsRowsForScreenReaders) {
    QAccessibleInterface* list =
        QAccessible::queryAccessibleInterface(panel.findChild<QListView*>());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->text(QAccessible::Name), "Current Project");
    ASSERT_GE(list->childCount(), 3);
    EXPECT_EQ(list->child(2)->text(QAccessible::Name), "Notes: short");
}

TEST_F(KeyedPanelTest, EndlessValuesPaint) {
    items.setValue("NOTES", QString(10000, QLatin1Char('x')) + QLatin1String("\n<b>&&"));
    items.setCaption("RATE", QString(10000, QLatin1Char('y')));
    EXPECT_FALSE(panel.grab().isNull());
    EXPECT_LT(panel.minimumSizeHint().width(), 400);
}

TEST(Theme, TextKeepsItsContrastInLightAndDark) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x2b2d31));
    dark.setColor(QPalette::Base, QColor(0x1f2124));
    dark.setColor(QPalette::WindowText, QColor(0xe6e7ea));
    dark.setColor(QPalette::Text, QColor(0xe6e7ea));
    QPalette light;
    light.setColor(QPalette::Window, QColor(0xefefef));
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::WindowText, Qt::black);
    light.setColor(QPalette::Text, Qt::black);
    for (const QPalette& palette : {light, dark}) {
        for (const auto paper : {QPalette::Window, QPalette::Base}) {
            const QColor behind = palette.color(paper);
            for (const auto role : {TextRole::Value, TextRole::Inactive, TextRole::Plain})
                EXPECT_GE(theme::Contrast(theme::ValueColor(role, palette), behind), 4.5);
            EXPECT_GE(theme::Contrast(theme::SecondaryText(palette), behind), 4.5);
        }
    }
    EXPECT_EQ(theme::FromTwips(9795), 653);
    EXPECT_EQ(theme::ToTwips(653), 9795);
    EXPECT_TRUE(theme::Icon("no such icon").isNull());
    EXPECT_FALSE(theme::Icon("LEFT1").isNull());
}

} // namespace
} // namespace kelvrane
