#include "pages/VNXFrontPage.h"

#include "objc/implementation.h"

namespace varnix::pane {

namespace {

struct FrontPage : objc::Implementation<VNXFrontPage, PSListController> {
  NSArray* specifiers() {
    if (NSArray* made = objc::read(self(), PSListController::_specifiers)) return made;
    objc::store(self(), PSListController::_specifiers,
                static_cast<NSArray*>(NSMutableArray::array()));
    return objc::read(self(), PSListController::_specifiers);
  }
};

}  // namespace
}  // namespace varnix::pane

OBJC_CLASS_NAMED(
    VNXFrontPage, PSListController, varnix::pane::FrontPage, PSListController,
    objc::Implements<PSListController::specifiers, &varnix::pane::FrontPage::specifiers>)
