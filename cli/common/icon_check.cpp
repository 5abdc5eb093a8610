#include "common/icon_check.h"

#include "Foundation/file_contents.h"
#include "Foundation/text.h"
#include "common/errors.h"
#include "common/input_limits.h"
#include "common/warning.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/UIKit.h"

namespace varnix::cli {

namespace {

/// Nil if it is not a picture.
Strong<UIImage> pictureIn(const std::string& file) {
  NSData* data = host::fileData(file, kLargestFile);
  if (data == nullptr) return {};
  return Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData, data));
}

}  // namespace

void warnOfMissingRows(NSObject* image, const std::string& file) {
  if (auto* problem = send<NSString*>(image, "standIn_problem"_sel))
    warn(file + ": " + std::string(host::text(problem)));
}

void checkIcons(const std::map<std::string, std::string>& icons) {
  if (objc::classOf<UIImage>() == nullptr) return;
  objc::AutoreleasePool pool;
  for (const auto& [identifier, file] : icons) {
    const Strong<UIImage> picture = pictureIn(file);
    if (picture == nullptr) throw Failure("not a PNG or JPEG image", file);
    warnOfMissingRows(picture.get(), file);
  }
}

}  // namespace varnix::cli
