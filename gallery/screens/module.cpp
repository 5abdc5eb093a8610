#include "gallery/screens/module.h"

#include "export.h"

namespace varnix::screens {

namespace {

constexpr const Screen* kScreens[] = {&kApplication,
                                      &kMessages,
                                      &kHome,
                                      &kControlCenter,
                                      &kNotificationCenter,
                                      &kVolume,
                                      &kInstagram,
                                      &kTwitter,
                                      &kSettingsFront,
                                      &kSettingsElement,
                                      &kSettingsApplications,
                                      &kSettingsApplication,
                                      &kSettingsPicker,
                                      &kSettingsPreset};

std::string draw(std::span<const Layer> layers, const Scene& scene, double scale, Effort effort) {
  const Canvas canvas(kWidth, kHeight, scale);
  for (const Layer& layer : layers) layer.screen->draw(canvas, *layer.answers, scene);
  return encodePng(canvas.surface(), effort);
}

}  // namespace

}  // namespace varnix::screens

extern "C" HOST_EXPORT const varnix::screens::Module* varnix_screens() {
  using namespace varnix::screens;
  static const Module module{kScreens, readPicture, varnix::drawing::differenceOf, meanColor, draw};
  return &module;
}
