// Classes as constant data: instance variables, properties, structors, categories, missing classes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/send.h"
#include "support/encodings.h"

namespace {

using test::nativeEncoding;

std::vector<std::string>& events() {
  static std::vector<std::string> list;
  return list;
}

/// Ends with padding, which a subclass's first members use.
struct PaddedFixture : NSObject {
  NSInteger wide;
  char last;
};
struct TailFixture : PaddedFixture {
  char next;
  int number;
  CGRect rect;
  bool flag;
};

/// A value whose creation and end can be observed.
struct CountedFixture : NSObject {
  int generation;
  CountedFixture* copy() {
    auto* made = objc::alloc<CountedFixture>();
    made->generation = generation + 1;
    return made;
  }
  void dealloc() {
    events().push_back("gone " + std::to_string(generation));
    sendSuper<void>(this, "dealloc"_sel);
  }
};

struct PropertyFixture : NSObject {
  Strong<CountedFixture> _kept;
  Strong<CountedFixture> _copied;
  CountedFixture* _seen;
  int _number;
  CGRect _area;
  Strong<NSString> _guarded;
  int _tripled;
  void setTripled(int value) { _tripled = 3 * value; }
};
using Kept = objc::Property<"kept", &PropertyFixture::_kept>;
using Copied = objc::Property<"copied", &PropertyFixture::_copied, objc::Storage::copy>;
using Seen = objc::Property<"seen", &PropertyFixture::_seen, objc::Storage::assign>;
using Number = objc::Property<"number", &PropertyFixture::_number, objc::Storage::assign>;
using Area = objc::Property<"area", &PropertyFixture::_area, objc::Storage::assign>;
using Guarded = objc::Property<"guarded", &PropertyFixture::_guarded, objc::Storage::strong,
                               objc::Atomicity::atomic>;
using Tripled = objc::Property<"tripled", &PropertyFixture::_tripled, objc::Storage::assign,
                               objc::Atomicity::nonatomic, objc::Setter::custom>;

/// Its variables can be read, and are called like their getters or otherwise.
struct ReadableFixture : NSObject {
  Strong<CountedFixture> kept;
  bool isOn;
};

/// The declarations that others use, and the class behind them.
struct DeclaredFixture : objc::View<DeclaredFixture, NSObject> {
  static constexpr Message<"scaled:by:", double(int, float)> scaled{};
  static constexpr Message<"negated:", bool(bool)> negated{};
  static constexpr ClassMessage<"seven", int()> seven{};
  static constexpr ClassMessage<"named", Class()> named{};
  static constexpr Message<"kept", CountedFixture*()> kept{};
  static constexpr Message<"setKept:", void(CountedFixture*)> setKept{};
  static constexpr Message<"area", CGRect()> area{};
  static constexpr Message<"setArea:", void(CGRect)> setArea{};
};
struct DeclaredFixtureInside : NSObject {
  Strong<CountedFixture> _kept;
  CGRect _area;
  double scaled(int value, float by) { return value * static_cast<double>(by); }
  static bool negated(DeclaredFixtureInside*, SEL, bool flag) { return !flag; }
  static int seven() { return 7; }
  static Class named(Class self, SEL) { return self; }
};

/// A member that does something at creation and at the end.
template <char Name>
struct Probe {
  Probe() { events().push_back(std::string("+") + Name); }
  ~Probe() { events().push_back(std::string("-") + Name); }
  int value = 5;
};
struct ProbedFixture : NSObject {
  Probe<'a'> first;
  Probe<'b'> second;
};
struct MoreProbedFixture : ProbedFixture {
  Probe<'c'> third;
};
struct PlainProbedFixture : MoreProbedFixture {
  int plain;
};

struct CategoryFixture : NSObject {
  int kept() { return 1; }
  int replaced() { return 2; }
};
struct CategoryFixtureExtras : CategoryFixture {
  int added() { return 10; }
  int replacement() { return 20; }
  static int ofClass() { return 30; }
};
struct StringExtras : NSString {
  NSUInteger twice() { return send(this, NSString::length) * 2; }
};

/// No binary defines this class.
struct AbsentFixture : NSObject {};
struct OrphanFixture : AbsentFixture {
  int seven() { return 7; }
};
struct OrphanChildFixture : OrphanFixture {};
struct PresentFixture : NSObject {
  int seven() { return 7; }
};
struct AbsentExtras : AbsentFixture {
  int seven() { return 7; }
};

}  // namespace

OBJC_CLASS(PaddedFixture, NSObject, objc::Ivar<"wide", &PaddedFixture::wide>,
           objc::Ivar<"last", &PaddedFixture::last>)
OBJC_CLASS(TailFixture, PaddedFixture, objc::Ivar<"next", &TailFixture::next>,
           objc::Ivar<"number", &TailFixture::number>, objc::Ivar<"rect", &TailFixture::rect>,
           objc::Ivar<"flag", &TailFixture::flag>)
OBJC_CLASS(CountedFixture, NSObject, objc::Ivar<"generation", &CountedFixture::generation>,
           objc::Method<"copy", &CountedFixture::copy>,
           objc::Method<"dealloc", &CountedFixture::dealloc>)
OBJC_CLASS(PropertyFixture, NSObject, Kept, Copied, Seen, Number, Area, Guarded, Tripled,
           objc::Method<"setTripled:", &PropertyFixture::setTripled>)
OBJC_CLASS(ReadableFixture, NSObject, objc::Readable<"kept", &ReadableFixture::kept>,
           objc::Readable<"isOn", &ReadableFixture::isOn, "_on">)
using Declared = DeclaredFixture;
using Inside = DeclaredFixtureInside;
OBJC_CLASS_NAMED(
    DeclaredFixture, NSObject, Inside, NSObject,
    objc::Implements<Declared::scaled, &Inside::scaled>,
    objc::Implements<Declared::negated, &Inside::negated>,
    objc::Implements<Declared::seven, &Inside::seven>,
    objc::Implements<Declared::named, &Inside::named>,
    objc::Accessors<Declared::kept, Declared::setKept, &Inside::_kept>,
    objc::Accessors<Declared::area, Declared::setArea, &Inside::_area, objc::Storage::assign>)
OBJC_CLASS(ProbedFixture, NSObject, objc::Ivar<"first", &ProbedFixture::first>,
           objc::Ivar<"second", &ProbedFixture::second>)
OBJC_CLASS(MoreProbedFixture, ProbedFixture, objc::Ivar<"third", &MoreProbedFixture::third>)
OBJC_CLASS(PlainProbedFixture, MoreProbedFixture, objc::Ivar<"plain", &PlainProbedFixture::plain>)
// Before its class: a category assumes that the class is in another binary and may be missing.
OBJC_CATEGORY(CategoryFixture, Extras, objc::Method<"added", &CategoryFixtureExtras::added>,
              objc::Method<"replaced", &CategoryFixtureExtras::replacement>,
              objc::ClassMethod<"ofClass", &CategoryFixtureExtras::ofClass>)
OBJC_CLASS(CategoryFixture, NSObject, objc::Method<"kept", &CategoryFixture::kept>,
           objc::Method<"replaced", &CategoryFixture::replaced>)
OBJC_CATEGORY(NSString, FixtureExtras, objc::Method<"twiceTheLength", &StringExtras::twice>)

// The child comes first, to show that the order in the binary does not matter.
OBJC_CLASS(OrphanChildFixture, OrphanFixture)
OBJC_CLASS_IF_SUPERCLASS(OrphanFixture, AbsentFixture, objc::Method<"seven", &OrphanFixture::seven>)
OBJC_CLASS_IF_SUPERCLASS(PresentFixture, NSObject, objc::Method<"seven", &PresentFixture::seven>)
OBJC_CATEGORY(AbsentFixture, Extras, objc::Method<"seven", &AbsentExtras::seven>)

namespace {

template <class T>
Strong<T> make() {
  return Strong<T>::adopt(objc::alloc<T>());
}
NSUInteger references(NSObject* object) { return send<NSUInteger>(object, "retainCount"_sel); }

template <class T>
void expectIvar(T* object, const char* name, const void* member, const std::string& types) {
  objc_ivar* ivar = class_getInstanceVariable(object->isa, name);
  ASSERT_NE(ivar, nullptr) << name;
  EXPECT_EQ(ivar_getOffset(ivar),
            static_cast<const char*>(member) - reinterpret_cast<const char*>(object))
      << name;
  EXPECT_STREQ(ivar_getName(ivar), name);
  EXPECT_EQ(ivar_getTypeEncoding(ivar), types) << name;
}

/// Starts without the events of earlier cases.
class Observed : public testing::Test {
 protected:
  Observed() { events().clear(); }
};
using Properties = Observed;
using Structors = Observed;
using References = Observed;

TEST(Ivars, LieWhereTheCompilerPutsThem) {
  auto object = make<PaddedFixture>();
  expectIvar(object.get(), "wide", &object->wide, nativeEncoding("q"));
  expectIvar(object.get(), "last", &object->last, "c");
  EXPECT_EQ(class_getInstanceSize(object->isa), sizeof(PaddedFixture));
}

TEST(Ivars, OfASubclassStartInTheTailPadding) {
  auto object = make<TailFixture>();
  EXPECT_EQ(&object->next, &object->last + 1) << "no padding: this case shows nothing";
  expectIvar(object.get(), "next", &object->next, "c");
  expectIvar(object.get(), "number", &object->number, "i");
  expectIvar(object.get(), "rect", &object->rect,
             nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}"));
  expectIvar(object.get(), "flag", &object->flag, nativeEncoding("B"));
  expectIvar(object.get(), "wide", &object->wide, nativeEncoding("q"));
  EXPECT_EQ(class_getInstanceSize(object->isa), sizeof(TailFixture));
}

TEST(Ivars, StartAsZeros) {
  auto object = make<TailFixture>();
  EXPECT_EQ(object->wide, 0);
  EXPECT_EQ(object->rect.size.height, 0);
  EXPECT_FALSE(object->flag);
}

TEST_F(Properties, OfPlainValues) {
  auto object = make<PropertyFixture>();
  send<void>(object, "setNumber:"_sel, 42);
  EXPECT_EQ(send<int>(object, "number"_sel), 42);
  send<void>(object, "setArea:"_sel, CGRect{{1, 2}, {3, 4}});
  EXPECT_EQ(send<CGRect>(object, "area"_sel).size.height, 4);
}

TEST_F(Properties, WithASetterOfTheirOwn) {
  auto object = make<PropertyFixture>();
  send<void>(object, "setTripled:"_sel, 4);
  EXPECT_EQ(send<int>(object, "tripled"_sel), 12);
}

TEST_F(Properties, KeptOnesOwnTheirValue) {
  auto value = make<CountedFixture>();
  auto object = make<PropertyFixture>();
  send<void>(object, "setKept:"_sel, value.get());
  EXPECT_EQ(send<CountedFixture*>(object, "kept"_sel), value.get());
  EXPECT_EQ(references(value), 2U);
  send<void>(object, "setKept:"_sel, value.get());
  EXPECT_EQ(references(value), 2U);
  send<void>(object, "setKept:"_sel, static_cast<CountedFixture*>(nullptr));
  EXPECT_EQ(references(value), 1U);
  send<void>(object, "setKept:"_sel, value.get());
  object = nullptr;
  EXPECT_EQ(references(value), 1U);
}

TEST_F(Properties, CopiedOnesOwnACopy) {
  auto value = make<CountedFixture>();
  auto object = make<PropertyFixture>();
  send<void>(object, "setCopied:"_sel, value.get());
  EXPECT_EQ(references(value), 1U);
  auto* copy = send<CountedFixture*>(object, "copied"_sel);
  EXPECT_NE(copy, value.get());
  EXPECT_EQ(copy->generation, 1);
  EXPECT_EQ(references(copy), 1U);
  object = nullptr;
  EXPECT_EQ(events(), std::vector<std::string>{"gone 1"});
}

TEST_F(Properties, AssignedOnesOwnNothing) {
  auto value = make<CountedFixture>();
  auto object = make<PropertyFixture>();
  send<void>(object, "setSeen:"_sel, value.get());
  EXPECT_EQ(send<CountedFixture*>(object, "seen"_sel), value.get());
  EXPECT_EQ(references(value), 1U);
  object = nullptr;
  EXPECT_EQ(references(value), 1U);
}

TEST_F(Properties, StandInTheMetadata) {
  const auto& list =
      objc::detail::PropertyList<objc::List<Kept, Copied, Seen, Number, Area, Guarded>>::data;
  std::vector<std::string> found;
  for (const auto& entry : list.entries)
    found.push_back(std::string(entry.name) + " " + entry.attributes);
  EXPECT_EQ(list.header.count, 6U);
  EXPECT_EQ(found, (std::vector<std::string>{
                       "kept T@\"CountedFixture\",&,N,V_kept",
                       "copied T@\"CountedFixture\",C,N,V_copied",
                       "seen T@\"CountedFixture\",N,V_seen",
                       "number Ti,N,V_number",
                       "area T" + nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}") + ",N,V_area",
                       "guarded T@\"NSString\",&,V_guarded",
                   }));
}

TEST_F(Properties, HaveTypedAccessorsAndAnIvar) {
  Class cls = objc::classOf<PropertyFixture>();
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(cls, "kept"_sel)), "@@:");
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(cls, "setKept:"_sel)), "v@:@");
  EXPECT_EQ(method_getTypeEncoding(class_getInstanceMethod(cls, "setArea:"_sel)),
            nativeEncoding("v@:{CGRect={CGPoint=dd}{CGSize=dd}}"));
  auto object = make<PropertyFixture>();
  expectIvar(object.get(), "_kept", &object->_kept, "@");
  expectIvar(object.get(), "_number", &object->_number, "i");
}

TEST_F(Properties, ReadableVariablesHaveNoMoreThanAGetter) {
  auto value = make<CountedFixture>();
  auto object = make<ReadableFixture>();
  EXPECT_EQ(send<CountedFixture*>(object, "kept"_sel), nullptr);
  object->kept = value;
  object->isOn = true;
  EXPECT_EQ(send<CountedFixture*>(object, "kept"_sel), value.get());
  EXPECT_EQ(references(value), 2U);
  EXPECT_TRUE(send<bool>(object, "isOn"_sel));
  Class cls = objc::classOf<ReadableFixture>();
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(cls, "kept"_sel)), "@@:");
  EXPECT_EQ(class_getInstanceMethod(cls, "setKept:"_sel), nullptr);
  EXPECT_EQ(class_getInstanceMethod(cls, "setIsOn:"_sel), nullptr);
  expectIvar(object.get(), "_kept", &object->kept, "@");
  expectIvar(object.get(), "_on", &object->isOn, objc::kEncoding<bool>.text);
}

TEST(DeclaredMethods, AreWhatTheMessagesReach) {
  auto object = objc::make<DeclaredFixture>();
  EXPECT_EQ(send(object, Declared::scaled, 3, 0.5F), 1.5);
  EXPECT_TRUE(send(object, Declared::negated, false));
  EXPECT_FALSE(send(object, Declared::negated, true));
  EXPECT_EQ(Declared::seven(), 7);
  EXPECT_EQ(Declared::named(), objc_getClass("DeclaredFixture"));
}

TEST(DeclaredMethods, TakeAnyByteButZeroForYes) {
  auto negated = reinterpret_cast<unsigned char (*)(id, SEL, unsigned char)>(&objc_msgSend);
  auto object = objc::make<DeclaredFixture>();
  EXPECT_EQ(negated(object, Declared::negated, 2), 0);
  EXPECT_EQ(negated(object, Declared::negated, 0x80), 0);
  EXPECT_EQ(negated(object, Declared::negated, 0), 1);
}

TEST(DeclaredMethods, HaveTheDeclaredTypes) {
  Class cls = objc::classOf<DeclaredFixture>();
  auto types = [](objc_method* method) { return std::string(method_getTypeEncoding(method)); };
  EXPECT_EQ(types(class_getInstanceMethod(cls, Declared::scaled)), "d@:if");
  EXPECT_EQ(types(class_getInstanceMethod(cls, Declared::negated)), nativeEncoding("B@:B"));
  EXPECT_EQ(types(class_getClassMethod(cls, Declared::seven)), "i@:");
  EXPECT_EQ(types(class_getClassMethod(cls, Declared::named)), "#@:");
  EXPECT_EQ(types(class_getInstanceMethod(cls, Declared::kept)), "@@:");
  EXPECT_EQ(types(class_getInstanceMethod(cls, Declared::setArea)),
            nativeEncoding("v@:{CGRect={CGPoint=dd}{CGSize=dd}}"));
}

TEST_F(Properties, WithDeclaredAccessors) {
  auto value = make<CountedFixture>();
  auto object = objc::make<DeclaredFixture>();
  send(object, Declared::setKept, value);
  EXPECT_EQ(send(object, Declared::kept), value.get());
  EXPECT_EQ(references(value), 2U);
  send(object, Declared::setArea, {{1, 2}, {3, 4}});
  EXPECT_EQ(send(object, Declared::area).size.height, 4);
  object = nullptr;
  EXPECT_EQ(references(value), 1U);
}

TEST_F(Structors, RunOnceEachFromTheRootDownAndBack) {
  auto object = make<MoreProbedFixture>();
  EXPECT_EQ(events(), (std::vector<std::string>{"+a", "+b", "+c"}));
  EXPECT_EQ(object->first.value + object->second.value + object->third.value, 15);
  events().clear();
  object = nullptr;
  EXPECT_EQ(events(), (std::vector<std::string>{"-c", "-b", "-a"}));
}

TEST_F(Structors, OfASuperclassRunForASubclassWithoutAny) {
  make<PlainProbedFixture>();
  EXPECT_EQ(events(), (std::vector<std::string>{"+a", "+b", "+c", "-c", "-b", "-a"}));
}

template <class T, class Base, class... Members>
std::uint32_t flagsOf() {
  return objc::Definition<"FlagsFixture", T, Base, Members...>::classRo.flags;
}

TEST_F(Structors, StandInTheFlags) {
  EXPECT_EQ((flagsOf<PaddedFixture, NSObject, objc::Ivar<"wide", &PaddedFixture::wide>,
                     objc::Ivar<"last", &PaddedFixture::last>>()),
            0U);
  EXPECT_EQ((flagsOf<ProbedFixture, NSObject, objc::Ivar<"first", &ProbedFixture::first>,
                     objc::Ivar<"second", &ProbedFixture::second>>()),
            4U);
  EXPECT_EQ(
      (flagsOf<PropertyFixture, NSObject, Kept, Copied, Seen, Number, Area, Guarded, Tripled>()),
      260U);
  Class cls = objc::classOf<PropertyFixture>();
  EXPECT_TRUE(class_respondsToSelector(cls, sel_registerName(".cxx_destruct")));
  EXPECT_FALSE(class_respondsToSelector(cls, sel_registerName(".cxx_construct")));
}

TEST(Categories, AddToAClassAndWinOverIt) {
  auto object = make<CategoryFixture>();
  EXPECT_EQ(send<int>(object, "kept"_sel), 1);
  EXPECT_EQ(send<int>(object, "added"_sel), 10);
  EXPECT_EQ(send<int>(object, "replaced"_sel), 20);
  EXPECT_EQ(send<int>(objc::classOf<CategoryFixture>(), "ofClass"_sel), 30);
}

TEST(Categories, ReachAClassOfAnotherBinaryAndItsSubclasses) {
  EXPECT_EQ(send<NSUInteger>("four"_ns, "twiceTheLength"_sel), 8U);
  EXPECT_EQ(send<NSUInteger>(NSString::stringWithUTF8String("abc"), "twiceTheLength"_sel), 6U);
}

TEST(MissingClasses, LeaveOutTheirSubclassesAndCategories) {
  EXPECT_EQ(objc_getClass("AbsentFixture"), nullptr);
  EXPECT_EQ(objc_getClass("OrphanFixture"), nullptr);
  EXPECT_EQ(objc_getClass("OrphanChildFixture"), nullptr);
  EXPECT_EQ(objc::alloc<OrphanFixture>(), nullptr);
  EXPECT_EQ(objc::as<OrphanFixture>(make<CountedFixture>().get()), nullptr);
}

TEST(MissingClasses, DoNotTouchTheOthers) {
  EXPECT_EQ(send<int>(make<PresentFixture>(), "seven"_sel), 7);
  EXPECT_NE(objc_getClass("CategoryFixture"), nullptr);
}

TEST(Classes, KnowTheirPlace) {
  Class cls = objc::classOf<TailFixture>();
  Class meta = object_getClass(cls);
  EXPECT_STREQ(class_getName(cls), "TailFixture");
  EXPECT_EQ(class_getSuperclass(cls), objc::classOf<PaddedFixture>());
  EXPECT_EQ(meta, objc_getMetaClass("TailFixture"));
  EXPECT_TRUE(class_isMetaClass(meta));
  EXPECT_FALSE(class_isMetaClass(cls));
  EXPECT_EQ(class_getSuperclass(meta), objc_getMetaClass("PaddedFixture"));
  EXPECT_EQ(object_getClass(meta), objc_getMetaClass("NSObject"));
  EXPECT_EQ(class_getSuperclass(objc_getMetaClass("NSObject")), objc_getClass("NSObject"));
}

TEST_F(References, AreAddedAndDroppedByStrong) {
  auto* object = objc::alloc<CountedFixture>();
  {
    auto adopted = Strong<CountedFixture>::adopt(object);
    EXPECT_EQ(references(object), 1U);
    auto retained = Strong<CountedFixture>::retain(object);
    EXPECT_EQ(references(object), 2U);
    Strong<CountedFixture> copy = retained;
    EXPECT_EQ(references(object), 3U);
    Strong<CountedFixture> moved = std::move(copy);
    EXPECT_EQ(references(object), 3U);
    EXPECT_EQ(copy.get(), nullptr);  // NOLINT(bugprone-use-after-move): it is empty
    moved = adopted;
    EXPECT_EQ(references(object), 3U);
    moved = nullptr;
    EXPECT_EQ(references(object), 2U);
    CountedFixture* leaked = retained.leak();
    EXPECT_EQ(references(object), 2U);
    objc_release(leaked);
    EXPECT_EQ(events(), std::vector<std::string>{});
  }
  EXPECT_EQ(events(), std::vector<std::string>{"gone 0"});
}

TEST_F(References, GoToThePoolByStrong) {
  auto value = make<CountedFixture>();
  {
    objc::AutoreleasePool pool;
    Strong<CountedFixture>::retain(value).autorelease();
    EXPECT_EQ(references(value), 2U);
  }
  EXPECT_EQ(references(value), 1U);
}

}  // namespace
