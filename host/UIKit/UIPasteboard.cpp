// The clipboard: a file in the container, so that all its processes have the same.
#include <unistd.h>

#include <filesystem>

#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/UIKitLists.h"
#include "process/container.h"

namespace {

constexpr std::size_t kLargestText = 16 << 20;

std::string clipboardFile() {
  return host::hostPath("/var/mobile/Library/Caches/com.apple.UIKit.pboard/general");
}

struct Pasteboard : UIPasteboard {
  static UIPasteboard* general();
  /// Nil too for what is not UTF-8.
  NSString* stringOf() {
    const auto contents = host::fileContents(clipboardFile(), kLargestText);
    return contents ? host::makeString(*contents) : nullptr;
  }
  /// Nil empties it.
  void setString(NSString* text) {
    const std::string file = clipboardFile();
    if (file.empty()) return;
    std::error_code ignored;
    if (text == nullptr) {
      std::filesystem::remove(file, ignored);
      return;
    }
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
    host::writeFile(file, host::text(text), true);
  }
};

}  // namespace

OBJC_CLASS_NAMED(UIPasteboard, NSObject, Pasteboard, NSObject,
                 objc::ClassMethod<"generalPasteboard", &Pasteboard::general>,
                 objc::Method<"string", &Pasteboard::stringOf>,
                 objc::Method<"setString:", &Pasteboard::setString>)

UIPasteboard* Pasteboard::general() {
  static auto* board =
      static_cast<UIPasteboard*>(class_createInstance(&objc_class_UIPasteboard, 0));
  return board;
}
