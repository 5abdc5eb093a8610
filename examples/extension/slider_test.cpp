// The extension in a hosted process, beside Varnix: what a slider answers.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/UIKit.h"
#include "process/process.h"
#include "runtime/send.h"

int main(int, char** arguments) {
  char root[] = "/tmp/slider-XXXXXX";
  if (mkdtemp(root) == nullptr) return EXIT_FAILURE;
  host::startProcess({.bundle = "com.example.app", .root = root});
  host::loadLibrary(host::defaultLibraryPath());
  host::loadLibrary(arguments[1]);

  const objc::AutoreleasePool pool;
  const auto slider = objc::make<UISlider>();
  send(slider, UISlider::setMaximumTrackTintColor, nullptr);
  auto* color = send<UIColor*>(slider, "maximumTrackTintColor"_sel);
  CGFloat red = 0, green = 0, blue = 0, alpha = 0;
  send(color, UIColor::getRed, &red, &green, &blue, &alpha);
  char shown[64];
  std::snprintf(shown, sizeof shown, "%.0f %.0f %.0f %.2f", red * 255, green * 255, blue * 255,
                alpha);
  std::puts(shown);
  std::filesystem::remove_all(root);
  // The colour that Varnix gives without settings, a quarter of it.
  return std::string(shown) == "222 48 39 0.25" ? EXIT_SUCCESS : EXIT_FAILURE;
}
