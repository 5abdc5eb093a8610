// +load and +initialize.
#import "behaviour.h"

@interface LoadedBase : NSObject
@end
@interface LoadedBelow : LoadedBase
@end
@interface Silent : NSObject
- (int)added;
@end

// Below first: the compiler lists it first.
@implementation LoadedBelow
+ (void)load {
  note("Below");
}
+ (void)initialize {
  note("initialize-Below");
}
@end

@implementation LoadedBase (First)
+ (void)load {
  note("Base(First)");
}
@end

@implementation LoadedBase
+ (void)load {
  note("Base");
}
+ (void)initialize {
  note(self == [LoadedBase class] ? "initialize-Base" : "initialize-Base-for-another");
}
@end

@implementation Silent
- (int)added {
  return 1;
}
@end
@implementation Silent (More)
+ (void)load {
  note("Silent(More)");
}
- (int)added {
  return 3;
}
@end

BEHAVIOUR(loadRunsSuperclassFirstAndCategoriesLast) {
  equalTexts(noted(), "Base Below Base(First) Silent(More)");
}

BEHAVIOUR(aCategoryReplacesAMethod) {
  equal([[Silent new] added], 3);
}

BEHAVIOUR(initializeRunsSuperclassFirstAndOnce) {
  forgetNotes();
  [LoadedBelow class];
  [LoadedBelow class];
  [LoadedBase class];
  equalTexts(noted(), "initialize-Base initialize-Below");
}
