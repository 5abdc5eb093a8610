// Strings: on the heap, and emitted by the compiler.
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>

#include "Foundation/format.h"
#include "Foundation/text.h"
#include "Foundation/utf16.h"
#include "Foundation/utf8.h"
#include "objc/define.h"
#include "runtime/runtime.h"

namespace {

struct AnyString : NSString {
  static id alloc(Class cls, SEL);
  static id allocWithZone(Class cls, SEL, void*) { return alloc(cls, nullptr); }
  static NSString* withUtf8(const char* utf8) {
    return utf8 == nullptr ? nullptr : host::makeString(utf8);
  }
  static NSString* withFormat(Class, SEL, NSString* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string formatted = host::format(host::text(format), arguments);
    va_end(arguments);
    return host::makeString(formatted);
  }
  static NSString* empty() { return host::makeString(""); }

  std::string_view text() { return host::text(this); }
  /// The text from its first character that is not a blank, terminated by a zero.
  std::string trimmed() {
    std::string_view whole = text();
    const std::size_t start = whole.find_first_not_of(" \t\n\r\f\v");
    return std::string(start == std::string_view::npos ? std::string_view() : whole.substr(start));
  }

  NSUInteger lengthInUtf16() { return host::utf16Length(text()); }
  bool equalsString(NSString* other) {
    return this == other || (other != nullptr && host::text(this) == host::text(other));
  }
  bool equals(NSObject* other) {
    return this == other || (host::isString(other) && equalsString(static_cast<NSString*>(other)));
  }
  NSUInteger hashValue() { return host::hashOf(this); }
  NSString* self() { return this; }
  NSString* retained() { return static_cast<NSString*>(objc_retain(this)); }
  // No text begins or ends with an empty one.
  bool hasPrefix(NSString* prefix) {
    return !host::text(prefix).empty() && text().starts_with(host::text(prefix));
  }
  bool hasSuffix(NSString* suffix) {
    return !host::text(suffix).empty() && text().ends_with(host::text(suffix));
  }
  bool containsInAnyCase(NSString* part) {
    const std::string wanted = host::lowerCase(host::text(part));
    return !wanted.empty() && host::lowerCase(text()).find(wanted) != wanted.npos;
  }
  /// A pair of units that the cut divides is in neither half.
  NSString* fromIndex(NSUInteger index) {
    requireIndex(index);
    return host::makeString(text().substr(host::utf8Offset(text(), index, host::Divided::after)));
  }
  NSString* toIndex(NSUInteger index) {
    requireIndex(index);
    return host::makeString(
        text().substr(0, host::utf8Offset(text(), index, host::Divided::before)));
  }
  void requireIndex(NSUInteger index) {
    if (index > lengthInUtf16()) {
      throw host::runtime::Exception("NSRangeException",
                                     "index " + std::to_string(index) + " beyond the end");
    }
  }
  /// Nil where the encoding cannot express the text, and for encodings that are not supported.
  NSData* dataIn(NSUInteger encoding) {
    const std::string_view bytes = text();
    const bool isAscii = std::ranges::none_of(bytes, [](char c) { return (c & 0x80) != 0; });
    if (encoding != NSUTF8StringEncoding && (encoding != NSASCIIStringEncoding || !isAscii))
      return nullptr;
    return NSData::dataWithBytes(bytes.data(), bytes.size());
  }
  NSString* appending(NSString* tail) {
    return host::makeString(std::string(text()).append(host::text(tail)));
  }

  NSString* lastComponent() {
    std::string_view path = text();
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    if (path == "/") return host::makeString(path);
    return host::makeString(path.substr(path.rfind('/') + 1));
  }
  NSString* withoutExtension() {
    std::string_view path = text();
    const std::size_t slash = path.rfind('/');
    const std::size_t first = slash == std::string_view::npos ? 0 : slash + 1;
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos || dot <= first) return this;
    return host::makeString(path.substr(0, dot));
  }

  /// Blanks, a sign and zeros aside, a text that begins with Y, T or a digit above zero means yes.
  bool readBool() {
    std::string_view rest = text();
    std::size_t at = rest.find_first_not_of(" \t\n\r\f\v");
    if (at == std::string_view::npos) return false;
    if (rest[at] == '+' || rest[at] == '-') ++at;
    at = rest.find_first_not_of('0', at);
    return at != std::string_view::npos && std::strchr("YyTt123456789", rest[at]) != nullptr &&
           rest[at] != '\0';
  }
  long long readLongLong() { return std::strtoll(trimmed().c_str(), nullptr, 10); }
  int readInt() {
    const long long value = readLongLong();
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
  }
  NSInteger readInteger() { return readLongLong(); }
  double readDouble() { return host::leadingDouble(trimmed()); }
  float readFloat() { return static_cast<float>(readDouble()); }
};

/// A string made at run time. Its text follows it, terminated by a zero: one allocation.
struct HeapString : AnyString {
  static HeapString* create(std::string_view text);
  /// The object from alloc has no room for the text, so another string replaces it.
  NSString* initWithUtf8(const char* utf8) {
    objc_release(this);
    return utf8 == nullptr ? nullptr : host::makeOwnedString(utf8).leak();
  }
  /// Nil for bytes above 127 in ASCII, for invalid UTF-8, and for encodings that are not supported.
  NSString* initWithData(NSData* data, NSUInteger encoding) {
    objc_release(this);
    if (data == nullptr) return nullptr;
    const std::string_view bytes(static_cast<const char*>(send(data, NSData::bytes)),
                                 send(data, NSData::length));
    constexpr NSUInteger kUtf8 = 4;
    if (encoding != kUtf8 && encoding != NSASCIIStringEncoding) return nullptr;
    if (encoding == NSASCIIStringEncoding &&
        std::any_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; }))
      return nullptr;
    return host::makeOwnedString(bytes).leak();
  }
  const char* utf8() { return characters(); }
  char* characters() { return reinterpret_cast<char*>(this + 1); }

  std::size_t byteCount;
  std::size_t hash_;  ///< zero until it is asked for
};

/// A string in a binary: never counted, never freed.
struct StoredString : AnyString {
  std::string_view text();
  const char* utf8() { return text().data(); }
  NSString* keep() { return this; }
  void let() {}

  int flags;
  const char* characters;
  long length;  ///< in bytes, or in the units of UTF-16 that the flags tell of
};
static_assert(sizeof(StoredString) == sizeof(objc::ConstantString));

}  // namespace

OBJC_CLASS_NAMED(
    NSString, NSObject, AnyString, NSObject, objc::ClassMethod<"alloc", &AnyString::alloc>,
    objc::ClassMethod<"allocWithZone:", &AnyString::allocWithZone>,
    objc::ClassMethod<"stringWithUTF8String:", &AnyString::withUtf8>,
    objc::ClassMethod<"stringWithFormat:", &AnyString::withFormat>,
    objc::ClassMethod<"string", &AnyString::empty>,
    objc::Method<"length", &AnyString::lengthInUtf16>,
    objc::Method<"isEqualToString:", &AnyString::equalsString>,
    objc::Method<"isEqual:", &AnyString::equals>, objc::Method<"hash", &AnyString::hashValue>,
    objc::Method<"description", &AnyString::self>, objc::Method<"copy", &AnyString::retained>,
    objc::Method<"hasPrefix:", &AnyString::hasPrefix>,
    objc::Method<"hasSuffix:", &AnyString::hasSuffix>,
    objc::Method<"localizedCaseInsensitiveContainsString:", &AnyString::containsInAnyCase>,
    objc::Method<"substringFromIndex:", &AnyString::fromIndex>,
    objc::Method<"substringToIndex:", &AnyString::toIndex>,
    objc::Method<"dataUsingEncoding:", &AnyString::dataIn>,
    objc::Method<"stringByAppendingString:", &AnyString::appending>,
    objc::Method<"lastPathComponent", &AnyString::lastComponent>,
    objc::Method<"stringByDeletingPathExtension", &AnyString::withoutExtension>,
    objc::Method<"boolValue", &AnyString::readBool>, objc::Method<"intValue", &AnyString::readInt>,
    objc::Method<"integerValue", &AnyString::readInteger>,
    objc::Method<"longLongValue", &AnyString::readLongLong>,
    objc::Method<"doubleValue", &AnyString::readDouble>,
    objc::Method<"floatValue", &AnyString::readFloat>)

OBJC_CLASS_NAMED(NSHeapString, NSString, HeapString, AnyString,
                 objc::Ivar<"byteCount", &HeapString::byteCount>,
                 objc::Ivar<"hash", &HeapString::hash_>,
                 objc::Method<"initWithUTF8String:", &HeapString::initWithUtf8>,
                 objc::Method<"initWithData:encoding:", &HeapString::initWithData>,
                 objc::Method<"UTF8String", &HeapString::utf8>)

OBJC_CLASS_NAMED(NSConstantString, NSString, StoredString, AnyString,
                 objc::Ivar<"flags", &StoredString::flags>,
                 objc::Ivar<"characters", &StoredString::characters>,
                 objc::Ivar<"length", &StoredString::length>,
                 objc::Method<"UTF8String", &StoredString::utf8>,
                 objc::Method<"retain", &StoredString::keep>,
                 objc::Method<"release", &StoredString::let>,
                 objc::Method<"autorelease", &StoredString::keep>)

// A constant string's class pointer is the address of this symbol: the class's own.
asm(R"(
        .globl __CFConstantStringClassReference
        .set __CFConstantStringClassReference, OBJC_CLASS_$_NSConstantString
)");

id AnyString::alloc(Class cls, SEL) {
  // Room for the zero that terminates the text of one that is never initialised.
  return class_createInstance(cls == &objc_class_NSString ? &objc_class_NSHeapString : cls, 1);
}

HeapString* HeapString::create(std::string_view text) {
  auto* string =
      static_cast<HeapString*>(class_createInstance(&objc_class_NSHeapString, text.size() + 1));
  string->byteCount = text.size();
  std::memcpy(string->characters(), text.data(), text.size());
  return string;
}

/// A compiler's text that is not ASCII is stored in UTF-16. It is converted once.
std::string_view StoredString::text() {
  constexpr int kIsUtf16 = 0x10;
  if ((flags & kIsUtf16) == 0) return {characters, static_cast<std::size_t>(length)};
  static auto* mutex = new std::mutex;
  static auto* converted = new std::unordered_map<const StoredString*, std::string>;
  const std::scoped_lock guard(*mutex);
  auto [slot, isNew] = converted->try_emplace(this);
  if (isNew) {
    std::string bytes("\xff\xfe");
    bytes.append(characters, static_cast<std::size_t>(length) * 2);
    slot->second = host::utf8FromUtf16(bytes).value_or("");
  }
  return slot->second;
}

namespace host {

std::string_view text(NSString* string) {
  if (string == nullptr) return {};
  if (string->isa == &objc_class_NSConstantString) {
    return static_cast<StoredString*>(string)->text();
  }
  auto* heap = static_cast<HeapString*>(string);
  return {heap->characters(), heap->byteCount};
}

Strong<NSString> makeOwnedString(std::string_view utf8) {
  if (!isUtf8(utf8)) return nullptr;
  return Strong<NSString>::adopt(HeapString::create(utf8));
}

NSString* makeString(std::string_view utf8) { return makeOwnedString(utf8).autorelease(); }

namespace {

/// Eight bytes at a time: a constant string's hash is computed at every use.
std::size_t hashText(std::string_view text) {
  constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15;
  std::uint64_t hash = text.size() * kOdd;
  for (; text.size() >= 8; text.remove_prefix(8)) {
    std::uint64_t word;
    std::memcpy(&word, text.data(), 8);
    hash = (hash ^ word) * kOdd;
    hash ^= hash >> 29;
  }
  std::uint64_t rest = 0;
  std::memcpy(&rest, text.data(), text.size());
  hash = (hash ^ rest) * kOdd;
  return hash ^ hash >> 32;
}

}  // namespace

std::size_t hashOf(NSString* string) {
  if (string->isa == &objc_class_NSConstantString) return hashText(text(string));
  auto* heap = static_cast<HeapString*>(string);
  std::size_t hash = __atomic_load_n(&heap->hash_, __ATOMIC_RELAXED);
  if (hash == 0) {
    hash = hashText(text(heap));
    __atomic_store_n(&heap->hash_, hash, __ATOMIC_RELAXED);
  }
  return hash;
}

bool isString(NSObject* object) {
  if (object == nullptr) return false;
  if (object->isa == &objc_class_NSHeapString || object->isa == &objc_class_NSConstantString)
    return true;
  for (Class cls = object->isa; cls != nullptr; cls = cls->superclass) {
    if (cls == &objc_class_NSString) return true;
  }
  return false;
}

}  // namespace host
