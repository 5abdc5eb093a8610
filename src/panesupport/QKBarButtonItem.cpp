#include "panesupport/QKBarButtonItem.h"

#include "objc/implementation.h"

namespace varnix {

namespace {

using objc::Atomicity;
using objc::MovingProperty;
using objc::Storage;

/// Its superclass may be larger than declared here, so the members are found through the offsets
/// that the run-time corrects.
struct BarButtonItem : objc::Implementation<QKBarButtonItem, UIBarButtonItem> {
  void dealloc() {
    send(self(), QKBarButtonItem::setShareText, nullptr);
    objc::sendSuper<QKBarButtonItem>(self(), NSObject::dealloc);
  }

  Strong<NSString> _shareText;
  UIViewController* _container;
};

using Place =
    objc::MovingIvars<UIBarButtonItem, objc::Ivar<"_shareText", &BarButtonItem::_shareText>,
                      objc::Ivar<"_container", &BarButtonItem::_container>>;
using ShareText = MovingProperty<Place, "shareText", &BarButtonItem::_shareText>;
// A pointer is read and written in one piece, which is all that atomic requires here.
using Container = MovingProperty<Place, "container", &BarButtonItem::_container, Storage::assign,
                                 Atomicity::atomic>;

}  // namespace
}  // namespace varnix

OBJC_CLASS_NAMED_IF_SUPERCLASS(QKBarButtonItem, UIBarButtonItem, varnix::BarButtonItem,
                               UIBarButtonItem, varnix::ShareText, varnix::Container,
                               objc::Implements<NSObject::dealloc, &varnix::BarButtonItem::dealloc>)
