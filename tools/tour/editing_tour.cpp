#include "editing_tour.h"

#include "app/program.h"
#include "calendar/calendar_model.h"
#include "calendar/day_calendar.h"
#include "frame/program_folder.h"
#include "options/options_model.h"
#include "records/manager_model.h"
#include "records/record_panel.h"
#include "timekeeping/control_model.h"
#include "timekeeping/modify_model.h"

#include <QAbstractButton>
#include <QFile>
#include <QLineEdit>
#include <QTabBar>

namespace kelvrane::tour {

namespace {

QString T(const char* text) {
    return QString::fromLatin1(text);
}

void press(const QWidget* screen, const char* button) {
    if (auto* found = screen ? screen->findChild<QAbstractButton*>(T(button)) : nullptr)
        found->click();
}

} // namespace

QWidget* EditingTour::screen(Screen name) const {
    return m_program.screens().widget(name);
}

void EditingTour::picture(const char* name, Screen which) {
    m_album.picture(T(name), screen(which));
}

void EditingTour::onNothing() {
    ports.screens->show(Screen::frmDataBase);
    picture("database-empty", Screen::frmDataBase);
    press(screen(Screen::frmDataBase), "LIST_VIEW");
    picture("database-list-empty", Screen::frmDataBase);
    ports.screens->unload(Screen::frmDataBase);
}

void EditingTour::onWorkingDay() {
    databaseManager();
    modifyEntry();
    options();
    dayCalendar();
}

void EditingTour::databaseManager() {
    ports.screens->show(Screen::frmDataBase);
    picture("database-single", Screen::frmDataBase);
    customerBrowser();
    press(screen(Screen::frmDataBase), "LIST_VIEW");
    picture("database-list", Screen::frmDataBase);
    ports.screens->unload(Screen::frmDataBase);
}

void EditingTour::customerBrowser() {
    Manager().smuiOptions.click(T("DB Manager"));
    picture("database-manager", Screen::frmDataBase);
    RecordPanel().edit(T("RATE"), T("a lot"));
    m_album.withBoxes({{T("database-message"), T("OK")}},
                      [] { Manager().smuiPanel1.click(T("UPDATE")); });
    RecordPanel().edit(T("RATE"), T("75"));
    RecordPanel().press(T("CUSTID_SHOW"));
    QWidget* browser = screen(Screen::frmBrowseForCust);
    picture("browse-for-customer", Screen::frmBrowseForCust);
    const auto find = [browser](const QString& text) {
        browser->findChild<QLineEdit*>(T("FINDWHAT"))->setText(text);
        press(browser, "FIND");
    };
    find(T("st"));
    picture("browse-for-customer-found", Screen::frmBrowseForCust);
    m_album.withBoxes({{T("browse-for-customer-none"), T("OK")}},
                      [&] { find(T("nobody by this name")); });
    ports.screens->unload(Screen::frmBrowseForCust);
    Manager().smuiOptions.click(T("OPTIONS"));
}

void EditingTour::modifyEntry() {
    Control().smuiBreakDown.select(T("START TIME0"));
    Control().mnuSetData.click(T("mnuSetDataModifyTime"));
    picture("modify", Screen::frmModify);
    Modify().SmuiModify.edit(T("STOP TIME"), T("25:99 XM"));
    m_album.withBoxes({{T("modify-message"), T("OK")}},
                      [] { Modify().buttons.click(T("cmdUpdate")); });
    picture("modify-marked", Screen::frmModify);
    m_album.withBoxes({{T("modify-closing"), T("No")}},
                      [] { Modify().buttons.click(T("cmdCancel")); });
}

void EditingTour::options() {
    ports.screens->show(Screen::frmOptions);
    auto* tabs = screen(Screen::frmOptions)->findChild<QTabBar*>();
    for (const OptionPage& page : OptionPages()) {
        picture(qPrintable(T("options-") + T(page.key).toLower()), Screen::frmOptions);
        tabs->setCurrentIndex(tabs->currentIndex() + 1);
    }
    tabs->setCurrentIndex(0);
    Options().controls.toggle(T("chkUseIntraDayReminder"));
    m_album.withBoxes({{T("options-message"), T("OK")}},
                      [] { Options().smuiSoundFile.edit(T("SOUNDFILE"), T("no such sound.wav")); });
    picture("options-marked", Screen::frmOptions);
    Options().controls.toggle(T("chkUseIntraDayReminder"));
    ports.screens->unload(Screen::frmOptions);
}

void EditingTour::dayCalendar() {
    ports.screens->show(Screen::frmDayInfo);
    picture("calendar", Screen::frmDayInfo);
    const auto clickDay = [](QDate day) {
        const int labelOfFirst = QDate(day.year(), day.month(), 1).dayOfWeek() % 7;
        DateLabelClick(labelOfFirst + day.day() - 1);
    };
    clickDay(ports.clock->today().addDays(-1));
    picture("calendar-day", Screen::frmDayInfo);
    Calendar().smuiDaysInfo.press(T("WORK1"));
    picture("calendar-new-time", Screen::frmSelNewTime);
    ports.screens->unload(Screen::frmSelNewTime);
    Calendar().controls.click(T("MonthDn"));
    clickDay(QDate(2026, 2, 1)); // a Sunday
    picture("calendar-empty-day", Screen::frmDayInfo);
    AddDayRows();
    picture("calendar-added-rows", Screen::frmDayInfo);
    const QString history = InAppPath(T(files::DayHistory));
    QFile::rename(history, history + T(".away"));
    m_album.withBoxes({{T("calendar-message"), T("OK")}}, [&] { clickDay(QDate(2026, 2, 2)); });
    QFile::rename(history + T(".away"), history);
    ports.screens->unload(Screen::frmDayInfo);
}

} // namespace kelvrane::tour
