#include "Preferences/PSSpecifier.h"

#include "Foundation/text.h"
#include "runtime/runtime.h"

namespace host {
namespace {

PSSpecifier* groupOf(NSString* name) {
  return PSSpecifier::preferenceSpecifierNamed(name, nullptr, nullptr, nullptr, nullptr,
                                               PSGroupCell, nullptr);
}

Strong<NSDictionary> byValue(NSArray* values, NSArray* titles) {
  auto* table = NSMutableDictionary::dictionary();
  const NSUInteger count = send(values, NSArray::count);
  if (count != send(titles, NSArray::count)) {
    throw runtime::Exception("NSInvalidArgumentException",
                             "a row's values and titles differ in number");
  }
  for (NSUInteger i = 0; i < count; ++i) {
    send(table, NSMutableDictionary::setObjectForKey, send(titles, NSArray::objectAtIndex, i),
         send(values, NSArray::objectAtIndex, i));
  }
  return Strong<NSDictionary>::retain(table);
}

}  // namespace

PSSpecifier* Specifier::named(Class cls, SEL, NSString* name, NSObject* target, SEL set, SEL get,
                              Class detail, PSCellType cell, Class edit) {
  auto* made = send<Specifier*>(send<Specifier*>(cls, "alloc"_sel), "init"_sel);
  made->name = Strong<NSString>::adopt(send<NSString*>(name, "copy"_sel));
  made->target = target;
  made->setter = set;
  made->getter = get;
  made->detail = detail;
  made->cell = cell;
  made->edit = edit;
  return static_cast<PSSpecifier*>(objc_autorelease(made));
}

PSSpecifier* Specifier::emptyGroup() { return groupOf(nullptr); }
PSSpecifier* Specifier::groupNamed(NSString* name) { return groupOf(name); }

PSSpecifier* Specifier::groupWithHeader(NSString* header, NSString* footer) {
  PSSpecifier* made = groupOf(header);
  if (footer != nullptr) send(made, PSSpecifier::setProperty, footer, PSFooterTextGroupKey);
  return made;
}

PSSpecifier* Specifier::groupWithId(NSString* identifier) {
  return groupWithIdAndName(identifier, nullptr);
}

PSSpecifier* Specifier::groupWithIdAndName(NSString* identifier, NSString* name) {
  PSSpecifier* made = groupOf(name);
  send(made, PSSpecifier::setIdentifier, identifier);
  return made;
}

Specifier* Specifier::init() {
  rowProperties = Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
  return this;
}

NSObject* Specifier::propertyForKey(NSString* key) {
  return send<NSObject*>(rowProperties, "objectForKey:"_sel, key);
}
void Specifier::storeProperty(NSObject* value, NSString* key) {
  send<void>(rowProperties, "setObject:forKey:"_sel, value, key);
}
void Specifier::removeProperty(NSString* key) {
  send<void>(rowProperties, "removeObjectForKey:"_sel, key);
}

void Specifier::storeProperties(NSDictionary* all) {
  auto* own = static_cast<NSMutableDictionary*>(send(all, NSObject::mutableCopy));
  rowProperties = own != nullptr
                      ? Strong<NSMutableDictionary>::adopt(own)
                      : Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
}

NSString* Specifier::identifier() {
  for (NSString* key : {"id"_ns, PSKeyNameKey}) {
    if (auto* given = objc::as<NSString>(propertyForKey(key))) return given;
  }
  return name;
}

void Specifier::storeIdentifier(NSString* text) {
  if (text == nullptr) removeProperty("id"_ns);
  else storeProperty(text, "id"_ns);
}

void Specifier::performSetter(NSObject* value) {
  if (target != nullptr && setter != nullptr)
    objc::sendDynamic<void>(target, setter, value, static_cast<PSSpecifier*>(this));
}
NSObject* Specifier::performGetter() {
  if (target == nullptr || getter == nullptr) return nullptr;
  return objc::sendDynamic<NSObject*>(target, getter, static_cast<PSSpecifier*>(this));
}
void Specifier::performButtonAction() {
  if (target != nullptr && action != nullptr)
    objc::sendDynamic<void>(target, action, static_cast<PSSpecifier*>(this));
}

void Specifier::storeValues(NSArray* list, NSArray* names) {
  storeValuesWithShort(list, names, nullptr);
}

void Specifier::storeValuesWithShort(NSArray* list, NSArray* names, NSArray* shortNames) {
  auto all = byValue(list, names != nullptr ? names : list);
  auto allShort = shortNames != nullptr ? byValue(list, shortNames) : nullptr;
  values = Strong<NSArray>::adopt(static_cast<NSArray*>(send(list, NSObject::copy)));
  titles = std::move(all);
  shortTitles = std::move(allShort);
}

void Specifier::setupIcon(NSBundle* bundle) {
  auto* file = objc::as<NSString>(propertyForKey("icon"_ns));
  if (file == nullptr) return;
  setupIconAt(send<NSString*>(bundle, "pathForResource:ofType:"_sel, file,
                              static_cast<NSString*>(nullptr)));
}

void Specifier::setupIconAt(NSString* path) {
  auto* image = send<UIImage*>(objc_getClass("UIImage"), "imageWithContentsOfFile:"_sel, path);
  if (image != nullptr) storeProperty(image, PSIconImageKey);
}

}  // namespace host

using host::Specifier;

OBJC_CLASS_NAMED(
    PSSpecifier, NSObject, Specifier, NSObject,
    objc::Property<"target", &Specifier::target, objc::Storage::assign>,
    objc::Ivar<"setter", &Specifier::setter>, objc::Ivar<"getter", &Specifier::getter>,
    objc::Property<"buttonAction", &Specifier::action, objc::Storage::assign>,
    objc::Property<"controllerLoadAction", &Specifier::loadAction, objc::Storage::assign>,
    objc::Property<"detailControllerClass", &Specifier::detail, objc::Storage::assign>,
    objc::Property<"editPaneClass", &Specifier::edit, objc::Storage::assign>,
    objc::Property<"cellType", &Specifier::cell, objc::Storage::assign>,
    objc::Property<"properties", &Specifier::rowProperties, objc::Storage::strong,
                   objc::Atomicity::nonatomic, objc::Setter::custom>,
    objc::Property<"name", &Specifier::name, objc::Storage::copy>,
    objc::Readable<"values", &Specifier::values>,
    objc::Readable<"titleDictionary", &Specifier::titles, "_titleDict">,
    objc::Ivar<"_shortTitleDict", &Specifier::shortTitles>,
    objc::Property<"userInfo", &Specifier::userInfo>,
    objc::ClassMethod<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:",
                      &Specifier::named>,
    objc::ClassMethod<"emptyGroupSpecifier", &Specifier::emptyGroup>,
    objc::ClassMethod<"groupSpecifierWithName:", &Specifier::groupNamed>,
    objc::ClassMethod<"groupSpecifierWithHeader:footer:", &Specifier::groupWithHeader>,
    objc::ClassMethod<"groupSpecifierWithID:", &Specifier::groupWithId>,
    objc::ClassMethod<"groupSpecifierWithID:name:", &Specifier::groupWithIdAndName>,
    objc::Method<"init", &Specifier::init>,
    objc::Method<"setProperties:", &Specifier::storeProperties>,
    objc::Method<"propertyForKey:", &Specifier::propertyForKey>,
    objc::Method<"setProperty:forKey:", &Specifier::storeProperty>,
    objc::Method<"removePropertyForKey:", &Specifier::removeProperty>,
    objc::Method<"identifier", &Specifier::identifier>,
    objc::Method<"setIdentifier:", &Specifier::storeIdentifier>,
    objc::Method<"performSetterWithValue:", &Specifier::performSetter>,
    objc::Method<"performGetter", &Specifier::performGetter>,
    objc::Method<"performButtonAction", &Specifier::performButtonAction>,
    objc::Method<"setValues:titles:", &Specifier::storeValues>,
    objc::Method<"setValues:titles:shortTitles:", &Specifier::storeValuesWithShort>,
    objc::Method<"setupIconImageWithBundle:", &Specifier::setupIcon>,
    objc::Method<"setupIconImageWithPath:", &Specifier::setupIconAt>)
