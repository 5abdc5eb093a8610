// Numbers. Booleans and small integers are made once and never freed.
#include <array>
#include <climits>
#include <cmath>
#include <cstring>

#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/internal.h"

namespace {

enum class NumberKind : char { boolean, integer, unsignedInteger, real };

long long saturate(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 9223372036854775807.0) return LLONG_MAX;
  if (value <= -9223372036854775808.0) return LLONG_MIN;
  return static_cast<long long>(value);
}

struct Number : NSNumber {
  static Number* make(NumberKind kind, long long integer, double real);
  static Number* withBool(bool value) { return make(NumberKind::boolean, value ? 1 : 0, 0); }
  static Number* withInt(int value) { return make(NumberKind::integer, value, 0); }
  static Number* withLongLong(long long value) { return make(NumberKind::integer, value, 0); }
  static Number* withInteger(NSInteger value) { return make(NumberKind::integer, value, 0); }
  static Number* withUnsigned(unsigned long long value) {
    const bool large = value > LLONG_MAX;
    return make(large ? NumberKind::unsignedInteger : NumberKind::integer,
                static_cast<long long>(value), 0);
  }
  static Number* withDouble(double value) { return make(NumberKind::real, 0, value); }
  static Number* withChar(signed char value) { return make(NumberKind::integer, value, 0); }
  static Number* withUnsignedChar(unsigned char value) {
    return make(NumberKind::integer, value, 0);
  }
  static Number* withShort(short value) { return make(NumberKind::integer, value, 0); }
  static Number* withUnsignedShort(unsigned short value) {
    return make(NumberKind::integer, value, 0);
  }
  static Number* withUnsignedInt(unsigned value) { return make(NumberKind::integer, value, 0); }
  static Number* withUnsignedInteger(NSUInteger value) { return withUnsigned(value); }
  static Number* withFloat(float value) {
    return make(NumberKind::real, 0, static_cast<double>(value));
  }

  bool asBool() { return kind == NumberKind::real ? real != 0 : integer != 0; }
  long long asLongLong() { return kind == NumberKind::real ? saturate(real) : integer; }
  unsigned long long asUnsigned() { return static_cast<unsigned long long>(asLongLong()); }
  /// The lower 32 bits of an integer, as the platform converts.
  int asInt() { return static_cast<int>(static_cast<unsigned int>(asUnsigned() & 0xffffffffU)); }
  NSInteger asInteger() { return static_cast<NSInteger>(asLongLong()); }
  signed char asChar() { return static_cast<signed char>(asUnsigned() & 0xff); }
  unsigned char asUnsignedChar() { return static_cast<unsigned char>(asUnsigned() & 0xff); }
  short asShort() { return static_cast<short>(asUnsigned() & 0xffff); }
  unsigned short asUnsignedShort() { return static_cast<unsigned short>(asUnsigned() & 0xffff); }
  unsigned asUnsignedInt() { return static_cast<unsigned>(asUnsigned() & 0xffffffffU); }
  NSUInteger asUnsignedInteger() { return static_cast<NSUInteger>(asUnsigned()); }
  /// NSOrderedAscending, NSOrderedSame or NSOrderedDescending.
  NSInteger compare(NSNumber* other) {
    const double mine = asDouble();
    const double theirs = send(other, NSNumber::doubleValue);
    if (mine != theirs) return mine < theirs ? -1 : 1;
    const long long whole = asLongLong();
    const long long otherWhole = send(other, NSNumber::longLongValue);
    return whole == otherWhole ? 0 : whole < otherWhole ? -1 : 1;
  }
  bool equalsNumber(NSNumber* other) { return equals(other); }
  double asDouble() {
    if (kind == NumberKind::real) return real;
    if (kind == NumberKind::unsignedInteger) return static_cast<double>(asUnsigned());
    return static_cast<double>(integer);
  }
  float asFloat() { return static_cast<float>(asDouble()); }
  const char* objCType() {
    switch (kind) {
      case NumberKind::boolean:
        return "c";
      case NumberKind::integer:
        return "q";
      case NumberKind::unsignedInteger:
        return "Q";
      case NumberKind::real:
        return "d";
    }
    return "";
  }

  bool equals(NSObject* other) {
    auto* number = objc::as<NSNumber>(other);
    return number != nullptr && asDouble() == send(number, NSNumber::doubleValue) &&
           asLongLong() == send(number, NSNumber::longLongValue);
  }
  NSUInteger hashValue() { return std::hash<double>{}(asDouble()); }
  Number* copy() { return static_cast<Number*>(objc_retain(this)); }
  NSString* describe() {
    char words[40];
    if (kind == NumberKind::real) std::snprintf(words, sizeof words, "%.17g", real);
    else if (kind == NumberKind::unsignedInteger)
      std::snprintf(words, sizeof words, "%llu", asUnsigned());
    else std::snprintf(words, sizeof words, "%lld", integer);
    return host::makeString(words);
  }

  NumberKind kind;
  long long integer;
  double real;
};

}  // namespace

OBJC_CLASS_NAMED(
    NSNumber, NSValue, Number, NSObject, objc::Ivar<"kind", &Number::kind>,
    objc::Ivar<"integer", &Number::integer>, objc::Ivar<"real", &Number::real>,
    objc::ClassMethod<"numberWithBool:", &Number::withBool>,
    objc::ClassMethod<"numberWithInt:", &Number::withInt>,
    objc::ClassMethod<"numberWithInteger:", &Number::withInteger>,
    objc::ClassMethod<"numberWithLongLong:", &Number::withLongLong>,
    objc::ClassMethod<"numberWithUnsignedLongLong:", &Number::withUnsigned>,
    objc::ClassMethod<"numberWithDouble:", &Number::withDouble>,
    objc::ClassMethod<"numberWithFloat:", &Number::withFloat>,
    objc::ClassMethod<"numberWithChar:", &Number::withChar>,
    objc::ClassMethod<"numberWithUnsignedChar:", &Number::withUnsignedChar>,
    objc::ClassMethod<"numberWithShort:", &Number::withShort>,
    objc::ClassMethod<"numberWithUnsignedShort:", &Number::withUnsignedShort>,
    objc::ClassMethod<"numberWithUnsignedInt:", &Number::withUnsignedInt>,
    objc::ClassMethod<"numberWithLong:", &Number::withInteger>,
    objc::ClassMethod<"numberWithUnsignedLong:", &Number::withUnsignedInteger>,
    objc::ClassMethod<"numberWithUnsignedInteger:", &Number::withUnsignedInteger>,
    objc::Method<"charValue", &Number::asChar>,
    objc::Method<"unsignedCharValue", &Number::asUnsignedChar>,
    objc::Method<"shortValue", &Number::asShort>,
    objc::Method<"unsignedShortValue", &Number::asUnsignedShort>,
    objc::Method<"unsignedIntValue", &Number::asUnsignedInt>,
    objc::Method<"longValue", &Number::asInteger>,
    objc::Method<"unsignedLongValue", &Number::asUnsignedInteger>,
    objc::Method<"unsignedIntegerValue", &Number::asUnsignedInteger>,
    objc::Method<"stringValue", &Number::describe>, objc::Method<"compare:", &Number::compare>,
    objc::Method<"isEqualToNumber:", &Number::equalsNumber>,
    objc::Method<"boolValue", &Number::asBool>, objc::Method<"intValue", &Number::asInt>,
    objc::Method<"integerValue", &Number::asInteger>,
    objc::Method<"longLongValue", &Number::asLongLong>,
    objc::Method<"unsignedLongLongValue", &Number::asUnsigned>,
    objc::Method<"doubleValue", &Number::asDouble>, objc::Method<"floatValue", &Number::asFloat>,
    objc::Method<"objCType", &Number::objCType>, objc::Method<"isEqual:", &Number::equals>,
    objc::Method<"hash", &Number::hashValue>, objc::Method<"copy", &Number::copy>,
    objc::Method<"description", &Number::describe>)

namespace {

Number* create(NumberKind kind, long long integer, double real) {
  auto* number = static_cast<Number*>(class_createInstance(&objc_class_NSNumber, 0));
  number->kind = kind;
  number->integer = integer;
  number->real = real;
  return number;
}

constexpr long long kSmallest = -16;
constexpr long long kLargest = 255;

/// Two booleans, then the small integers.
auto& immortals() {
  static auto* numbers = [] {
    auto* made = new std::array<Number*, 2 + kLargest - kSmallest + 1>;
    for (std::size_t i = 0; i < made->size(); ++i) {
      const auto value = static_cast<long long>(i);
      (*made)[i] = i < 2 ? create(NumberKind::boolean, value, 0)
                         : create(NumberKind::integer, value - 2 + kSmallest, 0);
      host::runtime::header((*made)[i])->references = -1;
    }
    return made;
  }();
  return *numbers;
}

}  // namespace

Number* Number::make(NumberKind kind, long long integer, double real) {
  if (kind == NumberKind::boolean) return immortals()[static_cast<std::size_t>(integer)];
  if (kind == NumberKind::integer && integer >= kSmallest && integer <= kLargest) {
    return immortals()[static_cast<std::size_t>(2 + integer - kSmallest)];
  }
  return static_cast<Number*>(objc_autorelease(create(kind, integer, real)));
}
