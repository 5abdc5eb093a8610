// The rows of a settings pane in the stand-in.
#include "support/pane.h"

namespace {

using namespace test;

std::string sent;

class Specifier : public Pane {
 protected:
  void SetUp() override {
    settingsApplication();
    Class cls = objc_allocateClassPair(objc_getClass("NSObject"), "Target", 0);
    class_addMethod(cls, "setValue:specifier:"_sel,
                    reinterpret_cast<IMP>(+[](NSObject*, SEL, NSString* value, PSSpecifier* row) {
                      sent = std::string(host::text(value)) + " of " +
                             std::string(host::text(send<NSString*>(row, "name"_sel)));
                    }),
                    "v@:@@");
    class_addMethod(cls, "valueOf:"_sel, reinterpret_cast<IMP>(+[](NSObject*, SEL, PSSpecifier*) {
                      return static_cast<NSObject*>("present"_ns);
                    }),
                    "@@:@");
    objc_registerClassPair(cls);
    target = make<NSObject>("Target");
  }
  PSSpecifier* row(NSObject* of, SEL set, SEL get) {
    return PSSpecifier::preferenceSpecifierNamed("Row"_ns, of, set, get, target->isa, 6,
                                                 target->isa);
  }

  NSObject* target = nullptr;
};

TEST_F(Specifier, KeepsWhatItIsMadeOf) {
  PSSpecifier* made = row(target, "setValue:specifier:"_sel, "valueOf:"_sel);
  EXPECT_EQ(host::text(send<NSString*>(made, "name"_sel)), "Row");
  EXPECT_EQ(send<NSObject*>(made, "target"_sel), target);
  EXPECT_EQ(send<PSCellType>(made, "cellType"_sel), 6);
  EXPECT_EQ(send<Class>(made, "detailControllerClass"_sel), target->isa);
  EXPECT_EQ(send<Class>(made, "editPaneClass"_sel), target->isa);
  EXPECT_EQ(send(send(made, PSSpecifier::properties), NSDictionary::count), 0U);
}

TEST_F(Specifier, AsksAndTellsItsTarget) {
  PSSpecifier* made = row(target, "setValue:specifier:"_sel, "valueOf:"_sel);
  send<void>(made, "performSetterWithValue:"_sel, "new"_ns);
  EXPECT_EQ(sent, "new of Row");
  EXPECT_EQ(host::text(send<NSString*>(made, "performGetter"_sel)), "present");
  for (PSSpecifier* deaf :
       {row(nullptr, "setValue:specifier:"_sel, "valueOf:"_sel), row(target, nullptr, nullptr)}) {
    sent.clear();
    send<void>(deaf, "performSetterWithValue:"_sel, "new"_ns);
    EXPECT_EQ(sent, "");
    EXPECT_EQ(send<NSObject*>(deaf, "performGetter"_sel), nullptr);
  }
}

TEST_F(Specifier, IsIdentifiedByItsPropertiesThenItsName) {
  PSSpecifier* made = row(nullptr, nullptr, nullptr);
  auto identifier = [&] { return host::text(send<NSString*>(made, "identifier"_sel)); };
  EXPECT_EQ(identifier(), "Row");
  send(made, PSSpecifier::setProperty, "a key"_ns, "key"_ns);
  EXPECT_EQ(identifier(), "a key");
  send(made, PSSpecifier::setProperty, "an id"_ns, "id"_ns);
  EXPECT_EQ(identifier(), "an id");
  EXPECT_EQ(host::text(send<NSString*>(made, "propertyForKey:"_sel, "key"_ns)), "a key");
  send<void>(made, "removePropertyForKey:"_sel, "id"_ns);
  EXPECT_EQ(identifier(), "a key");
}

}  // namespace
