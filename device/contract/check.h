// Compares what the library uses with what is known of the platform.
#pragma once

#include <string>
#include <vector>

#include "contract/facts.h"
#include "contract/types.h"
#include "contract/use.h"

namespace varnix::device {

/// The source of our knowledge.
enum class Origin {
  unknown,
  fact,  ///< facts/
  hand,  ///< the list of what the facts do not cover
  own,   ///< a class of the library's
  added  ///< a method that the library adds to a class of the platform
};

struct Judged {
  Use use;
  std::string cls;  ///< The owner: the platform class behind one of our own.
  Origin origin = Origin::unknown;
  std::string source;  ///< Framework and class of a fact; the reason of a line by hand.
  std::vector<std::string> complaints;
};

/// Every use of one architecture.
std::vector<Judged> judge(const Uses& uses, Width width, Facts& facts);

}  // namespace varnix::device
