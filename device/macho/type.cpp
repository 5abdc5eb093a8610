#include "macho/type.h"

#include <algorithm>
#include <string>

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

Type scalar(char code, uint32_t size, Small small = Small::none) {
  return {size, std::max(size, 1U), small, code, 1, false, false};
}

}  // namespace

Type Encoding::next() {
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
      return scalar('d', 8);
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
    default:
      throw Error("a type encoding that is not known here: " + std::string(text_));
  }
}

Type Encoding::object() {
  Type type = scalar('i', word_);
  type.isBlock = takeIf('?');
  if (takeIf('"')) skipQuoted();
  return type;
}

Type Encoding::pointer(int depth) {
  // The structure that it points to may be given without members.
  if (!atEnd() && text_[at_] == '{') skipBraces();
  else value(depth + 1);
  return scalar('i', word_);
}

Type Encoding::structure(int depth) {
  while (take() != '=') {
  }
  Type whole;
  whole.isStructure = true;
  while (!takeIf('}')) {
    if (takeIf('"')) {
      skipQuoted();
      continue;
    }
    const Type member = value(depth + 1);
    if (whole.count == 0) whole.scalar = member.scalar;
    else if (whole.scalar != member.scalar) whole.scalar = 0;
    whole.count += member.count;
    whole.alignment = std::max(whole.alignment, member.alignment);
    whole.size = static_cast<uint32_t>(alignUp(whole.size, member.alignment)) + member.size;
  }
  whole.size = static_cast<uint32_t>(alignUp(whole.size, whole.alignment));
  return whole;
}

void Encoding::skipBraces() {
  int open = 0;
  do {
    const char c = take();
    open += c == '{' ? 1 : c == '}' ? -1 : 0;
  } while (open != 0);
}

void Encoding::skipQuoted() {
  while (take() != '"') {
  }
}

}  // namespace varnix::device
