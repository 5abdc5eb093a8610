// Labels and views of images.
#include "UIKit/UIView.h"

namespace {

struct Label : host::View {
  Strong<NSString> text;
  Strong<UIColor> textColor;
  NSInteger numberOfLines;
};

struct ImageView : host::View {
  ImageView* initWithImage(UIImage* picture) {
    const CGSize size = picture == nullptr ? CGSize{} : send(picture, UIImage::size);
    auto* made = send<ImageView*>(this, "initWithFrame:"_sel, CGRect{{}, size});
    if (made != nullptr) made->image = Strong<UIImage>::retain(picture);
    return made;
  }

  Strong<UIImage> image;
};

}  // namespace

OBJC_CLASS_NAMED(UILabel, UIView, Label, host::View,
                 objc::Property<"text", &Label::text, objc::Storage::copy>,
                 objc::Property<"textColor", &Label::textColor>,
                 objc::Property<"numberOfLines", &Label::numberOfLines, objc::Storage::assign>)

OBJC_CLASS_NAMED(UIImageView, UIView, ImageView, host::View,
                 objc::Method<"initWithImage:", &ImageView::initWithImage>,
                 objc::Property<"image", &ImageView::image>)
