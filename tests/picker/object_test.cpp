// The picker and the colour scheme as objects: fields, creation, and the application's state.
#include <dlfcn.h>

#include "Dispatch/queue.h"
#include "OpenGLES/gl.h"
#include "objc/autorelease_pool.h"
#include "platform/Dispatch.h"
#include "platform/OpenGLES.h"
#include "support/encodings.h"
#include "support/hosted.h"

namespace {

struct Target {
  NSObject* queue;
  dispatch_queue_t target;
};
Target lastTarget;

}  // namespace

/// The library finds this one before the platform's.
extern "C" [[gnu::visibility("default")]] void dispatch_set_target_queue(NSObject* object,
                                                                         dispatch_queue_t queue) {
  lastTarget = {object, queue};
  auto next = reinterpret_cast<decltype(&dispatch_set_target_queue)>(
      dlsym(RTLD_NEXT, "dispatch_set_target_queue"));
  next(object, queue);
}

namespace {

using test::hex;
using test::make;
using test::nativeEncoding;

class Picker : public test::Hosted {
 protected:
  void SetUp() override {
    application("");
    picker = make<NSObject>("CQColorPicker");
  }
  template <class T>
  T& field(const char* name) {
    objc_ivar* ivar = class_getInstanceVariable(picker->isa, name);
    return *reinterpret_cast<T*>(reinterpret_cast<char*>(picker) + ivar_getOffset(ivar));
  }

  NSObject* picker = nullptr;
};

TEST_F(Picker, HasItsFieldsInOrder) {
  const std::pair<const char*, std::string> kFields[] = {
      {"_vertexBuffer", "I"},      {"_indexBuffer", "I"},    {"_colorRenderBuffer", "I"},
      {"_depthRenderBuffer", "I"}, {"_program", "I"},        {"_proccesedWidthSlot", "I"},
      {"_totalWidthSlot", "I"},    {"_positionSlot", "I"},   {"_colorSlot", "I"},
      {"_texCoordSlot", "I"},      {"_textureUniform", "I"}, {"_aTexture", "I"},
      {"_tolerance", "I"},         {"_colorToFilter", "I"},  {"_currentImage", "@"},
      {"_eaglLayer", "@"},         {"_context", "@"},        {"taskQueue", "@"},
  };
  std::ptrdiff_t last = 0;
  for (const auto& [name, types] : kFields) {
    objc_ivar* ivar = class_getInstanceVariable(picker->isa, name);
    ASSERT_NE(ivar, nullptr) << name;
    EXPECT_EQ(ivar_getTypeEncoding(ivar), types) << name;
    EXPECT_GT(ivar_getOffset(ivar), last) << name;
    last = ivar_getOffset(ivar);
  }
  EXPECT_EQ(class_getInstanceSize(picker->isa), static_cast<std::size_t>(last) + sizeof(void*));
}

TEST_F(Picker, AnswersItsOperations) {
  const std::pair<const char*, std::string> kOperations[] = {
      {"init", "@@:"},
      {"pickColorsFromImage:onComplete:", "v@:@@?"},
      {"colorSchemeFromImage:", "@@:@"},
      {"setupOpenGL", "v@:"},
      {"renderDominant", "v@:"},
      {"setupTextureFromImage:", "I@:@"},
      {"setupContext", nativeEncoding("B@:")},
      {"setupFrameBuffer", "v@:"},
      {"setupRenderBuffer", "v@:"},
      {"setupDepthBuffer", "v@:"},
      {"setupVBOs", "v@:"},
      {"setupOpenGLForDominantColor", nativeEncoding("B@:")},
      {"compileShader:type:string:", nativeEncoding("B@:^II@")},
      {"linkProgram:", nativeEncoding("B@:I")},
      {"validateProgram:", nativeEncoding("B@:I")},
      {"dumpImageWithWidth:height:biggestAlphaColorReturn:", nativeEncoding("@@:QQ^@")},
      {"colorWithBiggerCountFromImageWidth:height:", nativeEncoding("@@:QQ")},
      {"colorFromImageWithWidth:height:filteringColor:tolerance:", nativeEncoding("@@:QQ@f")},
      {"findTextColorsTaskForColorScheme:", "v@:@"},
      {"scaleImage:width:height:", "@@:@dd"},
      {"isSufficienteContrastBetweenBackground:andForground:", nativeEncoding("B@:@@")},
      {"imageWithImage:scaledToSize:", nativeEncoding("@@:@{CGSize=dd}")},
      {"addNotificationObservers", "v@:"},
      {"dealloc", "v@:"},
      {"appDidEnterBackground", "v@:"},
      {"appDidEnterForeground", "v@:"},
      {"isAppActive", nativeEncoding("B@:")},
  };
  for (const auto& [name, types] : kOperations) {
    objc_method* method = class_getInstanceMethod(picker->isa, sel_registerName(name));
    ASSERT_NE(method, nullptr) << name;
    EXPECT_EQ(method_getTypeEncoding(method), types) << name;
  }
  objc_method* shared =
      class_getClassMethod(picker->isa, sel_registerName("pickColorFromImage:onComplete:"));
  ASSERT_NE(shared, nullptr);
  EXPECT_STREQ(method_getTypeEncoding(shared), "v@:@@?");
}

TEST_F(Picker, BeginsWithItsQueueAndNothingElse) {
  EXPECT_STREQ(dispatch_queue_get_label(field<dispatch_queue_t>("taskQueue")),
               "CQColorPickerQueue");
  EXPECT_EQ(field<NSObject*>("_context"), nullptr);
  EXPECT_EQ(field<NSObject*>("_currentImage"), nullptr);
  EXPECT_EQ(field<NSObject*>("_eaglLayer"), nullptr);
  for (const char* name : {"_vertexBuffer", "_program", "_aTexture", "_tolerance"})
    EXPECT_EQ(field<GLuint>(name), 0U) << name;
  EXPECT_EQ(host::gl::callCount(), 0U);
}

TEST_F(Picker, QueueRunsAtTheLowestNumberedPriority) {
  EXPECT_EQ(lastTarget.queue, field<NSObject*>("taskQueue"));
  EXPECT_EQ(lastTarget.target, dispatch_get_global_queue(-2, 0));
}

TEST_F(Picker, IsActiveUnlessInTheBackground) {
  auto activeIn = [this](NSInteger state) {
    send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, state);
    return send<bool>(picker, "isAppActive"_sel);
  };
  EXPECT_TRUE(activeIn(0));
  EXPECT_TRUE(activeIn(1));
  EXPECT_FALSE(activeIn(2));
}

TEST_F(Picker, ComingAndGoingDoesNothingByItself) {
  send<void>(picker, "addNotificationObservers"_sel);
  send<void>(picker, "appDidEnterBackground"_sel);
  EXPECT_TRUE(send<bool>(picker, "isAppActive"_sel));
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, NSInteger{2});
  send<void>(picker, "appDidEnterForeground"_sel);
  EXPECT_FALSE(send<bool>(picker, "isAppActive"_sel));
}

class Scheme : public test::Hosted {};

TEST_F(Scheme, BeginsWithoutColors) {
  application("");
  auto* scheme = make<NSObject>("CQColorScheme");
  EXPECT_EQ(send<UIColor*>(scheme, "backgroundColor"_sel), nullptr);
  EXPECT_EQ(send<UIColor*>(scheme, "primaryTextColor"_sel), nullptr);
  EXPECT_EQ(send<UIColor*>(scheme, "secondaryTextColor"_sel), nullptr);
}

TEST_F(Scheme, OwnsItsColors) {
  application("");
  auto* scheme = make<NSObject>("CQColorScheme");
  {
    objc::AutoreleasePool pool;
    send<void>(scheme, "setBackgroundColor:"_sel, test::rgb(1, 0, 0));
    send<void>(scheme, "setPrimaryTextColor:"_sel, test::rgb(0, 1, 0));
    send<void>(scheme, "setSecondaryTextColor:"_sel, test::rgb(0, 0, 1));
  }
  EXPECT_EQ(hex(send<UIColor*>(scheme, "backgroundColor"_sel)), "#ff0000ff");
  EXPECT_EQ(hex(send<UIColor*>(scheme, "primaryTextColor"_sel)), "#00ff00ff");
  EXPECT_EQ(hex(send<UIColor*>(scheme, "secondaryTextColor"_sel)), "#0000ffff");
}

}  // namespace
