// The maker's hosts, as the settings name them. None is set unless somebody sets it, and then
// nothing goes over the network.
#pragma once

#include <QString>

namespace kelvrane {

/// The value UpdateWebHost as an address without a slash at its end: a full address as it stands,
/// its scheme in small letters, a plain host name with "http://" before it; "" when none is set.
QString MakerWebAddress();

/// The value UpdateFtpHost in the same way, with "ftp://" before a plain name.
QString MakerFtpAddress();

/// The account there: the value UpdateFtpUser; with none set, the name of the web host.
QString MakerFtpAccount();

} // namespace kelvrane
