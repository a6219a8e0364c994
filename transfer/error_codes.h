// The library's errors as the numbers that the program knows.
#pragma once

#include <curl/curl.h>

namespace transfer {

inline constexpr int InternalError = 12004;
inline constexpr int BadAddress = 12005;
inline constexpr int CannotWrite = 112; ///< the disk is full, or the file can't be made

/// 0 for CURLE_OK.
int ErrorCode(CURLcode result);

} // namespace transfer
