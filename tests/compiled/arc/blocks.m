// Blocks: what they capture, where they live, what they keep.
#import "behaviour.h"

@interface Captured : NSObject {
 @public
  int value;
}
@property(copy) int (^block)(int);
@end
@implementation Captured
- (void)dealloc {
  note("gone");
}
- (int (^)(void))readValue {
  return ^{
    return self->value;
  };
}
@end

struct Wide {
  double numbers[6];
};

static int (^globalBlock)(int) = ^(int number) {
  return number + 1;
};

BEHAVIOUR(aGlobalBlockIsCalled) { equal(globalBlock(4), 5); }

BEHAVIOUR(aBlockSeesTheValueAtItsMaking) {
  int number = 1;
  int (^block)(void) = ^{
    return number;
  };
  number = 2;
  equal(block(), 1);
  equal(number, 2);
}

BEHAVIOUR(aBlockVariableIsShared) {
  __block int number = 1;
  void (^block)(void) = ^{
    number += 10;
  };
  block();
  number += 100;
  block();
  equal(number, 121);
}

BEHAVIOUR(aSharedVariableOutlivesItsFunction) {
  int (^(^maker)(void))(void) = ^{
    __block int count = 0;
    return ^{
      return ++count;
    };
  };
  int (^one)(void) = maker();
  int (^two)(void) = maker();
  one();
  one();
  equal(one(), 3);
  equal(two(), 1);
}

BEHAVIOUR(twoBlocksShareAVariable) {
  __block int number = 0;
  void (^add)(void) = ^{
    ++number;
  };
  int (^read)(void) = ^{
    return number;
  };
  add();
  add();
  equal(read(), 2);
}

BEHAVIOUR(aBlockKeepsWhatItCaptures) {
  int (^block)(void) = nil;
  @autoreleasepool {
    Captured *object = [Captured new];
    object->value = 7;
    block = [object readValue];
  }
  note("kept");
  equal(block(), 7);
  block = nil;
  equalTexts(noted(), "kept gone");
}

BEHAVIOUR(aSharedObjectIsReleasedWithItsBlock) {
  void (^block)(void) = nil;
  @autoreleasepool {
    __block Captured *object = [Captured new];
    block = ^{
      object = nil;
    };
  }
  note("before");
  block();
  note("after");
  equalTexts(noted(), "before gone after");
}

BEHAVIOUR(aSharedObjectGoesWithItsLastBlock) {
  void (^block)(void) = nil;
  @autoreleasepool {
    __block Captured *object = [Captured new];
    block = ^{
      [object self];
    };
    block();
  }
  note("before");
  block = nil;
  note("after");
  equalTexts(noted(), "before gone after");
}

BEHAVIOUR(aCopyOfAHeapBlockIsItself) {
  int number = 3;
  int (^block)(void) = ^{
    return number;
  };
  id heap = [block copy];
  same([heap copy], heap);
}

BEHAVIOUR(aGlobalBlockIsNeverCopied) { same([globalBlock copy], globalBlock); }

BEHAVIOUR(blocksAreObjects) {
  id block = ^{
  };
  equal([block isKindOfClass:objc_getClass("NSBlock")], 1);
  equal([block isKindOfClass:[NSObject class]], 1);
  equal([block respondsToSelector:@selector(copy)], 1);
}

BEHAVIOUR(aCopyPropertyKeepsABlock) {
  Captured *owner = [Captured new];
  int base = 5;
  owner.block = ^(int number) {
    return number * base;
  };
  equal(owner.block(4), 20);
}

BEHAVIOUR(blocksReturnStructures) {
  struct Wide (^block)(double) = ^(double number) {
    return (struct Wide){{number, 2, 3, 4, 5, number}};
  };
  struct Wide wide = block(1.5);
  equalDoubles(wide.numbers[0], 1.5);
  equalDoubles(wide.numbers[5], 1.5);
}

BEHAVIOUR(blocksTakeManyArguments) {
  double (^sum)(int, double, float, long long, int, int, int, int, double) =
      ^(int a, double b, float c, long long d, int e, int f, int g, int h, double i) {
        return a + b + c + d + e + f + g + h + i;
      };
  equalDoubles(sum(1, 2.5, 0.5F, 4, 5, 6, 7, 8, 0.25), 34.25);
}

BEHAVIOUR(blocksNest) {
  int base = 1;
  int (^outer)(int) = ^(int number) {
    int (^inner)(int) = ^(int other) {
      return base + number + other;
    };
    return inner(100);
  };
  equal(outer(10), 111);
}

BEHAVIOUR(aBlockMayCallItself) {
  __block int (^factorial)(int) = nil;
  __unsafe_unretained __block int (^weakly)(int) = nil;
  factorial = ^(int number) {
    return number < 2 ? 1 : number * weakly(number - 1);
  };
  weakly = factorial;
  equal(factorial(5), 120);
}

BEHAVIOUR(aBlockCapturesABlock) {
  int (^add)(int) = ^(int number) {
    return number + 1;
  };
  int base = 2;
  int (^twice)(int) = ^(int number) {
    return add(add(number)) * base;
  };
  equal(twice(1), 6);
}

BEHAVIOUR(aSharedStructureIsMovedWhole) {
  __block struct Wide wide = {{1, 2, 3, 4, 5, 6}};
  void (^block)(void) = ^{
    wide.numbers[5] += 1;
  };
  id kept = [block copy];
  block();
  equalDoubles(wide.numbers[5], 7);
  equalDoubles(wide.numbers[0], 1);
  [kept self];
}

BEHAVIOUR(aWeakSharedVariableBecomesNil) {
  __block __weak Captured *weak = nil;
  id (^read)(void) = ^id {
    return weak;
  };
  @autoreleasepool {
    Captured *strong = [Captured new];
    weak = strong;
    same(read(), strong);
  }
  same(read(), nil);
}
