#include "rows/colors.h"

#include "pages/VNXElementPage.h"
#include "pictures/disc.h"
#include "prefs/keys.h"
#include "prefs/value.h"
#include "text.h"

namespace varnix::pane {

namespace {

NSString* subtitleOf(const Scope& scope, const settings::Element& element) {
  switch (scope.typeOf(element)) {
    case kUndyedType:
      return text("type.off"_ns);
    case kFollows:
      return text("type.follows"_ns);
    case kOwnColor:
      break;
  }
  return NSString::stringWithFormat("%@ %@"_ns, text("type.own"_ns),
                                    digitsOf(scope.colorOf(element)));
}

}  // namespace

void addDye(Rows& rows, const Scope& scope) {
  NSObject* values[] = {NSNumber::numberWithLongLong(0), NSNumber::numberWithLongLong(1)};
  NSObject* titles[] = {text("dye.own"_ns), text("dye.icon"_ns)};
  const NSInteger fallback =
      scope.application != nullptr && integerOf(Scope{}.value("global_color_type")) == 1 ? 1 : 0;
  const bool counts = scope.counts();
  setEnabled(
      rows.choice(scope.key("global_color_type"), fallback, text("dye"_ns),
                  NSArray::arrayWithObjects(values, 2), NSArray::arrayWithObjects(titles, 2)),
      counts);
  setEnabled(rows.color(scope.key("global_color"),
                        scope.fallbackColor("global_color", "", settings::kDefaultDye.text),
                        text("dye.color"_ns)),
             counts);
}

void addElements(Rows& rows, const Scope& scope) {
  for (std::size_t i = 0; i < settings::kElementCount; ++i) {
    const settings::Element& element = settings::kElements[i];
    PSSpecifier* row = rows.link(scope.key(element.key), text("element"_ns, element.key),
                                 objc::classOf<VNXElementPage>());
    send(row, PSSpecifier::setProperty, NSNumber::numberWithLongLong(static_cast<long long>(i)),
         kIndex());
    if (scope.application != nullptr)
      send(row, PSSpecifier::setProperty, scope.application, kApplication());
    UIColor* color = scope.colorOf(element);
    setSubtitle(row, subtitleOf(scope, element));
    setIcon(row, disc(color));
    if (color != nullptr) send(row, PSSpecifier::setProperty, color, kColor());
    setEnabled(row, scope.counts());
  }
}

}  // namespace varnix::pane
