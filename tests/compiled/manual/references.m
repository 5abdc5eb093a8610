// Without ARC: counts, pools, the functions that ARC calls, and methods that classes override.
#import "behaviour.h"

@interface Counted : NSObject {
 @public
  int number;
}
@end
@implementation Counted
- (void)dealloc {
  note("gone");
  [super dealloc];
}
@end

@interface OwnCounting : NSObject {
 @public
  int count;
}
@end
@implementation OwnCounting
- (instancetype)retain {
  ++count;
  return [super retain];
}
- (oneway void)release {
  --count;
  [super release];
}
- (void)dealloc {
  note("gone");
  [super dealloc];
}
@end

@interface Single : NSObject
@end
static Single *single;
@implementation Single
+ (instancetype)allocWithZone:(NSZone *)zone {
  if (single == nil) single = [super allocWithZone:zone];
  return single;
}
- (instancetype)retain {
  return self;
}
- (oneway void)release {
}
@end

id objc_retain(id object);
void objc_release(id object);
id objc_autorelease(id object);
id objc_retainAutorelease(id object);
id objc_autoreleaseReturnValue(id object);
id objc_retainAutoreleaseReturnValue(id object);
id objc_retainAutoreleasedReturnValue(id object);
id objc_unsafeClaimAutoreleasedReturnValue(id object);
void objc_storeStrong(id *place, id object);
id objc_retainBlock(id block);
void *objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void *pool);
id objc_initWeak(id *place, id object);
id objc_storeWeak(id *place, id object);
id objc_loadWeak(id *place);
id objc_loadWeakRetained(id *place);
void objc_copyWeak(id *to, id *from);
void objc_moveWeak(id *to, id *from);
void objc_destroyWeak(id *place);

BEHAVIOUR(aNewObjectHasOneReference) {
  Counted *object = [[Counted alloc] init];
  equal(object.retainCount, 1);
  equal(object->number, 0);
  [object release];
  equalTexts(noted(), "gone");
}

BEHAVIOUR(retainAndReleaseCount) {
  Counted *object = [Counted new];
  same([object retain], object);
  equal(object.retainCount, 2);
  [object release];
  equal(object.retainCount, 1);
  [object release];
  equalTexts(noted(), "gone");
}

BEHAVIOUR(autoreleaseWaitsForThePool) {
  @autoreleasepool {
    same([[[Counted alloc] init] autorelease] == nil ? nil : @"", @"");
    note("inside");
  }
  equalTexts(noted(), "inside gone");
}

BEHAVIOUR(anObjectMayBeAutoreleasedTwice) {
  Counted *object = [Counted new];
  [object retain];
  @autoreleasepool {
    [object autorelease];
    [object autorelease];
    equal(object.retainCount, 2);
  }
  equalTexts(noted(), "gone");
}

BEHAVIOUR(theFunctionsCountLikeTheMessages) {
  Counted *object = [Counted new];
  same(objc_retain(object), object);
  equal(object.retainCount, 2);
  objc_release(object);
  equal(object.retainCount, 1);
  @autoreleasepool {
    same(objc_retainAutorelease(object), object);
    equal(object.retainCount, 2);
  }
  equal(object.retainCount, 1);
  @autoreleasepool {
    same(objc_autoreleaseReturnValue(objc_retain(object)), object);
    same(objc_retainAutoreleaseReturnValue(object), object);
  }
  equal(object.retainCount, 1);
  same(objc_retainAutoreleasedReturnValue(object), object);
  equal(object.retainCount, 2);
  same(objc_unsafeClaimAutoreleasedReturnValue(object), object);
  [object release];
  [object release];
  equalTexts(noted(), "gone");
}

BEHAVIOUR(theFunctionsTakeNil) {
  same(objc_retain(nil), nil);
  objc_release(nil);
  same(objc_autorelease(nil), nil);
  same(objc_retainBlock(nil), nil);
  same(objc_retainAutorelease(nil), nil);
  same(objc_alloc(Nil), nil);
  same(objc_opt_self(nil), nil);
  same(objc_opt_class(nil), nil);
  equal(objc_opt_isKindOfClass(nil, [Counted class]), 0);
}

BEHAVIOUR(storeStrongReplaces) {
  id place = nil;
  Counted *one = [Counted new], *two = [Counted new];
  objc_storeStrong(&place, one);
  equal(one.retainCount, 2);
  objc_storeStrong(&place, one);
  equal(one.retainCount, 2);
  objc_storeStrong(&place, two);
  equal(one.retainCount, 1);
  objc_storeStrong(&place, nil);
  equal(two.retainCount, 1);
  same(place, nil);
  [one release];
  [two release];
}

BEHAVIOUR(poolsByHandNest) {
  void *outer = objc_autoreleasePoolPush();
  [[Counted new] autorelease];
  void *inner = objc_autoreleasePoolPush();
  [[Counted new] autorelease];
  objc_autoreleasePoolPop(inner);
  note("between");
  objc_autoreleasePoolPop(outer);
  equalTexts(noted(), "gone between gone");
}

BEHAVIOUR(anOuterPoolEndsTheInnerOnes) {
  void *outer = objc_autoreleasePoolPush();
  objc_autoreleasePoolPush();
  [[Counted new] autorelease];
  objc_autoreleasePoolPop(outer);
  equalTexts(noted(), "gone");
}

BEHAVIOUR(overriddenCountingIsCalledByTheFunctions) {
  OwnCounting *object = [OwnCounting new];
  objc_retain(object);
  equal(object->count, 1);
  objc_release(object);
  equal(object->count, 0);
  @autoreleasepool {
    [objc_retain(object) autorelease];
    equal(object->count, 1);
  }
  equal(object->count, 0);
  [object release];
  equalTexts(noted(), "gone");
}

BEHAVIOUR(overriddenAllocationIsCalledByAlloc) {
  Single *one = [[Single alloc] init];
  same([[Single alloc] init], one);
  same([Single new], one);
  same(objc_alloc([Single class]), one);
  same(objc_allocWithZone([Single class]), one);
  same(objc_alloc_init([Single class]), one);
}

BEHAVIOUR(theShortcutsDoWhatTheMessagesDo) {
  Counted *made = objc_alloc_init([Counted class]);
  equal(made.retainCount, 1);
  same(objc_opt_self(made), made);
  same(objc_opt_class(made), [Counted class]);
  equal(objc_opt_isKindOfClass(made, [NSObject class]), 1);
  equal(objc_opt_isKindOfClass(made, [Single class]), 0);
  equal(objc_opt_respondsToSelector(made, @selector(dealloc)), 1);
  equal(objc_opt_respondsToSelector(made, sel_registerName("nothing")), 0);
  [made release];
  Counted *other = objc_opt_new([Counted class]);
  same(object_getClass(other), [Counted class]);
  [other release];
  equalTexts(noted(), "gone gone");
}

BEHAVIOUR(weakReferencesByHand) {
  id place, copy, moved;
  Counted *object = [Counted new];
  same(objc_initWeak(&place, object), object);
  @autoreleasepool {
    same(objc_loadWeak(&place), object);
  }
  equal(object.retainCount, 1);
  id loaded = objc_loadWeakRetained(&place);
  equal(object.retainCount, 2);
  [loaded release];
  objc_copyWeak(&copy, &place);
  objc_moveWeak(&moved, &place);
  same(objc_loadWeakRetained(&place), nil);
  [object release];
  same(objc_loadWeakRetained(&copy), nil);
  same(objc_loadWeakRetained(&moved), nil);
  objc_destroyWeak(&copy);
  objc_destroyWeak(&moved);
}

BEHAVIOUR(aWeakReferenceIsForgottenWhenItIsDestroyed) {
  Counted *object = [Counted new];
  id place;
  objc_initWeak(&place, object);
  objc_destroyWeak(&place);
  place = (id)0x10;
  [object release];
  samePointers(place, 0x10);
}

BEHAVIOUR(aStackBlockMovesToTheHeap) {
  int captured = 4;
  int (^block)(void) = ^{
    return captured;
  };
  int (^heap)(void) = objc_retainBlock(block);
  equal(heap != block, 1);
  captured = 5;
  equal(heap(), 4);
  [heap release];
}

BEHAVIOUR(aCopiedBlockRetainsItsObjects) {
  Counted *object = [Counted new];
  id (^block)(void) = ^id {
    return object;
  };
  id heap = [block copy];
  equal(object.retainCount, 2);
  [heap release];
  equal(object.retainCount, 1);
  [object release];
}

BEHAVIOUR(aSharedObjectIsNotRetainedByItsBlock) {
  __block Counted *object = [Counted new];
  id (^block)(void) = ^id {
    return object;
  };
  id heap = [block copy];
  equal(object.retainCount, 1);
  [heap release];
  [object release];
  equalTexts(noted(), "gone");
}

BEHAVIOUR(constantsAndClassesAreNeverFreed) {
  NSString *text = @"constant";
  for (int i = 0; i < 10; ++i) [text release];
  equalStrings(text, "constant");
  [[Counted class] release];
  same([[Counted class] retain], [Counted class]);
}

BEHAVIOUR(exceptionsAreReleasedAfterTheirHandler) {
  @autoreleasepool {
    @try {
      @throw [[Counted new] autorelease];
    } @catch (Counted *caught) {
      equal(caught.retainCount >= 1, 1);
    }
    note("after");
  }
  equalTexts(noted(), "after gone");
}
