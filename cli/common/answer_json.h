// What a surface answers, as JSON.
#pragma once

#include <string>
#include <vector>

#include "common/json_forward.h"
#include "probe/surfaces.h"
#include "runtime/send.h"

namespace varnix::cli {

Json answerJson(const varnix::probe::Answer& answer);

/// "#rrggbbaa"; null for nil and for anything other than a colour.
Json colorJson(NSObject* color);

/// Every surface of this process, or only those of the given classes: [{"class", "property",
/// "case", "answer"}], in the table's order.
Json surfaceAnswers(const std::vector<std::string>& classes = {});

/// The answers of two processes, side by side: [{"class", "property", "case", "before", "after"}],
/// in the second one's order. A surface that the first was not asked about has null before.
Json comparedAnswers(const Json& before, const Json& after);

}  // namespace varnix::cli
