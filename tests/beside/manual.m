// The same without ARC: it sets implementations by hand, one of them a block, and counts references
// by messages.
#import "beside.h"

int besideTints, besideSliderTints, besideLayouts, besideOnTints, besideCaught;

static IMP originalTint, originalSliderTint, originalLayout, originalSetOnTint;

static UIColor *countedTint(UIView *self, SEL command) {
  ++besideTints;
  return ((UIColor * (*)(UIView *, SEL)) originalTint)(self, command);
}

static UIColor *countedSliderTint(UISlider *self, SEL command) {
  ++besideSliderTints;
  return ((UIColor * (*)(UISlider *, SEL)) originalSliderTint)(self, command);
}

static void countedLayout(UIView *self, SEL command) {
  ++besideLayouts;
  ((void (*)(UIView *, SEL))originalLayout)(self, command);
}

static IMP setOnTintBlock(SEL command) {
  return imp_implementationWithBlock(^(UISwitch *self, UIColor *color) {
    ++besideOnTints;
    @try {
      @throw [[[NSObject alloc] init] autorelease];
    } @catch (id thrown) {
      ++besideCaught;
    }
    UIColor *kept = [color retain];
    ((void (*)(UISwitch *, SEL, UIColor *))originalSetOnTint)(self, command, kept);
    [kept release];
  });
}

__attribute__((constructor)) static void start(void) {
  Class view = objc_getClass("UIView"), control = objc_getClass("UISwitch");
  originalTint = method_setImplementation(class_getInstanceMethod(view, @selector(tintColor)),
                                          (IMP)countedTint);
  MSHookMessageEx(objc_getClass("UISlider"), @selector(tintColor), (IMP)countedSliderTint,
                  &originalSliderTint);
  Method layout = class_getInstanceMethod(view, @selector(layoutSubviews));
  originalLayout = class_replaceMethod(view, @selector(layoutSubviews), (IMP)countedLayout,
                                       method_getTypeEncoding(layout));
  SEL setOnTint = @selector(setOnTintColor:);
  originalSetOnTint = method_setImplementation(class_getInstanceMethod(control, setOnTint),
                                               setOnTintBlock(setOnTint));
}
