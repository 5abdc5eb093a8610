// From an image, a background colour and two text colours that read well on it.
#pragma once

#include "objc/block.h"
#include "picker/CQColorScheme.h"
#include "platform/OpenGLES.h"

/// The image is squeezed to 32 x 32 pixels; a shader counts, for each pixel of its upper left
/// quarter, the samples of that quarter that look alike; the counts and colours are read back and
/// the most frequent ones chosen. Requests through the queue run one at a time; the synchronous
/// ones run where they are made and are not to overlap with others. The operations between take
/// part in one request, in the order in which they stand.
struct CQColorPicker : objc::View<CQColorPicker, NSObject> {
  using Completion = objc::Block<void(CQColorScheme*)>;
  using DictionaryCompletion = objc::Block<void(NSDictionary*)>;

  /// Whether the application is not in the background, where GL calls would end it.
  static constexpr Message<"isAppActive", bool()> isAppActive{};

  /// Computes on the picker's queue and calls back on the main one; never calls back where the
  /// application is in the background now. The completion gets nil where it went there meanwhile.
  static constexpr Message<"pickColorsFromImage:onComplete:", void(UIImage*, Completion)>
      pickColorsFromImage{};
  /// On the calling thread, whose GL context is the one from before when it returns. Nil where the
  /// application is in the background.
  static constexpr Message<"colorSchemeFromImage:", CQColorScheme*(UIImage*)>
      colorSchemeFromImage{};
  /// By a picker that the process shares: {"BackgroundColor", "PrimaryTextColor",
  /// "SecondaryTextColor"} up to the first colour that is missing. Calls back as above.
  static constexpr ClassMessage<"pickColorFromImage:onComplete:",
                                void(UIImage*, DictionaryCompletion)>
      pickColorFromImage{};

  /// Stretched to that size, in pixels.
  static constexpr Message<"scaleImage:width:height:", UIImage*(UIImage*, double, double)>
      scaleImage{};
  static constexpr Message<"imageWithImage:scaledToSize:", UIImage*(UIImage*, CGSize)>
      imageWithImageScaledToSize{};

  /// Sets up what the context does not hold yet: nothing grows from request to request.
  static constexpr Message<"setupOpenGL", void()> setupOpenGL{};
  /// Logs why there is no context, and leaves none current then.
  static constexpr Message<"setupContext", bool()> setupContext{};
  static constexpr Message<"setupFrameBuffer", void()> setupFrameBuffer{};
  static constexpr Message<"setupRenderBuffer", void()> setupRenderBuffer{};
  static constexpr Message<"setupDepthBuffer", void()> setupDepthBuffer{};
  /// Compiles and links the shaders. No where that fails; the frame is black then.
  static constexpr Message<"setupOpenGLForDominantColor", bool()> setupOpenGLForDominantColor{};
  static constexpr Message<"setupVBOs", void()> setupVBOs{};
  /// No without source or where compiling fails; then there is no shader.
  static constexpr Message<"compileShader:type:string:", bool(GLuint*, GLenum, NSString*)>
      compileShader{};
  static constexpr Message<"linkProgram:", bool(GLuint)> linkProgram{};
  static constexpr Message<"validateProgram:", bool(GLuint)> validateProgram{};

  /// Uploads the image into the picker's one texture, which it answers.
  static constexpr Message<"setupTextureFromImage:", GLuint(UIImage*)> setupTextureFromImage{};
  /// Draws the frame: 32 x 32 pixels whose lower left quarter has, pixel by pixel, the image's
  /// colour and as alpha the number of samples like it, 255 at most. The rest is black.
  static constexpr Message<"renderDominant", void()> renderDominant{};
  /// The most frequent colour of a frame of that size; black where there is none.
  static constexpr Message<"colorWithBiggerCountFromImageWidth:height:",
                           UIColor*(NSUInteger, NSUInteger)>
      colorWithBiggerCount{};
  /// The same, and the frame itself as an image.
  static constexpr Message<"dumpImageWithWidth:height:biggestAlphaColorReturn:",
                           UIImage*(NSUInteger, NSUInteger, UIColor**)>
      dumpImage{};

  /// Gives the scheme, which has its background, the frame's most frequent colours that are far
  /// from it and from each other. The second one is white or black where it lacks contrast.
  static constexpr Message<"findTextColorsTaskForColorScheme:", void(CQColorScheme*)>
      findTextColors{};
  /// Whether text of that colour reads well: 125 apart in brightness and more than 500 in the sum
  /// of the channels, of 255 and 765. A grey counts as black.
  static constexpr Message<"isSufficienteContrastBetweenBackground:andForground:",
                           bool(UIColor* background, UIColor* foreground)>
      isSufficienteContrast{};
  /// The most frequent colour farther than the tolerance (0 to 1, of a channel's range) from the
  /// other one; black where there is none.
  static constexpr Message<"colorFromImageWithWidth:height:filteringColor:tolerance:",
                           UIColor*(NSUInteger, NSUInteger, UIColor*, float)>
      colorFromImageFiltering{};

  // Going to and coming from the background is noticed at the next request alone.
  static constexpr Message<"addNotificationObservers", void()> addNotificationObservers{};
  static constexpr Message<"appDidEnterBackground", void()> appDidEnterBackground{};
  static constexpr Message<"appDidEnterForeground", void()> appDidEnterForeground{};
};
OBJC_OWN_CLASS(CQColorPicker);
