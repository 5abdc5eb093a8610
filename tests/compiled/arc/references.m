// ARC: strong and weak references, ownership qualifiers, autorelease pools.
#import "behaviour.h"

@interface Counted : NSObject
@property(copy) NSString *name;
@property(strong) Counted *strong;
@property(weak) Counted *weak;
@property(unsafe_unretained) Counted *unsafe;
@end
@implementation Counted
- (void)dealloc {
  note(self.name != nil ? self.name.UTF8String : "gone");
}
@end

static __strong Counted *global;

// Without a detour through a pool.
__attribute__((ns_returns_retained)) static Counted *make(NSString *name) {
  Counted *made = [Counted new];
  made.name = name;
  return made;
}

__attribute__((noinline)) static void use(id object) { [object self]; }

BEHAVIOUR(aLocalIsReleasedAtTheEndOfItsScope) {
  {
    Counted *local = make(@"local");
    use(local);
  }
  note("after");
  equalTexts(noted(), "local after");
}

BEHAVIOUR(anAssignmentReleasesTheOldValue) {
  Counted *one = make(@"first");
  use(one);
  one = make(@"second");
  note("assigned");
  one = nil;
  equalTexts(noted(), "first assigned second");
}

BEHAVIOUR(aGlobalKeepsItsValue) {
  global = make(@"global");
  note("set");
  global = nil;
  equalTexts(noted(), "set global");
}

BEHAVIOUR(aStrongPropertyKeepsItsValue) {
  Counted *owner = make(@"owner");
  owner.strong = make(@"owned");
  note("set");
  owner.strong = nil;
  equalTexts(noted(), "set owned");
}

BEHAVIOUR(variablesGoWithTheirOwner) {
  @autoreleasepool {
    Counted *owner = make(@"owner");
    owner.strong = make(@"owned");
  }
  equalTexts(noted(), "owner owned");
}

BEHAVIOUR(aWeakVariableBecomesNil) {
  __weak Counted *weak = nil;
  @autoreleasepool {
    Counted *strong = make(@"object");
    weak = strong;
    same(weak, strong);
  }
  same(weak, nil);
}

BEHAVIOUR(aWeakPropertyBecomesNil) {
  Counted *owner = make(@"owner");
  @autoreleasepool {
    Counted *value = make(@"value");
    owner.weak = value;
    same(owner.weak, value);
  }
  same(owner.weak, nil);
}

BEHAVIOUR(aWeakReferenceDoesNotKeep) {
  Counted *object = make(@"object");
  __weak Counted *weak = object;
  object = nil;
  note("after");
  same(weak, nil);
  equalTexts(noted(), "object after");
}

BEHAVIOUR(aWeakReferenceMayBeMoved) {
  Counted *one = make(@"one"), *two = make(@"two");
  __weak Counted *weak = one;
  weak = two;
  one = nil;
  same(weak, two);
  weak = nil;
  same(weak, nil);
  use(two);
}

BEHAVIOUR(manyWeakReferencesBecomeNilAtOnce) {
  __weak Counted *weak[8];
  @autoreleasepool {
    Counted *strong = make(@"object");
    for (int i = 0; i < 8; ++i) weak[i] = strong;
  }
  for (int i = 0; i < 8; ++i) same(weak[i], nil);
}

BEHAVIOUR(aWeakReferenceIsNilWhileItsObjectIsFreed) {
  @autoreleasepool {
    Counted *one = make(@"one");
    one.weak = one;
  }
  equalTexts(noted(), "one");
}

BEHAVIOUR(weakReferencesToClassesAndConstantsStay) {
  __weak Class cls = [Counted class];
  same(cls, [Counted class]);
  __weak NSString *text = @"constant";
  equalStrings(text, "constant");
}

BEHAVIOUR(aBlockCapturesWeakly) {
  Counted *object = make(@"object");
  __weak Counted *weak = object;
  id (^block)(void) = ^id {
    return weak;
  };
  @autoreleasepool {
    same(block(), object);
  }
  object = nil;
  same(block(), nil);
}

BEHAVIOUR(aPoolReleasesAtItsEnd) {
  __autoreleasing Counted *kept = nil;
  @autoreleasepool {
    __autoreleasing Counted *late = make(@"late");
    use(late);
    note("inside");
  }
  use(kept);
  note("outside");
  equalTexts(noted(), "inside late outside");
}

BEHAVIOUR(poolsNest) {
  @autoreleasepool {
    __autoreleasing Counted *outer = make(@"outer");
    use(outer);
    @autoreleasepool {
      __autoreleasing Counted *inner = make(@"inner");
      use(inner);
    }
    note("between");
  }
  equalTexts(noted(), "inner between outer");
}

BEHAVIOUR(aResultThroughAPointerIsAutoreleased) {
  __block int calls = 0;
  void (^fill)(Counted **) = ^(Counted **to) {
    *to = make(@"result");
    ++calls;
  };
  @autoreleasepool {
    Counted *result = nil;
    fill(&result);
    equalStrings(result.name, "result");
  }
  equal(calls, 1);
  equalTexts(noted(), "result");
}

BEHAVIOUR(anArrayOfReferencesIsReleased) {
  {
    Counted *array[3];
    array[0] = make(@"a");
    array[2] = make(@"c");
    use(array[0]);
    use(array[2]);
  }
  equal(noted()[0] != 0, 1);
  note("after");
  equalTexts(noted(), "c a after");
}

BEHAVIOUR(aStructureOfReferencesIsReleased) {
  struct Pair {
    Counted *one, *two;
  };
  {
    struct Pair pair = {make(@"one"), make(@"two")};
    struct Pair copy = pair;
    pair.one = nil;
    pair.two = nil;
    note("copy-left");
    use(copy.one);
    use(copy.two);
  }
  note("after");
  equalTexts(noted(), "copy-left one two after");
}

__attribute__((noinline)) static Counted *autoreleased(NSString *name) {
  Counted *made = [Counted new];
  made.name = name;
  return made;
}

BEHAVIOUR(aKeptResultDoesNotWaitForThePool) {
  @autoreleasepool {
    Counted *kept = autoreleased(@"result");
    use(kept);
    kept = nil;
    note("inside");
  }
  equalTexts(noted(), "result inside");
}

BEHAVIOUR(bridgingHandsOverAReference) {
  void *raw = (__bridge_retained void *)make(@"bridged");
  note("raw");
  @autoreleasepool {
    Counted *back = (__bridge_transfer Counted *)raw;
    use(back);
  }
  equalTexts(noted(), "raw bridged");
}

BEHAVIOUR(aRingOfStrongReferencesStays) {
  __weak Counted *weak = nil;
  @autoreleasepool {
    Counted *one = make(@"one"), *two = make(@"two");
    one.strong = two;
    two.strong = one;
    weak = one;
  }
  @autoreleasepool {
    equalStrings(weak.name, "one");
    weak.strong = nil;
  }
  same(weak, nil);
}

BEHAVIOUR(copyAttributesCopy) {
  Counted *owner = [Counted new];
  NSString *text = [NSString stringWithFormat:@"%d", 12];
  owner.name = text;
  equalStrings(owner.name, "12");
}

BEHAVIOUR(preciseLifetimeKeepsToTheEnd) {
  {
    __attribute__((objc_precise_lifetime)) Counted *precise = make(@"precise");
    (void)precise;
    note("inside");
  }
  equalTexts(noted(), "inside precise");
}
