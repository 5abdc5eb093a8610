// The smallest settings pane: a store of its own, a subclass of the library's, and a pane that the
// library tints. The classes are named directly, so the loader must find their symbols in the
// library.
#import <varnix/pane.h>

@interface ExampleStore : KTPrefsManager
@end

@implementation ExampleStore

+ (instancetype)sharedStore {
  static ExampleStore *store;
  if (store == nil)
    store = [[ExampleStore alloc] initWithId:@"com.example.pane"
                               defaultValues:nil
                                notification:@"com.example.pane.changed"
                        notificationCallback:nil];
  return store;
}

- (id)readPreferenceValue:(PSSpecifier *)specifier {
  [self notifyEveryone];
  return [super readPreferenceValue:specifier];
}

@end

void ExamplePaneWillAppear(UIViewController *pane, UIColor *color);

__attribute__((visibility("default"))) void ExamplePaneWillAppear(UIViewController *pane,
                                                                   UIColor *color) {
  // The library's own settings, read through its class, once for all times that the pane appears.
  static KTPrefsManager *dye;
  if (dye == nil)
    dye = [[KTPrefsManager alloc] initWithId:@"com.quillmarsh.varnix2"
                               defaultValues:nil
                                notification:nil
                        notificationCallback:nil];
  if ([dye boolForKey:@"enabled"]) QKSetPrefsTint(pane, color);
  [[ExampleStore sharedStore] saveAndNotify];
}
