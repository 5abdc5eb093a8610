#include "pages/VNXApplicationPage.h"

#include "objc/implementation.h"
#include "pictures/disc.h"
#include "rows/colors.h"
#include "settings/applications.h"
#include "text.h"

namespace varnix::pane {

namespace {

struct ApplicationPage : objc::Implementation<VNXApplicationPage, PSListController> {
  NSArray* rows() {
    Rows rows(self());
    const Scope scope = scopeOf(self());
    if (scope.application == nullptr) return rows.all();

    rows.group(nullptr, text("application.enabled.note"_ns));
    rows.toggle(scope.key("enabled"_ns), true, text("application.enabled"_ns));

    rows.group(nullptr, text("application.scope.note"_ns));
    rows.toggle(scope.key("scope_enabled"_ns), false, text("application.scope"_ns));

    rows.group(text("dye.title"_ns));
    addDye(rows, scope);

    rows.group(text("elements.title"_ns));
    addElements(rows, scope);

    rows.group(text("icon.title"_ns), text("icon.note"_ns));
    UIColor* color = iconColor(scope.application);
    PSSpecifier* shown =
        rows.note("icon"_ns, color != nullptr ? digitsOf(color) : text("icon.unknown"_ns));
    setIcon(shown, disc(color));
    setEnabled(
        rows.button("icon.again"_ns, text("icon.again"_ns), VNXApplicationPage::forgetIconColor),
        color != nullptr);
    return rows.all();
  }

  void forgetIconColor(PSSpecifier*) { pane::forgetIconColor(scopeOf(self()).application); }
};

}  // namespace
}  // namespace varnix::pane

OBJC_CLASS_NAMED(VNXApplicationPage, VNXPage, varnix::pane::ApplicationPage, PSListController,
                 objc::Implements<VNXPage::rows, &varnix::pane::ApplicationPage::rows>,
                 objc::Implements<VNXApplicationPage::forgetIconColor,
                                  &varnix::pane::ApplicationPage::forgetIconColor>)
