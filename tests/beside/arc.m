// An extension with ARC. It replaces by name, and exchanges a method with one of a category. In one
// replacement it sends a message that nobody understands, and catches what comes of it.
#import "beside.h"

int besideTints, besideSliderTints, besideLayouts, besideOnTints, besideCaught;

static UIColor *(*originalTint)(UIView *, SEL);
static UIColor *(*originalSliderTint)(UISlider *, SEL);
static void (*originalSetOnTint)(UISwitch *, SEL, UIColor *);

static UIColor *countedTint(UIView *self, SEL command) {
  ++besideTints;
  return originalTint(self, command);
}

static UIColor *countedSliderTint(UISlider *self, SEL command) {
  ++besideSliderTints;
  return originalSliderTint(self, command);
}

static void countedSetOnTint(UISwitch *self, SEL command, UIColor *color) {
  ++besideOnTints;
  @try {
    [self performSelector:@selector(nothingOfThatName)];
  } @catch (NSException *exception) {
    ++besideCaught;
  }
  originalSetOnTint(self, command, color);
}

@implementation UIView (Beside)

- (void)beside_layoutSubviews {
  ++besideLayouts;
  [self beside_layoutSubviews];
}

@end

@interface BesideStart : NSObject
@end

@implementation BesideStart

+ (void)load {
  Class view = objc_getClass("UIView");
  MSHookMessageEx(view, @selector(tintColor), (IMP)countedTint, (IMP *)&originalTint);
  MSHookMessageEx(objc_getClass("UISlider"), @selector(tintColor), (IMP)countedSliderTint,
                  (IMP *)&originalSliderTint);
  MSHookMessageEx(objc_getClass("UISwitch"), @selector(setOnTintColor:), (IMP)countedSetOnTint,
                  (IMP *)&originalSetOnTint);
  method_exchangeImplementations(class_getInstanceMethod(view, @selector(layoutSubviews)),
                                 class_getInstanceMethod(view, @selector(beside_layoutSubviews)));
}

@end
