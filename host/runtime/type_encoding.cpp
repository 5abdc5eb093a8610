#include "type_encoding.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace host::runtime {

namespace {

constexpr std::string_view kQualifiers = "rnNoORVAj";

/// The index after the bracket that closes the one at the index.
std::size_t afterClosing(std::string_view text, std::size_t at) {
  int depth = 0;
  bool isQuoted = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '"') isQuoted = !isQuoted;
    if (isQuoted) continue;
    if (c == '{' || c == '[' || c == '(' || c == '<') ++depth;
    if (c == '}' || c == ']' || c == ')' || c == '>') --depth;
    if (depth == 0) return at + 1;
  }
  return at;
}

std::size_t afterDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && (std::isdigit(static_cast<unsigned char>(text[at])) != 0 ||
                              text[at] == '+' || text[at] == '-'))
    ++at;
  return at;
}

/// The index after the type at the index.
std::size_t afterType(std::string_view text, std::size_t at) {
  while (at < text.size() && kQualifiers.find(text[at]) != kQualifiers.npos) ++at;
  if (at >= text.size()) return text.size();
  switch (text[at]) {
    case '{':
    case '[':
    case '(':
      return afterClosing(text, at);
    case '^':
      return afterType(text, at + 1);
    case 'b':
      return afterDigits(text, at + 1);
    case '@':
      ++at;
      if (at < text.size() && text[at] == '?') {
        ++at;
        return at < text.size() && text[at] == '<' ? afterClosing(text, at) : at;
      }
      if (at < text.size() && text[at] == '"') {
        const std::size_t close = text.find('"', at + 1);
        return close == text.npos ? text.size() : close + 1;
      }
      return at;
    default:
      return at + 1;
  }
}

template <class T>
constexpr Extent kExtent{sizeof(T), alignof(T)};

Extent extentOfMembers(std::string_view type) {
  const bool isUnion = type.front() == '(';
  Extent whole{0, 1};
  for (const std::string_view member : membersOf(type)) {
    const Extent one = extentOf(member);
    const std::size_t alignment = std::max<std::size_t>(one.alignment, 1);
    whole.alignment = std::max(whole.alignment, alignment);
    if (isUnion) whole.size = std::max(whole.size, one.size);
    else whole.size = (whole.size + alignment - 1) / alignment * alignment + one.size;
  }
  whole.size = (whole.size + whole.alignment - 1) / whole.alignment * whole.alignment;
  return whole;
}

Extent extentOfArray(std::string_view type) {
  type.remove_prefix(1);
  std::size_t count = 0;
  const char* end = std::from_chars(type.data(), type.data() + type.size(), count).ptr;
  type.remove_prefix(static_cast<std::size_t>(end - type.data()));
  const Extent element = extentOf(takeType(type));
  return {element.size * count, element.alignment};
}

}  // namespace

std::string_view takeType(std::string_view& encoding) {
  const std::size_t end = afterType(encoding, 0);
  const std::string_view type = encoding.substr(0, end);
  encoding.remove_prefix(afterDigits(encoding, end));
  return type;
}

std::vector<std::string_view> typesOf(std::string_view encoding) {
  std::vector<std::string_view> types;
  while (!encoding.empty()) types.push_back(takeType(encoding));
  return types;
}

std::string_view withoutQualifiers(std::string_view type) {
  const std::size_t start = type.find_first_not_of(kQualifiers);
  return start == type.npos ? std::string_view() : type.substr(start);
}

std::vector<std::string_view> membersOf(std::string_view type) {
  std::vector<std::string_view> members;
  const std::size_t equals = type.find('=');
  // A structure that is only named has no members to see.
  const std::size_t nested = type.find_first_of("{[(", 1);
  if (equals == type.npos || nested < equals) return members;
  std::string_view rest = type.substr(equals + 1, type.size() - equals - 2);
  while (!rest.empty()) {
    if (rest.front() == '"') {
      const std::size_t close = rest.find('"', 1);
      rest.remove_prefix(close == rest.npos ? rest.size() : close + 1);
      continue;
    }
    const std::size_t end = afterType(rest, 0);
    members.push_back(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  return members;
}

Extent extentOf(std::string_view type) {
  type = withoutQualifiers(type);
  if (type.empty()) return {0, 0};
  switch (type.front()) {
    case 'c':
    case 'C':
      return kExtent<char>;
    case 'B':
      return kExtent<bool>;
    case 's':
    case 'S':
      return kExtent<short>;
    case 'i':
    case 'I':
      return kExtent<int>;
    case 'l':
    case 'L':
      return kExtent<std::int32_t>;
    case 'q':
    case 'Q':
      return kExtent<long long>;
    case 't':
    case 'T':
      return {16, 16};
    case 'f':
      return kExtent<float>;
    case 'd':
      return kExtent<double>;
    case 'D':
      return kExtent<long double>;
    case '@':
    case '#':
    case ':':
    case '*':
    case '^':
    case '?':
      return kExtent<void*>;
    case '{':
    case '(':
      return extentOfMembers(type);
    case '[':
      return extentOfArray(type);
    default:
      return {0, 0};
  }
}

}  // namespace host::runtime
