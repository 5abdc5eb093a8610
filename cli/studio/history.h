// All states of a theme, with the one that is shown.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "studio/values.h"

namespace varnix::cli {

/// Names of files in the material store, by place.
using PictureNames = std::map<std::string, std::string>;

class History {
 public:
  struct Entry {
    std::string label;  ///< "global_color"
    std::string group;  ///< changes of one group, such as a drag, are one entry; empty for none
    Values values;
    PictureNames pictures;
  };

  explicit History(Values first);
  /// Those of the only entry there is.
  void beginWith(PictureNames pictures) { entries_.front().pictures = std::move(pictures); }

  /// Adds a state after the present one; what had been undone is forgotten.
  void add(Entry entry);
  /// False if there is no such entry.
  bool goTo(std::size_t position);

  const std::vector<Entry>& entries() const { return entries_; }
  std::size_t position() const { return position_; }
  const Values& values() const { return entries_[position_].values; }
  const PictureNames& pictures() const { return entries_[position_].pictures; }

 private:
  std::vector<Entry> entries_;
  std::size_t position_ = 0;
};

}  // namespace varnix::cli
