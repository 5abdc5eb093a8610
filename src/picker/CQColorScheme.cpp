#include "picker/CQColorScheme.h"

#include "objc/define.h"

using objc::Property;

OBJC_CLASS(CQColorScheme, NSObject, Property<"backgroundColor", &CQColorScheme::_backgroundColor>,
           Property<"primaryTextColor", &CQColorScheme::_primaryTextColor>,
           Property<"secondaryTextColor", &CQColorScheme::_secondaryTextColor>)
