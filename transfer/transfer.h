// One request over http, https, ftp or ftps.
#pragma once

#include "request.h"

namespace transfer {

/// Carries the request out, reports each phase, and ends with the report's last line. Standard
/// input stays open as long as somebody wants the answer: at its end the process ends too, and an
/// unfinished file is gone.
void Carry(const Request& request);

} // namespace transfer
