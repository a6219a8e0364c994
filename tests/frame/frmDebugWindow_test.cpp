#include "frame/frmDebugWindow.h"
#include "frame/globals.h"
#include "frame/trace.h"
#include "support/fakes.h"

#include <QListWidget>
#include <QTest>

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {
class frmDebugWindowTest : public ProgramTest {
  protected:
    static QListWidget* list(frmDebugWindow& window) {
        return window.findChild<QListWidget*>(QStringLiteral("List1"));
    }
    static void click(QListWidget* list) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->viewport()->rect().center());
    }
};
} // namespace

TEST_F(frmDebugWindowTest, ShowsTheStepsAsTheyHappenAndCopiesThemNewestFirst) {
    DebugMode = true;
    LogStep("Begin");
    frmDebugWindow window; // made by the first step in the running program
    window.show();
    LogStep("  Loading");
    ASSERT_EQ(list(window)->count(), 2);
    EXPECT_EQ(list(window)->item(1)->text(), "  Loading");
    click(list(window));
    EXPECT_EQ(clipboard.text, "  Loading\nBegin\n");
    EXPECT_EQ(events.yields, 2);
}

TEST_F(frmDebugWindowTest, AClickOnAnEmptyListCopiesAnEmptyText) {
    clipboard.text = "before";
    frmDebugWindow window;
    window.show();
    click(list(window));
    EXPECT_EQ(clipboard.text, "");
}

TEST_F(frmDebugWindowTest, ItsCloseBoxUnloadsIt) {
    frmDebugWindow window;
    window.show();
    window.close();
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmDebugWindow});
}
