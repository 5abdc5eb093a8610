// Takes a background colour and two text colours that read well on it from an image.
#pragma once

#include "objc/block.h"
#include "picker/CQColorScheme.h"
#include "platform/OpenGLES.h"

/// The image is squeezed to 32 x 32 pixels. For each pixel of its upper left quarter, a shader
/// counts the similar samples in that quarter. The counts and colours are read back, and the most
/// frequent ones are chosen. Requests through the queue run one at a time. Synchronous requests run
/// on the calling thread and must not overlap with others. The other operations are the steps of
/// one request, in this order.
struct CQColorPicker : objc::View<CQColorPicker, NSObject> {
  using Completion = objc::Block<void(CQColorScheme*)>;
  using DictionaryCompletion = objc::Block<void(NSDictionary*)>;

  /// Whether the application is not in the background. There GL calls would end it.
  static constexpr Message<"isAppActive", bool()> isAppActive{};

  /// Computes on the picker's queue and calls back on the main one; never calls back if the
  /// application is already in the background. If it goes there meanwhile, the completion gets nil.
  static constexpr Message<"pickColorsFromImage:onComplete:", void(UIImage*, Completion)>
      pickColorsFromImage{};
  /// Runs on the calling thread and restores its GL context. Nil if the application is in the
  /// background.
  static constexpr Message<"colorSchemeFromImage:", CQColorScheme*(UIImage*)>
      colorSchemeFromImage{};
  /// Uses a picker that the process shares. Gives {"BackgroundColor", "PrimaryTextColor",
  /// "SecondaryTextColor"}, up to the first colour that is missing. Calls back as above.
  static constexpr ClassMessage<"pickColorFromImage:onComplete:",
                                void(UIImage*, DictionaryCompletion)>
      pickColorFromImage{};

  /// Stretched to that size, in pixels.
  static constexpr Message<"scaleImage:width:height:", UIImage*(UIImage*, double, double)>
      scaleImage{};
  static constexpr Message<"imageWithImage:scaledToSize:", UIImage*(UIImage*, CGSize)>
      imageWithImageScaledToSize{};

  /// Sets up what the context does not have yet, so that nothing grows from request to request.
  static constexpr Message<"setupOpenGL", void()> setupOpenGL{};
  /// If there is no context, logs why and leaves none current.
  static constexpr Message<"setupContext", bool()> setupContext{};
  static constexpr Message<"setupFrameBuffer", void()> setupFrameBuffer{};
  static constexpr Message<"setupRenderBuffer", void()> setupRenderBuffer{};
  static constexpr Message<"setupDepthBuffer", void()> setupDepthBuffer{};
  /// Compiles and links the shaders. No if that fails; the frame is black then.
  static constexpr Message<"setupOpenGLForDominantColor", bool()> setupOpenGLForDominantColor{};
  static constexpr Message<"setupVBOs", void()> setupVBOs{};
  /// No, and no shader, without source or if it does not compile.
  static constexpr Message<"compileShader:type:string:", bool(GLuint*, GLenum, NSString*)>
      compileShader{};
  static constexpr Message<"linkProgram:", bool(GLuint)> linkProgram{};
  static constexpr Message<"validateProgram:", bool(GLuint)> validateProgram{};

  /// Uploads the image into the picker's one texture, and returns that.
  static constexpr Message<"setupTextureFromImage:", GLuint(UIImage*)> setupTextureFromImage{};
  /// Draws the frame of 32 x 32 pixels. Each pixel of its lower left quarter has the image's
  /// colour, and as alpha the number of similar samples, at most 255. The rest is black.
  static constexpr Message<"renderDominant", void()> renderDominant{};
  /// The most frequent colour of a frame of that size; black if there is none.
  static constexpr Message<"colorWithBiggerCountFromImageWidth:height:",
                           UIColor*(NSUInteger, NSUInteger)>
      colorWithBiggerCount{};
  /// The same, and the frame itself as an image.
  static constexpr Message<"dumpImageWithWidth:height:biggestAlphaColorReturn:",
                           UIImage*(NSUInteger, NSUInteger, UIColor**)>
      dumpImage{};

  /// Sets the text colours of a scheme that has its background: the frame's most frequent colours
  /// that are far from it and from each other. The second becomes white or black if it lacks
  /// contrast.
  static constexpr Message<"findTextColorsTaskForColorScheme:", void(CQColorScheme*)>
      findTextColors{};
  /// Whether text of that colour reads well: it differs by 125 in brightness (of 255) and by more
  /// than 500 in the sum of the channels (of 765). A grey counts as black.
  static constexpr Message<"isSufficienteContrastBetweenBackground:andForground:",
                           bool(UIColor* background, UIColor* foreground)>
      isSufficienteContrast{};
  /// The most frequent colour farther than the tolerance (0 to 1, of a channel's range) from the
  /// other one; black if there is none.
  static constexpr Message<"colorFromImageWithWidth:height:filteringColor:tolerance:",
                           UIColor*(NSUInteger, NSUInteger, UIColor*, float)>
      colorFromImageFiltering{};

  // Moves to and from the background are noticed only at the next request.
  static constexpr Message<"addNotificationObservers", void()> addNotificationObservers{};
  static constexpr Message<"appDidEnterBackground", void()> appDidEnterBackground{};
  static constexpr Message<"appDidEnterForeground", void()> appDidEnterForeground{};
};
OBJC_OWN_CLASS(CQColorPicker);
