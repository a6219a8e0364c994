// The screens of this version. A new screen is a row here.
#pragma once

#include "app/screen_host.h"

#include <span>

namespace kelvrane {

std::span<const ScreenRow> ScreenTable();

} // namespace kelvrane
