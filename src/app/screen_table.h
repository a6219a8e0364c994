// The screens that this version has.
#pragma once

#include "app/screen_host.h"

namespace kelvrane {

std::span<const ScreenRow> ScreenTable();

} // namespace kelvrane
