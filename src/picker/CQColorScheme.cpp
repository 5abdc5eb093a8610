#include "picker/CQColorScheme.h"

#include "objc/implementation.h"

namespace varnix {

namespace {

struct ColorScheme : NSObject {
  Strong<UIColor> _backgroundColor;
  Strong<UIColor> _primaryTextColor;
  Strong<UIColor> _secondaryTextColor;
};

}  // namespace
}  // namespace varnix

using objc::Accessors;
using varnix::ColorScheme;

OBJC_PRIVATE_CLASS_NAMED(
    CQColorScheme, NSObject, ColorScheme, NSObject,
    Accessors<CQColorScheme::backgroundColor, CQColorScheme::setBackgroundColor,
              &ColorScheme::_backgroundColor>,
    Accessors<CQColorScheme::primaryTextColor, CQColorScheme::setPrimaryTextColor,
              &ColorScheme::_primaryTextColor>,
    Accessors<CQColorScheme::secondaryTextColor, CQColorScheme::setSecondaryTextColor,
              &ColorScheme::_secondaryTextColor>)
