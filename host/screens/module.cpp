#include "screens/module.h"

#include "export.h"

namespace host::screens {

namespace {

constexpr const Screen* kScreens[] = {
    &kApplication,        &kMessages, &kHome,      &kControlCenter,
    &kNotificationCenter, &kVolume,   &kInstagram, &kTwitter};

std::string draw(std::span<const Layer> layers, const Scene& scene, double scale) {
  const Canvas canvas(kWidth, kHeight, scale);
  for (const Layer& layer : layers) layer.screen->draw(canvas, *layer.answers, scene);
  return encodePng(canvas.surface());
}

}  // namespace

}  // namespace host::screens

extern "C" HOST_EXPORT const host::screens::Module* varnix_screens() {
  using namespace host::screens;
  static const Module module{kScreens, readPicture, meanColor, draw};
  return &module;
}
