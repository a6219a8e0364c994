#include "widgets/flat_button.h"
#include "widgets/tray_fallback_window.h"
#include "widgets/tray_icon.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

class TrayIconTest : public testing::Test {
  protected:
    TrayDesktop desktop() {
        return {.hasTray = [this] { return hasTray; },
                .patience = std::chrono::milliseconds(0),
                .isWayland = [this] { return onWayland; }};
    }

    bool hasTray = false;
    bool onWayland = false;
    KeyedItems context{
        QList<KeyedItem>{{.key = "about", .caption = "About Kelvrane", .kind = ItemKind::Button},
                         {.key = "exit", .caption = "Exit Program", .kind = ItemKind::Button}}};
    KeyedItems recent{
        QList<KeyedItem>{{.key = "MnuRecProj1", .caption = "R&D", .kind = ItemKind::Button}}};
    TrayIcon tray{&context, &recent, desktop()};
    QSignalSpy activated{&tray, &TrayIcon::activated};
    QSignalSpy clicked{&tray, &TrayIcon::clicked};
    QSignalSpy rebuild{&tray, &TrayIcon::rebuildRecentMenu};
};

TEST_F(TrayIconTest, AWindowStandsInWhileThereIsNoTray) {
    tray.checkTray();
    EXPECT_EQ(tray.fallback(), nullptr) << "the icon isn't wanted yet";
    tray.showIcon();
    QCoreApplication::processEvents(); // no tick needs to come
    ASSERT_NE(tray.fallback(), nullptr);
    EXPECT_TRUE(tray.fallback()->isVisible());

    tray.setState(DayState::OnBreak, "Garden");
    QStringList texts;
    for (const QLabel* label : tray.fallback()->findChildren<QLabel*>())
        texts.append(label->text());
    EXPECT_TRUE(texts.contains("On Break"));
    EXPECT_TRUE(texts.contains("Garden"));

    QTest::mouseClick(tray.fallback()->findChild<FlatButton*>("projects"), Qt::LeftButton);
    EXPECT_TRUE(tray.recentMenu()->isVisible());
    EXPECT_EQ(rebuild.size(), 1);
    tray.recentMenu()->hide();
    QTest::mouseClick(tray.fallback()->findChild<FlatButton*>("menu"), Qt::LeftButton);
    EXPECT_TRUE(tray.contextMenu()->isVisible());
    tray.contextMenu()->hide();
    ASSERT_EQ(clicked.size(), 2);
    EXPECT_EQ(clicked[0][0], 2);
    EXPECT_EQ(clicked[1][0], 1);

    tray.fallback()->close();
    ASSERT_NE(tray.fallback(), nullptr);
    EXPECT_TRUE(tray.fallback()->isVisible() && !tray.fallback()->isMinimized())
        << "never out of reach";
    EXPECT_EQ(activated.size(), 1);
    QTest::mouseDClick(tray.fallback(), Qt::LeftButton);
    EXPECT_EQ(activated.size(), 2);

    hasTray = true;
    tray.checkTray();
    EXPECT_EQ(tray.fallback(), nullptr);
    hasTray = false;
    tray.checkTray();
    EXPECT_NE(tray.fallback(), nullptr);
    const QPointer<QWidget> window = tray.fallback();
    QObject::connect(&tray, &TrayIcon::activated, &tray, &TrayIcon::removeIcon);
    window->close(); // what it shows may end the program
    EXPECT_EQ(tray.fallback(), nullptr);
    EXPECT_FALSE(window->isVisible());
    tray.checkTray();
    EXPECT_EQ(tray.fallback(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
}

TEST_F(TrayIconTest, TraysThatStartLateAreWaitedFor) {
    TrayDesktop slow = desktop();
    slow.patience = std::chrono::hours(1);
    TrayIcon patient(&context, &recent, slow);
    patient.showIcon();
    QCoreApplication::processEvents();
    patient.checkTray();
    EXPECT_EQ(patient.fallback(), nullptr);
}

TEST_F(TrayIconTest, ANoticeLeadsToTheControlScreen) {
    emit tray.icon().messageClicked();
    EXPECT_EQ(activated.size(), 1);

    tray.notify("Kelvrane", "A question waits"); // before anything is there that could show it
    tray.showIcon();
    QCoreApplication::processEvents();
    auto* notice = tray.fallback()->findChild<QLabel*>("notice");
    ASSERT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->text().contains("A question waits"));
    QTest::mouseClick(notice, Qt::RightButton);
    QTest::mouseClick(tray.fallback(), Qt::LeftButton, {}, QPoint(2, 2)); // beside it
    EXPECT_EQ(activated.size(), 1);
    QTest::mouseClick(notice, Qt::LeftButton);
    EXPECT_EQ(activated.size(), 2);
    EXPECT_FALSE(notice->isVisible());

    tray.notify("Kelvrane", "And another");
    EXPECT_TRUE(notice->isVisible());
}

TEST_F(TrayIconTest, Gestures) {
    emit tray.icon().activated(QSystemTrayIcon::Trigger);
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(clicked[0][0], 2);
    EXPECT_TRUE(tray.recentMenu()->isVisible());
    EXPECT_EQ(activated.size(), 0);

    emit tray.icon().activated(QSystemTrayIcon::DoubleClick);
    EXPECT_FALSE(tray.recentMenu()->isVisible());
    emit tray.icon().activated(QSystemTrayIcon::MiddleClick);
    EXPECT_EQ(activated.size(), 2);

    onWayland = true;
    emit tray.icon().activated(QSystemTrayIcon::Trigger);
    EXPECT_EQ(activated.size(), 3);
    EXPECT_FALSE(tray.recentMenu()->isVisible());

    emit tray.icon().activated(QSystemTrayIcon::Context);
    EXPECT_EQ(clicked.last()[0], 1);
}

TEST_F(TrayIconTest, TheContextMenuCarriesTheRecentProjects) {
    QMenu* projects = tray.contextMenu()->actions().first()->menu();
    ASSERT_NE(projects, nullptr);
    EXPECT_EQ(projects->actions().first()->text(), "R&&D");
    recent.setCaption("MnuRecProj1", "Garden");
    EXPECT_EQ(projects->actions().first()->text(), "Garden");
    EXPECT_EQ(tray.icon().contextMenu(), tray.contextMenu());
    EXPECT_EQ(tray.contextMenu()->actions().last()->text(), "Exit Program");
}

} // namespace
} // namespace kelvrane
