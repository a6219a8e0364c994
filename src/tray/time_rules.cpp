#include "tray/time_rules.h"

#include "frame/globals.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "timevalues/time_values.h"

namespace kelvrane {

namespace {
constexpr int quarterHour = 15;

bool isOn(const QString& option) {
    return option == QLatin1String("On");
}
} // namespace

void EndOfDayRule(Int16 Now) {
    const Int16 diff = Now - ToMinutes(StopWorkTime);
    if (diff >= 0 && CurrentEntryIndex > -1 && Modulo(diff, EndOfDayTimeInterval) == 0 &&
        !DayStopped)
        ports.screens->show(Screen::frmExit);
}

void AutoStartRule(Int16 Now) {
    if (!isOn(AutoStartDay) || Now != ToMinutes(StartWorkTime))
        return;
    const int weekday = ports.clock->today().dayOfWeek();
    if (weekday != Qt::Saturday && weekday != Qt::Sunday &&
        !ports.screens->isVisible(Screen::frmSTM))
        ports.screens->show(Screen::frmSTM);
}

void AutoSaveRule(Int16 Now) {
    if (isOn(AutoSave) && Now != 0 && !DayStopped && Now % quarterHour == 0)
        AddDataToDayInfoDataBase();
}

void IntraDayReminderRule(Int16 Now) {
    if (!isOn(AutoDayReminder) || DayStopped || Modulo(Now, AutoDayReminderValue) != 0)
        return;
    ports.screens->show(Screen::frmSTM);
    ports.tray->notify(QStringLiteral("Kelvrane"),
                       QStringLiteral("Is the current project still right?"));
    if (!AutoDayReminderSoundFile.isEmpty() && ports.files->exists(AutoDayReminderSoundFile))
        ports.sound->play(AutoDayReminderSoundFile);
}

} // namespace kelvrane
