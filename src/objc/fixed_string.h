// Text as a template argument: selectors, class names and type encodings known at compile time.
#pragma once

#include <cstddef>

namespace objc {

template <std::size_t N>
struct FixedString {
  char text[N]{};

  constexpr FixedString() = default;
  constexpr FixedString(const char (&literal)[N]) {
    for (std::size_t i = 0; i < N; ++i) text[i] = literal[i];
  }

  /// The length without the terminating zero.
  static constexpr std::size_t size() { return N - 1; }

  constexpr std::size_t count(char wanted) const {
    std::size_t found = 0;
    for (std::size_t i = 0; i < size(); ++i) found += text[i] == wanted;
    return found;
  }
};

template <std::size_t N, std::size_t M>
constexpr FixedString<N + M - 1> operator+(const FixedString<N>& left,
                                           const FixedString<M>& right) {
  FixedString<N + M - 1> joined;
  for (std::size_t i = 0; i < N - 1; ++i) joined.text[i] = left.text[i];
  for (std::size_t i = 0; i < M; ++i) joined.text[N - 1 + i] = right.text[i];
  return joined;
}

template <std::size_t N, std::size_t M>
constexpr FixedString<N + M - 1> operator+(const FixedString<N>& left, const char (&right)[M]) {
  return left + FixedString<M>(right);
}

template <std::size_t N, std::size_t M>
constexpr FixedString<N + M - 1> operator+(const char (&left)[N], const FixedString<M>& right) {
  return FixedString<N>(left) + right;
}

/// Whether two texts are the same.
template <FixedString A, FixedString B>
inline constexpr bool kSame = [] {
  if constexpr (A.size() != B.size()) return false;
  else {
    for (std::size_t i = 0; i < A.size(); ++i) {
      if (A.text[i] != B.text[i]) return false;
    }
    return true;
  }
}();

/// One copy of a text with static storage, for metadata that points to it.
template <FixedString Text>
inline constexpr auto kStored = Text;

}  // namespace objc
