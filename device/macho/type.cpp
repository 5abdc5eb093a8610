#include "macho/type.h"

#include <algorithm>
#include <string>

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

Type scalar(char code, uint32_t size, Small small = Small::none) {
  return {
      .size = size, .alignment = std::max(size, 1U), .small = small, .scalar = code, .count = 1};
}

constexpr uint32_t kWordOfDevice = 4;

uint32_t aligned(uint32_t value, uint32_t alignment) {
  return static_cast<uint32_t>(alignUp(value, alignment));
}

/// Puts a member at the end of a structure, and its words where the device has them.
void append(Type& whole, const Type& member) {
  if (whole.count == 0) whole.scalar = member.scalar;
  else if (whole.scalar != member.scalar) whole.scalar = 0;
  whole.count += member.count;
  whole.alignment = std::max(whole.alignment, member.alignment);
  whole.hasUnion = whole.hasUnion || member.hasUnion;
  const uint32_t start = aligned(whole.size, member.alignment);
  if (member.words.empty() || member.alignment < kWordOfDevice) {
    for (uint32_t at = start / kWordOfDevice; at * kWordOfDevice < start + member.size; ++at)
      if (whole.words.empty() || whole.words.back() < at) whole.words.push_back(at);
  } else {
    for (const uint32_t word : member.words) whole.words.push_back(start / kWordOfDevice + word);
  }
  whole.size = start + member.size;
}

}  // namespace

Type Encoding::next() {
  if (!atEnd() && (text_[at_] == '[' || text_[at_] == 'b'))
    throw Error("an argument that cannot be one: " + std::string(text_));
  return nextVariable();
}

Type Encoding::nextVariable() {
  Type type = value(0);
  while (!atEnd() && (isDigit(text_[at_]) || text_[at_] == '-' || text_[at_] == '+')) ++at_;
  return type;
}

char Encoding::take() {
  if (atEnd()) throw Error("a type encoding that is cut short");
  return text_[at_++];
}

bool Encoding::takeIf(char c) {
  if (atEnd() || text_[at_] != c) return false;
  ++at_;
  return true;
}

Type Encoding::value(int depth) {
  if (depth > 16) throw Error("a type encoding that is too deep");
  char code = take();
  while (std::string_view("rnNoORVA").find(code) != std::string_view::npos) code = take();
  switch (code) {
    case 'v':
      return scalar('v', 0);
    case 'B':
      return scalar('i', 1, Small::unsigned8);
    case 'c':
      return scalar('i', 1, Small::signed8);
    case 'C':
      return scalar('i', 1, Small::unsigned8);
    case 's':
      return scalar('i', 2, Small::signed16);
    case 'S':
      return scalar('i', 2, Small::unsigned16);
    case 'i':
    case 'I':
    case 'l':
    case 'L':
      return scalar('i', 4);
    case 'f':
      return scalar('f', 4);
    case 'd':
    case 'D':  // the same on these processors
      return scalar('d', 8);
    case 'j':
      return complex(depth);
    case 'q':
    case 'Q':
      return scalar('i', 8);
    case '#':
    case ':':
    case '*':
    case '?':
      return scalar('i', word_);
    case '@':
      return object();
    case '^':
      return pointer(depth);
    case '{':
      return structure(depth);
    case '(':
      return unionOf(depth);
    case '[':
      return array(depth);
    case 'b':
      number();
      if (depth > 0) break;
      return scalar('b', 0);
    default:
      break;
  }
  throw Error("a type encoding that is not known here: " + std::string(text_));
}

Type Encoding::object() {
  Type type = scalar('i', word_);
  type.isBlock = takeIf('?');
  if (takeIf('"')) skipQuoted();
  return type;
}

Type Encoding::pointer(int depth) {
  // What it points to may be given without members, or have some that are not known here.
  if (takeIf('{')) skip('{', '}');
  else if (takeIf('(')) skip('(', ')');
  else if (takeIf('[')) skip('[', ']');
  else value(depth + 1);
  return scalar('i', word_);
}

Type Encoding::complex(int depth) {
  const Type part = value(depth + 1);
  Type whole;
  whole.isStructure = true;
  append(whole, part);
  append(whole, part);
  return whole;
}

Type Encoding::array(int depth) {
  constexpr uint32_t kMost = 1 << 16;
  const uint32_t count = number();
  const Type element = value(depth + 1);
  if (!takeIf(']')) throw Error("an array without an end");
  if (uint64_t{count} * element.size > kMost) throw Error("an array that is too large");
  Type whole;
  whole.isStructure = true;
  for (uint32_t i = 0; i < count; ++i) append(whole, element);
  return whole;
}

Type Encoding::structure(int depth) {
  while (take() != '=') {
  }
  Type whole;
  whole.isStructure = true;
  while (!takeIf('}')) {
    if (takeIf('"')) skipQuoted();
    else append(whole, value(depth + 1));
  }
  whole.size = aligned(whole.size, whole.alignment);
  return whole;
}

Type Encoding::unionOf(int depth) {
  while (take() != '=') {
  }
  Type whole;
  while (!takeIf(')')) {
    if (takeIf('"')) {
      skipQuoted();
      continue;
    }
    const Type member = value(depth + 1);
    whole.alignment = std::max(whole.alignment, member.alignment);
    whole.size = std::max(whole.size, member.size);
  }
  whole.size = aligned(whole.size, whole.alignment);
  whole.count = 1;
  whole.isStructure = whole.hasUnion = true;
  for (uint32_t at = 0; at * kWordOfDevice < whole.size; ++at) whole.words.push_back(at);
  return whole;
}

uint32_t Encoding::number() {
  uint32_t value = 0;
  while (!atEnd() && isDigit(text_[at_])) {
    value = value * 10 + static_cast<uint32_t>(text_[at_++] - '0');
    if (value > 1 << 20) throw Error("a number that is too large");
  }
  return value;
}

/// Up to the end of what has just begun.
void Encoding::skip(char open, char close) {
  for (int depth = 1; depth > 0;) {
    const char c = take();
    depth += c == open ? 1 : c == close ? -1 : 0;
  }
}

void Encoding::skipQuoted() {
  while (take() != '"') {
  }
}

}  // namespace varnix::device
