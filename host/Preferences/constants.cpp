// The words of a row's properties.
#include "export.h"
#include "platform/Preferences.h"

extern "C" {
HOST_EXPORT NSString* const PSKeyNameKey = "key"_ns;
HOST_EXPORT NSString* const PSDefaultValueKey = "default"_ns;
HOST_EXPORT NSString* const PSEnabledKey = "enabled"_ns;
HOST_EXPORT NSString* const PSFooterTextGroupKey = "footerText"_ns;
HOST_EXPORT NSString* const PSTableCellClassKey = "cellClass"_ns;
HOST_EXPORT NSString* const PSIconImageKey = "iconImage"_ns;
HOST_EXPORT extern NSString* const PSValidValuesKey;
HOST_EXPORT extern NSString* const PSValidTitlesKey;
HOST_EXPORT extern NSString* const PSButtonActionKey;
NSString* const PSValidValuesKey = "validValues"_ns;
NSString* const PSValidTitlesKey = "validTitles"_ns;
NSString* const PSButtonActionKey = "action"_ns;
}
