// Uses the settings store, in Objective-C.
#import "varnix/pane.h"

id row(PSSpecifier *specifier, UIViewController *pane, UIColor *color);

id row(PSSpecifier *specifier, UIViewController *pane, UIColor *color) {
  KTPrefsManager *store = [[KTPrefsManager alloc] initWithId:@"com.example"
                                               defaultValues:nil
                                                notification:nil
                                        notificationCallback:^(KTPrefsManager *changed) {
                                          [changed notifyEveryone];
                                        }];
  [store setPreferenceValue:@"value" specifier:specifier];
  [store setObject:@"value" forKey:@"key"];
  [store removeObjectForKey:@"key"];
  [store save];
  [store saveAndNotify];
  if ([store boolForKey:@"key"] || [store intForKey:@"key"] > 0) QKSetPrefsTint(pane, color);
  if ([store floatForKey:@"key"] > 0) return [store objectForKey:[store identifier]];
  return [store readPreferenceValue:specifier];
}
