#include "gallery/screens/module.h"

#include "export.h"
#include "gallery/screens/drawn_layers.h"

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
  drawLayers(canvas, layers, scene);
  return encodePng(canvas.surface(), effort);
}

}  // namespace

}  // namespace varnix::screens

extern "C" HOST_EXPORT const varnix::screens::Module* varnix_screens() {
  using namespace varnix::screens;
  static const Module module{kScreens,   readPicture, varnix::drawing::differenceOf,
                             meanColor,  draw,        contactSheet,
                             dataAddress};
  return &module;
}
