// The picker's steps in order, and its requests from other threads.
#include "picker/CQColorPicker_object.h"
#include "picker/context.h"
#include "picker/frame_size.h"

namespace varnix {

using objc::keepBlock;
using objc::makeBlock;

namespace {

NSDictionary* dictionaryOf(CQColorScheme* scheme) {
  // The first nil ends the list.
  return NSDictionary::dictionaryWithObjectsAndKeys(
      send(scheme, CQColorScheme::backgroundColor), "BackgroundColor"_ns,
      send(scheme, CQColorScheme::primaryTextColor), "PrimaryTextColor"_ns,
      send(scheme, CQColorScheme::secondaryTextColor), "SecondaryTextColor"_ns,
      static_cast<NSObject*>(nullptr));
}

}  // namespace

// The set-up's result is not checked: what could not be drawn reads back as black.
CQColorScheme* ColorPicker::colorSchemeFromImage(UIImage* image) {
  if (!send(self(), CQColorPicker::isAppActive)) return nullptr;
  const picker::RestoredContext restored;
  UIImage* scaled = send(self(), CQColorPicker::scaleImage, image, kTotalWidth, kTotalWidth);
  send(self(), CQColorPicker::setupOpenGL);
  _aTexture = send(self(), CQColorPicker::setupTextureFromImage, scaled);
  send(self(), CQColorPicker::renderDominant);
  auto scheme = objc::make<CQColorScheme>();
  UIColor* background = send(self(), CQColorPicker::colorWithBiggerCount, kTotalWidth, kTotalWidth);
  send(scheme, CQColorScheme::setBackgroundColor, background);
  send(self(), CQColorPicker::findTextColors, scheme);
  return scheme.autorelease();
}

UIImage* ColorPicker::scaleImage(UIImage* image, double width, double height) {
  const CGSize size{static_cast<CGFloat>(width), static_cast<CGFloat>(height)};
  return send(self(), CQColorPicker::imageWithImageScaledToSize, image, size);
}

UIImage* ColorPicker::imageScaledToSize(UIImage* image, CGSize size) {
  UIGraphicsBeginImageContextWithOptions(size, false, 1);
  send(image, UIImage::drawInRect, CGRect{{0, 0}, size});
  UIImage* scaled = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return scaled;
}

void ColorPicker::pickColorsFromImage(UIImage* image, CQColorPicker::Completion completion) {
  if (!send(self(), CQColorPicker::isAppActive)) return;
  auto compute = makeBlock<void()>([picker = Strong<CQColorPicker>::retain(self()),
                                    kept = Strong<UIImage>::retain(image),
                                    done = keepBlock(completion)] {
    CQColorScheme* scheme = send(picker, CQColorPicker::colorSchemeFromImage, kept);
    auto answer =
        makeBlock<void()>([found = Strong<CQColorScheme>::retain(scheme), done] { done(found); });
    dispatch_async(dispatch_get_main_queue(), answer);
  });
  dispatch_async(taskQueue, compute);
}

void ColorPicker::pickColorFromImage(UIImage* image,
                                     CQColorPicker::DictionaryCompletion completion) {
  static constinit dispatch_once_t once = 0;
  static constinit CQColorPicker* shared = nullptr;
  auto create = makeBlock<void()>([] { shared = objc::make<CQColorPicker>().leak(); });
  dispatch_once(&once, create);

  auto answer =
      makeBlock<void(CQColorScheme*)>([done = keepBlock(completion)](CQColorScheme* scheme) {
        NSDictionary* colors = dictionaryOf(scheme);
        if (NSThread::isMainThread()) return done(colors);
        auto later =
            makeBlock<void()>([kept = Strong<NSDictionary>::retain(colors), done] { done(kept); });
        dispatch_async(dispatch_get_main_queue(), later);
      });
  send(shared, CQColorPicker::pickColorsFromImage, image, answer);
}

}  // namespace varnix
