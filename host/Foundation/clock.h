// The present time of a hosted device, and its user's settings for dates.
#pragma once

#include <optional>
#include <string>

#include "export.h"

namespace host {

/// Stops the clock at that many seconds after the start of 2001, GMT; nothing makes it follow the
/// machine's clock again.
HOST_EXPORT void setClock(std::optional<double> seconds);
double now();

/// The user's region: "en_US" at first. One that ends in "@calendar=buddhist" counts years from
/// another era, as on the platform.
HOST_EXPORT void setUserLocale(std::string identifier);
std::string userLocale();

/// The device's time zone, in seconds east of GMT; 0 at first.
HOST_EXPORT void setLocalTimeZone(long seconds);
long localTimeZone();

}  // namespace host
