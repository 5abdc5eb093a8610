// A row of a settings pane.
#include "objc/define.h"
#include "platform/Preferences.h"

namespace {

struct Specifier : PSSpecifier {
  Specifier* init() {
    rowProperties = Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
    return this;
  }
  NSMutableDictionary* propertiesOf() { return rowProperties; }
  void setProperties(NSMutableDictionary* value) {
    rowProperties = Strong<NSMutableDictionary>::retain(value);
  }

  Strong<NSMutableDictionary> rowProperties;
};

}  // namespace

OBJC_CLASS_NAMED(PSSpecifier, NSObject, Specifier, NSObject,
                 objc::Ivar<"_properties", &Specifier::rowProperties>,
                 objc::Method<"init", &Specifier::init>,
                 objc::Method<"properties", &Specifier::propertiesOf>,
                 objc::Method<"setProperties:", &Specifier::setProperties>)
