// A row of a settings pane.
#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/Preferences.h"

namespace {
struct Specifier : PSSpecifier {
  static Specifier* named(Class cls, SEL, NSString* name, NSObject* target, SEL set, SEL get,
                          Class detail, PSCellType cell, Class edit);
  Specifier* init() {
    rowProperties = Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
    return this;
  }
  NSObject* propertyForKey(NSString* key) {
    return send<NSObject*>(rowProperties, "objectForKey:"_sel, key);
  }
  void storeProperty(NSObject* value, NSString* key) {
    send<void>(rowProperties, "setObject:forKey:"_sel, value, key);
  }
  void removeProperty(NSString* key) { send<void>(rowProperties, "removeObjectForKey:"_sel, key); }

  NSObject* targetOf() { return target; }
  void setTarget(NSObject* value) { target = value; }
  PSCellType cellType() { return cell; }
  void setCellType(PSCellType value) { cell = value; }
  Class detailClass() { return detail; }
  void setDetailClass(Class value) { detail = value; }
  Class editClass() { return edit; }
  void setEditClass(Class value) { edit = value; }
  /// The property "id", else the property "key", else the name.
  NSString* identifier() {
    for (NSString* key : {"id"_ns, "key"_ns}) {
      if (auto* given = objc::as<NSString>(propertyForKey(key))) return given;
    }
    return name;
  }

  /// Tells the row's target a new value. Nothing happens without target or setter.
  void performSetter(NSObject* value) {
    if (target != nullptr && setter != nullptr)
      objc::sendDynamic<void>(target, setter, value, static_cast<PSSpecifier*>(this));
  }
  /// Asks the row's target; nil without target or getter.
  NSObject* performGetter() {
    if (target == nullptr || getter == nullptr) return nullptr;
    return objc::sendDynamic<NSObject*>(target, getter, static_cast<PSSpecifier*>(this));
  }

  Strong<NSMutableDictionary> rowProperties;
  Strong<NSString> name;
  NSObject* target;  ///< not kept alive
  SEL setter;        ///< of value and specifier
  SEL getter;        ///< of the specifier
  Class detail;      ///< the controller of the page behind the row
  Class edit;        ///< the pane that edits the row's value
  PSCellType cell;
};

}  // namespace

OBJC_CLASS_NAMED(PSSpecifier, NSObject, Specifier, NSObject,
                 objc::Property<"properties", &Specifier::rowProperties>,
                 objc::Property<"name", &Specifier::name>, objc::Ivar<"target", &Specifier::target>,
                 objc::Ivar<"setter", &Specifier::setter>, objc::Ivar<"getter", &Specifier::getter>,
                 objc::Ivar<"detailControllerClass", &Specifier::detail>,
                 objc::Ivar<"editPaneClass", &Specifier::edit>,
                 objc::Ivar<"cellType", &Specifier::cell>,
                 objc::ClassMethod<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:",
                                   &Specifier::named>,
                 objc::Method<"init", &Specifier::init>,
                 objc::Method<"propertyForKey:", &Specifier::propertyForKey>,
                 objc::Method<"setProperty:forKey:", &Specifier::storeProperty>,
                 objc::Method<"removePropertyForKey:", &Specifier::removeProperty>,
                 objc::Method<"target", &Specifier::targetOf>,
                 objc::Method<"setTarget:", &Specifier::setTarget>,
                 objc::Method<"cellType", &Specifier::cellType>,
                 objc::Method<"setCellType:", &Specifier::setCellType>,
                 objc::Method<"detailControllerClass", &Specifier::detailClass>,
                 objc::Method<"setDetailControllerClass:", &Specifier::setDetailClass>,
                 objc::Method<"editPaneClass", &Specifier::editClass>,
                 objc::Method<"setEditPaneClass:", &Specifier::setEditClass>,
                 objc::Method<"identifier", &Specifier::identifier>,
                 objc::Method<"performSetterWithValue:", &Specifier::performSetter>,
                 objc::Method<"performGetter", &Specifier::performGetter>)

Specifier* Specifier::named(Class cls, SEL, NSString* name, NSObject* target, SEL set, SEL get,
                            Class detail, PSCellType cell, Class edit) {
  auto* made = send<Specifier*>(send<Specifier*>(cls, "alloc"_sel), "init"_sel);
  made->name = Strong<NSString>::retain(name);
  made->target = target;
  made->setter = set;
  made->getter = get;
  made->detail = detail;
  made->cell = cell;
  made->edit = edit;
  return static_cast<Specifier*>(objc_autorelease(made));
}
