#include "hooks/UIColor.h"

#include "color/components.h"
#include "color/marks.h"
#include "color/yuv.h"
#include "objc/association.h"

namespace varnix {

namespace {

using namespace Color;
using objc::added;

/// A mark is a boolean object associated under the getter's selector. It is not retained: the
/// platform's two booleans live as long as the process.
template <auto Getter>
bool mark(UIColor* self, SEL) {
  return send(objc::associated<NSNumber>(self, Getter), NSNumber::boolValue);
}

template <auto Getter>
void setMark(UIColor* self, SEL, bool value) {
  objc::associate(self, Getter, NSNumber::numberWithBool(value), AssociationPolicy::assign);
}

template <CGFloat Hsb::* Component>
CGFloat component(UIColor* self, SEL) {
  return hsb(self).*Component;
}

template <float (*Measure)(UIColor*)>
float ofColor(Class, SEL, UIColor* color) {
  return Measure(color);
}

template <float (*Measure)(UIColor*, UIColor*)>
float ofColors(Class, SEL, UIColor* to, UIColor* from) {
  return Measure(to, from);
}

constexpr objc::Replacement kMarks[] = {
    added<isVarnixColor, mark<isVarnixColor>, "B@:">(),
    added<setIsVarnixColor, setMark<isVarnixColor>, "v@:B">(),
    added<isVarnixAlbumColor, mark<isVarnixAlbumColor>, "B@:">(),
    added<setIsVarnixAlbumColor, setMark<isVarnixAlbumColor>, "v@:B">(),
};

constexpr objc::Replacement kMeasures[] = {
    added<hue, component<&Hsb::hue>>(),
    added<saturation, component<&Hsb::saturation>>(),
    added<brightness, component<&Hsb::brightness>>(),
    added<alpha, component<&Hsb::alpha>>(),
    added<yComponentFromColor, ofColor<yComponent>>(),
    added<uComponentFromColor, ofColor<uComponent>>(),
    added<vComponentFromColor, ofColor<vComponent>>(),
    added<YUVSpaceDistance, ofColors<yuvDistance>>(),
    added<YUVSpaceSquareDistance, ofColors<yuvSquareDistance>>(),
};

}  // namespace

constinit const std::span<const objc::Replacement> kColorMarks = kMarks;
constinit const std::span<const objc::Replacement> kColorMeasures = kMeasures;

}  // namespace varnix
