// SpringBoard's backdrop: the cost of a tint, measured in questions for a tint colour, and what a
// playing album adds to finding its artwork's important colour.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "CoreGraphics/CoreGraphics.h"
#include "objc/autorelease_pool.h"
#include "objc/owned.h"
#include "objc/strong.h"
#include "platform/MediaPlayerUI.h"
#include "platform/SpringBoard.h"
#include "process/process.h"
#include "runtime/send.h"
#include "table.h"
#include "timing.h"

namespace {

constexpr int kRounds = 200;
constexpr std::size_t kSide = 512;

struct Container {
  Container() {
    path = (std::filesystem::temp_directory_path() / "varnix-bench-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) std::abort();
  }
  ~Container() { std::filesystem::remove_all(path); }
  std::string file(const std::string& devicePath) const {
    std::filesystem::create_directories(std::filesystem::path(path + devicePath).parent_path());
    return path + devicePath;
  }
  std::string path;
};

template <class F>
double nanoseconds(int calls, F call) {
  return bench::bestOf(kRounds, calls, [&] {
    const objc::AutoreleasePool pool;
    call();
  });
}

NSObject* make(const char* className) {
  return send<NSObject*>(send<NSObject*>(objc_getClass(className), "alloc"_sel), "init"_sel);
}

/// A gradient of medium colours.
UIImage* artwork() {
  UIGraphicsBeginImageContextWithOptions({kSide, kSide}, true, 1);
  CGContextRef context = UIGraphicsGetCurrentContext();
  for (std::size_t y = 0; y < kSide; ++y) {
    const auto part = static_cast<CGFloat>(y) / kSide;
    CGContextSetRGBFillColor(context, part, CGFloat(0.4), 1 - part, 1);
    CGContextFillRect(context, {{0, static_cast<CGFloat>(y)}, {kSide, 1}});
  }
  UIImage* image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return image;
}

void measure() {
  const objc::AutoreleasePool pool;
  NSObject* center = make("SBControlCenterContentContainerView");
  NSObject* view = make("UIView");
  auto tint = [&] { send<void>(center, "colorBackdrop"_sel); };
  const double question = nanoseconds(50, [&] { send<UIColor*>(view, "tintColor"_sel); });
  bench::report("tint of a backdrop, in tintColor questions", nanoseconds(50, tint) / question,
                bench::Goal::atMost(12));

  auto image = Strong<UIImage>::retain(artwork());
  NSObject* picker = make("CQColorPicker");
  send<void>(objc_getClass("MPUNowPlayingController"), "_setArtwork:playing:"_sel, image.get(),
             true);
  tint();
  const double scheme =
      nanoseconds(1, [&] { send<NSObject*>(picker, "colorSchemeFromImage:"_sel, image.get()); });
  bench::report("tint while a track plays, in schemes of its artwork",
                nanoseconds(1, tint) / scheme, bench::Goal::atMost(1.1));
}

}  // namespace

int main() {
  const Container container;
  std::filesystem::copy_file(
      VARNIX_MEDIA_PLAYER_UI,
      container.file("/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI"));
  std::ofstream(container.file("/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist"))
      << "<plist version=\"1.0\"><dict><key>use_album_art</key><true/></dict></plist>";
  host::ProcessOptions options;
  options.bundle = "com.apple.springboard";
  options.kind = host::ProcessKind::springboard;
  options.root = container.path;
  host::startProcess(options);
  host::loadLibrary(VARNIX_LIBRARY);
  measure();
  bench::printTable();
}
