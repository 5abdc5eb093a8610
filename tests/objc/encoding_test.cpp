// Type encodings, as the platform's compiler writes them for arm64, and for armv7, where whole
// numbers and a CGFloat have 32 bits.
#include "objc/encoding.h"

#include <gtest/gtest.h>

#include "objc/block.h"
#include "objc/member.h"
#include "platform/Foundation.h"
#include "platform/UIKit.h"
#include "support/encodings.h"

namespace {

using test::nativeEncoding;

enum class Narrow : unsigned char { one };
enum Wide : NSInteger { kWide };

template <class T>
std::string encoded() {
  return objc::kEncoding<T>.text;
}

TEST(Encoding, OfScalars) {
  EXPECT_EQ(encoded<void>(), "v");
  EXPECT_EQ(encoded<bool>(), nativeEncoding("B"));
  EXPECT_EQ(encoded<char>(), "c");
  EXPECT_EQ(encoded<signed char>(), "c");
  EXPECT_EQ(encoded<unsigned char>(), "C");
  EXPECT_EQ(encoded<short>(), "s");
  EXPECT_EQ(encoded<unsigned short>(), "S");
  EXPECT_EQ(encoded<int>(), "i");
  EXPECT_EQ(encoded<unsigned int>(), "I");
  EXPECT_EQ(encoded<long>(), sizeof(long) == 8 ? "q" : "l");
  EXPECT_EQ(encoded<unsigned long>(), sizeof(long) == 8 ? "Q" : "L");
  EXPECT_EQ(encoded<long long>(), "q");
  EXPECT_EQ(encoded<unsigned long long>(), "Q");
  EXPECT_EQ(encoded<NSInteger>(), nativeEncoding("q"));
  EXPECT_EQ(encoded<NSUInteger>(), nativeEncoding("Q"));
  EXPECT_EQ(encoded<float>(), "f");
  EXPECT_EQ(encoded<double>(), "d");
  EXPECT_EQ(encoded<CGFloat>(), nativeEncoding("d"));
}

TEST(Encoding, OfAnEnumerationIsItsUnderlyingType) {
  EXPECT_EQ(encoded<Narrow>(), "C");
  EXPECT_EQ(encoded<Wide>(), nativeEncoding("q"));
}

TEST(Encoding, OfObjectsClassesAndSelectors) {
  EXPECT_EQ(encoded<id>(), "@");
  EXPECT_EQ(encoded<NSString*>(), "@");
  EXPECT_EQ(encoded<UIColor*>(), "@");
  EXPECT_EQ(encoded<Class>(), "#");
  EXPECT_EQ(encoded<SEL>(), ":");
}

TEST(Encoding, OfText) {
  EXPECT_EQ(encoded<char*>(), "*");
  EXPECT_EQ(encoded<const char*>(), "r*");
  EXPECT_EQ(encoded<const char**>(), "r^*");
}

TEST(Encoding, OfPointers) {
  EXPECT_EQ(encoded<void*>(), "^v");
  EXPECT_EQ(encoded<void**>(), "^^v");
  EXPECT_EQ(encoded<int*>(), "^i");
  EXPECT_EQ(encoded<bool*>(), nativeEncoding("^B"));
  EXPECT_EQ(encoded<id*>(), "^@");
  EXPECT_EQ(encoded<Class*>(), "^#");
  EXPECT_EQ(encoded<SEL*>(), "^:");
  EXPECT_EQ(encoded<void (*)(int)>(), "^?");
  EXPECT_EQ(encoded<void (**)(int)>(), "^^?");
}

TEST(Encoding, OfPointersToWhatMayNotBeWritten) {
  EXPECT_EQ(encoded<const void*>(), "r^v");
  EXPECT_EQ(encoded<const int*>(), "r^i");
  EXPECT_EQ(encoded<NSObject* const*>(), "r^@");
  EXPECT_EQ(encoded<void* const*>(), "^^v");
}

TEST(Encoding, OfBlocks) {
  EXPECT_EQ(encoded<objc::Block<void(int)>>(), "@?");
  EXPECT_EQ((encoded<objc::Block<id(id, double)>>()), "@?");
  EXPECT_EQ(encoded<objc::Block<void(int)>*>(), "^@?");
}

TEST(Encoding, OfGeometry) {
  EXPECT_EQ(encoded<CGPoint>(), nativeEncoding("{CGPoint=dd}"));
  EXPECT_EQ(encoded<CGSize>(), nativeEncoding("{CGSize=dd}"));
  EXPECT_EQ(encoded<CGRect>(), nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}"));
}

TEST(Encoding, OfPointersToGeometry) {
  EXPECT_EQ(encoded<CGPoint*>(), nativeEncoding("^{CGPoint=dd}"));
  EXPECT_EQ(encoded<CGRect*>(), nativeEncoding("^{CGRect={CGPoint=dd}{CGSize=dd}}"));
  EXPECT_EQ(encoded<CGPoint**>(), "^^{CGPoint}");
  EXPECT_EQ(encoded<const CGPoint*>(), nativeEncoding("r^{CGPoint=dd}"));
}

TEST(Encoding, OfStructuresThatAreKnownByNameAlone) {
  EXPECT_EQ(encoded<CGColorRef>(), "^{CGColor=}");
  EXPECT_EQ(encoded<CGImage**>(), "^^{CGImage}");
  EXPECT_EQ(encoded<const CGImage*>(), "r^{CGImage=}");
}

TEST(Encoding, OfMethods) {
  EXPECT_STREQ(objc::kMethodEncoding<void>.text, "v@:");
  EXPECT_EQ((objc::kMethodEncoding<bool, id>.text), nativeEncoding("B@:@"));
  EXPECT_EQ((objc::kMethodEncoding<CGRect, CGSize, double, int>.text),
            nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}@:{CGSize=dd}") + "di");
  EXPECT_STREQ((objc::kMethodEncoding<id, SEL, Class, const char*>.text), "@@::#r*");
}

TEST(Encoding, OfBlockCalls) {
  EXPECT_STREQ(objc::kBlockEncoding<void>.text, "v@?");
  EXPECT_EQ((objc::kBlockEncoding<CGSize, id, int>.text), nativeEncoding("{CGSize=dd}@?@i"));
}

TEST(Encoding, OfInstanceVariables) {
  EXPECT_EQ(objc::detail::ivarEncoding<CGRect>().text,
            nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}"));
  EXPECT_STREQ(objc::detail::ivarEncoding<std::string>().text, "?");
}

TEST(Encoding, OfPropertiesCarriesTheClassOfAnObject) {
  EXPECT_STREQ(objc::detail::propertyType<NSString*>().text, "T@\"NSString\"");
  EXPECT_STREQ(objc::detail::propertyType<id>().text, "T@");
  EXPECT_STREQ(objc::detail::propertyType<int>().text, "Ti");
  EXPECT_STREQ(objc::detail::setterName<"tintColor">().text, "setTintColor:");
  EXPECT_STREQ(objc::detail::setterName<"URL">().text, "setURL:");
}

}  // namespace
