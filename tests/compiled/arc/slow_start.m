// Classes whose +initialize takes long, and a weak reference that several threads read.
#import "behaviour.h"

#define EXPORT __attribute__((visibility("default")))

EXPORT int slowStartRuns = 0;
static int value;
static void (*sleepAWhile)(void);

@interface SlowStart : NSObject
+ (int)value;
@end
@implementation SlowStart
+ (void)initialize {
  ++slowStartRuns;
  if (sleepAWhile != NULL) sleepAWhile();
  // A message to itself does not wait.
  value = 40 + [self two];
}
+ (int)two {
  return 2;
}
+ (int)value {
  return value;
}
@end

@interface Failing : NSObject
@end
@implementation Failing
+ (void)initialize {
  note("initialize");
  @throw [NSException exceptionWithName:@"Failing" reason:nil userInfo:nil];
}
@end

@interface Inheriting : NSObject
@end
@implementation Inheriting
+ (void)initialize {
  note(class_getName(self));
}
@end
@interface InheritingBelow : Inheriting
@end
@implementation InheritingBelow
@end

@interface Shared : NSObject {
 @public
  int number;
}
@end
@implementation Shared
- (void)dealloc {
  number = 1000;
}
@end

static Shared *strong;
static __weak Shared *weak;

EXPORT void slowStartSleep(void (*sleeper)(void));
EXPORT void slowStartSleep(void (*sleeper)(void)) { sleepAWhile = sleeper; }
EXPORT int slowStartReady(void);
EXPORT int slowStartReady(void) { return [SlowStart value]; }
EXPORT void slowStartMakeShared(void);
EXPORT void slowStartMakeShared(void) {
  strong = [Shared new];
  strong->number = 7;
  weak = strong;
}
EXPORT void slowStartDropShared(void);
EXPORT void slowStartDropShared(void) { strong = nil; }
EXPORT int slowStartReadShared(void);
EXPORT int slowStartReadShared(void) {
  Shared *read = weak;
  return read == nil ? 0 : read->number;
}

BEHAVIOUR(initializeMaySendMessagesToItsClass) { equal([SlowStart value], 42); }

BEHAVIOUR(initializeThatRaisesRunsOnlyOnce) {
  int raised = 0;
  @try {
    [Failing self];
  } @catch (NSException *exception) {
    raised = 1;
  }
  [Failing self];
  equal(raised, 1);
  equalTexts(noted(), "initialize");
}

BEHAVIOUR(anInheritedInitializeRunsForEachClass) {
  [InheritingBelow self];
  [InheritingBelow self];
  equalTexts(noted(), "Inheriting InheritingBelow");
}

BEHAVIOUR(aClassMadeAtRunTimeInheritsInitialize) {
  Class made = objc_allocateClassPair([Inheriting class], "MadeBelow", 0);
  objc_registerClassPair(made);
  forgetNotes();
  [made self];
  equalTexts(noted(), "MadeBelow");
}

BEHAVIOUR(lookingAClassUpDoesNotInitializeIt) {
  same(class_getSuperclass(objc_getClass("InheritingBelow")), objc_getClass("Inheriting"));
  equalTexts(noted(), "");
}

BEHAVIOUR(anInstanceMessageFindsTheClassInitialized) {
  [[InheritingBelow new] self];
  equalTexts(noted(), "Inheriting InheritingBelow");
}
