// Implementations made of blocks.
#import "behaviour.h"

struct Big {
  long long words[4];
};

@interface Host : NSObject
@property int base;
- (int)add:(int)number;
- (struct Big)big:(int)first;
- (double)scale:(double)by;
@end
@implementation Host
- (int)add:(int)number {
  return self.base + number;
}
- (struct Big)big:(int)first {
  return (struct Big){{first}};
}
- (double)scale:(double)by {
  return by;
}
@end

BEHAVIOUR(aBlockBecomesAMethod) {
  IMP made = imp_implementationWithBlock(^(Host *self, int number) {
    return self.base * number;
  });
  method_setImplementation(class_getInstanceMethod([Host class], @selector(add:)), made);
  Host *host = [Host new];
  host.base = 6;
  equal([host add:7], 42);
}

BEHAVIOUR(aBlockReturnsALargeStructureAsAMethod) {
  IMP made = imp_implementationWithBlock(^(Host *self, int first) {
    return (struct Big){{first, self.base, 3, 4}};
  });
  method_setImplementation(class_getInstanceMethod([Host class], @selector(big:)), made);
  Host *host = [Host new];
  host.base = 2;
  struct Big big = [host big:1];
  equal(big.words[0], 1);
  equal(big.words[1], 2);
  equal(big.words[3], 4);
}

BEHAVIOUR(aBlockTakesFractionsAsAMethod) {
  IMP made = imp_implementationWithBlock(^(Host *self, double by) {
    return by * 2;
  });
  method_setImplementation(class_getInstanceMethod([Host class], @selector(scale:)), made);
  equalDoubles([[Host new] scale:1.25], 2.5);
}

BEHAVIOUR(aBlockIsAddedAsANewMethod) {
  int captured = 30;
  IMP made = imp_implementationWithBlock(^(Host *self) {
    return captured + self.base;
  });
  equal(class_addMethod([Host class], sel_registerName("madeUp"), made, "i@:"), 1);
  Host *host = [Host new];
  host.base = 4;
  equal(((int (*)(id, SEL))objc_msgSend)(host, sel_registerName("madeUp")), 34);
}

BEHAVIOUR(theBlockOfAnImplementationIsACopy) {
  int captured = 1;
  id block = ^(id self) {
    return captured;
  };
  IMP made = imp_implementationWithBlock(block);
  id found = imp_getBlock(made);
  equal(found != nil, 1);
  equal(((int (^)(id))found)(nil), 1);
}

BEHAVIOUR(aRemovedBlockIsReleased) {
  IMP made = NULL;
  @autoreleasepool {
    Host *host = [Host new];
    objc_setAssociatedObject(host, "watch", [Host new], OBJC_ASSOCIATION_RETAIN);
    __weak Host *weak = host;
    made = imp_implementationWithBlock(^(id self) {
      return host.base;
    });
    equal(weak != nil, 1);
  }
  equal(imp_removeBlock(made), 1);
  same(imp_getBlock(made), nil);
  equal(imp_removeBlock(made), 0);
}

BEHAVIOUR(anOrdinaryImplementationHasNoBlock) {
  IMP own = class_getMethodImplementation([Host class], @selector(add:));
  same(imp_getBlock(own), nil);
  equal(imp_removeBlock(own), 0);
}

BEHAVIOUR(manyBlocksBecomeMethods) {
  IMP made[200];
  for (int i = 0; i < 200; ++i)
    made[i] = imp_implementationWithBlock(^(id self) {
      return i;
    });
  for (int i = 0; i < 200; ++i) equal(((int (*)(id, SEL))made[i])(nil, @selector(base)), i);
  for (int i = 0; i < 200; ++i) equal(imp_removeBlock(made[i]), 1);
}
