#include "app/screen_host.h"

#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace kelvrane;

namespace {

int made = 0;
int unloads = 0;
std::function<void()> whileMaking;

/// Runs a step once when an event of a type reaches the window, and one when it is destroyed.
class Window : public QWidget {
  public:
    ~Window() override {
        if (onDestroy)
            onDestroy();
    }
    void once(QEvent::Type type, std::function<void()> step) {
        m_type = type;
        m_step = std::move(step);
    }
    std::function<void()> onDestroy;

  protected:
    bool event(QEvent* event) override {
        if (m_step && event->type() == m_type)
            std::exchange(m_step, {})();
        return QWidget::event(event);
    }

  private:
    QEvent::Type m_type = QEvent::None;
    std::function<void()> m_step;
};

QWidget* Make() {
    ++made;
    auto* window = new Window;
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
    Window* window(Screen screen) { return static_cast<Window*>(host.widget(screen)); }

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

TEST_F(ScreenHostTest, ADialogThatClosesMayDeleteTheOthers) {
    const std::function<void()> closings[] = {[&] { host.unload(Screen::frmSTM); },
                                              [&] { host.unloadAll(); }};
    for (const auto& close : closings) {
        host.show(Screen::frmSTM);
        std::vector<QPointer<QDialog>> dialogs(4); // whichever is first: windows have no order
        for (QPointer<QDialog>& dialog : dialogs) {
            dialog = new QDialog(host.widget(Screen::frmSTM));
            QObject::connect(dialog, &QDialog::rejected, dialog, [&dialogs, &dialog] {
                for (const QPointer<QDialog>& other : dialogs)
                    if (other != dialog)
                        delete other;
            });
            dialog->open();
        }
        close();
        EXPECT_EQ(std::ranges::count_if(dialogs, [](const auto& dialog) { return !!dialog; }), 1);
        EXPECT_FALSE(host.isLoaded(Screen::frmSTM));
        Settle();
    }
}

TEST_F(ScreenHostTest, AScreenMayBeUnloadedByWhatShowingOrRaisingItSetsOff) {
    const auto unload = [&] { host.unload(Screen::frmSTM); };
    host.show(Screen::frmSTM);
    QPointer<QWidget> screen = window(Screen::frmSTM);
    screen->hide();
    window(Screen::frmSTM)->once(QEvent::Show, unload);
    host.show(Screen::frmSTM);
    EXPECT_FALSE(host.isLoaded(Screen::frmSTM));

    host.show(Screen::frmSTM);
    window(Screen::frmSTM)->showMinimized();
    window(Screen::frmSTM)->once(QEvent::WindowStateChange, unload);
    host.bringForward(Screen::frmSTM);
    EXPECT_FALSE(host.isLoaded(Screen::frmSTM));
    EXPECT_EQ(unloads, 2);
    Settle();
    EXPECT_FALSE(screen);
}

TEST_F(ScreenHostTest, AScreenThatGoesWithTheHostMayUnloadItselfAndOthers) {
    auto ending = std::make_unique<ScreenHost>(rows);
    const auto unloadBoth = [&ending = *ending] {
        ending.unload(Screen::frmSTM);
        ending.unload(Screen::frmExit);
    };
    for (const Screen screen : {Screen::frmSTM, Screen::frmExit}) {
        ending->show(screen);
        static_cast<Window*>(ending->widget(screen))->onDestroy = unloadBoth;
    }
    const QPointer<QWidget> first = ending->widget(Screen::frmSTM);
    const QPointer<QWidget> second = ending->widget(Screen::frmExit);
    ending.reset();
    EXPECT_FALSE(first);
    EXPECT_FALSE(second);
}
