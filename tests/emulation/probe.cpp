// Compiled with the device's flags and loaded like the library: makes every kind of call that
// differs between the two conventions.
#include "probe.h"

#include "objc/block.h"
#include "objc/hook.h"
#include "platform/CoreFoundation.h"
#include "platform/CoreGraphics.h"
#include "platform/UIKit.h"

#define EXPORTED extern "C" [[gnu::visibility("default")]]

// --- unnamed arguments ---------------------------------------------------------------------------

EXPORTED void probe_log() {
  CFLog(4, "%d %s %@ %.2f %ld %d %.1f %d %d %s %@ %.3f"_ns, 1, "two", "three"_ns, 4.25, 5L, 6, 7.5,
        8, 9, "ten", "eleven"_ns, 12.125);
  NSLog("%@ %d %.1f"_ns, "notice"_ns, -1, 2.5);
}

EXPORTED NSString* probe_format() {
  return NSString::stringWithFormat("%d %.1f %@ %d %.1f %d %d %d %d %d %.1f"_ns, 1, 1.5, "x"_ns, -2,
                                    2.5, 3, 4, 5, 6, 7, 8.5);
}

EXPORTED NSDictionary* probe_dictionary() {
  return NSDictionary::dictionaryWithObjectsAndKeys(
      "1"_ns, "a"_ns, "2"_ns, "b"_ns, "3"_ns, "c"_ns, "4"_ns, "d"_ns, "5"_ns, "e"_ns,
      static_cast<NSObject*>(nullptr), "6"_ns, "f"_ns);
}

EXPORTED NSDictionary* probe_noDictionary() {
  return NSDictionary::dictionaryWithObjectsAndKeys(static_cast<NSObject*>(nullptr), "6"_ns,
                                                    "f"_ns);
}

EXPORTED UIAlertView* probe_alert() {
  auto* made = objc::alloc<UIAlertView>();
  return send(made, UIAlertView::initWithTitle, "title"_ns, "message"_ns, nullptr, "cancel"_ns,
              "first"_ns, "second"_ns, "third"_ns, static_cast<NSString*>(nullptr));
}

// --- small integers ------------------------------------------------------------------------------

namespace {

/// The methods of the test's own classes.
struct Small : objc::View<Small, NSObject> {
  static constexpr Message<"flag", bool()> flag{};
  static constexpr Message<"signedByte", signed char()> signedByte{};
  static constexpr Message<"byte", unsigned char()> byte{};
  static constexpr Message<"signedShort", short()> signedShort{};
  static constexpr Message<"unsignedShort", unsigned short()> unsignedShort{};
};

}  // namespace

EXPORTED long probe_smallResult(Small* receiver, int index) {
  switch (index) {
    case 0:
      return send(receiver, Small::flag);
    case 1:
      return send(receiver, Small::signedByte);
    case 2:
      return send(receiver, Small::byte);
    case 3:
      return send(receiver, Small::signedShort);
    default:
      return send(receiver, Small::unsignedShort);
  }
}

namespace {

struct Probe : NSObject {
  long small(bool a, signed char b, unsigned char c, short d, unsigned short e) {
    return a + 10L * b + 1000L * c + 1000000L * d + 1000000000L * e;
  }
  double packed(long a, long b, long c, long d, long e, long f, signed char g, short h, int i,
                bool j, long k, unsigned char l) {
    return static_cast<double>(a + b + c + d + e + f) + g * 1e2 + h * 1e4 + i * 1e6 + j * 1e8 +
           static_cast<double>(k) * 1e9 + l * 1e10;
  }
  CGRect moved(CGRect rect, CGFloat by) {
    return {{rect.origin.x + by, rect.origin.y}, {rect.size.width, rect.size.height + by}};
  }
  ProbeLarge large(ProbeLarge given, long by) { return {given.a + by, given.b + by, given.c + by}; }
  double wide(int a, double b, int c, long long d) {
    return a + 10 * b + 100 * c + 1000 * static_cast<double>(d);
  }
  double mixed(int a, ProbeMixed b, float c) { return a + 10 * b.a + 100 * b.b + 1000 * c; }
  CGRect wideRect(double by) { return {{1, 2}, {3, static_cast<CGFloat>(by)}}; }
};

/// The messages that the library and the test send to each other's objects.
struct Said : objc::View<Said, NSObject> {
  static constexpr Message<"negated:", signed char(signed char)> negated{};
  static constexpr Message<"inherited:", signed char(signed char)> inherited{};
  static constexpr Message<"call:", void(objc::Block<void(bool, signed char, NSObject*)>)> call{};
  static constexpr Message<"packed::::::::::::",
                           double(long, long, long, long, long, long, signed char, short, int, bool,
                                  long, unsigned char)>
      packed{};
  static constexpr Message<"deep::::", long(long, long, long, long)> deep{};
  static constexpr Message<"wide::::", double(int, double, int, long long)> wide{};
  static constexpr Message<"mixed:::", double(int, ProbeMixed, float)> mixed{};
  static constexpr Message<"wideRect:", CGRect(double)> wideRect{};
  static constexpr Message<"callWide:", void(objc::Block<void(double, int, long long)>)> callWide{};
  static constexpr Message<"moved:by:", CGRect(CGRect, CGFloat)> moved{};
  static constexpr Message<"large:by:", ProbeLarge(ProbeLarge, long)> large{};
};

objc::Hook<Said::negated> negated;
objc::Hook<Said::inherited> inherited;
objc::Hook<Said::wide> wide;

signed char negatedAndOne(Said* self, SEL command, signed char value) {
  const long original = negated.original(self, command, value);
  // A long shows whatever is above the byte.
  return static_cast<signed char>(original == -value ? value + 1 : 0);
}
signed char inheritedAndTwo(Said* self, SEL command, signed char value) {
  const long original = inherited.original(self, command, value);
  return static_cast<signed char>(original == -value ? value + 2 : 0);
}
double wideTwice(Said* self, SEL command, int a, double b, int c, long long d) {
  return 2 * wide.original(self, command, a, b, c, d);
}

}  // namespace

OBJC_EXPORTED_CLASS(Probe, NSObject, objc::Method<"small:::::", &Probe::small>,
                    objc::Method<"packed::::::::::::", &Probe::packed>,
                    objc::Method<"moved:by:", &Probe::moved>,
                    objc::Method<"large:by:", &Probe::large>,
                    objc::Method<"wide::::", &Probe::wide>, objc::Method<"mixed:::", &Probe::mixed>,
                    objc::Method<"wideRect:", &Probe::wideRect>)

EXPORTED void probe_hook(Class cls) {
  negated.install<&negatedAndOne>(cls, Said::negated);
  inherited.install<&inheritedAndTwo>(cls, Said::inherited);
}

EXPORTED void probe_addMethod(Class cls) {
  auto added = +[](NSObject*, SEL, signed char value) -> long { return value; };
  class_addMethod(cls, sel_registerName("added:"), reinterpret_cast<IMP>(added), "q@:c");
}

EXPORTED double probe_block(Said* receiver) {
  double sum = 0;
  auto block = objc::makeBlock<void(bool, signed char, NSObject*)>(
      [&sum](bool flag, signed char byte, NSObject* object) {
        sum += (flag ? 1000.0 : 0.0) + static_cast<double>(long{byte}) +
               (object == nullptr ? 0.5 : 0.25);
      });
  send(receiver, Said::call, block);
  return sum;
}

EXPORTED long probe_responds(Class cls, SEL selector) {
  return class_respondsToSelector(cls, selector);
}

// --- stack arguments -----------------------------------------------------------------------------

EXPORTED double probe_packed(Said* receiver) {
  return send(receiver, Said::packed, 1, 2, 3, 4, 5, 6, -7, 8, 9, true, 11, 12);
}

EXPORTED void probe_image(CGColorSpaceRef space, CGDataProviderRef provider) {
  const CGFloat decode[8] = {0, 1, 0, 1, 0, 1, 0, 1};
  CGImageRelease(CGImageCreate(4, 5, 8, 32, 16, space, 3, provider, decode, true,
                               static_cast<CGColorRenderingIntent>(2)));
}

/// With four different stack depths.
EXPORTED long probe_depths(Said* receiver) {
  long sum = 0;
  for (int words = 0; words < 4; ++words) {
    auto* room = static_cast<volatile char*>(__builtin_alloca(4 * words + 4));
    room[0] = 1;
    sum += send(receiver, Said::deep, 1, 2, 3, 4) + room[0];
  }
  return sum;
}

// --- numbers of 64 bits --------------------------------------------------------------------------

EXPORTED double probe_wide(Said* receiver) { return send(receiver, Said::wide, 1, 2.5, 3, 4); }

EXPORTED double probe_mixed(Said* receiver) { return send(receiver, Said::mixed, 1, {2, 3.5}, 4); }

EXPORTED double probe_wideOfSuper(Said* receiver) {
  objc_super target{receiver, class_getSuperclass(object_getClass(receiver))};
  auto entry = reinterpret_cast<double (*)(objc_super*, SEL, int, double, int, long long)>(
      &objc_msgSendSuper);
  return entry(&target, Said::wide, 1, 2.5, 3, 4);
}

EXPORTED double probe_wideRect(Said* receiver) {
  return send(receiver, Said::wideRect, 4.5).size.height;
}

EXPORTED void probe_hookWide(Class cls) { wide.install<&wideTwice>(cls, Said::wide); }

EXPORTED void probe_addWide(Class cls) {
  auto added = +[](NSObject*, SEL, int a, double b) { return a + b; };
  class_addMethod(cls, sel_registerName("added::"), reinterpret_cast<IMP>(added), "d@:id");
}

EXPORTED double probe_wideBlock(Said* receiver) {
  double sum = 0;
  auto block = objc::makeBlock<void(double, int, long long)>(
      [&sum](double a, int b, long long c) { sum += a + 10 * b + 100 * static_cast<double>(c); });
  send(receiver, Said::callWide, block);
  return sum;
}

// --- structures ----------------------------------------------------------------------------------

EXPORTED double probe_structures(Said* receiver) {
  const CGRect rect = send(receiver, Said::moved, {{1, 2}, {3, 4}}, 10);
  const ProbeLarge large = send(receiver, Said::large, {1, 2, 3}, 20);
  const CGRect none = send(nullptr, Said::moved, rect, 1);
  return rect.origin.x + 100 * rect.size.height + 10000.0 * static_cast<double>(large.c) +
         none.origin.x + none.size.height;
}

// --- implementations -----------------------------------------------------------------------------

namespace {

using PackedFunction = double (*)(NSObject*, SEL, long, long, long, long, long, long, signed char,
                                  short, int, bool, long, unsigned char);
PackedFunction earlier;

double packedAndOne(NSObject* self, SEL command, long a, long b, long c, long d, long e, long f,
                    signed char g, short h, int i, bool j, long k, unsigned char l) {
  return 1 + earlier(self, command, a, b, c, d, e, f, g, h, i, j, k, l);
}

IMP plain(PackedFunction function) { return reinterpret_cast<IMP>(function); }
PackedFunction typed(IMP implementation) {
  return reinterpret_cast<PackedFunction>(implementation);
}

}  // namespace

EXPORTED void probe_replaceMethod(Class cls) {
  objc_method* method = class_getInstanceMethod(cls, Said::packed);
  earlier = typed(
      class_replaceMethod(cls, Said::packed, plain(&packedAndOne), method_getTypeEncoding(method)));
}

EXPORTED void probe_setImplementation(Class cls) {
  objc_method* method = class_getInstanceMethod(cls, Said::packed);
  earlier = typed(method_setImplementation(method, plain(&packedAndOne)));
}

/// Puts the earlier implementation back.
EXPORTED bool probe_restore(Class cls) {
  objc_method* method = class_getInstanceMethod(cls, Said::packed);
  return method_setImplementation(method, plain(earlier)) == plain(&packedAndOne);
}

EXPORTED double probe_implementation(NSObject* receiver) {
  PackedFunction function =
      typed(class_getMethodImplementation(object_getClass(receiver), Said::packed));
  return function(receiver, Said::packed, 1, 2, 3, 4, 5, 6, -7, 8, 9, true, 11, 12);
}

EXPORTED bool probe_knowsItsOwn(Class cls) {
  objc_method* method = class_getInstanceMethod(cls, Said::packed);
  return method_getImplementation(method) == plain(&packedAndOne) &&
         class_getMethodImplementation(cls, Said::packed) == plain(&packedAndOne);
}

struct objc_super2 {
  const void* receiver;
  Class current;
};
extern "C" void objc_msgSendSuper2();

EXPORTED double probe_packedOfSuper(NSObject* receiver) {
  objc_super2 target{receiver, object_getClass(receiver)};
  auto entry = reinterpret_cast<double (*)(objc_super2*, SEL, long, long, long, long, long, long,
                                           signed char, short, int, bool, long, unsigned char)>(
      &objc_msgSendSuper2);
  return entry(&target, Said::packed, 1, 2, 3, 4, 5, 6, -7, 8, 9, true, 11, 12);
}
