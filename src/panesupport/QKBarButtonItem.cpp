#include "panesupport/QKBarButtonItem.h"

#include "objc/define.h"

using objc::Atomicity;
using objc::MovingProperty;
using objc::Storage;

namespace {

using Place =
    objc::MovingIvars<UIBarButtonItem, objc::Ivar<"_shareText", &QKBarButtonItem::_shareText>,
                      objc::Ivar<"_container", &QKBarButtonItem::_container>>;
using ShareText = MovingProperty<Place, "shareText", &QKBarButtonItem::_shareText>;
// A pointer is read and written in one piece, which is all that atomic asks for here.
using Container = MovingProperty<Place, "container", &QKBarButtonItem::_container, Storage::assign,
                                 Atomicity::atomic>;

}  // namespace

void QKBarButtonItem::dealloc() {
  setShareText(nullptr);
  sendSuper<void>(this, "dealloc"_sel);
}

OBJC_EXPORTED_CLASS_IF_SUPERCLASS(QKBarButtonItem, UIBarButtonItem, ShareText, Container,
                                  objc::Method<"dealloc", &QKBarButtonItem::dealloc>)
