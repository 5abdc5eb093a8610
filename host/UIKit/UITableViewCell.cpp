#include "UIKit/UITableViewCell.h"

namespace host {
namespace {

template <class T>
Strong<T> madeView() {
  return Strong<T>::adopt(static_cast<T*>(send<NSObject*>(objc::alloc<T>(), "init"_sel)));
}

}  // namespace

TableViewCell* TableViewCell::initWithStyle(NSInteger wanted, NSString* identifier) {
  auto* made = send<TableViewCell*>(this, "initWithFrame:"_sel, CGRect{});
  if (made == nullptr) return nullptr;
  constexpr NSInteger kDefaultSelection = 3;
  made->style = wanted;
  made->selectionStyle = kDefaultSelection;
  made->reuseIdentifier = Strong<NSString>::retain(identifier);
  made->contentView = madeView<UIView>();
  made->textLabel = madeView<UILabel>();
  made->imageView = madeView<UIImageView>();
  if (wanted != UITableViewCellStyleDefault) made->detailLabel = madeView<UILabel>();
  send<void>(made, "addSubview:"_sel, made->contentView.get());
  for (UIView* part : {static_cast<UIView*>(made->imageView), static_cast<UIView*>(made->textLabel),
                       static_cast<UIView*>(made->detailLabel)})
    send<void>(made->contentView, "addSubview:"_sel, part);
  return made;
}

void TableViewCell::setAccessoryView(UIView* view) {
  if (view == accessoryView.get()) return;
  send<void>(accessoryView, "removeFromSuperview"_sel);
  accessoryView = Strong<UIView>::retain(view);
  send<void>(this, "addSubview:"_sel, view);
}

}  // namespace host

using host::TableViewCell;

OBJC_CLASS_NAMED(
    UITableViewCell, UIView, TableViewCell, host::View, objc::Ivar<"_style", &TableViewCell::style>,
    objc::Readable<"reuseIdentifier", &TableViewCell::reuseIdentifier>,
    objc::Readable<"contentView", &TableViewCell::contentView>,
    objc::Ivar<"_textLabel", &TableViewCell::textLabel>,
    objc::Ivar<"_detailTextLabel", &TableViewCell::detailLabel>,
    objc::Ivar<"_imageView", &TableViewCell::imageView>,
    objc::Readable<"accessoryView", &TableViewCell::accessoryView>,
    objc::Ivar<"_accessoryType", &TableViewCell::accessory>,
    objc::Property<"selectionStyle", &TableViewCell::selectionStyle, objc::Storage::assign>,
    objc::Method<"initWithStyle:reuseIdentifier:", &TableViewCell::initWithStyle>,
    objc::Method<"textLabel", &TableViewCell::textLabelOf>,
    objc::Method<"detailTextLabel", &TableViewCell::detailLabelOf>,
    objc::Method<"imageView", &TableViewCell::imageViewOf>,
    objc::Method<"setAccessoryView:", &TableViewCell::setAccessoryView>,
    objc::Method<"accessoryType", &TableViewCell::accessoryTypeOf>,
    objc::Method<"setAccessoryType:", &TableViewCell::setAccessoryType>)
