// Controls of the options screen over keyed items: each shows its item and hands what the user does
// back to it. A line hands its text over on Enter and when it is left.
//
//     layout->addWidget(CreateOptionControl(&model.controls, "cboEndDayInterval", this));
#pragma once

#include "platform/keyed_items.h"

#include <QString>

class QWidget;

namespace kelvrane {

/// The control of an item by its kind: check box, list, line, line with a browse button, button.
/// Its object name is the key, its accessible name the caption; the browse button's is the key with
/// "_BROWSE" behind it. The items outlive it.
QWidget* CreateOptionControl(KeyedItems* items, const QString& key, QWidget* parent);

/// Side by side, the controls of all items of a panel, which gives its name.
QWidget* CreateOptionPanel(KeyedItems* items, const QString& name, QWidget* parent);

} // namespace kelvrane
