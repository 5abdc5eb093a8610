#include "pane/example/rows.h"

#include <algorithm>
#include <string_view>

#include "Foundation/text.h"
#include "common/errors.h"
#include "common/nearest.h"
#include "objc/block.h"
#include "settings/file.h"
#include "settings/known_key.h"

namespace varnix::cli {

namespace {

constexpr char kDomain[] = "com.quillmarsh.varnix2";

Strong<NSObject> makeStore() {
  Class cls = objc_getClass("KTPrefsManager");
  if (cls == nullptr) throw Failure("the library has no such class", "KTPrefsManager");
  auto* raw = send<NSObject*>(cls, "alloc"_sel);
  return Strong<NSObject>::adopt(send<NSObject*>(
      raw, "initWithId:defaultValues:notification:notificationCallback:"_sel,
      host::makeString(kDomain), static_cast<NSDictionary*>(nullptr),
      host::makeString(kChangedNotification), objc::Block<void(NSObject*)>{nullptr}));
}

PaneRow makeRow(const settings::Key& key) {
  PSSpecifier* specifier = PSSpecifier::preferenceSpecifierNamed(
      host::makeString(key.meaning), nullptr, nullptr, nullptr, nullptr, PSGroupCell, nullptr);
  if (specifier == nullptr) throw Failure("this process has no such class", "PSSpecifier");
  send(specifier, PSSpecifier::setProperty, host::makeString(key.name), "key"_ns);
  send(specifier, PSSpecifier::setProperty, objectFor(valueFor(key.kind, key.fallback, false)),
       "default"_ns);
  return {&key, Strong<PSSpecifier>::retain(specifier)};
}

}  // namespace

PaneRows::PaneRows() {
  store_ = makeStore();
  for (const settings::Key& key : settings::kKeys) rows_.push_back(makeRow(key));
}

NSObject* PaneRows::value(const PaneRow& row) const {
  return send<NSObject*>(store_, "readPreferenceValue:"_sel, row.specifier.get());
}

void PaneRows::set(const std::string& key, const std::string& text) {
  const auto row = std::find_if(rows_.begin(), rows_.end(),
                                [&](const PaneRow& r) { return key == r.key->name; });
  if (row == rows_.end()) throw Failure("no such setting", key + didYouMean(key, keyNames()));
  NSObject* value = objectFor(valueFor(row->key->kind, text, false));
  // Saving would replace a file that cannot be read, of which the store knows nothing.
  storedSettings();
  // It writes its whole view, and not everybody who changes the file says so.
  send<void>(store_, "updateCurrentImplementation"_sel);
  send<void>(store_, "setPreferenceValue:specifier:"_sel, value, row->specifier.get());
}

}  // namespace varnix::cli
