#include "picker/CQColorPicker.h"

#include "objc/define.h"

using objc::ClassMethod;
using objc::Ivar;
using objc::Method;

CQColorPicker* CQColorPicker::init() {
  if (sendSuper<CQColorPicker*>(this, "init"_sel) == nullptr) return nullptr;
  taskQueue = Strong<dispatch_queue_s>::adopt(dispatch_queue_create("CQColorPickerQueue", nullptr));
  dispatch_set_target_queue(taskQueue,
                            dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_BACKGROUND, 0));
  send<void>(this, "addNotificationObservers"_sel);
  return this;
}

bool CQColorPicker::isAppActive() {
  return send<NSInteger>(UIApplication::sharedApplication(), "applicationState"_sel) !=
         UIApplicationStateBackground;
}

// The queue and the context go with the last reference; what the context holds goes with it.
void CQColorPicker::dealloc() { sendSuper<void>(this, "dealloc"_sel); }

OBJC_CLASS(
    CQColorPicker, NSObject, Ivar<"_vertexBuffer", &CQColorPicker::_vertexBuffer>,
    Ivar<"_indexBuffer", &CQColorPicker::_indexBuffer>,
    Ivar<"_colorRenderBuffer", &CQColorPicker::_colorRenderBuffer>,
    Ivar<"_depthRenderBuffer", &CQColorPicker::_depthRenderBuffer>,
    Ivar<"_program", &CQColorPicker::_program>,
    Ivar<"_proccesedWidthSlot", &CQColorPicker::_proccesedWidthSlot>,
    Ivar<"_totalWidthSlot", &CQColorPicker::_totalWidthSlot>,
    Ivar<"_positionSlot", &CQColorPicker::_positionSlot>,
    Ivar<"_colorSlot", &CQColorPicker::_colorSlot>,
    Ivar<"_texCoordSlot", &CQColorPicker::_texCoordSlot>,
    Ivar<"_textureUniform", &CQColorPicker::_textureUniform>,
    Ivar<"_aTexture", &CQColorPicker::_aTexture>, Ivar<"_tolerance", &CQColorPicker::_tolerance>,
    Ivar<"_colorToFilter", &CQColorPicker::_colorToFilter>,
    Ivar<"_currentImage", &CQColorPicker::_currentImage>,
    Ivar<"_eaglLayer", &CQColorPicker::_eaglLayer>, Ivar<"_context", &CQColorPicker::_context>,
    Ivar<"taskQueue", &CQColorPicker::taskQueue>, Method<"init", &CQColorPicker::init>,
    Method<"pickColorsFromImage:onComplete:", &CQColorPicker::pickColorsFromImage>,
    Method<"colorSchemeFromImage:", &CQColorPicker::colorSchemeFromImage>,
    Method<"setupOpenGL", &CQColorPicker::setupOpenGL>,
    Method<"renderDominant", &CQColorPicker::renderDominant>,
    Method<"setupTextureFromImage:", &CQColorPicker::setupTextureFromImage>,
    Method<"setupContext", &CQColorPicker::setupContext>,
    Method<"setupFrameBuffer", &CQColorPicker::setupFrameBuffer>,
    Method<"setupRenderBuffer", &CQColorPicker::setupRenderBuffer>,
    Method<"setupDepthBuffer", &CQColorPicker::setupDepthBuffer>,
    Method<"setupVBOs", &CQColorPicker::setupVBOs>,
    Method<"setupOpenGLForDominantColor", &CQColorPicker::setupOpenGLForDominantColor>,
    Method<"compileShader:type:string:", &CQColorPicker::compileShader>,
    Method<"linkProgram:", &CQColorPicker::linkProgram>,
    Method<"validateProgram:", &CQColorPicker::validateProgram>,
    Method<"dumpImageWithWidth:height:biggestAlphaColorReturn:", &CQColorPicker::dumpFrame>,
    Method<"colorWithBiggerCountFromImageWidth:height:", &CQColorPicker::backgroundColorOfFrame>,
    Method<"colorFromImageWithWidth:height:filteringColor:tolerance:",
           &CQColorPicker::colorFromFrameFiltering>,
    Method<"findTextColorsTaskForColorScheme:", &CQColorPicker::findTextColors>,
    Method<"scaleImage:width:height:", &CQColorPicker::scaleImage>,
    Method<"isSufficienteContrastBetweenBackground:andForground:",
           &CQColorPicker::isSufficientContrast>,
    Method<"imageWithImage:scaledToSize:", &CQColorPicker::imageScaledToSize>,
    Method<"addNotificationObservers", &CQColorPicker::addNotificationObservers>,
    Method<"dealloc", &CQColorPicker::dealloc>,
    Method<"appDidEnterBackground", &CQColorPicker::appDidEnterBackground>,
    Method<"appDidEnterForeground", &CQColorPicker::appDidEnterForeground>,
    Method<"isAppActive", &CQColorPicker::isAppActive>,
    ClassMethod<"pickColorFromImage:onComplete:", &CQColorPicker::pickColorFromImage>)
