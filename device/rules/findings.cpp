#include "rules/findings.h"

namespace varnix::device {

void Findings::add(std::string_view rule, const std::string& what) {
  // Something that cannot be read is reported once.
  for (const Broken& each : broken_)
    if (each.slice == slice_ && each.rule == rule) return;
  broken_.push_back({slice_, rule, printable(what)});
}

}  // namespace varnix::device
