// Calls between the device's conventions and this system's, through a library made for this test.
#include <cmath>

#include "Foundation/log.h"
#include "emulation/probe.h"
#include "objc/autorelease_pool.h"
#include "objc/block.h"
#include "platform/CoreGraphics.h"
#include "support/hosted.h"

namespace {

struct ImageCall {
  std::size_t width = 0;
  const CGFloat* decode = nullptr;
  bool shouldInterpolate = false;
  int intent = -1;
} lastImage;

}  // namespace

// The library finds this one before the platform's.
extern "C" CGImageRef CGImageCreate(std::size_t width, std::size_t, std::size_t, std::size_t,
                                    std::size_t, CGColorSpaceRef, CGBitmapInfo, CGDataProviderRef,
                                    const CGFloat* decode, bool shouldInterpolate,
                                    CGColorRenderingIntent intent) {
  lastImage = {width, decode, shouldInterpolate, static_cast<int>(intent)};
  return nullptr;
}

namespace {

using Lines = std::vector<std::string>;

/// A register with a small value, and arbitrary bits above it.
constexpr std::intptr_t dirty(int value, int bits) {
  constexpr std::intptr_t kDirt = 0x55aa33cc;
  const std::intptr_t mask = (std::intptr_t{1} << bits) - 1;
  return (kDirt & ~mask) | (value & mask);
}

class Boundary : public test::Hosted {
 protected:
  void SetUp() override {
    start("com.example.app");
    host::loadLibrary(VARNIX_PROBE);
  }
  template <class Function>
  static Function* exported(const char* name) {
    auto* function = reinterpret_cast<Function*>(host::librarySymbol(VARNIX_PROBE, name));
    if (function == nullptr) throw std::runtime_error(name);
    return function;
  }
  /// A class whose methods may have implementations of any type.
  static Class newClass(const char* name, Class superclass = objc_getClass("NSObject")) {
    Class cls = objc_allocateClassPair(superclass, name, 0);
    objc_registerClassPair(cls);
    return cls;
  }
  template <class Function>
  static void add(Class cls, const char* name, const char* types, Function* function) {
    ASSERT_TRUE(
        class_addMethod(cls, sel_registerName(name), reinterpret_cast<IMP>(function), types));
  }
  static NSObject* instance(const char* className) { return test::make<NSObject>(className); }
  template <class R, class... A>
  static R call(NSObject* receiver, const char* name, A... arguments) {
    auto entry = reinterpret_cast<R (*)(NSObject*, SEL, A...)>(&objc_msgSend);
    return entry(receiver, sel_registerName(name), arguments...);
  }

 private:
  objc::AutoreleasePool pool_;
};

std::string textOf(NSObject* object) {
  return send(send(object, NSObject::description), NSString::UTF8String);
}

TEST_F(Boundary, VariadicFunctionsFindTheirArguments) {
  exported<void()>("probe_log")();
  EXPECT_EQ(log(), (Lines{"4 1 two three 4.25 5 6 7.5 8 9 ten eleven 12.125", "5 notice -1 2.5"}));
}

TEST_F(Boundary, FormatsFindTheirArguments) {
  EXPECT_EQ(textOf(exported<NSString*()>("probe_format")()), "1 1.5 x -2 2.5 3 4 5 6 7 8.5");
}

TEST_F(Boundary, VariadicMessagesFindTheirArguments) {
  auto* dictionary = exported<NSDictionary*()>("probe_dictionary")();
  ASSERT_EQ(send(dictionary, NSDictionary::count), 5u);
  for (const char* pair : {"a1", "b2", "c3", "d4", "e5"})
    EXPECT_EQ(textOf(send(dictionary, NSDictionary::objectForKey,
                          test::string(std::string(pair, 1).c_str()))),
              pair + 1);
  EXPECT_EQ(send(exported<NSDictionary*()>("probe_noDictionary")(), NSDictionary::count), 0u);
  auto* alert = exported<NSObject*()>("probe_alert")();
  ASSERT_EQ(send<NSInteger>(alert, "numberOfButtons"_sel), 4);
  const char* titles[] = {"cancel", "first", "second", "third"};
  for (NSInteger i = 0; i < 4; ++i)
    EXPECT_EQ(textOf(send<NSString*>(alert, "buttonTitleAtIndex:"_sel, i)), titles[i]);
  objc_release(alert);
}

// On 32-bit Arm, callers extend arguments and callees extend results, on both systems.
#if defined(__aarch64__)
TEST_F(Boundary, SmallResultsAreExtendedForTheLibrary) {
  Class cls = newClass("Small");
  // Registers as a callee on this system may leave them.
  add(cls, "flag", "B@:", +[](id, SEL) { return dirty(1, 8); });
  add(cls, "signedByte", "c@:", +[](id, SEL) { return dirty(-3, 8); });
  add(cls, "byte", "C@:", +[](id, SEL) { return dirty(200, 8); });
  add(cls, "signedShort", "s@:", +[](id, SEL) { return dirty(-300, 16); });
  add(cls, "unsignedShort", "S@:", +[](id, SEL) { return dirty(40000, 16); });
  auto* result = exported<long(NSObject*, int)>("probe_smallResult");
  const long expected[] = {1, -3, 200, -300, 40000};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(result(instance("Small"), i), expected[i]) << i;
}

TEST_F(Boundary, SmallArgumentsAreExtendedForTheLibrary) {
  EXPECT_EQ(call<long>(instance("Probe"), "small:::::", dirty(1, 8), dirty(-2, 8), dirty(3, 8),
                       dirty(-4, 16), dirty(2, 16)),
            1 - 20 + 3000 - 4000000 + 2000000000L);
}

TEST_F(Boundary, AddedMethodsAreTheLibrarysToo) {
  Class cls = newClass("Added");
  exported<void(Class)>("probe_addMethod")(cls);
  EXPECT_EQ(call<long>(instance("Added"), "added:", dirty(-5, 8)), -5);
  auto* responds = exported<long(Class, SEL)>("probe_responds");
  EXPECT_EQ(responds(cls, sel_registerName("added:")), 1);
  EXPECT_EQ(responds(cls, sel_registerName("juggle")), 0);
}

TEST_F(Boundary, HooksSeeWholeRegistersOnBothSides) {
  auto* negate =
      +[](id, SEL, std::intptr_t value) { return dirty(-static_cast<signed char>(value), 8); };
  Class parent = newClass("HookedParent");
  add(parent, "inherited:", "c@:c", negate);
  Class cls = newClass("Hooked", parent);
  add(cls, "negated:", "c@:c", negate);
  exported<void(Class)>("probe_hook")(cls);
  EXPECT_EQ(static_cast<signed char>(call<long>(instance("Hooked"), "negated:", dirty(-9, 8))), -8);
  EXPECT_EQ(static_cast<signed char>(call<long>(instance("Hooked"), "inherited:", dirty(9, 8))),
            11);
}

TEST_F(Boundary, BlocksAreCalledWithExtendedArguments) {
  Class cls = newClass("Caller");
  struct Head {
    const void* isa;
    int flags, reserved;
    void (*invoke)(Head*, std::intptr_t, std::intptr_t, id);
  };
  add(
      cls, "call:", "v@:@?", +[](id, SEL, Head* block) {
        block->invoke(block, dirty(1, 8), dirty(-4, 8), nullptr);
        auto* copy = static_cast<Head*>(_Block_copy(block));
        copy->invoke(copy, dirty(0, 8), dirty(5, 8), nullptr);
        _Block_release(copy);
      });
  EXPECT_EQ(exported<double(NSObject*)>("probe_block")(instance("Caller")),
            1000 - 4 + 0.5 + 5 + 0.5);
}

#endif

struct Packed : NSObject {
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

}  // namespace

OBJC_CLASS(Packed, NSObject, objc::Method<"packed::::::::::::", &Packed::packed>,
           objc::Method<"moved:by:", &Packed::moved>, objc::Method<"large:by:", &Packed::large>,
           objc::Method<"wide::::", &Packed::wide>, objc::Method<"mixed:::", &Packed::mixed>,
           objc::Method<"wideRect:", &Packed::wideRect>)

namespace {

constexpr double kPacked = 21 - 7e2 + 8e4 + 9e6 + 1e8 + 11e9 + 12e10;

/// Sent by this process, with the arguments that the library uses too.
double packed(NSObject* receiver) {
  return send<double>(receiver, "packed::::::::::::"_sel, 1L, 2L, 3L, 4L, 5L, 6L,
                      static_cast<signed char>(-7), short{8}, 9, true, 11L,
                      static_cast<unsigned char>(12));
}

TEST_F(Boundary, StackArgumentsArePackedOnTheDeviceAlone) {
  EXPECT_EQ(exported<double(NSObject*)>("probe_packed")(instance("Packed")), kPacked);
  EXPECT_EQ(packed(instance("Probe")), kPacked);
}

TEST_F(Boundary, ImplementationsAreReplacedAndReturned) {
  for (const char* way : {"probe_replaceMethod", "probe_setImplementation"}) {
    Class cls = newClass(way, objc_getClass("Packed"));
    // A method of its own, which can be set without the superclass's being changed.
    objc_method* inherited = class_getInstanceMethod(cls, sel_registerName("packed::::::::::::"));
    add(cls, "packed::::::::::::", method_getTypeEncoding(inherited),
        method_getImplementation(inherited));
    auto* made = instance(way);
    exported<void(Class)>(way)(cls);
    EXPECT_EQ(packed(made), kPacked + 1);
    EXPECT_EQ(exported<double(NSObject*)>("probe_implementation")(made), kPacked + 1);
    EXPECT_EQ(exported<double(NSObject*)>("probe_packed")(made), kPacked + 1);
    EXPECT_TRUE(exported<bool(Class)>("probe_knowsItsOwn")(cls));
    EXPECT_TRUE(exported<bool(Class)>("probe_restore")(cls));
    EXPECT_EQ(packed(made), kPacked);
    EXPECT_EQ(method_getImplementation(
                  class_getInstanceMethod(cls, sel_registerName("packed::::::::::::"))),
              method_getImplementation(inherited));
  }
}

TEST_F(Boundary, TheCompilersMessageToSuperNamesTheCurrentClass) {
  Class cls = newClass("PackedBelow", objc_getClass("Packed"));
  add(cls, "packed::::::::::::", "d@:llllllcsiBlC", +[](id, SEL) { return -1.0; });
  EXPECT_EQ(exported<double(NSObject*)>("probe_packedOfSuper")(instance("PackedBelow")), kPacked);
}

TEST_F(Boundary, TheStackIsEvenWhereThisSystemWantsIt) {
  Class cls = newClass("Deep");
  add(
      cls, "deep::::", "l@:llll", +[](id, SEL, long a, long b, long c, long d) {
        // Reads a 64-bit number, which must be at an aligned address.
        char text[32];
        std::snprintf(text, sizeof text, "%ld %ld %.1f %ld", a, b, static_cast<double>(c), d);
        return std::string(text) == "1 2 3.0 4" ? 1L : 0L;
      });
  EXPECT_EQ(exported<long(NSObject*)>("probe_depths")(instance("Deep")), 8);
}

TEST_F(Boundary, FunctionsWithStackArgumentsFindThem) {
  exported<void(void*, void*)>("probe_image")(nullptr, nullptr);
  EXPECT_EQ(lastImage.width, 4u);
  ASSERT_NE(lastImage.decode, nullptr);
  EXPECT_TRUE(lastImage.shouldInterpolate);
  EXPECT_EQ(lastImage.intent, 2);
}

// On 32-bit Arm, a 64-bit number begins at an even word on Linux, but at any word on the device.
constexpr double kWide = 1 + 25 + 300 + 4000;

TEST_F(Boundary, NumbersOf64BitsAreFoundOnBothSides) {
  EXPECT_EQ(exported<double(NSObject*)>("probe_wide")(instance("Packed")), kWide);
  EXPECT_EQ(exported<double(NSObject*)>("probe_wide")(nullptr), 0);
  EXPECT_EQ(send<double>(instance("Probe"), "wide::::"_sel, 1, 2.5, 3, 4LL), kWide);
  // From the library to the library.
  EXPECT_EQ(exported<double(NSObject*)>("probe_wide")(instance("Probe")), kWide);
  Class cls = newClass("Below", objc_getClass("Packed"));
  add(cls, "wide::::", "d@:idiq", +[](id, SEL, int, double, int, long long) { return -1.0; });
  EXPECT_EQ(exported<double(NSObject*)>("probe_wideOfSuper")(instance("Below")), kWide);
  EXPECT_EQ(exported<double(NSObject*)>("probe_wideRect")(instance("Packed")), 4.5);
  EXPECT_EQ(exported<double(NSObject*)>("probe_wideRect")(nullptr), 0);
  EXPECT_EQ(send<CGRect>(instance("Probe"), "wideRect:"_sel, 4.5).size.height, 4.5);
}

TEST_F(Boundary, StructuresWithNumbersOf64BitsAreLaidOutAnew) {
  EXPECT_EQ(exported<double(NSObject*)>("probe_mixed")(instance("Packed")), 1 + 20 + 350 + 4000);
  EXPECT_EQ(send<double>(instance("Probe"), "mixed:::"_sel, 1, ProbeMixed{2, 3.5}, 4.0F),
            1 + 20 + 350 + 4000);
}

TEST_F(Boundary, ReplacedAndAddedMethodsTakeNumbersOf64Bits) {
  Class cls = newClass("Replaced", objc_getClass("Packed"));
  exported<void(Class)>("probe_hookWide")(cls);
  EXPECT_EQ(send<double>(instance("Replaced"), "wide::::"_sel, 1, 2.5, 3, 4LL), 2 * kWide);
  EXPECT_EQ(exported<double(NSObject*)>("probe_wide")(instance("Replaced")), 2 * kWide);
  exported<void(Class)>("probe_addWide")(cls);
  EXPECT_EQ(call<double>(instance("Replaced"), "added::", 1, 2.5), 3.5);
}

TEST_F(Boundary, BlocksTakeNumbersOf64Bits) {
  Class cls = newClass("WideCaller");
  struct Head {
    const void* isa;
    int flags, reserved;
    void (*invoke)(Head*, double, int, long long);
  };
  add(
      cls, "callWide:", "v@:@?", +[](id, SEL, Head* block) {
        block->invoke(block, 1.5, 2, 3);
        auto* copy = static_cast<Head*>(_Block_copy(block));
        copy->invoke(copy, 2.5, 0, 1);
        _Block_release(copy);
      });
  EXPECT_EQ(exported<double(NSObject*)>("probe_wideBlock")(instance("WideCaller")),
            1.5 + 20 + 300 + 2.5 + 100);
}

TEST_F(Boundary, StructuresTravelWhole) {
  EXPECT_EQ(exported<double(NSObject*)>("probe_structures")(instance("Packed")),
            11 + 100 * 14 + 10000.0 * 23);
  const auto rect =
      send<CGRect>(instance("Probe"), "moved:by:"_sel, CGRect{{1, 2}, {3, 4}}, CGFloat{10});
  EXPECT_EQ(rect.origin.x, 11);
  EXPECT_EQ(rect.size.height, 14);
  EXPECT_EQ(send<ProbeLarge>(instance("Probe"), "large:by:"_sel, ProbeLarge{1, 2, 3}, 20L).b, 22);
}

TEST_F(Boundary, ALibraryThatDemandsANewerOneIsRefused) {
  try {
    host::loadLibrary(VARNIX_DEMANDING);
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()), VARNIX_DEMANDING
              ": Library not loaded: /usr/lib/libobjc.A.dylib, Referenced from: "
              "/Library/demanding.dylib, Reason: Incompatible library version: demanding.dylib "
              "requires version 1.0.1 or later, but libobjc.A.dylib provides version 1.0.0");
  }
  EXPECT_EQ(host::librarySymbol(VARNIX_DEMANDING, "probe_log"), nullptr);
}

TEST_F(Boundary, LibrariesAreKnownByTheirFiles) {
  EXPECT_EQ(host::librarySymbol(VARNIX_PROBE, "nothing"), nullptr);
  EXPECT_EQ(host::librarySymbol("/nothing.dylib", "probe_log"), nullptr);
  EXPECT_NE(objc_getClass("Probe"), nullptr);
  try {
    host::loadLibrary("/nothing.dylib");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("/nothing.dylib"), std::string::npos);
  }
}

}  // namespace
