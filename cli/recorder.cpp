#include "recorder.h"

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::cli {

namespace {

// The setters' replacements are plain functions: they find it here.
NoteWrite& noteWrite() {
  static auto* function = new NoteWrite;
  return *function;
}

Json argumentJson(bool value) { return value; }
Json argumentJson(CGFloat value) { return value; }
Json argumentJson(CGPoint value) { return Json::array({value.x, value.y}); }
Json argumentJson(CGRect value) {
  return Json::array({value.origin.x, value.origin.y, value.size.width, value.size.height});
}
Json argumentJson(NSObject* object) {
  Json color = colorJson(object);
  if (color.is_null() && object != nullptr) return true;
  return color;
}
Json argumentJson(CGColorRef color) { return answerJson(host::surfaces::plainColorAnswer(color)); }

/// Setters of the same name in two classes have a slot each.
template <objc::FixedString ClassName, objc::FixedString Name, class... A>
struct Noted {
  static void install() {
    if (Class cls = objc_getClass(ClassName.text))
      hook.install(cls, objc::Selector<Name>::get(), &note);
  }
  static void note(NSObject* self, SEL command, A... arguments) {
    if (noteWrite()) {
      Json write = Json::array({Name.text});
      (write.push_back(argumentJson(arguments)), ...);
      noteWrite()(self, std::move(write));
    }
    hook.original(self, command, arguments...);
  }
  static inline constinit objc::Hook<void(NSObject*, A...)> hook;
};

constexpr void (*kNoted[])() = {
    Noted<"_UIBackdropViewSettings", "setRequiresColorStatistics:", bool>::install,
    Noted<"_UIBackdropViewSettings", "setUsesColorTintView:", bool>::install,
    Noted<"_UIBackdropViewSettings", "setColorTint:", NSObject*>::install,
    Noted<"_UIBackdropViewSettings", "setColorTintAlpha:", CGFloat>::install,
    Noted<"_UIBackdropViewSettings", "setColorTintMaskAlpha:", CGFloat>::install,
    // Folders' backgrounds inherit it.
    Noted<"SBIconBlurryBackgroundView", "setWallpaperColor:phase:", CGColorRef, CGPoint>::install,
    Noted<"SBIconBlurryBackgroundView", "setWallpaperBackgroundRect:forContents:withFallbackColor:",
          CGRect, NSObject*, CGColorRef>::install,
};

}  // namespace

void recordWrites(NoteWrite note) {
  noteWrite() = std::move(note);
  static const bool installed = [] {
    for (auto install : kNoted) install();
    return true;
  }();
  static_cast<void>(installed);
}

}  // namespace varnix::cli
