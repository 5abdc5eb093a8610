// The lists that the run-time's C functions return: the caller frees them.
#pragma once

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace host::runtime {

/// Nil for an empty list. There is a nil after the last element.
template <class T>
T* copyList(const std::vector<T>& elements, unsigned* count) {
  if (count != nullptr) *count = static_cast<unsigned>(elements.size());
  if (elements.empty()) return nullptr;
  auto* copy = static_cast<T*>(std::calloc(elements.size() + 1, sizeof(T)));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, elements.data(), elements.size() * sizeof(T));
  return copy;
}

/// A copy that the caller frees.
inline char* copyText(const std::string& text) {
  char* copy = strdup(text.c_str());
  if (copy == nullptr) throw std::bad_alloc();
  return copy;
}

/// A name that lives as long as the process, the same for the same text. The lock is held.
const char* keptName(const std::string& name);

}  // namespace host::runtime
