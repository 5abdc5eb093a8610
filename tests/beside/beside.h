// What both extensions count, and the parts of the platform that they use.
#pragma once

#import <Foundation/Foundation.h>

@interface UIColor : NSObject
@end
@interface UIView : NSObject
@property(nonatomic, retain) UIColor* tintColor;
- (void)layoutSubviews;
@end
@interface UISlider : UIView
@end
@interface UISwitch : UIView
@property(nonatomic, retain) UIColor* onTintColor;
@end

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* saved);

/// How often each replacement ran, and how many exceptions were caught there.
#define COUNTER __attribute__((visibility("default"))) int
extern COUNTER besideTints;
extern COUNTER besideSliderTints;
extern COUNTER besideLayouts;
extern COUNTER besideOnTints;
extern COUNTER besideCaught;
