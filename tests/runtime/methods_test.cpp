// Adding and replacing methods, selectors, classes made at run time, hidden classes. Each case runs
// in a process of its own, since its changes stay.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "objc/define.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

struct MethodParent : NSObject {
  int one() { return 1; }
  int two() { return 2; }
};
struct MethodChild : MethodParent {
  int two() { return 20; }
};
struct MethodSibling : MethodParent {};
struct MethodGrandchild : MethodChild {};
struct MethodPatched : NSObject {
  int doubled(int number) { return number * 2; }
};
double halved(MethodPatched*, SEL, double number) { return number / 2; }

}  // namespace

OBJC_CLASS(MethodParent, NSObject, objc::Method<"one", &MethodParent::one>,
           objc::Method<"two", &MethodParent::two>)
OBJC_CLASS(MethodChild, MethodParent, objc::Method<"two", &MethodChild::two>)
OBJC_CLASS(MethodSibling, MethodParent)
OBJC_CLASS(MethodGrandchild, MethodChild)
OBJC_CLASS(MethodPatched, NSObject, objc::Method<"number:", &MethodPatched::doubled>)
OBJC_CATEGORY_OF_OWN(MethodPatched, Halved, objc::Method<"number:", &halved>)

namespace {

template <int N>
int answer(id, SEL) {
  return N;
}
template <int N>
IMP implementation() {
  return reinterpret_cast<IMP>(&answer<N>);
}
int call(IMP imp, id object, SEL selector) {
  return reinterpret_cast<int (*)(id, SEL)>(imp)(object, selector);
}

/// Every case first sends everything once, so that the caches hold the old answers.
class Methods : public testing::Test {
 protected:
  Methods() {
    for (id object : {id{parent}, id{child}, id{sibling}, id{grandchild}}) {
      send<int>(object, "one"_sel);
      send<int>(object, "two"_sel);
    }
  }
  void expectOnes(int ofParent, int ofChild, int ofSibling, int ofGrandchild) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(send<int>(parent, "one"_sel), ofParent);
      EXPECT_EQ(send<int>(child, "one"_sel), ofChild);
      EXPECT_EQ(send<int>(sibling, "one"_sel), ofSibling);
      EXPECT_EQ(send<int>(grandchild, "one"_sel), ofGrandchild);
    }
  }

  template <class T>
  static Strong<T> make() {
    return Strong<T>::adopt(objc::alloc<T>());
  }
  Strong<MethodParent> parent = make<MethodParent>();
  Strong<MethodChild> child = make<MethodChild>();
  Strong<MethodSibling> sibling = make<MethodSibling>();
  Strong<MethodGrandchild> grandchild = make<MethodGrandchild>();
  Class parentClass = objc::classOf<MethodParent>();
  Class childClass = objc::classOf<MethodChild>();
};

TEST_F(Methods, AddingANewOne) {
  EXPECT_FALSE(class_respondsToSelector(childClass, "fresh"_sel));
  EXPECT_TRUE(class_addMethod(childClass, "fresh"_sel, implementation<5>(), "i@:"));
  EXPECT_EQ(send<int>(child, "fresh"_sel), 5);
  EXPECT_EQ(send<int>(grandchild, "fresh"_sel), 5);
  EXPECT_FALSE(class_respondsToSelector(parentClass, "fresh"_sel));
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(childClass, "fresh"_sel)), "i@:");
}

TEST_F(Methods, AddingOneThatTheClassHasFails) {
  EXPECT_FALSE(class_addMethod(childClass, "two"_sel, implementation<5>(), "i@:"));
  EXPECT_EQ(send<int>(child, "two"_sel), 20);
}

TEST_F(Methods, AddingOneThatIsInheritedOverridesIt) {
  EXPECT_TRUE(class_addMethod(childClass, "one"_sel, implementation<5>(), "i@:"));
  expectOnes(1, 5, 1, 5);
}

TEST_F(Methods, AddingKeepsTheTypesBeyondTheCallersText) {
  std::string types = "i@:";
  class_addMethod(childClass, "fresh"_sel, implementation<5>(), types.c_str());
  types = "xxx";
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(childClass, "fresh"_sel)), "i@:");
}

TEST_F(Methods, AddingToNothingFails) {
  EXPECT_FALSE(class_addMethod(nullptr, "one"_sel, implementation<5>(), "i@:"));
  EXPECT_FALSE(class_addMethod(childClass, nullptr, implementation<5>(), "i@:"));
  EXPECT_FALSE(class_addMethod(childClass, "fresh"_sel, nullptr, "i@:"));
}

TEST_F(Methods, AddingAClassMethod) {
  EXPECT_TRUE(class_addMethod(childClass->isa, "fresh"_sel, implementation<6>(), "i@:"));
  EXPECT_EQ(send<int>(childClass, "fresh"_sel), 6);
  EXPECT_EQ(send<int>(objc::classOf<MethodGrandchild>(), "fresh"_sel), 6);
  EXPECT_NE(class_getClassMethod(childClass, "fresh"_sel), nullptr);
  EXPECT_EQ(class_getInstanceMethod(childClass, "fresh"_sel), nullptr);
}

TEST_F(Methods, AMissIsNotRemembered) {
  EXPECT_THROW(send<int>(child, "late"_sel), host::runtime::Exception);
  class_addMethod(childClass, "late"_sel, implementation<5>(), "i@:");
  EXPECT_EQ(send<int>(child, "late"_sel), 5);
}

TEST_F(Methods, ReplacingAnOwnOneAnswersTheOldOne) {
  IMP old = class_replaceMethod(childClass, "two"_sel, implementation<5>(), "i@:");
  ASSERT_NE(old, nullptr);
  EXPECT_EQ(reinterpret_cast<int (*)(id, SEL)>(old)(child, "two"_sel), 20);
  EXPECT_EQ(send<int>(child, "two"_sel), 5);
  EXPECT_EQ(send<int>(grandchild, "two"_sel), 5);
  EXPECT_EQ(send<int>(parent, "two"_sel), 2);
}

TEST_F(Methods, ReplacingAnInheritedOneLeavesTheSuperclassAlone) {
  objc_method* ofParent = class_getInstanceMethod(parentClass, "one"_sel);
  IMP before = method_getImplementation(ofParent);
  EXPECT_EQ(class_replaceMethod(childClass, "one"_sel, implementation<5>(), "i@:"), nullptr);
  expectOnes(1, 5, 1, 5);
  EXPECT_EQ(method_getImplementation(ofParent), before);
  EXPECT_NE(class_getInstanceMethod(childClass, "one"_sel), ofParent);
}

TEST_F(Methods, ReplacingOneThatIsNowhereAddsIt) {
  EXPECT_EQ(class_replaceMethod(childClass, "fresh"_sel, implementation<5>(), "i@:"), nullptr);
  EXPECT_EQ(send<int>(child, "fresh"_sel), 5);
}

TEST_F(Methods, ReplacingNothingAnswersNothing) {
  EXPECT_EQ(class_replaceMethod(nullptr, "one"_sel, implementation<5>(), "i@:"), nullptr);
  EXPECT_EQ(class_replaceMethod(childClass, "two"_sel, nullptr, "i@:"), nullptr);
  EXPECT_EQ(send<int>(child, "two"_sel), 20);
}

TEST_F(Methods, SettingAnImplementationAnswersTheOldOne) {
  objc_method* method = class_getInstanceMethod(parentClass, "one"_sel);
  IMP before = method_getImplementation(method);
  EXPECT_EQ(method_setImplementation(method, implementation<5>()), before);
  expectOnes(5, 5, 5, 5);
  EXPECT_EQ(method_setImplementation(method, implementation<6>()), implementation<5>());
  expectOnes(6, 6, 6, 6);
}

TEST_F(Methods, AnInheritedMethodIsTheSuperclasss) {
  objc_method* inherited = class_getInstanceMethod(childClass, "one"_sel);
  EXPECT_EQ(inherited, class_getInstanceMethod(parentClass, "one"_sel));
  method_setImplementation(inherited, implementation<7>());
  expectOnes(7, 7, 7, 7);
}

TEST_F(Methods, SettingNothing) {
  objc_method* method = class_getInstanceMethod(parentClass, "one"_sel);
  EXPECT_EQ(method_setImplementation(nullptr, implementation<5>()), nullptr);
  EXPECT_EQ(method_setImplementation(method, nullptr), nullptr);
  expectOnes(1, 1, 1, 1);
}

TEST_F(Methods, AnImplementationIsFoundByName) {
  EXPECT_EQ(call(class_getMethodImplementation(childClass, "two"_sel), child, "two"_sel), 20);
  EXPECT_EQ(class_getMethodImplementation(childClass, "one"_sel),
            class_getMethodImplementation(parentClass, "one"_sel));
  IMP missing = class_getMethodImplementation(childClass, "juggle"_sel);
  ASSERT_NE(missing, nullptr);
  EXPECT_THROW(reinterpret_cast<void (*)(id, SEL)>(missing)(child, "juggle"_sel),
               host::runtime::Exception);
}

TEST(Categories, BringTheTypesOfWhatTheyReplace) {
  Class cls = objc::classOf<MethodPatched>();
  auto object = Strong<MethodPatched>::adopt(objc::alloc<MethodPatched>());
  EXPECT_EQ(send<double>(object, "number:"_sel, 3.0), 1.5);
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(cls, "number:"_sel)), "d@:d");
}

TEST(Classes, AnswerTheirSuperclass) {
  Class child = objc::classOf<MethodChild>();
  EXPECT_EQ(send<Class>(child, "superclass"_sel), objc::classOf<MethodParent>());
  EXPECT_EQ(send<Class>(objc_getClass("NSObject"), "superclass"_sel), nullptr);
  auto object = Strong<MethodChild>::adopt(objc::alloc<MethodChild>());
  EXPECT_EQ(send<Class>(object, "superclass"_sel), objc::classOf<MethodParent>());
}

TEST(Selectors, AreUniqueByPointer) {
  const std::string name = "a:selector:";
  const std::string same = name;
  EXPECT_NE(name.c_str(), same.c_str());
  EXPECT_EQ(sel_registerName(name.c_str()), sel_registerName(same.c_str()));
  EXPECT_EQ(sel_registerName("a:selector:"), "a:selector:"_sel.get());
  EXPECT_NE(sel_registerName("a:selector"), sel_registerName("a:selector:"));
  EXPECT_STREQ(sel_getName(sel_registerName(name.c_str())), "a:selector:");
}

TEST(Selectors, OutliveTheirText) {
  std::string text = "shortLived:";
  SEL selector = sel_registerName(text.c_str());
  text.assign("xxxxxxxxxxx");
  EXPECT_STREQ(sel_getName(selector), "shortLived:");
  EXPECT_EQ(sel_registerName("shortLived:"), selector);
}

TEST(ClassPairs, WithoutASuperclassAreRoots) {
  Class root = objc_allocateClassPair(nullptr, "LoneRoot", 0);
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(class_getSuperclass(root), nullptr);
  EXPECT_EQ(class_getSuperclass(object_getClass(root)), root);
  EXPECT_EQ(object_getClass(object_getClass(root)), object_getClass(root));
  objc_registerClassPair(root);
  EXPECT_EQ(objc_getClass("LoneRoot"), root);
  EXPECT_FALSE(class_respondsToSelector(root, "init"_sel));
  EXPECT_FALSE(class_respondsToSelector(object_getClass(root), "alloc"_sel));
}

TEST(ClassPairs, WithoutASuperclassHaveRoomForTheirClass) {
  Class root = objc_allocateClassPair(nullptr, "RoomyRoot", 0);
  EXPECT_EQ(class_getInstanceSize(root), sizeof(Class));
  EXPECT_TRUE(class_addIvar(root, "_number", sizeof(void*), sizeof(void*) == 8 ? 3 : 2, "^v"));
  objc_registerClassPair(root);
  EXPECT_EQ(ivar_getOffset(class_getInstanceVariable(root, "_number")), sizeof(Class));
  EXPECT_EQ(class_getInstanceSize(root), 2 * sizeof(Class));
  id object = class_createInstance(root, 0);
  EXPECT_EQ(object_getClass(object), root);
  object_dispose(object);
}

/// The name is taken when the class is registered, not when it is allocated.
TEST(ClassPairs, OfATakenNameAreFinishedAndUsed) {
  Class first = objc_allocateClassPair(objc_getClass("NSObject"), "BegunTwice", 0);
  Class second = objc_allocateClassPair(objc_getClass("NSObject"), "BegunTwice", 0);
  ASSERT_NE(second, nullptr);
  objc_registerClassPair(first);
  EXPECT_TRUE(class_addIvar(second, "_number", 4, 2, "i"));
  EXPECT_TRUE(class_addMethod(second, "two"_sel, implementation<2>(), "i@:"));
  objc_registerClassPair(second);
  EXPECT_FALSE(class_addIvar(second, "_late", 4, 2, "i")) << "instances may exist";
  EXPECT_EQ(objc_getClass("BegunTwice"), first);
  auto object = Strong<NSObject>::adopt(send<id>(second, "alloc"_sel));
  EXPECT_EQ(send<int>(object, "two"_sel), 2);
  EXPECT_EQ(class_getInstanceVariable(first, "_number"), nullptr);
}

TEST(ClassPairs, InheritAndOverride) {
  Class parent = objc::classOf<MethodParent>();
  Class made = objc_allocateClassPair(parent, "MadeChild", 0);
  EXPECT_EQ(objc_getClass("MadeChild"), nullptr) << "not registered yet";
  EXPECT_TRUE(class_addMethod(made, "two"_sel, implementation<22>(), "i@:"));
  objc_registerClassPair(made);
  EXPECT_EQ(objc_getClass("MadeChild"), made);
  EXPECT_EQ(object_getClass(made)->superclass, object_getClass(parent));
  auto object = Strong<NSObject>::adopt(send<id>(made, "alloc"_sel));
  EXPECT_EQ(send<int>(object, "one"_sel), 1);
  EXPECT_EQ(send<int>(object, "two"_sel), 22);
  EXPECT_TRUE(send(object, NSObject::isKindOfClass, parent));
}

TEST(ClassPairs, TakeNoNameTwice) {
  EXPECT_EQ(objc_allocateClassPair(objc_getClass("NSObject"), "MethodParent", 0), nullptr);
}

TEST(ClassPairs, LayOutIvarsInTheOrderAddedAligned) {
  Class made = objc_allocateClassPair(objc_getClass("NSObject"), "MadeWithIvars", 0);
  constexpr std::size_t kWord = sizeof(Class);
  EXPECT_EQ(class_getInstanceSize(made), kWord);
  EXPECT_TRUE(class_addIvar(made, "_flag", 1, 0, "B"));
  EXPECT_TRUE(class_addIvar(made, "_number", 8, 3, "d"));
  EXPECT_TRUE(class_addIvar(made, "_small", 2, 1, "s"));
  EXPECT_FALSE(class_addIvar(made, "_flag", 1, 0, "B"));
  objc_registerClassPair(made);
  EXPECT_FALSE(class_addIvar(made, "_late", 8, 3, "d")) << "instances may exist";
  constexpr std::size_t kNumber = kWord == 8 ? 16 : 8;  // the next multiple of eight
  EXPECT_EQ(ivar_getOffset(class_getInstanceVariable(made, "_flag")), kWord);
  EXPECT_EQ(ivar_getOffset(class_getInstanceVariable(made, "_number")), kNumber);
  EXPECT_EQ(ivar_getOffset(class_getInstanceVariable(made, "_small")), kNumber + 8);
  EXPECT_EQ(class_getInstanceVariable(made, "_late"), nullptr);
  EXPECT_EQ(class_getInstanceSize(made), kNumber + 8 + kWord);
  EXPECT_EQ(class_getInstanceSize(objc_getClass("NSObject")), kWord);
}

TEST(HiddenClasses, AreNotFoundByNameButLiveOn) {
  auto object =
      Strong<MethodChild>::adopt(send<MethodChild*>(objc_getClass("MethodChild"), "alloc"_sel));
  host::runtime::hideClass("MethodParent");
  host::runtime::hideClass("NobodysClass");
  EXPECT_EQ(objc_getClass("MethodParent"), nullptr);
  EXPECT_EQ(objc_getMetaClass("MethodParent"), nullptr);
  EXPECT_NE(objc_getClass("MethodChild"), nullptr);
  EXPECT_EQ(objc_getClass("NobodysClass"), nullptr);
  EXPECT_EQ(send<int>(object, "one"_sel), 1);
  EXPECT_STREQ(class_getName(class_getSuperclass(objc_getClass("MethodChild"))), "MethodParent");
}

TEST(Changes, AreObserved) {
  using host::runtime::Change;
  std::vector<Change> seen;
  host::runtime::observeChanges([&](const Change& change) { seen.push_back(change); });
  Class cls = objc_getClass("MethodSibling");
  class_addMethod(cls, "observed"_sel, implementation<1>(), "i@:");
  class_addMethod(cls, "observed"_sel, implementation<1>(), "i@:");
  class_addMethod(cls->isa, "observed"_sel, implementation<1>(), "i@:");
  host::runtime::observeChanges({});
  class_addMethod(cls, "unobserved"_sel, implementation<1>(), "i@:");
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].kind, Change::Kind::add);
  EXPECT_EQ(seen[0].className, "MethodSibling");
  EXPECT_EQ(seen[0].selector, "observed");
  EXPECT_EQ(seen[0].types, "i@:");
  EXPECT_FALSE(seen[0].classMethod);
  EXPECT_TRUE(seen[1].classMethod);
}

}  // namespace
