// A rule of the platform: its name, its sentence, and its check.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace varnix::device {

/// Takes a description of what is wrong, which begins with the place.
using Say = std::function<void(const std::string& wrong)>;

/// Who requires it.
enum class Asker : uint8_t {
  platform,
  project,  ///< Only this project: the platform accepts a library that breaks it.
};

template <class Of>
struct RuleOf {
  std::string_view name;      ///< "subject.rule".
  std::string_view sentence;  ///< What is true of a sound file.
  void (*check)(const Of& of, const Say& say);
  Asker asker = Asker::platform;
};

/// The description of what is wrong unless `holds`, else nothing.
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
/// With a question mark for each character that cannot be printed.
std::string printable(std::string_view text);

}  // namespace varnix::device
