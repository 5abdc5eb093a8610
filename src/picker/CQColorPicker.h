// From an image, a background colour and two text colours that read well on it.
#pragma once

#include "objc/block.h"
#include "picker/CQColorScheme.h"
#include "platform/Dispatch.h"
#include "platform/OpenGLES.h"
#include "platform/UIKit.h"

/// The image is squeezed to 32 x 32 pixels; a shader counts, for each pixel of its upper left
/// quarter, the samples of that quarter that look alike; the counts and colours are read back and
/// the most frequent ones chosen. Requests through the queue run one at a time; the synchronous
/// ones run where they are made and are not to overlap with others. The operations between take
/// part in one request, in the order in which they stand.
struct CQColorPicker : NSObject {
  using Completion = objc::Block<void(CQColorScheme*)>;
  using DictionaryCompletion = objc::Block<void(NSDictionary*)>;

  CQColorPicker* init();
  void dealloc();
  /// Whether the application is not in the background, where GL calls would end it.
  bool isAppActive();

  /// Computes on the picker's queue and calls back on the main one; never calls back where the
  /// application is in the background now. The completion gets nil where it went there meanwhile.
  void pickColorsFromImage(UIImage* image, Completion completion);
  /// On the calling thread. Nil where the application is in the background.
  CQColorScheme* colorSchemeFromImage(UIImage* image);
  /// By a picker that the process shares: {"BackgroundColor", "PrimaryTextColor",
  /// "SecondaryTextColor"} up to the first colour that is missing. Calls back as above.
  static void pickColorFromImage(UIImage* image, DictionaryCompletion completion);

  /// Stretched to that size, in pixels.
  UIImage* scaleImage(UIImage* image, double width, double height);
  UIImage* imageScaledToSize(UIImage* image, CGSize size);

  /// Sets up what the context does not hold yet: nothing grows from request to request.
  void setupOpenGL();
  /// Logs why there is no context, and leaves none current then.
  bool setupContext();
  void setupFrameBuffer();
  void setupRenderBuffer();
  void setupDepthBuffer();
  /// Compiles and links the shaders. No where that fails; the frame is black then.
  bool setupOpenGLForDominantColor();
  void setupVBOs();
  /// No without source or where compiling fails; then there is no shader.
  bool compileShader(GLuint* shader, GLenum type, NSString* source);
  bool linkProgram(GLuint program);
  bool validateProgram(GLuint program);

  /// Uploads the image into the picker's one texture, which it answers.
  GLuint setupTextureFromImage(UIImage* image);
  /// Draws the frame: 32 x 32 pixels whose lower left quarter has, pixel by pixel, the image's
  /// colour and as alpha the number of samples like it, 255 at most. The rest is black.
  void renderDominant();
  /// The most frequent colour of a frame of that size; black where there is none.
  UIColor* backgroundColorOfFrame(NSUInteger width, NSUInteger height);
  /// The same, and the frame itself as an image.
  UIImage* dumpFrame(NSUInteger width, NSUInteger height, UIColor** biggestAlphaColor);

  /// Gives the scheme, which has its background, the frame's most frequent colours that are far
  /// from it and from each other. The second one is white or black where it lacks contrast.
  void findTextColors(CQColorScheme* scheme);
  /// Whether text of that colour reads well: 125 apart in brightness and more than 500 in the sum
  /// of the channels, of 255 and 765. A grey counts as black.
  bool isSufficientContrast(UIColor* background, UIColor* foreground);
  /// The most frequent colour farther than the tolerance (0 to 1, of a channel's range) from the
  /// other one; black where there is none.
  UIColor* colorFromFrameFiltering(NSUInteger width, NSUInteger height, UIColor* color,
                                   float tolerance);

  /// Going to and coming from the background is noticed at the next request alone.
  void addNotificationObservers() {}
  void appDidEnterBackground() {}
  void appDidEnterForeground() {}

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

/// Gives the memory of a dumped frame back.
void freeImageData(void* info, const void* data, std::size_t size);
