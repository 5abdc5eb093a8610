// Who is let in.
#pragma once

#include <string>

#include <httplib.h>

namespace varnix::cli::web {

/// The status for a request that is refused, judged by its head alone; 0 for one that is let in.
/// Without the secret, from another site, or by another name of this machine, there is nothing
/// here.
int refusal(const httplib::Request& request, const std::string& secret, int port);

/// What follows the secret in the path of a request that was let in.
std::string pathBehind(const std::string& path, const std::string& secret);

}  // namespace varnix::cli::web
