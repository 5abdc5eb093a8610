// A request's steps in order, what is made only once, and what happens if the graphics fail.
#include <filesystem>

#include "OpenGLES/gl.h"
#include "platform/OpenGLES.h"
#include "support/hosted.h"
#include "support/pictures.h"
#include "support/recorded.h"

namespace {

using test::calls;
using test::hex;
using test::make;
using test::picture;
using test::plainPicture;
using test::Recorded;
using Lines = std::vector<std::string>;

/// The number is the log's level: 5 is a notice, which NSLog writes.
const std::string kNoContext = "5 Failed to initialize OpenGLES 2.0 context";
const std::string kNotCurrent = "5 Failed to set current OpenGL context";

class Setup : public test::Hosted {
 protected:
  void SetUp() override {
    application("");
    picker = make<NSObject>("CQColorPicker");
  }
  NSObject* schemeOf(UIImage* image) {
    return send<NSObject*>(picker, "colorSchemeFromImage:"_sel, image);
  }
  static std::string textOf(NSObject* scheme) {
    return hex(send<UIColor*>(scheme, "backgroundColor"_sel)) + " " +
           hex(send<UIColor*>(scheme, "primaryTextColor"_sel)) + " " +
           hex(send<UIColor*>(scheme, "secondaryTextColor"_sel));
  }
  std::string colorsOf(UIImage* image) { return textOf(schemeOf(image)); }
  GLuint field(const char* name) {
    objc_ivar* ivar = class_getInstanceVariable(picker->isa, name);
    return *reinterpret_cast<GLuint*>(reinterpret_cast<char*>(picker) + ivar_getOffset(ivar));
  }

  NSObject* picker = nullptr;
};

const std::string kBlackFrame = "#000000ff #000000ff #ffffffff";

/// How often each function that creates an object was called.
std::string made() {
  std::string counts;
  for (const char* name : {"glGenFramebuffers", "glGenRenderbuffers", "glGenBuffers",
                           "glGenTextures", "glCreateShader", "glCreateProgram"}) {
    counts += std::to_string(host::gl::callCount(name)) + " ";
  }
  return counts;
}

TEST_F(Setup, TakesItsStepsInOrder) {
  Class cls = picker->isa;
  Recorded<"isAppActive", bool()>::install(cls);
  Recorded<"scaleImage:width:height:", UIImage*(UIImage*, double, double)>::install(cls);
  Recorded<"imageWithImage:scaledToSize:", UIImage*(UIImage*, CGSize)>::install(cls);
  Recorded<"setupOpenGL", void()>::install(cls);
  Recorded<"setupContext", bool()>::install(cls);
  Recorded<"setupFrameBuffer", void()>::install(cls);
  Recorded<"setupRenderBuffer", void()>::install(cls);
  Recorded<"setupDepthBuffer", void()>::install(cls);
  Recorded<"setupOpenGLForDominantColor", bool()>::install(cls);
  Recorded<"compileShader:type:string:", bool(GLuint*, GLenum, NSString*)>::install(cls);
  Recorded<"linkProgram:", bool(GLuint)>::install(cls);
  Recorded<"setupVBOs", void()>::install(cls);
  Recorded<"setupTextureFromImage:", GLuint(UIImage*)>::install(cls);
  Recorded<"renderDominant", void()>::install(cls);
  Recorded<"colorWithBiggerCountFromImageWidth:height:", UIColor*(NSUInteger, NSUInteger)>::install(
      cls);
  Recorded<"findTextColorsTaskForColorScheme:", void(NSObject*)>::install(cls);
  Recorded<"isSufficienteContrastBetweenBackground:andForground:",
           bool(UIColor*, UIColor*)>::install(cls);

  const Lines before = {"isAppActive",
                        "scaleImage:width:height:",
                        "imageWithImage:scaledToSize:",
                        "setupOpenGL",
                        "setupContext",
                        "setupFrameBuffer",
                        "setupRenderBuffer",
                        "setupDepthBuffer",
                        "setupOpenGLForDominantColor"};
  const Lines after = {"setupVBOs",
                       "setupTextureFromImage:",
                       "renderDominant",
                       "colorWithBiggerCountFromImageWidth:height:",
                       "findTextColorsTaskForColorScheme:",
                       "isSufficienteContrastBetweenBackground:andForground:"};
  Lines first = before;
  first.insert(first.end(),
               {"compileShader:type:string:", "compileShader:type:string:", "linkProgram:"});
  first.insert(first.end(), after.begin(), after.end());
  EXPECT_EQ(colorsOf(plainPicture(255, 255, 255)), "#ffffffff #000000ff #000000ff");
  EXPECT_EQ(calls(), first);

  calls().clear();
  Lines second = before;
  second.insert(second.end(), after.begin(), after.end());
  EXPECT_EQ(colorsOf(plainPicture(200, 30, 40)), "#c81e28ff #000000ff #ffffffff");
  EXPECT_EQ(calls(), second);
}

TEST_F(Setup, MakesEverythingOnce) {
  colorsOf(plainPicture(10, 20, 30));
  const std::string once = "1 2 2 1 2 1 ";
  EXPECT_EQ(made(), once);
  const GLuint texture = field("_aTexture");
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(colorsOf(plainPicture(0, 255, 0)), "#00ff00ff #000000ff #000000ff");
    EXPECT_EQ(colorsOf(plainPicture(0, 0, 255)), "#0000ffff #000000ff #ffffffff");
  }
  EXPECT_EQ(made(), once);
  EXPECT_EQ(field("_aTexture"), texture);
}

// Other code that draws in the same context leaves its own buffers bound.
TEST_F(Setup, BindsItsBuffersForEachPass) {
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), "#ff0000ff #000000ff #ffffffff");
  ASSERT_TRUE(send<bool>(picker, "setupContext"_sel));
  GLuint foreign[2];
  glGenBuffers(2, foreign);
  const GLfloat zeros[64]{};
  glBindBuffer(GL_ARRAY_BUFFER, foreign[0]);
  glBufferData(GL_ARRAY_BUFFER, sizeof zeros, zeros, GL_STATIC_DRAW);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, foreign[1]);
  glBufferData(GL_ELEMENT_ARRAY_BUFFER, sizeof zeros, zeros, GL_STATIC_DRAW);
  EXPECT_EQ(colorsOf(plainPicture(0, 255, 0)), "#00ff00ff #000000ff #000000ff");
}

TEST_F(Setup, DeletesNothingByItself) {
  colorsOf(plainPicture(10, 20, 30));
  EXPECT_EQ(host::gl::callCount("glDeleteShader"), 0U);
  EXPECT_EQ(host::gl::callCount("glDeleteProgram"), 0U);
}

TEST_F(Setup, KeepsOneContextForItsLife) {
  EXPECT_TRUE(send<bool>(picker, "setupContext"_sel));
  auto* first = send<NSObject*>(objc_getClass("EAGLContext"), "currentContext"_sel);
  ASSERT_NE(first, nullptr);
  EAGLContext::setCurrentContext(nullptr);
  EXPECT_TRUE(send<bool>(picker, "setupContext"_sel));
  EXPECT_EQ(send<NSObject*>(objc_getClass("EAGLContext"), "currentContext"_sel), first);
}

TEST_F(Setup, SqueezesInsteadOfCropping) {
  // Ten times as wide as high: the upper left quarter of the frame shows the left half.
  UIImage* wide = picture(320, 32, [](std::size_t x, std::size_t) {
    return x < 160 ? test::Pixel{255, 0, 0, 255} : test::Pixel{0, 0, 255, 255};
  });
  EXPECT_EQ(colorsOf(wide), "#ff0000ff #000000ff #ffffffff");
  auto* scaled = send<UIImage*>(picker, "scaleImage:width:height:"_sel, wide, 32.0, 32.0);
  const auto size = send<CGSize>(scaled, "size"_sel);
  EXPECT_EQ(size.width, 32);
  EXPECT_EQ(size.height, 32);
  EXPECT_EQ(CGImageGetWidth(send<CGImageRef>(scaled, "CGImage"_sel)), 32U);
}

TEST_F(Setup, ANilImageIsBlack) { EXPECT_EQ(colorsOf(nullptr), kBlackFrame); }

TEST_F(Setup, ATransparentImageIsBlack) {
  EXPECT_EQ(colorsOf(picture(64, 64, [](auto, auto) { return test::Pixel{}; })), kBlackFrame);
}

TEST_F(Setup, TellsWhyThereIsNoContext) {
  host::gl::setAvailable(false);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), kBlackFrame);
  EXPECT_EQ(log(), Lines{kNoContext});
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), kBlackFrame);
  EXPECT_EQ(log(), (Lines{kNoContext, kNoContext}));
  EXPECT_EQ(field("_colorRenderBuffer") + field("_program") + field("_aTexture"), 0U);
  host::gl::setAvailable(true);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), "#ff0000ff #000000ff #ffffffff");
  EXPECT_EQ(log().size(), 2U);
}

TEST_F(Setup, TellsWhenItsContextIsRefused) {
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), "#ff0000ff #000000ff #ffffffff");
  host::gl::failActivation(true);
  EXPECT_FALSE(send<bool>(picker, "setupContext"_sel));
  EXPECT_EQ(log(), Lines{kNotCurrent});
  // Neither the previous frame's colours nor those of this image.
  EXPECT_EQ(colorsOf(plainPicture(0, 255, 0)), kBlackFrame);
  EXPECT_EQ(log(), (Lines{kNotCurrent, kNotCurrent}));
  host::gl::failActivation(false);
  EXPECT_EQ(colorsOf(plainPicture(0, 255, 0)), "#00ff00ff #000000ff #000000ff");
}

TEST_F(Setup, LeavesAForeignContextAlone) {
  auto* foreign = send<EAGLContext*>(objc::alloc<EAGLContext>(), "initWithAPI:"_sel,
                                     kEAGLRenderingAPIOpenGLES2);
  ASSERT_TRUE(EAGLContext::setCurrentContext(foreign));
  host::gl::setAvailable(false);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), kBlackFrame);
  // The first names that the foreign context would have returned.
  ASSERT_TRUE(EAGLContext::setCurrentContext(foreign));
  EXPECT_EQ(glIsTexture(1) + glIsProgram(1) + glIsShader(1) + glIsBuffer(1), 0);
  EAGLContext::setCurrentContext(nullptr);
  objc_release(foreign);
}

class FailingShader : public Setup, public testing::WithParamInterface<GLenum> {};

TEST_P(FailingShader, LeavesBlackAndIsTriedAgain) {
  host::gl::failCompile(GetParam());
  for (int i = 0; i < 5; ++i) EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), kBlackFrame);
  EXPECT_FALSE(send<bool>(picker, "setupOpenGLForDominantColor"_sel));
  EXPECT_EQ(field("_program"), 0U);
  EXPECT_EQ(log(), Lines{});
  host::gl::failCompile(0);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), "#ff0000ff #000000ff #ffffffff");
}

TEST_P(FailingShader, LeavesNothingBehind) {
  host::gl::failCompile(GetParam());
  for (int i = 0; i < 5; ++i) colorsOf(plainPicture(255, 0, 0));
  const auto shaders =
      host::gl::callCount("glCreateShader") - host::gl::callCount("glDeleteShader");
  // A compiled vertex shader waits for its partner.
  EXPECT_EQ(shaders, GetParam() == GL_FRAGMENT_SHADER ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(Types, FailingShader,
                         testing::Values(GL_VERTEX_SHADER, GL_FRAGMENT_SHADER));

TEST_F(Setup, AFailedLinkTakesTheShadersWithIt) {
  host::gl::failLink(true);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), kBlackFrame);
  EXPECT_EQ(host::gl::callCount("glDeleteShader"), 2U);
  EXPECT_EQ(host::gl::callCount("glDeleteProgram"), 1U);
  EXPECT_EQ(field("_program"), 0U);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), kBlackFrame);
  EXPECT_EQ(host::gl::callCount("glCreateShader"), 4U);
  host::gl::failLink(false);
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), "#ff0000ff #000000ff #ffffffff");
}

TEST_F(Setup, CompilesWhatHasText) {
  ASSERT_TRUE(send<bool>(picker, "setupContext"_sel));
  auto compile = [this](GLuint& shader, NSString* source) {
    return send<bool>(picker, "compileShader:type:string:"_sel, &shader, GL_VERTEX_SHADER, source);
  };
  GLuint shader = 77;
  EXPECT_FALSE(compile(shader, nullptr));
  EXPECT_EQ(shader, 77U);
  EXPECT_FALSE(compile(shader, "this is no shader"_ns));
  EXPECT_EQ(glIsShader(shader), GL_FALSE);
  EXPECT_TRUE(compile(shader, "void main() { gl_Position = vec4(0.0); }"_ns));
  EXPECT_EQ(glIsShader(shader), GL_TRUE);
}

TEST_F(Setup, ValidatesPrograms) {
  schemeOf(plainPicture(1, 2, 3));
  ASSERT_TRUE(send<bool>(picker, "setupContext"_sel));
  EXPECT_TRUE(send<bool>(picker, "validateProgram:"_sel, field("_program")));
  EXPECT_FALSE(send<bool>(picker, "validateProgram:"_sel, glCreateProgram()));
  EXPECT_FALSE(send<bool>(picker, "linkProgram:"_sel, glCreateProgram()));
}

TEST_F(Setup, InTheBackgroundThereIsNoScheme) {
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, NSInteger{2});
  EXPECT_EQ(schemeOf(plainPicture(255, 0, 0)), nullptr);
  EXPECT_EQ(host::gl::callCount(), 0U);
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, NSInteger{1});
  EXPECT_EQ(colorsOf(plainPicture(255, 0, 0)), "#ff0000ff #000000ff #ffffffff");
}

}  // namespace
