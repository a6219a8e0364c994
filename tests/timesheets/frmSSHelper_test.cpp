#include "support/fakes.h"
#include "timesheets/database_list.h"
#include "timesheets/frmSSHelper.h"
#include "timesheets/frmSpreadsheetDatabases.h"
#include "widgets/theme.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QTest>

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

class frmSSHelperTest : public ProgramTest {
  protected:
    frmSSHelperTest() {
        sheetState = {};
        Databases().reset();
        writeFile(u"SSDBInfo.dat"_s, "a;/1.mdb;\r\nb;/2.mdb;DECLINE\r\nc;/3.mdb;\r\n");
        LoadDatabaseList();
        list.resize(300, 200);
        list.show();
        screens.onLoad = [this](Screen screen) {
            ASSERT_EQ(screen, Screen::frmSSHelper);
            dialog = std::make_unique<frmSSHelper>();
            dialog->show();
        };
        screens.onUnload = [this](Screen) { dialog->hide(); };
    }
    ~frmSSHelperTest() override { Databases().reset(); }

    QByteArray File() { return fileBytes(u"SSDBInfo.dat"_s); }
    QListView* View() { return list.findChild<QListView*>(); }
    QMenu* Menu() { return list.findChild<QMenu*>(u"mnuSelectDBPopup"_s); }
    void Click(int number, double x, Qt::MouseButton button = Qt::LeftButton) {
        QPoint place(int(x), View()->viewport()->height() - 5); // below all rows
        if (const QRect row = list.rowRect(QString::number(number)); row.isValid())
            place.setY(View()->viewport()->mapFrom(&list, row.center()).y());
        QTest::mouseClick(View()->viewport(), button, {}, place);
    }
    void Press(Qt::Key key) { QTest::keyClick(View(), key); }
    void Trigger(const char* key) {
        for (QAction* action : Menu()->actions())
            if (action->objectName() == QLatin1String(key))
                action->trigger();
        Menu()->hide();
    }
    void ClickButton(const char* key) {
        QTest::mouseClick(dialog->findChild<QAbstractButton*>(QString::fromLatin1(key)),
                          Qt::LeftButton);
    }
    QLineEdit* Field(const char* key) {
        return dialog->findChild<QLineEdit*>(QString::fromLatin1(key));
    }
    static void Type(QLineEdit* field, const QString& text) {
        field->clear();
        QTest::keyClicks(field, text);
    }

    frmSpreadsheetDatabases list;
    std::unique_ptr<frmSSHelper> dialog;
};

TEST_F(frmSSHelperTest, ClicksOnTheIconFlipAndClicksBesideItSelect) {
    Click(2, 60);
    EXPECT_EQ(SelectedDBIndex, 2);
    EXPECT_EQ(View()->currentIndex().row(), 1);
    EXPECT_EQ(DatabaseAt(2).State, "DECLINE");
    Click(2, 12);
    EXPECT_EQ(File(), "a;/1.mdb;\r\nb;/2.mdb;ACCEPT\r\nc;/3.mdb;\r\n");
    Click(1, 12);
    EXPECT_EQ(File(), "a;/1.mdb;DECLINE\r\nb;/2.mdb;ACCEPT\r\nc;/3.mdb;\r\n");
    Click(3, 2); // left of the icons
    Click(3, 20);
    EXPECT_EQ(DatabaseAt(3).State, "ACCEPT");
    const QModelIndex first = View()->model()->index(0, 0);
    EXPECT_EQ(first.data(Qt::AccessibleTextRole).toString(), "a, declined");
    EXPECT_TRUE(first.data(Qt::ToolTipRole).toString().contains(u"/1.mdb"_s));
}

TEST_F(frmSSHelperTest, TheKeyboardReachesEverything) {
    View()->setFocus();
    Press(Qt::Key_Space); // nothing is selected
    Press(Qt::Key_Delete);
    EXPECT_EQ(DBCount, 3);
    Press(Qt::Key_Down);
    EXPECT_EQ(SelectedDBIndex, 1);
    Press(Qt::Key_End);
    EXPECT_EQ(SelectedDBIndex, 3);
    Press(Qt::Key_Space);
    EXPECT_EQ(DatabaseAt(3).State, "DECLINE");
    Press(Qt::Key_Up);
    Press(Qt::Key_Delete);
    EXPECT_EQ(File(), "a;/1.mdb;\r\nc;/3.mdb;DECLINE\r\n");
    EXPECT_EQ(View()->currentIndex().row(), 1);
    Press(Qt::Key_Delete);
    EXPECT_EQ(SelectedDBIndex, -1);
    EXPECT_FALSE(View()->currentIndex().isValid());

    Press(Qt::Key_Home);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(View()->viewport(), &menuKey);
    EXPECT_TRUE(Menu()->isVisible());
    Trigger("mnuModify");
    EXPECT_EQ(Field("txtAlias")->text(), "a");
    dialogs.expectFile(std::nullopt);
    Press(Qt::Key_Return);
    EXPECT_EQ(dialogs.fileQuestions.size(), 1);
}

TEST_F(frmSSHelperTest, TheMenuOffersWhatCanBeDone) {
    Click(9, 100, Qt::RightButton); // the empty space below
    ASSERT_TRUE(Menu()->isVisible());
    QList<bool> enabled;
    for (const QAction* action : Menu()->actions())
        enabled.append(action->isEnabled());
    EXPECT_EQ(enabled, (QList<bool>{true, false, false}));
    Menu()->hide();
    Click(3, 12, Qt::RightButton);
    EXPECT_EQ(DatabaseAt(3).State, "ACCEPT") << "the right button flips nothing";
    Trigger("mnuDelete");
    EXPECT_EQ(File(), "a;/1.mdb;\r\nb;/2.mdb;DECLINE\r\n");
}

TEST_F(frmSSHelperTest, TheDialogChangesAnEntryAndAsksBeforeItIsLeft) {
    Click(2, 60, Qt::RightButton);
    Trigger("mnuModify");
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->windowTitle(), "Database Alias & Location ");
    EXPECT_TRUE(dialog->isModal());
    EXPECT_EQ(Field("txtDBLocation")->text(), "/2.mdb");
    Type(Field("txtAlias"), u"B & co"_s);

    dialogs.expectFile(path(u"absent.mdb"_s)); // only a file that is there is taken
    ClickButton("cmdMore");
    EXPECT_EQ(dialogs.fileQuestions[0].filter, "Access Database Files |*.mdb");
    EXPECT_EQ(Field("txtDBLocation")->text(), "/2.mdb");
    writeFile(u"there.mdb"_s, "");
    dialogs.expectFile(path(u"there.mdb"_s));
    ClickButton("cmdMore");
    EXPECT_EQ(Field("txtDBLocation")->text(), path(u"there.mdb"_s));
    EXPECT_EQ(Field("txtAlias")->text(), "B & co");

    dialogs.expect(u"Cancel modify database?"_s, BoxAnswer::No);
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(dialogs.shown.last().title, "Cancel operation");
    EXPECT_TRUE(dialog->isVisible());
    Type(Field("txtDBLocation"), u"anything"_s);
    QTest::keyClick(Field("txtDBLocation"), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(File(), "a;/1.mdb;\r\nB & co;anything;DECLINE\r\nc;/3.mdb;\r\n");
    EXPECT_EQ(DatabaseAt(2).Text, "B & co");

    dialogs.expectFile(u"/4.mdb"_s);
    Press(Qt::Key_Enter);
    dialogs.expect(u"Cancel add new database?"_s, BoxAnswer::Yes);
    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(DBCount, 3);
}

} // namespace
} // namespace kelvrane::testing
