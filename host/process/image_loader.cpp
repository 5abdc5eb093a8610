#include "process/image_loader.h"

namespace host {

namespace {
constinit const ImageLoader* other = nullptr;
}  // namespace

void setImageLoader(const ImageLoader* loader) { other = loader; }
const ImageLoader* imageLoader() { return other; }

}  // namespace host
