#include "picker/CQColorPicker_object.h"

namespace varnix {

NSObject* ColorPicker::init() {
  if (objc::sendSuper<CQColorPicker>(self(), NSObject::init) == nullptr) return nullptr;
  taskQueue = Strong<dispatch_queue_s>::adopt(dispatch_queue_create("CQColorPickerQueue", nullptr));
  dispatch_set_target_queue(taskQueue, dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_LOW, 0));
  send(self(), CQColorPicker::addNotificationObservers);
  return this;
}

bool ColorPicker::isAppActive() {
  return send(UIApplication::sharedApplication(), UIApplication::applicationState) !=
         UIApplicationStateBackground;
}

// The queue and the context are freed with the last reference, and the context's objects with it.
void ColorPicker::dealloc() { objc::sendSuper<CQColorPicker>(self(), NSObject::dealloc); }

}  // namespace varnix

using objc::Implements;
using objc::Ivar;
using varnix::ColorPicker;

OBJC_PRIVATE_CLASS_NAMED(
    CQColorPicker, NSObject, ColorPicker, NSObject,
    Ivar<"_vertexBuffer", &ColorPicker::_vertexBuffer>,
    Ivar<"_indexBuffer", &ColorPicker::_indexBuffer>,
    Ivar<"_colorRenderBuffer", &ColorPicker::_colorRenderBuffer>,
    Ivar<"_depthRenderBuffer", &ColorPicker::_depthRenderBuffer>,
    Ivar<"_program", &ColorPicker::_program>,
    Ivar<"_proccesedWidthSlot", &ColorPicker::_proccesedWidthSlot>,
    Ivar<"_totalWidthSlot", &ColorPicker::_totalWidthSlot>,
    Ivar<"_positionSlot", &ColorPicker::_positionSlot>,
    Ivar<"_colorSlot", &ColorPicker::_colorSlot>,
    Ivar<"_texCoordSlot", &ColorPicker::_texCoordSlot>,
    Ivar<"_textureUniform", &ColorPicker::_textureUniform>,
    Ivar<"_aTexture", &ColorPicker::_aTexture>, Ivar<"_tolerance", &ColorPicker::_tolerance>,
    Ivar<"_colorToFilter", &ColorPicker::_colorToFilter>,
    Ivar<"_currentImage", &ColorPicker::_currentImage>,
    Ivar<"_eaglLayer", &ColorPicker::_eaglLayer>, Ivar<"_context", &ColorPicker::_context>,
    Ivar<"taskQueue", &ColorPicker::taskQueue>, Implements<NSObject::init, &ColorPicker::init>,
    Implements<CQColorPicker::pickColorsFromImage, &ColorPicker::pickColorsFromImage>,
    Implements<CQColorPicker::colorSchemeFromImage, &ColorPicker::colorSchemeFromImage>,
    Implements<CQColorPicker::setupOpenGL, &ColorPicker::setupOpenGL>,
    Implements<CQColorPicker::renderDominant, &ColorPicker::renderDominant>,
    Implements<CQColorPicker::setupTextureFromImage, &ColorPicker::setupTextureFromImage>,
    Implements<CQColorPicker::setupContext, &ColorPicker::setupContext>,
    Implements<CQColorPicker::setupFrameBuffer, &ColorPicker::setupFrameBuffer>,
    Implements<CQColorPicker::setupRenderBuffer, &ColorPicker::setupRenderBuffer>,
    Implements<CQColorPicker::setupDepthBuffer, &ColorPicker::setupDepthBuffer>,
    Implements<CQColorPicker::setupVBOs, &ColorPicker::setupVBOs>,
    Implements<CQColorPicker::setupOpenGLForDominantColor,
               &ColorPicker::setupOpenGLForDominantColor>,
    Implements<CQColorPicker::compileShader, &ColorPicker::compileShader>,
    Implements<CQColorPicker::linkProgram, &ColorPicker::linkProgram>,
    Implements<CQColorPicker::validateProgram, &ColorPicker::validateProgram>,
    Implements<CQColorPicker::dumpImage, &ColorPicker::dumpFrame>,
    Implements<CQColorPicker::colorWithBiggerCount, &ColorPicker::backgroundColorOfFrame>,
    Implements<CQColorPicker::colorFromImageFiltering, &ColorPicker::colorFromFrameFiltering>,
    Implements<CQColorPicker::findTextColors, &ColorPicker::findTextColors>,
    Implements<CQColorPicker::scaleImage, &ColorPicker::scaleImage>,
    Implements<CQColorPicker::isSufficienteContrast, &ColorPicker::isSufficientContrast>,
    Implements<CQColorPicker::imageWithImageScaledToSize, &ColorPicker::imageScaledToSize>,
    Implements<CQColorPicker::addNotificationObservers, &ColorPicker::addNotificationObservers>,
    Implements<NSObject::dealloc, &ColorPicker::dealloc>,
    Implements<CQColorPicker::appDidEnterBackground, &ColorPicker::appDidEnterBackground>,
    Implements<CQColorPicker::appDidEnterForeground, &ColorPicker::appDidEnterForeground>,
    Implements<CQColorPicker::isAppActive, &ColorPicker::isAppActive>,
    Implements<CQColorPicker::pickColorFromImage, &ColorPicker::pickColorFromImage>)
