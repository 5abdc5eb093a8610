#include "gallery/screens/data_address.h"

#include <memory>

#include <glib.h>

namespace varnix::screens {

std::string dataAddress(const std::string& png) {
  const std::unique_ptr<char, decltype(&g_free)> text(
      g_base64_encode(reinterpret_cast<const guchar*>(png.data()), png.size()), &g_free);
  return std::string("data:image/png;base64,") + text.get();
}

}  // namespace varnix::screens
