// Tables of functions by their names.
#pragma once

#include <span>
#include <string_view>

namespace varnix::device {

struct NamedFunction {
  template <class Function>
  NamedFunction(std::string_view itsName, Function* itsAddress)
      : name(itsName), address(reinterpret_cast<void*>(itsAddress)) {}

  std::string_view name;
  void* address;
};

/// Nil if the table has no such name.
inline void* findFunction(std::span<const NamedFunction> all, std::string_view name) {
  for (const NamedFunction& each : all)
    if (each.name == name) return each.address;
  return nullptr;
}

}  // namespace varnix::device
