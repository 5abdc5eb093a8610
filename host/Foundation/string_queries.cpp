// What strings answer beyond what our own code asks of them. Indices count units of UTF-16.
#include <cstdarg>

#include "Foundation/format.h"
#include "Foundation/range.h"
#include "Foundation/text.h"
#include "Foundation/utf8.h"
#include "objc/define.h"
#include "runtime/runtime.h"

namespace {

[[noreturn]] void raiseBeyond(NSUInteger index) {
  throw host::runtime::Exception("NSRangeException",
                                 "index " + std::to_string(index) + " beyond the end");
}

/// The byte where the unit's character begins.
std::size_t byteOf(NSString* string, NSUInteger unit) {
  return host::utf8Offset(host::text(string), unit, host::Divided::before);
}

/// The characters of a byte range as a range of units.
_NSRange unitsOf(std::string_view text, std::size_t start, std::size_t length) {
  const std::size_t before = host::utf16Length(text.substr(0, start));
  return {static_cast<NSUInteger>(before),
          static_cast<NSUInteger>(host::utf16Length(text.substr(start, length)))};
}

unsigned short characterAt(NSString* self, SEL, NSUInteger index) {
  const std::string_view text = host::text(self);
  if (index >= host::utf16Length(text)) raiseBeyond(index);
  const std::string_view rest = text.substr(byteOf(self, index));
  const auto lead = static_cast<unsigned char>(rest[0]);
  const int more = lead < 0x80 ? 0 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
  char32_t code = more == 0 ? lead : lead & (0x3f >> more);
  for (int i = 1; i <= more; ++i)
    code = code << 6 | (static_cast<unsigned char>(rest[static_cast<std::size_t>(i)]) & 0x3f);
  if (code < 0x10000) return static_cast<unsigned short>(code);
  // The second half of a pair comes where the character has begun before.
  const bool isSecond = host::utf16Length(text.substr(0, byteOf(self, index))) < index;
  return static_cast<unsigned short>(isSecond ? 0xdc00 + ((code - 0x10000) & 0x3ff)
                                              : 0xd800 + ((code - 0x10000) >> 10));
}

NSString* substring(NSString* self, SEL, _NSRange range) {
  const std::string_view text = host::text(self);
  const std::size_t length = host::utf16Length(text);
  if (range.location > length || range.length > length - range.location)
    raiseBeyond(range.location + range.length);
  const std::size_t start = byteOf(self, range.location);
  return host::makeString(text.substr(start, byteOf(self, range.location + range.length) - start));
}

_NSRange rangeOf(NSString* self, SEL, NSString* part) {
  const std::string_view text = host::text(self);
  const std::string_view wanted = host::text(part);
  const std::size_t at = wanted.empty() ? text.npos : text.find(wanted);
  if (at == text.npos) return {host::kNotFound, 0};
  return unitsOf(text, at, wanted.size());
}

bool contains(NSString* self, SEL, NSString* part) {
  return rangeOf(self, nullptr, part).location != host::kNotFound;
}

NSArray* split(NSString* self, SEL, NSString* separator) {
  NSMutableArray* parts = NSMutableArray::array();
  std::string_view rest = host::text(self);
  const std::string_view mark = host::text(separator);
  for (std::size_t at; !mark.empty() && (at = rest.find(mark)) != rest.npos;
       rest.remove_prefix(at + mark.size()))
    send(parts, NSMutableArray::addObject, host::makeString(rest.substr(0, at)));
  send(parts, NSMutableArray::addObject, host::makeString(rest));
  return parts;
}

NSString* replacing(NSString* self, SEL, NSString* old, NSString* with) {
  const std::string_view wanted = host::text(old);
  std::string made;
  std::string_view rest = host::text(self);
  for (std::size_t at; !wanted.empty() && (at = rest.find(wanted)) != rest.npos;
       rest.remove_prefix(at + wanted.size()))
    made.append(rest.substr(0, at)).append(host::text(with));
  return host::makeString(made.append(rest));
}

NSString* appendingFormat(NSString* self, SEL, NSString* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string tail = host::format(host::text(format), arguments);
  va_end(arguments);
  return host::makeString(std::string(host::text(self)) + tail);
}

NSString* lower(NSString* self, SEL) { return host::makeString(host::lowerCase(host::text(self))); }

NSString* withString(Class, SEL, NSString* other) { return host::makeString(host::text(other)); }

}  // namespace

OBJC_CATEGORY_OF_OWN(NSString, Queries, objc::ClassMethod<"stringWithString:", &withString>,
                     objc::Method<"characterAtIndex:", &characterAt>,
                     objc::Method<"substringWithRange:", &substring>,
                     objc::Method<"rangeOfString:", &rangeOf>,
                     objc::Method<"containsString:", &contains>,
                     objc::Method<"componentsSeparatedByString:", &split>,
                     objc::Method<"stringByReplacingOccurrencesOfString:withString:", &replacing>,
                     objc::Method<"stringByAppendingFormat:", &appendingFormat>,
                     objc::Method<"lowercaseString", &lower>)
