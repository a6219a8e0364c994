#include "timekeeping/new_time.h"

#include "frame/error_report.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr int lastHour = 12;
constexpr int lastMinute = 59;
const QString hours = QStringLiteral("cboHours");
const QString minutes = QStringLiteral("cboMinutes");
const QString ok = QStringLiteral("cmdOK");
const QString cancel = QStringLiteral("cmdCancel");

QStringList numbersTo(int last) {
    QStringList texts;
    for (int number = 0; number <= last; ++number)
        texts.append(QString::number(number));
    return texts;
}

struct Picker {
    Picker();
    void close();
    void takePicked();

    KeyedItems controls;
    std::function<void(const QString&)> take;
};

Picker& picker() {
    static Picker picker;
    return picker;
}

Picker::Picker()
    : controls({
          {.key = hours,
           .caption = QStringLiteral("Hours"),
           .kind = ItemKind::DropDown,
           .choices = numbersTo(lastHour)},
          {.key = minutes,
           .caption = QStringLiteral("Minutes"),
           .kind = ItemKind::DropDown,
           .choices = numbersTo(lastMinute)},
          {.key = ok, .caption = QStringLiteral("OK"), .kind = ItemKind::Button},
          {.key = cancel, .caption = QStringLiteral("Cancel"), .kind = ItemKind::Button},
      }) {
    QObject::connect(&controls, &KeyedItems::Clicked, &controls, [this](const QString& key) {
        Guarded(QStringLiteral("frmSelNewTime"), [&] { key == ok ? takePicked() : close(); });
    });
}

void Picker::close() {
    take = nullptr;
    ports.screens->unload(Screen::frmSelNewTime);
}

void Picker::takePicked() {
    const Int16 total = ToInt16(controls.value(hours)) * 60 + ToInt16(controls.value(minutes));
    const auto taker = std::exchange(take, nullptr);
    close();
    if (taker)
        taker(MinutesToText(total));
}

} // namespace

KeyedItems& NewTimeControls() {
    return picker().controls;
}

void PickNewTime(const std::array<Int16, 2>& hoursAndMinutes,
                 std::function<void(const QString&)> take) {
    picker().controls.setValue(hours, QString::number(hoursAndMinutes[0]));
    picker().controls.setValue(minutes, QString::number(hoursAndMinutes[1]));
    picker().take = std::move(take);
    ports.screens->show(Screen::frmSelNewTime);
}

} // namespace kelvrane
