// The words of a row's properties.
#include "export.h"
#include "platform/Preferences.h"

extern "C" {
NSString* const PSKeyNameKey = "key"_ns;
NSString* const PSDefaultValueKey = "default"_ns;
NSString* const PSEnabledKey = "enabled"_ns;
NSString* const PSFooterTextGroupKey = "footerText"_ns;
NSString* const PSTableCellClassKey = "cellClass"_ns;
NSString* const PSIconImageKey = "iconImage"_ns;
// Of these there is no use in the library.
HOST_EXPORT extern NSString* const PSValidValuesKey;
HOST_EXPORT extern NSString* const PSValidTitlesKey;
HOST_EXPORT extern NSString* const PSButtonActionKey;
NSString* const PSValidValuesKey = "validValues"_ns;
NSString* const PSValidTitlesKey = "validTitles"_ns;
NSString* const PSButtonActionKey = "action"_ns;
}
