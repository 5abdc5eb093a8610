// The module's one function. The colour code adds to UIKit's classes, so that it is loaded after
// them: not with the command, but by it.
#include "common/errors.h"
#include "export.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "pick/analyse.h"
#include "pick/card.h"

extern "C" HOST_EXPORT void varnix_pick(const varnix::cli::pick::Request& request,
                                        varnix::cli::pick::Answer& answer) {
  namespace pick = varnix::cli::pick;
  if (request.wantsPicture && request.files.size() > pick::maximumCards()) {
    throw varnix::cli::UsageError("too many images for one picture",
                                  std::to_string(request.files.size()) + " (" +
                                      std::to_string(pick::maximumCards()) + " at most)");
  }
  const objc::AutoreleasePool pool;
  const auto picker = objc::make<CQColorPicker>();
  for (const std::string& file : request.files) {
    answer.images.push_back(pick::analyse(picker, file, request));
  }
  if (request.wantsPicture) answer.picture = pick::drawCards(answer.images);
}
