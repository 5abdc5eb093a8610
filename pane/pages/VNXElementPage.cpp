#include "pages/VNXElementPage.h"

#include "cells/VNXPictureCell.h"
#include "objc/implementation.h"
#include "prefs/keys.h"
#include "rows/colors.h"
#include "rows/rows.h"
#include "text.h"

namespace varnix::pane {

namespace {

constexpr int kPictureHeight = 120;

struct ElementPage : objc::Implementation<VNXElementPage, PSListController> {
  NSArray* rows() {
    const auto index = static_cast<std::size_t>(indexOf(self()));
    Rows rows(self());
    if (index >= settings::kElementCount) return rows.all();
    const settings::Element& element = settings::kElements[index];
    const Scope scope = scopeOf(self());

    rows.group();
    PSSpecifier* picture = rows.custom("picture"_ns, text("element"_ns, element.key),
                                       objc::classOf<VNXPictureCell>(), kPictureHeight);
    send(picture, PSSpecifier::setProperty,
         NSNumber::numberWithLongLong(static_cast<long long>(index)), kIndex());
    if (UIColor* color = scope.colorOf(element))
      send(picture, PSSpecifier::setProperty, color, kColor());

    rows.group(nullptr, text("element.note"_ns, element.key));
    NSObject* values[] = {NSNumber::numberWithLongLong(kFollows),
                          NSNumber::numberWithLongLong(kOwnColor),
                          NSNumber::numberWithLongLong(kUndyedType)};
    NSObject* titles[] = {text("type.follows"_ns), text("type.own"_ns), text("type.off"_ns)};
    const Scope everybody;
    const ColorType fallback = scope.application == nullptr ? kFollows : everybody.typeOf(element);
    setEnabled(
        rows.choice(scope.key(element.key, "_color_type"), fallback, text("type"_ns),
                    NSArray::arrayWithObjects(values, 3), NSArray::arrayWithObjects(titles, 3)),
        scope.counts());
    setEnabled(rows.color(scope.key(element.key, "_color"),
                          scope.fallbackColor(element.key, "_color", element.ownColor),
                          text("type.color"_ns)),
               scope.counts() && scope.typeOf(element) == kOwnColor);
    return rows.all();
  }
};

}  // namespace
}  // namespace varnix::pane

OBJC_CLASS_NAMED(VNXElementPage, VNXPage, varnix::pane::ElementPage, PSListController,
                 objc::Implements<VNXPage::rows, &varnix::pane::ElementPage::rows>)
