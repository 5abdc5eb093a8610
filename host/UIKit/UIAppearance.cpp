#include "UIKit/UIAppearance.h"

#include <algorithm>
#include <cstdarg>

#include "runtime/runtime.h"

namespace {

/// A setter that a proxy takes, and what answers a view's own value; nil for none.
struct Customizable {
  const char* setter;
  const char* stored;
};
constexpr Customizable kCustomizable[] = {
    {"setTintColor:", "_interactionTintColor"},
    {"setBarTintColor:", "barTintColor"},
    {"setTitleTextAttributes:", "titleTextAttributes"},
    {"setMinimumTrackTintColor:", "minimumTrackTintColor"},
    {"setMaximumTrackTintColor:", "maximumTrackTintColor"},
    {"setOnTintColor:", "onTintColor"},
};

SEL storedSelector(SEL setter) {
  for (const Customizable& row : kCustomizable) {
    if (sel_registerName(row.setter) == setter) return sel_registerName(row.stored);
  }
  return nullptr;
}

struct Appearance : NSObject {
  struct Value {
    SEL setter;
    Strong<NSObject> value;
  };

  static void note(Appearance* self, SEL setter, NSObject* value) {
    if (!class_respondsToSelector(self->control, setter)) {
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     std::string("no appearance ") + sel_getName(setter) + " of " +
                                         class_getName(self->control));
    }
    std::erase_if(self->values, [&](const Value& noted) { return noted.setter == setter; });
    if (value != nullptr) self->values.push_back({setter, Strong<NSObject>::retain(value)});
  }
  bool concerns(host::View* view) const;
  void apply(host::View* view) const;

  Class control;
  std::vector<Class> containers;  ///< the innermost first
  std::vector<Value> values;
};

/// All proxies, those of the longest lists first.
std::vector<Appearance*>& proxies() {
  static auto* all = new std::vector<Appearance*>;
  return *all;
}

bool Appearance::concerns(host::View* view) const {
  if (!send(view, NSObject::isKindOfClass, control)) return false;
  auto wanted = containers.begin();
  auto pass = [&](NSObject* container) {
    if (container != nullptr && wanted != containers.end() &&
        send(container, NSObject::isKindOfClass, *wanted))
      ++wanted;
  };
  pass(view->controller);
  for (host::View* outer = view->superview; outer != nullptr; outer = outer->superview) {
    pass(outer);
    pass(outer->controller);
  }
  return wanted == containers.end();
}

void Appearance::apply(host::View* view) const {
  for (const Value& noted : values) {
    if (objc::sendDynamic<NSObject*>(view, storedSelector(noted.setter)) == nullptr)
      objc::sendDynamic<void>(view, noted.setter, noted.value.get());
  }
}

}  // namespace

OBJC_CLASS_NAMED(_UIAppearance, NSObject, Appearance, NSObject,
                 objc::Ivar<"_customizableClass", &Appearance::control>,
                 objc::Ivar<"_containers", &Appearance::containers>,
                 objc::Ivar<"_values", &Appearance::values>,
                 objc::Method<"setTintColor:", &Appearance::note>,
                 objc::Method<"setBarTintColor:", &Appearance::note>,
                 objc::Method<"setTitleTextAttributes:", &Appearance::note>,
                 objc::Method<"setMinimumTrackTintColor:", &Appearance::note>,
                 objc::Method<"setMaximumTrackTintColor:", &Appearance::note>,
                 objc::Method<"setOnTintColor:", &Appearance::note>)

namespace {

/// Made at first use; lives as long as the process.
Appearance* proxyOf(Class control, std::vector<Class> containers) {
  auto& all = proxies();
  for (Appearance* proxy : all) {
    if (proxy->control == control && proxy->containers == containers) return proxy;
  }
  auto* made = static_cast<Appearance*>(class_createInstance(&objc_class__UIAppearance, 0));
  made->control = control;
  made->containers = std::move(containers);
  auto shorter = [&](Appearance* other) {
    return other->containers.size() < made->containers.size();
  };
  all.insert(std::find_if(all.begin(), all.end(), shorter), made);
  return made;
}

}  // namespace

namespace host {

NSObject* appearance(Class control, SEL) { return proxyOf(control, {}); }

NSObject* appearanceWhenContainedIn(Class control, SEL, Class first, ...) {
  std::vector<Class> containers;
  va_list rest;
  va_start(rest, first);
  for (Class container = first; container != nullptr; container = va_arg(rest, Class))
    containers.push_back(container);
  va_end(rest);
  return proxyOf(control, std::move(containers));
}

void applyAppearance(View* added) {
  for (Appearance* proxy : proxies()) {
    if (proxy->concerns(added)) proxy->apply(added);
  }
  for (const auto& child : added->subviews) applyAppearance(static_cast<View*>(child.get()));
}

}  // namespace host
