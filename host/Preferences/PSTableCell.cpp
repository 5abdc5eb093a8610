#include "Preferences/PSTableCell.h"

#include "Foundation/text.h"
#include "Preferences/PSSpecifier.h"
#include "Preferences/cell_types.h"

namespace host {

PSCellType SettingsCell::typeNamed(NSString* name) { return cellTypeNamed(name); }

NSString* SettingsCell::nameOf(PSCellType type) {
  const CellType* found = cellType(type);
  return found == nullptr ? nullptr : makeString(found->name);
}

SettingsCell* SettingsCell::initWithSpecifier(NSInteger wanted, NSString* identifier,
                                              PSSpecifier* row) {
  auto* made = send<SettingsCell*>(this, "initWithStyle:reuseIdentifier:"_sel, wanted, identifier);
  if (made == nullptr) return nullptr;
  made->setSpecifier(row);
  made->type = send(row, PSSpecifier::cellType);
  const CellType* known = cellType(made->type);
  if (known != nullptr && known->opens)
    send<void>(made, "setAccessoryType:"_sel, static_cast<NSInteger>(Accessory::disclosure));
  return made;
}

void SettingsCell::refresh(PSSpecifier* row) {
  send(static_cast<PSTableCell*>(static_cast<NSObject*>(this)), PSTableCell::setSpecifier, row);
  send<void>(this, "setTitle:"_sel, send(row, PSSpecifier::name));
  send<void>(this, "setIcon:"_sel,
             objc::as<UIImage>(send(row, PSSpecifier::propertyForKey, PSIconImageKey)));
  send<void>(this, "setValue:"_sel, send(row, PSSpecifier::performGetter));
  // Enabled where the row does not say.
  auto* enabled = objc::as<NSNumber>(send(row, PSSpecifier::propertyForKey, PSEnabledKey));
  send<void>(this, "setCellEnabled:"_sel, enabled == nullptr || send(enabled, NSNumber::boolValue));
}

void SettingsCell::layOutCell() {
  constexpr CGFloat kLeft = 15;
  UIImage* image = send(imageViewOf(), UIImageView::image);
  if (image == nullptr) return;
  const CGSize size = send(image, UIImage::size);
  const CGRect whole = send(static_cast<UIView*>(static_cast<NSObject*>(this)), UIView::bounds);
  send(imageViewOf(), UIView::setFrame,
       CGRect{{kLeft, (whole.size.height - size.height) / 2}, size});
}

NSString* SettingsCell::title() { return send(textLabelOf(), UILabel::text); }
void SettingsCell::setTitle(NSString* text) { send(textLabelOf(), UILabel::setText, text); }
void SettingsCell::setIcon(UIImage* image) { send(imageViewOf(), UIImageView::setImage, image); }

void SettingsCell::setValue(NSObject* object) {
  value = Strong<NSObject>::retain(object);
  const CellType* known = cellType(type);
  if (known == nullptr || !known->showsValue) return;
  NSObject* shown = object;
  if (NSDictionary* titles = send(specifier, PSSpecifier::titleDictionary)) {
    NSDictionary* brief = static_cast<Specifier*>(specifier.get())->shortTitles;
    shown = send(brief != nullptr ? brief : titles, NSDictionary::objectForKey, object);
  }
  NSString* text = shown == nullptr ? nullptr : send(shown, NSObject::description);
  send(detailLabelOf(), UILabel::setText, text);
}

void SettingsCell::setCellEnabled(bool enabled) {
  cellDisabled = !enabled;
  constexpr CGFloat kGrey = 0.6;
  UIColor* grey = enabled ? UIColor::blackColor() : UIColor::colorWithRed(kGrey, kGrey, kGrey, 1);
  send(textLabelOf(), UILabel::setTextColor, grey);
}

}  // namespace host

using host::SettingsCell;

OBJC_CLASS_NAMED(
    PSTableCell, UITableViewCell, SettingsCell, host::TableViewCell,
    objc::Ivar<"_specifier", &SettingsCell::specifier>,
    objc::Readable<"value", &SettingsCell::value>, objc::Readable<"type", &SettingsCell::type>,
    objc::Ivar<"_cellDisabled", &SettingsCell::cellDisabled>,
    objc::Property<"cellTarget", &SettingsCell::cellTarget, objc::Storage::assign>,
    objc::Property<"cellAction", &SettingsCell::cellAction, objc::Storage::assign>,
    objc::ClassMethod<"cellTypeFromString:", &SettingsCell::typeNamed>,
    objc::ClassMethod<"stringFromCellType:", &SettingsCell::nameOf>,
    objc::Method<"initWithStyle:reuseIdentifier:specifier:", &SettingsCell::initWithSpecifier>,
    objc::Method<"refreshCellContentsWithSpecifier:", &SettingsCell::refresh>,
    objc::Method<"layoutSubviews", &SettingsCell::layOutCell>,
    objc::Method<"specifier", &SettingsCell::specifierOf>,
    objc::Method<"setSpecifier:", &SettingsCell::setSpecifier>,
    objc::Method<"title", &SettingsCell::title>, objc::Method<"setTitle:", &SettingsCell::setTitle>,
    objc::Method<"setValue:", &SettingsCell::setValue>,
    objc::Method<"setIcon:", &SettingsCell::setIcon>,
    objc::Method<"cellEnabled", &SettingsCell::isCellEnabled>,
    objc::Method<"setCellEnabled:", &SettingsCell::setCellEnabled>,
    objc::Method<"titleLabel", &SettingsCell::titleLabel>,
    objc::Method<"valueLabel", &SettingsCell::valueLabel>,
    objc::Method<"iconImageView", &SettingsCell::iconView>)
