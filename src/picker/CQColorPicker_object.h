// The picker's implementation: its queue, its context and the names of the context's objects.
#pragma once

#include "objc/implementation.h"
#include "picker/CQColorPicker.h"
#include "platform/Dispatch.h"

namespace varnix {

struct ColorPicker : objc::Implementation<CQColorPicker> {
  NSObject* init();
  void dealloc();
  bool isAppActive();
  void addNotificationObservers() {}
  void appDidEnterBackground() {}
  void appDidEnterForeground() {}

  void pickColorsFromImage(UIImage* image, CQColorPicker::Completion completion);
  static void pickColorFromImage(UIImage* image, CQColorPicker::DictionaryCompletion completion);
  CQColorScheme* colorSchemeFromImage(UIImage* image);
  UIImage* scaleImage(UIImage* image, double width, double height);
  UIImage* imageScaledToSize(UIImage* image, CGSize size);

  void setupOpenGL();
  bool setupContext();
  void setupFrameBuffer();
  void setupRenderBuffer();
  void setupDepthBuffer();
  bool setupOpenGLForDominantColor();
  void setupVBOs();
  bool compileShader(GLuint* shader, GLenum type, NSString* source);
  bool linkProgram(GLuint program);
  bool validateProgram(GLuint program);

  GLuint setupTextureFromImage(UIImage* image);
  void renderDominant();
  UIColor* backgroundColorOfFrame(NSUInteger width, NSUInteger height);
  UIImage* dumpFrame(NSUInteger width, NSUInteger height, UIColor** biggestAlphaColor);

  void findTextColors(CQColorScheme* scheme);
  bool isSufficientContrast(UIColor* background, UIColor* foreground);
  UIColor* colorFromFrameFiltering(NSUInteger width, NSUInteger height, UIColor* color,
                                   float tolerance);

  /// Whether GL calls reach the picker's context. If not, they would reach someone else's.
  bool isContextCurrent() const {
    return _context != nullptr && EAGLContext::currentContext() == _context;
  }

  GLuint _vertexBuffer, _indexBuffer;
  GLuint _colorRenderBuffer, _depthRenderBuffer;
  GLuint _program;
  GLuint _proccesedWidthSlot, _totalWidthSlot;
  GLuint _positionSlot, _colorSlot, _texCoordSlot;
  GLuint _textureUniform;
  GLuint _aTexture;
  GLuint _tolerance, _colorToFilter;  ///< not in use
  Strong<UIImage> _currentImage;      ///< not in use
  Strong<CAEAGLLayer> _eaglLayer;     ///< not in use
  Strong<EAGLContext> _context;       ///< made by the first request
  Strong<dispatch_queue_s> taskQueue;
};

/// Frees the memory of a dumped frame.
void freeImageData(void* info, const void* data, std::size_t size);

}  // namespace varnix
