// What the page asks and orders.
#pragma once

#include "studio/painter.h"
#include "studio/session.h"
#include "studio/web/web.h"

namespace varnix::cli {

/// Answers a request of the page. Status 400 has the reason as {"failure": TEXT}.
web::Response answerPage(const web::Request& request, Session& session, Painter& painter);

}  // namespace varnix::cli
