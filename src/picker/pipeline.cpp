// The picker's steps in order, and its requests from other threads.
#include "picker/CQColorPicker.h"
#include "picker/frame_size.h"

namespace {

using objc::keepBlock;
using objc::makeBlock;

NSDictionary* dictionaryOf(CQColorScheme* scheme) {
  // The list ends at its first nil.
  return NSDictionary::dictionaryWithObjectsAndKeys(
      send<UIColor*>(scheme, "backgroundColor"_sel), "BackgroundColor"_ns,
      send<UIColor*>(scheme, "primaryTextColor"_sel), "PrimaryTextColor"_ns,
      send<UIColor*>(scheme, "secondaryTextColor"_sel), "SecondaryTextColor"_ns,
      static_cast<NSObject*>(nullptr));
}

}  // namespace

// Nothing here asks how the set-up went: what could not be drawn reads back as black.
CQColorScheme* CQColorPicker::colorSchemeFromImage(UIImage* image) {
  if (!send<bool>(this, "isAppActive"_sel)) return nullptr;
  auto* scaled = send<UIImage*>(this, "scaleImage:width:height:"_sel, image, double{kTotalWidth},
                                double{kTotalWidth});
  send<void>(this, "setupOpenGL"_sel);
  _aTexture = send<GLuint>(this, "setupTextureFromImage:"_sel, scaled);
  send<void>(this, "renderDominant"_sel);
  auto scheme =
      Strong<CQColorScheme>::adopt(send<CQColorScheme*>(objc::alloc<CQColorScheme>(), "init"_sel));
  auto* background = send<UIColor*>(this, "colorWithBiggerCountFromImageWidth:height:"_sel,
                                    NSUInteger{kTotalWidth}, NSUInteger{kTotalWidth});
  send<void>(scheme.get(), "setBackgroundColor:"_sel, background);
  send<void>(this, "findTextColorsTaskForColorScheme:"_sel, scheme.get());
  return scheme.autorelease();
}

UIImage* CQColorPicker::scaleImage(UIImage* image, double width, double height) {
  const CGSize size{static_cast<CGFloat>(width), static_cast<CGFloat>(height)};
  return send<UIImage*>(this, "imageWithImage:scaledToSize:"_sel, image, size);
}

UIImage* CQColorPicker::imageScaledToSize(UIImage* image, CGSize size) {
  UIGraphicsBeginImageContextWithOptions(size, false, 1);
  send<void>(image, "drawInRect:"_sel, CGRect{{0, 0}, size});
  UIImage* scaled = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return scaled;
}

void CQColorPicker::pickColorsFromImage(UIImage* image, Completion completion) {
  if (!send<bool>(this, "isAppActive"_sel)) return;
  auto compute = makeBlock<void()>([picker = Strong<CQColorPicker>::retain(this),
                                    kept = Strong<UIImage>::retain(image),
                                    done = keepBlock(completion)] {
    auto* scheme = send<CQColorScheme*>(picker.get(), "colorSchemeFromImage:"_sel, kept.get());
    auto answer =
        makeBlock<void()>([found = Strong<CQColorScheme>::retain(scheme), done] { done(found); });
    dispatch_async(dispatch_get_main_queue(), answer);
  });
  dispatch_async(taskQueue, compute);
}

void CQColorPicker::pickColorFromImage(UIImage* image, DictionaryCompletion completion) {
  static constinit dispatch_once_t once = 0;
  static constinit CQColorPicker* shared = nullptr;
  auto create = makeBlock<void()>(
      [] { shared = send<CQColorPicker*>(objc::alloc<CQColorPicker>(), "init"_sel); });
  dispatch_once(&once, create);

  auto answer =
      makeBlock<void(CQColorScheme*)>([done = keepBlock(completion)](CQColorScheme* scheme) {
        NSDictionary* colors = dictionaryOf(scheme);
        if (NSThread::isMainThread()) return done(colors);
        auto later =
            makeBlock<void()>([kept = Strong<NSDictionary>::retain(colors), done] { done(kept); });
        dispatch_async(dispatch_get_main_queue(), later);
      });
  send<void>(shared, "pickColorsFromImage:onComplete:"_sel, image, static_cast<Completion>(answer));
}
