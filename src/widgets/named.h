// Gives a widget its name as it is made.
#pragma once

#include <QString>

namespace kelvrane {

/// The widget with that object name.
template <typename Widget>
Widget* Named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace kelvrane
