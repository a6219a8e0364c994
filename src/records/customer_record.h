// The rules of customer records. A change of a customer's name is carried to the projects.
#pragma once

#include "platform/int16.h"

#include <optional>

namespace kelvrane {

/// Tests the panel's customer rows in their order and writes them to the new or current row, then
/// carries the name to the projects. Always 103, also after a save that went through: the manager
/// then keeps the record panel up, which is how customers are entered one after the other.
Int16 SaveNewCustomerProject();

/// Drops a new row or pending changes and goes back to CustomerPosition.
void CancelCustomerEntry();

/// Asks, with the number of projects that refer to it, then deletes the current customer. Projects
/// that refer to it are left as they are.
void DeleteCustomer();

/// As ProjectChanged.
bool CustomerChanged();
/// As CheckProjectChanged: 103 after a save, else empty.
std::optional<Int16> CheckCustomerChanged();

} // namespace kelvrane
