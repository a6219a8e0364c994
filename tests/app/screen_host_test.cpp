#include "app/screen_host.h"

#include <QDialog>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace kelvrane;

namespace {

int made = 0;
int unloads = 0;
std::function<void()> whileMaking;

QWidget* Make() {
    ++made;
    auto* window = new QWidget;
    if (whileMaking)
        whileMaking();
    return window;
}

constexpr ScreenRow rows[] = {
    {Screen::frmSTM, Make, [] { ++unloads; }},
    {Screen::frmExit, Make},
};

/// Runs the event loop until nothing is left to do; at the outermost level.
void Settle() {
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
    loop.exec();
}

class ScreenHostTest : public ::testing::Test {
  protected:
    ScreenHostTest() {
        made = unloads = 0;
        whileMaking = {};
    }
    ScreenHost host{rows};
};

} // namespace

TEST_F(ScreenHostTest, MakesAScreenOnFirstTouchAndShowsItWithoutWaiting) {
    EXPECT_FALSE(host.isLoaded(Screen::frmSTM));
    host.show(Screen::frmSTM);
    host.show(Screen::frmSTM);
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(host.isVisible(Screen::frmSTM));
    host.widget(Screen::frmSTM)->hide();
    EXPECT_FALSE(host.isVisible(Screen::frmSTM));
    EXPECT_TRUE(host.isLoaded(Screen::frmSTM));
    host.show(Screen::frmSTM);
    EXPECT_TRUE(host.isVisible(Screen::frmSTM));
    EXPECT_EQ(made, 1);
}

TEST_F(ScreenHostTest, AScreenThatIsNotInTheTableIsNothing) {
    host.show(Screen::frmChart);
    host.bringForward(Screen::frmChart);
    host.unload(Screen::frmChart);
    EXPECT_FALSE(host.isLoaded(Screen::frmChart));
}

TEST_F(ScreenHostTest, UnloadHidesAtOnceRunsTheScreensUnloadOnceAndDeletes) {
    host.show(Screen::frmSTM);
    const QPointer<QWidget> window = host.widget(Screen::frmSTM);
    host.unload(Screen::frmSTM);
    host.unload(Screen::frmSTM);
    EXPECT_EQ(unloads, 1);
    ASSERT_TRUE(window);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(host.isLoaded(Screen::frmSTM));
    Settle();
    EXPECT_FALSE(window);
    host.show(Screen::frmSTM);
    EXPECT_EQ(made, 2);
}

TEST_F(ScreenHostTest, AScreenOutlivesTheNestedLoopsOfItsOwnCode) {
    host.show(Screen::frmSTM);
    const QPointer<QWidget> window = host.widget(Screen::frmSTM);
    bool aliveInside = false;
    bool aliveBehind = false;
    int result = -1;
    QTimer::singleShot(0, window, [&] { // a handler of the screen opens a box ...
        QDialog box(window);
        box.setModal(true);
        QTimer::singleShot(0, &host, [&] { // ... and a tick unloads the screen behind it
            host.unload(Screen::frmSTM);
            Settle(); // even when more nested loops come and go
            aliveInside = window;
        });
        result = box.exec();
        aliveBehind = window;
    });
    Settle();
    EXPECT_EQ(result, int(QDialog::Rejected)) << "closed as cancelled";
    EXPECT_TRUE(aliveInside);
    EXPECT_TRUE(aliveBehind);
    Settle();
    EXPECT_FALSE(window);
}

TEST_F(ScreenHostTest, OnlyTheBoxesOverTheScreenClose) {
    host.show(Screen::frmSTM);
    host.show(Screen::frmExit);
    QDialog over(host.widget(Screen::frmSTM));
    QDialog elsewhere(host.widget(Screen::frmExit));
    over.open();
    elsewhere.open();
    host.unload(Screen::frmSTM);
    EXPECT_FALSE(over.isVisible());
    EXPECT_TRUE(elsewhere.isVisible());
    host.unloadAll();
    EXPECT_FALSE(elsewhere.isVisible());
    EXPECT_FALSE(host.isLoaded(Screen::frmExit));
    over.setParent(nullptr);
    elsewhere.setParent(nullptr);
}

TEST_F(ScreenHostTest, AScreenAskedForWhileItIsBeingMadeIsMadeOnce) {
    whileMaking = [&] {
        host.show(Screen::frmSTM);
        EXPECT_FALSE(host.isLoaded(Screen::frmSTM));
    };
    host.show(Screen::frmSTM);
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(host.isVisible(Screen::frmSTM));
}

TEST_F(ScreenHostTest, AScreenUnloadedWhileItIsBeingMadeNeverShows) {
    whileMaking = [&] { host.unload(Screen::frmSTM); };
    host.show(Screen::frmSTM);
    EXPECT_FALSE(host.isLoaded(Screen::frmSTM));
    EXPECT_EQ(unloads, 1);
}

TEST_F(ScreenHostTest, AFailedMakingCanBeTriedAgain) {
    whileMaking = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(host.show(Screen::frmSTM), std::runtime_error);
    whileMaking = {};
    host.show(Screen::frmSTM);
    EXPECT_TRUE(host.isVisible(Screen::frmSTM));
}
