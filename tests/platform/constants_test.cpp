// The platform's numbers, compared with literal values: a wrong one in a header would agree with
// itself.
#include <gtest/gtest.h>

#include "platform/AppList.h"
#include "platform/CoreFoundation.h"
#include "platform/CoreGraphics.h"
#include "platform/Dispatch.h"
#include "platform/OpenGLES.h"
#include "platform/Preferences.h"
#include "platform/Social.h"
#include "platform/UIKit.h"
#include "platform/dlfcn.h"

namespace {

TEST(PlatformConstants, HaveTheirValues) {
  EXPECT_EQ(static_cast<long>(ALApplicationIconSizeLarge), 59);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaNone), 0);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaPremultipliedLast), 1);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaPremultipliedFirst), 2);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaLast), 3);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaFirst), 4);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaNoneSkipLast), 5);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaNoneSkipFirst), 6);
  EXPECT_EQ(static_cast<long>(kCGImageAlphaOnly), 7);
  EXPECT_EQ(static_cast<long>(kCGBitmapAlphaInfoMask), 31);
  EXPECT_EQ(static_cast<long>(kCGBitmapFloatComponents), 256);
  EXPECT_EQ(static_cast<long>(kCGBitmapByteOrderDefault), 0);
  EXPECT_EQ(static_cast<long>(kCGBitmapByteOrder16Little), 0x1000);
  EXPECT_EQ(static_cast<long>(kCGBitmapByteOrder32Little), 0x2000);
  EXPECT_EQ(static_cast<long>(kCGBitmapByteOrder16Big), 0x3000);
  EXPECT_EQ(static_cast<long>(kCGBitmapByteOrder32Big), 0x4000);
  EXPECT_EQ(static_cast<long>(kCGBitmapByteOrderMask), 0x7000);
  EXPECT_EQ(static_cast<int>(CGColorRenderingIntent::standard), 0);
  EXPECT_EQ(static_cast<int>(CGBlendMode::normal), 0);
  EXPECT_EQ(static_cast<int>(CGBlendMode::hue), 12);
  EXPECT_EQ(static_cast<long>(DISPATCH_QUEUE_PRIORITY_LOW), -2);
  EXPECT_EQ(static_cast<long>(NSASCIIStringEncoding), 1);
  EXPECT_EQ(static_cast<long>(kEAGLRenderingAPIOpenGLES2), 2);
  EXPECT_EQ(static_cast<long>(GL_FALSE), 0);
  EXPECT_EQ(static_cast<long>(GL_TRUE), 1);
  EXPECT_EQ(static_cast<long>(GL_ZERO), 0);
  EXPECT_EQ(static_cast<long>(GL_ONE), 1);
  EXPECT_EQ(static_cast<long>(GL_TRIANGLES), 4);
  EXPECT_EQ(static_cast<long>(GL_BLEND), 0x0be2);
  EXPECT_EQ(static_cast<long>(GL_TEXTURE_2D), 0x0de1);
  EXPECT_EQ(static_cast<long>(GL_UNSIGNED_BYTE), 0x1401);
  EXPECT_EQ(static_cast<long>(GL_FLOAT), 0x1406);
  EXPECT_EQ(static_cast<long>(GL_RGBA), 0x1908);
  EXPECT_EQ(static_cast<long>(GL_NEAREST), 0x2600);
  EXPECT_EQ(static_cast<long>(GL_TEXTURE_MIN_FILTER), 0x2801);
  EXPECT_EQ(static_cast<long>(GL_COLOR_BUFFER_BIT), 0x4000);
  EXPECT_EQ(static_cast<long>(GL_RGBA8_OES), 0x8058);
  EXPECT_EQ(static_cast<long>(GL_DEPTH_COMPONENT16), 0x81a5);
  EXPECT_EQ(static_cast<long>(GL_TEXTURE0), 0x84c0);
  EXPECT_EQ(static_cast<long>(GL_ARRAY_BUFFER), 0x8892);
  EXPECT_EQ(static_cast<long>(GL_ELEMENT_ARRAY_BUFFER), 0x8893);
  EXPECT_EQ(static_cast<long>(GL_STATIC_DRAW), 0x88e4);
  EXPECT_EQ(static_cast<long>(GL_FRAGMENT_SHADER), 0x8b30);
  EXPECT_EQ(static_cast<long>(GL_VERTEX_SHADER), 0x8b31);
  EXPECT_EQ(static_cast<long>(GL_COMPILE_STATUS), 0x8b81);
  EXPECT_EQ(static_cast<long>(GL_LINK_STATUS), 0x8b82);
  EXPECT_EQ(static_cast<long>(GL_VALIDATE_STATUS), 0x8b83);
  EXPECT_EQ(static_cast<long>(GL_INFO_LOG_LENGTH), 0x8b84);
  EXPECT_EQ(static_cast<long>(GL_FRAMEBUFFER_BINDING), 0x8ca6);
  EXPECT_EQ(static_cast<long>(GL_COLOR_ATTACHMENT0), 0x8ce0);
  EXPECT_EQ(static_cast<long>(GL_DEPTH_ATTACHMENT), 0x8d00);
  EXPECT_EQ(static_cast<long>(GL_FRAMEBUFFER), 0x8d40);
  EXPECT_EQ(static_cast<long>(GL_RENDERBUFFER), 0x8d41);
  EXPECT_EQ(static_cast<long>(PSGroupCell), 0);
  EXPECT_EQ(static_cast<long>(SLRequestMethodPOST), 1);
  EXPECT_EQ(static_cast<long>(UIRectEdgeBottom), 4);
  EXPECT_EQ(static_cast<long>(UIApplicationStateBackground), 2);
  EXPECT_EQ(static_cast<long>(UIBarButtonItemStylePlain), 0);
  EXPECT_EQ(static_cast<long>(UIControlStateNormal), 0);
  EXPECT_EQ(static_cast<long>(UIBarMetricsDefault), 0);
  EXPECT_EQ(static_cast<long>(RTLD_NOW), 2);
  EXPECT_EQ(static_cast<int>(CFNotificationSuspensionBehavior::drop), 1);
  EXPECT_EQ(static_cast<int>(CFNotificationSuspensionBehavior::coalesce), 2);
  EXPECT_EQ(static_cast<int>(CFNotificationSuspensionBehavior::hold), 3);
  EXPECT_EQ(static_cast<int>(CFNotificationSuspensionBehavior::deliverImmediately), 4);
  EXPECT_EQ(static_cast<int>(AssociationPolicy::assign), 0);
  EXPECT_EQ(static_cast<int>(AssociationPolicy::retainNonatomic), 1);
  EXPECT_EQ(static_cast<int>(AssociationPolicy::copyNonatomic), 3);
  EXPECT_EQ(static_cast<int>(AssociationPolicy::retain), 0x301);
  EXPECT_EQ(static_cast<int>(AssociationPolicy::copy), 0x303);
}

TEST(PlatformConstants, OfTextHaveTheirValues) {
  EXPECT_STREQ(send(ACAccountTypeIdentifierTwitter(), NSString::UTF8String), "com.apple.twitter");
  EXPECT_STREQ(send(SLServiceTypeTwitter(), NSString::UTF8String), "com.apple.social.twitter");
}

}  // namespace
