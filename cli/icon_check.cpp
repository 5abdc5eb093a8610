#include "icon_check.h"

#include "Foundation/file_contents.h"
#include "errors.h"
#include "input_limits.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/UIKit.h"

namespace varnix::cli {

namespace {

bool isPicture(const std::string& file) {
  const auto contents = host::fileContents(file, kLargestFile);
  auto* image = contents ? objc::alloc<UIImage>() : nullptr;
  if (image == nullptr) return false;
  auto* data = NSData::dataWithBytes(contents->data(), contents->size());
  return Strong<UIImage>::adopt(send(image, UIImage::initWithData, data)).get() != nullptr;
}

}  // namespace

void checkIcons(const std::map<std::string, std::string>& icons) {
  if (objc::classOf<UIImage>() == nullptr) return;
  objc::AutoreleasePool pool;
  for (const auto& [identifier, file] : icons) {
    if (!isPicture(file)) throw Failure("not a PNG or JPEG image", file);
  }
}

}  // namespace varnix::cli
