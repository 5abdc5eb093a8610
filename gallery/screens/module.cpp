#include "gallery/screens/module.h"

#include "export.h"
#include "gallery/screens/drawn_layers.h"
#include "gallery/screens/surfaces.h"

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

/// As on most phones, whatever the scale of the pictures.
constexpr double kReadingScale = 2;

std::vector<drawing::Reading> read(std::span<const Layer> layers, const Scene& scene) {
  Canvas canvas(kWidth, kHeight, kReadingScale);
  drawing::Inks inks;
  for (const Layer& layer : layers) {
    // What another screen covers cannot be read.
    if (&layer == &layers.back()) canvas.note(&inks);
    layer.screen->draw(canvas, *layer.answers, scene);
  }
  return inks.readings(canvas);
}

std::string draw(std::span<const Layer> layers, const Scene& scene, double scale, Effort effort) {
  const Canvas canvas(kWidth, kHeight, scale);
  drawLayers(canvas, layers, scene);
  return encodePng(canvas.surface(), effort);
}

}  // namespace

}  // namespace varnix::screens

extern "C" HOST_EXPORT const varnix::screens::Module* varnix_screens() {
  using namespace varnix::screens;
  static const Module module{kScreens,  readPicture,  varnix::drawing::differenceOf,
                             meanColor, draw,         read,
                             surfaceOf, contactSheet, dataAddress};
  return &module;
}
