// All states of a theme, with the one that is shown.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "studio/values.h"

namespace varnix::cli {

class History {
 public:
  struct Entry {
    std::string label;  ///< "global_color"
    std::string group;  ///< changes of one group, such as a drag, are one entry; empty for none
    Values values;
  };

  explicit History(Values first);

  /// Adds a state after the present one; what had been undone is forgotten.
  void add(Entry entry);
  /// False if there is no such entry.
  bool goTo(std::size_t position);

  const std::vector<Entry>& entries() const { return entries_; }
  std::size_t position() const { return position_; }
  const Values& values() const { return entries_[position_].values; }

 private:
  std::vector<Entry> entries_;
  std::size_t position_ = 0;
};

}  // namespace varnix::cli
