// The English names of months and days, for reading dates and for writing them.
#pragma once

#include <array>

namespace kelvrane {

inline constexpr std::array<const char16_t*, 12> MonthNames = {
    u"January", u"February", u"March",     u"April",   u"May",      u"June",
    u"July",    u"August",   u"September", u"October", u"November", u"December"};
/// The week begins on Monday, as Qt counts its days.
inline constexpr std::array<const char16_t*, 7> DayNames = {
    u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday", u"Sunday"};

} // namespace kelvrane
