#include "script/recorder.h"

#include "common/answer_json.h"
#include "common/json.h"
#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::cli {

namespace {

// The setters' replacements are plain functions, so they find it here.
NoteWrite& noteWrite() {
  static auto* function = new NoteWrite;
  return *function;
}

Json argumentJson(bool value) { return value; }
Json argumentJson(CGFloat value) { return value; }
Json argumentJson(CGSize value) { return Json::array({value.width, value.height}); }
Json argumentJson(CGRect value) {
  return Json::array({value.origin.x, value.origin.y, value.size.width, value.size.height});
}
Json argumentJson(NSObject* object) {
  Json color = colorJson(object);
  if (color.is_null() && object != nullptr) return true;
  return color;
}
Json argumentJson(CGColorRef color) { return answerJson(varnix::probe::plainColorAnswer(color)); }

/// A slot for each class, if two classes implement the same setter.
template <auto Declared, class T = typename decltype(Declared)::Class,
          class Signature = typename decltype(Declared)::Signature>
struct Noted;

template <auto Declared, class T, class... A>
struct Noted<Declared, T, void(A...)> {
  static void install() {
    if (Class cls = objc::classOf<T>()) hook.template install<&note>(cls, Declared);
  }
  static void note(T* self, SEL command, A... arguments) {
    if (noteWrite()) {
      Json write = Json::array({decltype(Declared)::kName.text});
      (write.push_back(argumentJson(arguments)), ...);
      noteWrite()(self, std::move(write));
    }
    hook.original(self, command, arguments...);
  }
  static inline constinit objc::Hook<Declared, T> hook;
};

constexpr void (*kNoted[])() = {
    Noted<_UIBackdropViewSettings::setRequiresColorStatistics>::install,
    Noted<_UIBackdropViewSettings::setUsesColorTintView>::install,
    Noted<_UIBackdropViewSettings::setColorTint>::install,
    Noted<_UIBackdropViewSettings::setColorTintAlpha>::install,
    Noted<_UIBackdropViewSettings::setColorTintMaskAlpha>::install,
    // Backgrounds of folders inherit it.
    Noted<SBIconBlurryBackgroundView::setWallpaperColor>::install,
    Noted<SBIconBlurryBackgroundView::setWallpaperBackgroundRect>::install,
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
