// Messages without a method: added at the last moment, handed to another, or made an invocation.
#import "behaviour.h"

struct Large {
  long long words[5];
};
struct Point {
  double x, y;
};

@interface Target : NSObject
- (int)twice:(int)number;
- (struct Large)large;
- (struct Point)moved:(struct Point)point by:(double)distance;
- (float)half:(float)number;
- (NSString *)greet:(NSString *)name;
- (BOOL)isNegative:(char)number;
@end
@implementation Target
- (int)twice:(int)number {
  return 2 * number;
}
- (struct Large)large {
  return (struct Large){{1, 2, 3, 4, 5}};
}
- (struct Point)moved:(struct Point)point by:(double)distance {
  return (struct Point){point.x + distance, point.y - distance};
}
- (float)half:(float)number {
  return number / 2;
}
- (NSString *)greet:(NSString *)name {
  return [@"Hello " stringByAppendingString:name];
}
- (BOOL)isNegative:(char)number {
  return number < 0;
}
@end

@interface Fast : NSObject
@property(strong) id target;
@end
@implementation Fast
- (id)forwardingTargetForSelector:(SEL)selector {
  return [self.target respondsToSelector:selector] ? self.target : nil;
}
@end

@interface Slow : NSObject
@property(strong) id target;
@end
@implementation Slow
- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
  NSMethodSignature *own = [super methodSignatureForSelector:selector];
  return own != nil ? own : [self.target methodSignatureForSelector:selector];
}
- (void)forwardInvocation:(NSInvocation *)invocation {
  note(sel_getName(invocation.selector));
  if ([self.target respondsToSelector:invocation.selector])
    [invocation invokeWithTarget:self.target];
  else
    [super forwardInvocation:invocation];
}
@end

static int dynamic(id self, SEL selector, int number) { return number + 1000; }

@interface Resolving : NSObject
@end
@interface Resolving (Dynamic)
- (int)instanceDynamic:(int)number;
+ (int)classDynamic:(int)number;
- (int)never:(int)number;
@end
@implementation Resolving
+ (BOOL)resolveInstanceMethod:(SEL)selector {
  note(sel_getName(selector));
  if (selector != @selector(instanceDynamic:)) return [super resolveInstanceMethod:selector];
  return class_addMethod(self, selector, (IMP)dynamic, "i@:i");
}
+ (BOOL)resolveClassMethod:(SEL)selector {
  if (selector != @selector(classDynamic:)) return [super resolveClassMethod:selector];
  return class_addMethod(object_getClass(self), selector, (IMP)dynamic, "i@:i");
}
@end

@interface ClassForwarder : NSObject
@end
@interface ClassForwarder (Forwarded)
+ (int)twice:(int)number;
@end
@implementation ClassForwarder
+ (id)forwardingTargetForSelector:(SEL)selector {
  return [Target new];
}
@end

static id fast(void) {
  Fast *fast = [Fast new];
  fast.target = [Target new];
  return fast;
}
static id slow(void) {
  Slow *slow = [Slow new];
  slow.target = [Target new];
  return slow;
}

BEHAVIOUR(anotherReceiverTakesTheMessage) { equal([fast() twice:21], 42); }

BEHAVIOUR(anotherReceiverReturnsLargeStructures) {
  struct Large large = [fast() large];
  equal(large.words[0], 1);
  equal(large.words[4], 5);
}

BEHAVIOUR(anotherReceiverGetsFractions) { equalDoubles([fast() half:5], 2.5); }

BEHAVIOUR(anotherReceiverIsAskedEachTime) {
  Fast *one = fast(), *two = [Fast new];
  equal([(id)one twice:1], 2);
  int raised = 0;
  @try {
    [(id)two twice:1];
  } @catch (NSException *exception) {
    raised = 1;
  }
  equal(raised, 1);
}

BEHAVIOUR(aClassForwardsItsMessages) { equal([ClassForwarder twice:4], 8); }

BEHAVIOUR(anInvocationIsForwarded) {
  equal([slow() twice:21], 42);
  equalTexts(noted(), "twice:");
}

BEHAVIOUR(anInvocationReturnsLargeStructures) {
  struct Large large = [slow() large];
  equal(large.words[0], 1);
  equal(large.words[4], 5);
}

BEHAVIOUR(anInvocationCarriesStructuresAndFractions) {
  struct Point point = [slow() moved:(struct Point){1, 2} by:0.5];
  equalDoubles(point.x, 1.5);
  equalDoubles(point.y, 1.5);
  equalDoubles([slow() half:3], 1.5);
}

BEHAVIOUR(anInvocationCarriesObjects) { equalStrings([slow() greet:@"you"], "Hello you"); }

BEHAVIOUR(anInvocationCarriesSmallNumbers) {
  equal([slow() isNegative:-1], 1);
  equal([slow() isNegative:1], 0);
}

BEHAVIOUR(anInvocationNobodyTakesRaises) {
  Slow *slow = [Slow new];
  slow.target = [Target new];
  NSString *reason = nil;
  @try {
    [(id)slow performSelector:sel_registerName("nobodyHasThis")];
  } @catch (NSException *exception) {
    reason = exception.reason;
  }
  equal([reason hasPrefix:@"-[Slow nobodyHasThis]: unrecognized selector"], 1);
}

BEHAVIOUR(aMethodIsAddedWhenItIsAskedFor) {
  equal([[Resolving new] instanceDynamic:1], 1001);
  equal([[Resolving new] instanceDynamic:2], 1002);
  equalTexts(noted(), "instanceDynamic:");
}

BEHAVIOUR(aClassMethodIsAddedWhenItIsAskedFor) { equal([Resolving classDynamic:1], 1001); }

BEHAVIOUR(respondsToSelectorAddsTheMethod) {
  equal([[Resolving new] respondsToSelector:@selector(instanceDynamic:)], 1);
  equal([[Resolving new] respondsToSelector:sel_registerName("never:")], 0);
  equal([Resolving instancesRespondToSelector:@selector(instanceDynamic:)], 1);
}

BEHAVIOUR(whatIsNotAddedIsUnknown) {
  int raised = 0;
  @try {
    [[Resolving new] never:1];
  } @catch (NSException *exception) {
    raised = 1;
  }
  equal(raised, 1);
}

BEHAVIOUR(theImplementationOfAnUnknownMethodForwards) {
  int (*unknown)(id, SEL, int) =
      (int (*)(id, SEL, int))class_getMethodImplementation([Fast class], @selector(twice:));
  samePointers(unknown, _objc_msgForward);
  equal(unknown(fast(), @selector(twice:), 5), 10);
}

BEHAVIOUR(aMethodMayBeMadeToForward) {
  Method twice = class_getInstanceMethod([Target class], @selector(twice:));
  equal(class_addMethod([Slow class], @selector(twice:), _objc_msgForward,
                        method_getTypeEncoding(twice)),
        1);
  equal([slow() twice:3], 6);
  equalTexts(noted(), "twice:");
}

BEHAVIOUR(anInvocationIsMadeByHand) {
  Target *target = [Target new];
  NSMethodSignature *signature = [target methodSignatureForSelector:@selector(twice:)];
  equal(signature.numberOfArguments, 3);
  equalTexts(signature.methodReturnType, "i");
  equalTexts([signature getArgumentTypeAtIndex:2], "i");
  NSInvocation *invocation = [NSInvocation invocationWithMethodSignature:signature];
  int number = 8, result = 0;
  invocation.selector = @selector(twice:);
  [invocation setArgument:&number atIndex:2];
  [invocation invokeWithTarget:target];
  [invocation getReturnValue:&result];
  equal(result, 16);
}

BEHAVIOUR(anInvocationMayBeChanged) {
  Target *target = [Target new];
  NSInvocation *invocation = [NSInvocation
      invocationWithMethodSignature:[target methodSignatureForSelector:@selector(greet:)]];
  NSString *__unsafe_unretained name = @"me";
  invocation.target = target;
  invocation.selector = @selector(greet:);
  [invocation setArgument:&name atIndex:2];
  [invocation retainArguments];
  equal(invocation.argumentsRetained, 1);
  [invocation invoke];
  NSString *__unsafe_unretained result = nil;
  [invocation getReturnValue:&result];
  equalStrings(result, "Hello me");
}

BEHAVIOUR(aSignatureComesFromTypes) {
  NSMethodSignature *signature =
      [NSMethodSignature signatureWithObjCTypes:"{Point=dd}40@0:8{Point=dd}16d32"];
  equal(signature.numberOfArguments, 4);
  equalTexts(signature.methodReturnType, "{Point=dd}");
  equal(signature.methodReturnLength, 16);
  equalTexts([signature getArgumentTypeAtIndex:3], "d");
}

BEHAVIOUR(anUnknownMethodHasNoSignature) {
  same([[Target new] methodSignatureForSelector:sel_registerName("nothing")], nil);
  same([Target instanceMethodSignatureForSelector:sel_registerName("nothing")], nil);
}
