// What the module offers. The colour code adds to UIKit's classes, so it must be loaded after them:
// by the command, not with it.
#include "common/errors.h"
#include "export.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "pick/analyse.h"
#include "pick/card.h"

namespace varnix::cli::pick {

namespace {

Answer answer(const Request& request) {
  if (request.wantsPicture && request.files.size() > maximumCards()) {
    throw UsageError(
        "too many images for one picture",
        std::to_string(request.files.size()) + " (" + std::to_string(maximumCards()) + " at most)");
  }
  const objc::AutoreleasePool pool;
  const auto picker = objc::make<CQColorPicker>();
  Answer answer;
  for (const std::string& file : request.files) {
    answer.images.push_back(analyse(picker, file, request));
  }
  if (request.wantsPicture) answer.picture = drawCards(answer.images);
  return answer;
}

constexpr Module kPick{answer};

}  // namespace

}  // namespace varnix::cli::pick

extern "C" HOST_EXPORT const varnix::cli::pick::Module* varnix_pick() noexcept {
  return &varnix::cli::pick::kPick;
}
