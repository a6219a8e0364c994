#include "tray/exit_prompt.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/settings.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/day_change.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"

namespace kelvrane {

namespace {
constexpr int minuteInterval = 60000; // milliseconds

QString T(const char* text) {
    return QString::fromLatin1(text);
}

QList<KeyedItem> Controls() {
    QStringList hours;
    for (int hour = 1; hour <= 12; ++hour)
        hours.append(QString::number(hour));
    return {
        {.key = T("Label1"), .caption = {}},
        {.key = T("Label2"), .caption = {}},
        {.key = T("cboTime0"),
         .caption = T("Hour"),
         .kind = ItemKind::DropDown,
         .choices = hours,
         .visible = false},
        {.key = T("cboTime1"),
         .caption = T("Minute"),
         .kind = ItemKind::DropDown,
         .choices = {T("0"), T("15"), T("30"), T("45")},
         .visible = false},
        {.key = T("cboTime2"),
         .caption = T("AM or PM"),
         .kind = ItemKind::DropDown,
         .choices = {T("AM"), T("PM")},
         .visible = false},
        {.key = T("chkAsk"),
         .caption = T("Do not show this reminder in the future."),
         .kind = ItemKind::Check},
        {.key = T("cmdSave"), .caption = T("Save && Quit"), .kind = ItemKind::Button},
        {.key = T("cmdUpdate"), .caption = T("Set New Value"), .kind = ItemKind::Button},
        {.key = T("cmdCancel"), .caption = T("Cancel"), .kind = ItemKind::Button},
    };
}
} // namespace

ExitPrompt::ExitPrompt(QObject* parent)
    : QObject(parent), controls(Controls()), ExitTimer(ports.timers->create(this)) {
    connect(ExitTimer, &IntervalTimer::Timer, this,
            [this] { Guarded(T("frmExit"), [this] { tick(); }); });
    connect(&controls, &KeyedItems::Clicked, this,
            [this](const QString& key) { Guarded(T("frmExit"), [&] { clicked(key); }); });
    connect(&controls, &KeyedItems::Chosen, this,
            [this] { Guarded(T("frmExit"), [this] { cboTime(); }); });
    ExitTimer->setInterval(minuteInterval);
    ExitTimer->setEnabled(true);
    m_counting = true;
    writeLabels();
    // A desktop may keep the prompt behind other windows; the notice is seen in any case.
    const QString notice =
        controls.item(T("Label1")).caption + QLatin1Char('\n') + controls.item(T("Label2")).caption;
    ports.tray->notify(m_caption, QString(notice).replace(T("&&"), T("&")));
}

void ExitPrompt::clicked(const QString& key) {
    struct Command {
        const char* key;
        void (ExitPrompt::*run)();
    };
    static constexpr Command commands[] = {
        {"cmdSave", &ExitPrompt::cmdSave},
        {"cmdUpdate", &ExitPrompt::cmdUpdate},
        {"cmdCancel", &ExitPrompt::cmdCancel},
        {"chkAsk", &ExitPrompt::chkAsk},
    };
    for (const Command& command : commands)
        if (key == QLatin1String(command.key))
            (this->*command.run)();
}

void ExitPrompt::writeLabels() {
    controls.setCaption(T("Label1"),
                        T("The current time is ") + ClockText(ports.clock->time()) + T("."));
    controls.setCaption(T("Label2"), T("Press cancel within ") + QString::number(RemainingMinutes) +
                                         T(" minutes, to cancel automatic save && quit."));
}

void ExitPrompt::tick() {
    const bool hadEntries = CurrentEntryIndex >= 0;
    FollowClock();
    if (!m_counting) // the clock was set to another day
        return;
    if (hadEntries && CurrentEntryIndex < 0) { // the machine slept, and the day is over
        close();
        return;
    }
    RemainingMinutes -= 1;
    writeLabels(); // the editor's labels are overwritten too; that is wanted
    if (RemainingMinutes == 0) {
        const QuietReports quiet; // nobody answered
        saveAndQuit(true);
    }
}

void ExitPrompt::saveAndQuit(bool timedOut) {
    ExitTimer->setEnabled(false); // no second time while the stop reports something
    StopCurrentEntry(Stops::Day);
    const bool goesOn = EntryRunning(); // a project was chosen while the stop was being saved
    if (timedOut && !goesOn)            // the save command leaves it set; that is wanted
        ControlScreenLoaded = false;
    DayStopped = !goesOn;
    UnloadAllForms();
    close();
}

void ExitPrompt::cmdSave() {
    saveAndQuit(false);
}

void ExitPrompt::cmdCancel() {
    close();
}

void ExitPrompt::cmdUpdate() {
    if (controls.item(T("cmdUpdate")).caption != T("Set New Value"))
        close();
    else
        openEditor();
}

void ExitPrompt::openEditor() {
    for (const char* key : {"cboTime0", "cboTime1", "cboTime2"})
        controls.setVisible(T(key), true);
    // A stop time of another form leaves the lists empty to choose anew.
    SkipErrors step(T("cmdUpdate"));
    const QStringList parts =
        StopWorkTime.chopped(qMin(3, StopWorkTime.size())).split(QLatin1Char(':'));
    step([&] { controls.setValue(T("cboTime0"), At(parts, 0)); });
    step([&] { controls.setValue(T("cboTime1"), At(parts, 1)); });
    step([&] { controls.setValue(T("cboTime2"), StopWorkTime.right(2)); });

    controls.setVisible(T("chkAsk"), false);
    controls.setCaption(T("Label1"), T("New Value:"));
    controls.setCaption(T("cmdCancel"), T("Ok"));
    controls.setVisible(T("cmdUpdate"), false);
    controls.setVisible(T("cmdSave"), false);
    controls.setCaption(T("Label2"), {});
    m_caption = T("Please enter a new Value");
    m_editing = true;
    emit EditorOpened();
}

void ExitPrompt::cboTime() {
    const QString value = controls.value(T("cboTime0")) + QLatin1Char(':') +
                          controls.value(T("cboTime1")) + QLatin1Char(' ') +
                          controls.value(T("cboTime2"));
    StopWorkTime = value;
    SaveRegText(value, keys::Main, T("StopWorkTime"));
}

void ExitPrompt::chkAsk() {
    const bool ticked = !controls.item(T("chkAsk")).ticked;
    controls.setTicked(T("chkAsk"), ticked);
    const QString reminder = ticked ? T("Off") : T("On");
    EndDayReminder = reminder;
    SaveRegText(reminder, keys::Main, T("EndDayReminder"));
}

void ExitPrompt::stopCountdown() {
    ExitTimer->setEnabled(false);
    m_counting = false;
}

void ExitPrompt::close() {
    stopCountdown();
    ports.screens->unload(Screen::frmExit);
}

} // namespace kelvrane
