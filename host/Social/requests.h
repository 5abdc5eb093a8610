// The requests to social networks that this process has sent.
#pragma once

#include "platform/Social.h"
#include "runtime/send.h"

namespace host {

/// Each an SLRequest (serviceType, requestMethod, URL, parameters, account), in order; in this
/// process. Nothing leaves the machine: a request goes to the server of this machine that the
/// environment variable VARNIX_SOCIAL_HOST names ("127.0.0.1:PORT"), else nowhere.
inline NSArray* performedRequests() {
  return send<NSArray*>(objc_getClass("SLRequest"), "standIn_performedRequests"_sel);
}

}  // namespace host
