// The colours of text that the Twitter client adds to UIColor.
#include "objc/define.h"
#include "platform/UIKit.h"

namespace {

template <int Rgb>
UIColor* color() {
  auto byte = [](int shift) { return static_cast<CGFloat>((Rgb >> shift & 0xff) / 255.0); };
  return UIColor::colorWithRed(byte(16), byte(8), byte(0), 1);
}

constexpr int kBlue = 0x55acee;
constexpr int kGrey = 0x8899a6;
constexpr int kBlack = 0x292f33;

}  // namespace

OBJC_CATEGORY(UIColor, Twitter, objc::ClassMethod<"twitterColorTextLink", &color<kBlue>>,
              objc::ClassMethod<"twitterColorTextUsername", &color<kBlack>>,
              objc::ClassMethod<"twitterColorTextTimestamp", &color<kGrey>>,
              objc::ClassMethod<"twitterColorTextSocial", &color<kGrey>>,
              objc::ClassMethod<"twitterColorTextLinkSubtle", &color<kGrey>>,
              objc::ClassMethod<"twitterColorActivityTitle", &color<kBlack>>,
              objc::ClassMethod<"twitterColorChangeTrendsLocationText", &color<kBlue>>)
