#include "studio/history.h"

#include <utility>

namespace varnix::cli {

History::History(Values first) { entries_.push_back({"", "", std::move(first), {}}); }

void History::add(Entry entry) {
  entries_.resize(position_ + 1);
  Entry& last = entries_.back();
  if (!entry.group.empty() && entry.group == last.group) {
    last = std::move(entry);
    return;
  }
  entries_.push_back(std::move(entry));
  ++position_;
}

bool History::goTo(std::size_t position) {
  if (position >= entries_.size()) return false;
  position_ = position;
  // A later change with the same group is a new one.
  entries_[position].group.clear();
  return true;
}

}  // namespace varnix::cli
