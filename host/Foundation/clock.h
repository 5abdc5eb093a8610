// What a hosted device takes for now and for its user's ways with dates.
#pragma once

#include <optional>
#include <string>

#include "export.h"

namespace host {

/// Stops the clock at that many seconds after the first moment of 2001, GMT; nothing lets it go on
/// with the machine's.
HOST_EXPORT void setClock(std::optional<double> seconds);
double now();

/// The user's region: "en_US" at first. One that ends in "@calendar=buddhist" counts years from
/// another beginning, as the platform's do.
HOST_EXPORT void setUserLocale(std::string identifier);
std::string userLocale();

/// The device's time zone, in seconds east of GMT; 0 at first.
HOST_EXPORT void setLocalTimeZone(long seconds);
long localTimeZone();

}  // namespace host
