// The cost of finding a picture's important colour, and which part of it costs most.
#include "color/ImportantColor.h"
#include "measures.h"
#include "objc/autorelease_pool.h"
#include "picker/CQColorPicker.h"
#include "picker/frame_size.h"
#include "pixels.h"
#include "table.h"
#include "timing.h"

namespace bench {

namespace {

constexpr int kSide = 512;

template <class F>
double microseconds(F call) {
  return bestOf(200, 1,
                [&] {
                  const objc::AutoreleasePool pool;
                  call();
                }) /
         1000;
}

}  // namespace

void measureImportantColor() {
  const Pixels pixels = generatedPixels(kSide, kSide);
  const auto image = imageOver(pixels);
  const auto picker = objc::make<CQColorPicker>();
  const objc::AutoreleasePool pool;
  auto squeeze = [&](UIImage* whole) {
    return send(picker, CQColorPicker::scaleImage, whole, kTotalWidth, kTotalWidth);
  };
  UIImage* small = squeeze(image);
  CQColorScheme* scheme = send(picker, CQColorPicker::colorSchemeFromImage, image);

  report("important colour of 512 x 512, us",
         microseconds([&] { varnix::Color::ImportantColor(image); }), Goal::none());
  report("  of an image that is new, us",
         microseconds([&] { varnix::Color::ImportantColor(imageOver(pixels)); }), Goal::none());
  report("  squeeze to 32 x 32, us", microseconds([&] { squeeze(image); }), Goal::none());
  report("  set-up that is there already, us",
         microseconds([&] { send(picker, CQColorPicker::setupOpenGL); }), Goal::none());
  report("  upload, us",
         microseconds([&] { send(picker, CQColorPicker::setupTextureFromImage, small); }),
         Goal::none());
  report("  draw, read back, most frequent colour, us", microseconds([&] {
           send(picker, CQColorPicker::renderDominant);
           send(picker, CQColorPicker::colorWithBiggerCount, kTotalWidth, kTotalWidth);
         }),
         Goal::none());
  report("  text colours, frame read again, us",
         microseconds([&] { send(picker, CQColorPicker::findTextColors, scheme); }), Goal::none());
}

}  // namespace bench
