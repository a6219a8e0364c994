#include "app/screen_host.h"
#include "frame/settings.h"
#include "options/frmTip.h"
#include "options/tips.h"
#include "platform/error.h"
#include "support/fakes.h"
#include "support/raised_error.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QTest>

namespace kelvrane::testing {
namespace {

const QString setting = QStringLiteral("Show Tips at Startup");

QWidget* CreateTip() {
    return new frmTip;
}
constexpr ScreenRow rows[] = {{Screen::frmTip, CreateTip}};

class frmTipTest : public ProgramTest {
  protected:
    frmTipTest() { ports.screens = &host; }
    ~frmTipTest() override { ports.screens = &screens; }
    bool shownWith(const QString& value) {
        RegSetKeyValue(keys::Main, setting, value);
        host.show(Screen::frmTip);
        return host.isVisible(Screen::frmTip);
    }
    template <typename Control>
    Control* find(const char* name) {
        return host.widget(Screen::frmTip)->findChild<Control*>(QString::fromLatin1(name));
    }
    ScreenHost host{rows};
};

// The options write "On" and "Off", the screen "Yes" and "No": only the last keeps it away.
TEST_F(frmTipTest, OnlyNoKeepsItAway) {
    EXPECT_FALSE(shownWith("No"));
    EXPECT_FALSE(host.isLoaded(Screen::frmTip));
    for (const char* value : {"Yes", "Off", "On", "", "no"}) {
        EXPECT_TRUE(shownWith(value)) << value;
        EXPECT_TRUE(find<QCheckBox>("chkLoadTipsAtStartup")->isChecked());
        host.unload(Screen::frmTip);
    }
}

TEST_F(frmTipTest, TheBoxWritesItsOwnWordsAndTheTipStaysUp) {
    ASSERT_TRUE(shownWith("On"));
    auto* box = find<QCheckBox>("chkLoadTipsAtStartup");
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_EQ(RegQueryValue(keys::Main, setting), "No");
    EXPECT_FALSE(box->isChecked());
    EXPECT_TRUE(host.isVisible(Screen::frmTip));
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_EQ(RegQueryValue(keys::Main, setting), "Yes");
    QTest::keyClick(box, Qt::Key_Space);
    QTest::mouseClick(find<QPushButton>("cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(host.isLoaded(Screen::frmTip));
    host.show(Screen::frmTip);
    EXPECT_FALSE(host.isLoaded(Screen::frmTip));
}

TEST_F(frmTipTest, NextDrawsAnewAndEscapeCloses) {
    ASSERT_TRUE(shownWith("Yes"));
    QSet<QString> seen;
    for (int draw = 0; draw < 200; ++draw) {
        seen.insert(find<QLabel>("lblTipText")->text());
        EXPECT_EQ(find<QLabel>("lblTipText")->text(), TipAt(Tip().CurrentTip));
        QTest::mouseClick(find<QPushButton>("cmdNextTip"), Qt::LeftButton);
    }
    EXPECT_EQ(seen.size(), Tip().TipCount); // the first and the last come up, too
    EXPECT_EQ(RaisedError([] { TipAt(0); }), errors::Subscript);
    EXPECT_EQ(RaisedError([] { TipAt(Tip().TipCount + 1); }), errors::Subscript);
    QTest::keyClick(host.widget(Screen::frmTip), Qt::Key_Escape);
    EXPECT_FALSE(host.isLoaded(Screen::frmTip));
}

TEST_F(frmTipTest, TheClockSeedsTheDraws) {
    QSet<int> first;
    for (int minute = 0; minute < 60; ++minute) {
        clock.advanceMinutes(1);
        ASSERT_TRUE(LoadTip());
        first.insert(Tip().CurrentTip);
    }
    EXPECT_GT(first.size(), 4);
}

} // namespace
} // namespace kelvrane::testing
