// A rule of the platform: what it is called, what it says, and how something is held against it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace varnix::device {

/// Takes what is wrong, in words that begin with the place.
using Say = std::function<void(const std::string& wrong)>;

/// Who asks for it.
enum class Asker : uint8_t {
  platform,
  project,  ///< Ours alone: the platform takes a library that is otherwise.
};

template <class Of>
struct RuleOf {
  std::string_view name;      ///< "subject.rule".
  std::string_view sentence;  ///< What holds for a sound file.
  void (*check)(const Of& of, const Say& say);
  Asker asker = Asker::platform;
};

/// Words for what is wrong unless `holds`, else none.
inline std::string unless(bool holds, std::string wrong) {
  return holds ? std::string() : std::move(wrong);
}

/// A check of each thing in a list of `Of`, which is a member or a function. `Wrong` says what is
/// wrong with one, or nothing; labelOf(thing) says which one it is.
template <auto List, auto Wrong, class Of>
void each(const Of& of, const Say& say) {
  for (const auto& thing : std::invoke(List, of))
    if (const std::string wrong = Wrong(of, thing); !wrong.empty())
      say(labelOf(thing) + ": " + wrong);
}

/// A check of the whole.
template <auto Wrong, class Of>
void whole(const Of& of, const Say& say) {
  if (const std::string wrong = Wrong(of); !wrong.empty()) say(wrong);
}

/// "0x4000"
std::string hex(uint64_t number);
/// What cannot be printed as a question mark.
std::string printable(std::string_view text);

}  // namespace varnix::device
