#include "app/screen_host.h"
#include "frame/globals.h"
#include "frame/settings.h"
#include "options/frmOptions.h"
#include "options/options_model.h"
#include "options/program_options.h"
#include "support/fakes.h"
#include "widgets/tab_strip.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

namespace kelvrane::testing {
namespace {

QWidget* CreateOptions() {
    return new frmOptions;
}
constexpr ScreenRow rows[] = {{Screen::frmOptions, CreateOptions, UnloadOptions}};

class frmOptionsTest : public ProgramTest {
  protected:
    frmOptionsTest() {
        for (const OptionSwitch& row : OptionSwitches())
            RegSetKeyValue(keys::Main, row.key, QString("On"));
        ports.screens = &host;
    }
    QWidget& screen() {
        if (!host.isLoaded(Screen::frmOptions)) {
            host.show(Screen::frmOptions);
            QCoreApplication::processEvents(); // active: shortcuts reach it
        }
        return *host.widget(Screen::frmOptions);
    }
    template <typename Control = QWidget>
    Control* find(const QString& name, const QString& within = "frmOptions") {
        QWidget* place = within == "frmOptions" ? &screen() : screen().findChild<QWidget*>(within);
        auto* control = place ? place->findChild<Control*>(name) : nullptr;
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }
    void turnTo(int page) {
        auto* tabs = screen().findChild<QTabBar*>();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page).center());
    }
    void click(const QString& name) {
        auto* button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(12, button->height() / 2));
    }
    void type(const QString& name, const QString& text) {
        auto* line = find<QLineEdit>(name);
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
    }
    static QString stored(const char* name, const QString& key = keys::Main) {
        return RegQueryValue(key, name).remove(QChar::Null);
    }

    ScreenHost host{rows};
};

TEST_F(frmOptionsTest, EveryPageShowsItsFrameAndItsControls) {
    EXPECT_EQ(screen().windowTitle(), "Program Options");
    EXPECT_EQ(screen().width(), 742);
    for (int page = 0; page < 4; ++page) {
        turnTo(page);
        for (const OptionPage& each : OptionPages())
            EXPECT_EQ(find(each.frame)->isVisible(), &each == &OptionPages()[page]) << each.frame;
        Options().smuiSelect.click("HELP");
        EXPECT_EQ(help.pages.size(), page + 1);
    }
    EXPECT_EQ(help.pages.first(), "Options_Screen/Options_Kelvrane.htm");
    EXPECT_EQ(help.pages.last(), "Options_Screen/Options_Misc.htm");
    for (const OptionRow& row : OptionRows())
        if (*row.key) {
            const auto* control = find(row.key);
            EXPECT_FALSE(control->accessibleName().isEmpty()) << row.key;
        }
    for (const OptionField& field : OptionFields())
        find(field.name);
    QStringList texts;
    for (const QLabel* label : screen().findChildren<QLabel*>())
        texts.append(label->text());
    for (const OptionGroup& group : OptionGroups())
        EXPECT_TRUE(!*group.description || texts.contains(group.description)) << group.heading;
    host.unload(Screen::frmOptions);
    EXPECT_EQ(settings->section("Options", "Height", {}), "5730") << "no size of the user's";
}

TEST_F(frmOptionsTest, ClicksAndKeysChangeTheSettings) {
    click("chkAutoSave");
    EXPECT_EQ(AutoSave, "Off");
    EXPECT_EQ(find<QAbstractButton>("chkAutoSave")->text(), "Automatic Save - Disabled");
    auto* hour = find<QComboBox>("HOUR", "smuiAutoStartTime");
    QTest::keyClick(hour, Qt::Key_End);
    EXPECT_EQ(stored("StartWorkTime"), "12: ");
    QTest::keyClick(find<QComboBox>("MINUTE", "smuiAutoStartTime"), Qt::Key_Home);
    QTest::keyClick(find<QComboBox>("AMPM", "smuiAutoStartTime"), Qt::Key_Home);
    EXPECT_EQ(StartWorkTime, "12:0 AM");
    click("chkAutoStartup");
    EXPECT_FALSE(hour->isEnabled());

    writeFile("bell.wav", "");
    type("SOUNDFILE", path("bell.wav"));
    EXPECT_EQ(AutoDayReminderSoundFile, path("bell.wav"));
    click("cmdTestSoundFile");
    EXPECT_EQ(sound.played.size(), 1);

    turnTo(1);
    type("CALCNUMDAYS", "12");
    EXPECT_EQ(stored("CalcNumDays", keys::SpreadSheetInfo), "12");
    turnTo(3);
    QTest::keyClick(find("cboRecentProjects"), Qt::Key_Home);
    EXPECT_EQ(ShowNumProjects, 2);
    click("chkShowTips");
    EXPECT_EQ(stored("Show Tips at Startup"), "On");
}

TEST_F(frmOptionsTest, OddValuesStandInTheirFieldsAndStay) {
    RegSetKeyValue(keys::Main, "StartWorkTime", "8:05 AM");
    RegSetKeyValue(keys::Main, "StopWorkTime", QString(10000, 'x'));
    RegSetKeyValue(keys::Main, "AutoDayReminderSoundFile", QString(10000, 'y'));
    RegSetKeyValue(keys::SpreadSheetInfo, "TimeIncrements", "None");
    auto* minute = find<QComboBox>("MINUTE", "smuiAutoStartTime");
    EXPECT_EQ(minute->currentIndex(), -1);
    EXPECT_EQ(minute->placeholderText(), "05");
    EXPECT_LT(find<QComboBox>("HOUR", "smuiEndDayReminderTime")->width(), 250);
    turnTo(1);
    EXPECT_EQ(find<QComboBox>("Time Increment")->placeholderText(), "None");
    QWheelEvent wheel(QPointF(5, 5), minute->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(minute, &wheel);
    EXPECT_EQ(stored("StartWorkTime"), "8:05 AM") << "the wheel scrolls the page";
    EXPECT_EQ(stored("StopWorkTime").size(), 10000);
}

TEST_F(frmOptionsTest, ANarrowScreenShowsEveryColumnWhole) {
    RegSetKeyValue(keys::Main, "StopWorkTime", QString(10000, 'x'));
    screen().resize(screen().minimumSize());
    QCoreApplication::processEvents();
    for (const OptionPage& page : OptionPages()) {
        const auto* frame = find<QScrollArea>(page.frame);
        EXPECT_LE(frame->widget()->minimumSizeHint().width(), screen().width() - 60) << page.frame;
    }
}

TEST_F(frmOptionsTest, ATypedTextCountsOnce) {
    auto* line = find<QLineEdit>("SOUNDFILE");
    line->setFocus();
    QTest::keyClicks(line, "nowhere.wav");
    dialogs.expect("nowhere.wav is an invalid filename");
    click("CLOSE"); // takes it over first
    EXPECT_FALSE(host.isLoaded(Screen::frmOptions));
    EXPECT_EQ(dialogs.shown.size(), 1);

    line = find<QLineEdit>("SOUNDFILE");
    line->setFocus();
    QTest::keyClicks(line, "nowhere.wav");
    host.unload(Screen::frmOptions); // a shut-down asks nothing
    QCoreApplication::processEvents();
    EXPECT_EQ(dialogs.shown.size(), 1);
}

TEST_F(frmOptionsTest, EscAndTheCloseBoxCloseAndTheSizeIsKept) {
    screen().resize(800, 500);
    QTest::keyClick(&screen(), Qt::Key_Escape);
    EXPECT_FALSE(host.isLoaded(Screen::frmOptions));
    EXPECT_TRUE(DatabaseSelectCancelled);
    EXPECT_EQ(settings->section("Options", "Width", {}), "12000");
    EXPECT_EQ(screen().size(), QSize(800, 500));
    DatabaseSelectCancelled = false;
    screen().close();
    EXPECT_FALSE(host.isLoaded(Screen::frmOptions));
    EXPECT_TRUE(DatabaseSelectCancelled);
}

TEST_F(frmOptionsTest, TheDatabasePageStandsAloneForTheStart) {
    screen();
    ShowDatabasePageAlone();
    EXPECT_TRUE(find("fraDatabase")->isVisible());
    EXPECT_FALSE(find("fraKelvrane")->isVisible());
    EXPECT_EQ(find<QLineEdit>("DATABASELOC")->text(), ProjectDatabase);
    dialogs.expectFile(std::nullopt);
    click("DATABASELOC_BROWSE");
    EXPECT_EQ(dialogs.fileQuestions.size(), 1);
    auto* tabs = screen().findChild<QTabBar*>();
    for (int tab = 0; tab < tabs->count(); ++tab)
        EXPECT_EQ(tabs->isTabVisible(tab), tab == 2);
    host.unload(Screen::frmOptions);
    EXPECT_TRUE(screen().findChild<QTabBar*>()->isTabVisible(0)) << "opened anew";
}

} // namespace
} // namespace kelvrane::testing
