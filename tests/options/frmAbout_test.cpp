#include "app/screen_host.h"
#include "frame/settings.h"
#include "options/frmAbout.h"
#include "support/fakes.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace kelvrane::testing {
namespace {

QWidget* CreateAbout() {
    return new frmAbout;
}
constexpr ScreenRow rows[] = {{Screen::frmAbout, CreateAbout}};

class frmAboutTest : public ProgramTest {
  protected:
    frmAboutTest() { ports.screens = &host; }
    ~frmAboutTest() override { ports.screens = &screens; }
    void showWith(const QString& webHost) {
        RegSetKeyValue(keys::Main, "UpdateWebHost", webHost);
        host.unload(Screen::frmAbout);
        host.show(Screen::frmAbout);
    }
    QLabel* label(const char* name) {
        return host.widget(Screen::frmAbout)->findChild<QLabel*>(QString::fromLatin1(name));
    }
    ScreenHost host{rows};
};

TEST_F(frmAboutTest, TellsTheVersionAndClosesByItsButtonOrEscape) {
    showWith("");
    EXPECT_EQ(label("lblVersion")->text(), "Version " KELVRANE_VERSION);
    EXPECT_FALSE(label("lblMoreInfo"));
    QTest::mouseClick(host.widget(Screen::frmAbout)->findChild<QPushButton*>("cmdOK"),
                      Qt::LeftButton);
    EXPECT_FALSE(host.isLoaded(Screen::frmAbout));
    showWith("");
    QTest::keyClick(host.widget(Screen::frmAbout), Qt::Key_Escape);
    EXPECT_FALSE(host.isLoaded(Screen::frmAbout));
}

TEST_F(frmAboutTest, TheAddressOpensOnAClick) {
    showWith("www.example.org/");
    ASSERT_TRUE(label("lblMoreInfo"));
    EXPECT_EQ(label("lblMoreInfo")->text(), "For more information visit on the web at:");
    emit label("lblURL")->linkActivated("http://somewhere.else/");
    EXPECT_EQ(launcher.opened, QStringList{"http://www.example.org"});
    showWith("https://example.org/\"><b>x");
    EXPECT_FALSE(label("lblURL") && label("lblURL")->text().contains("<b>"));
}

TEST_F(frmAboutTest, WhatIsNoWebPageIsNotOffered) {
    for (const char* address :
         {"file:///etc/passwd", "javascript:alert(1)", "https://", "http:///x"}) {
        showWith(address);
        EXPECT_FALSE(label("lblURL")) << address;
    }
}

} // namespace
} // namespace kelvrane::testing
