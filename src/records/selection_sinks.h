// Where a project chosen in the Database Manager goes. The modules that take one register here;
// which of them serves is read from DayCalendarOpen and ModifyOpen at the moment of selection.
#pragma once

#include <QString>

#include <functional>

namespace kelvrane {

struct SelectionSink {
    std::function<void(const QString& name, const QString& number)> select;
    std::function<void()> undo; ///< the manager closed without a selection, and its screen shows it
};

struct SelectionSinks {
    SelectionSink day;      ///< starts the project
    SelectionSink modify;   ///< fills the modify screen's rows
    SelectionSink calendar; ///< fills the calendar's row
};
inline SelectionSinks selectionSinks;

} // namespace kelvrane
