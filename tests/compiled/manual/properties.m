// Properties without ARC: each way to keep a value.
#import "behaviour.h"

struct Size {
  double width, height;
  int deep;
};

@interface Text : NSObject <NSCopying> {
 @public
  int copies;
}
@end
@implementation Text
- (id)copyWithZone:(NSZone *)zone {
  Text *made = [[Text allocWithZone:zone] init];
  made->copies = copies + 1;
  return made;
}
- (void)dealloc {
  note("text-gone");
  [super dealloc];
}
@end

@interface Owner : NSObject
@property(retain) id retained;
@property(nonatomic, retain) id retainedNonatomic;
@property(copy) Text *copied;
@property(nonatomic, copy) Text *copiedNonatomic;
@property(assign) id assigned;
@property struct Size size;
@property(nonatomic) struct Size sizeNonatomic;
@property int number;
@property(getter=isOn, setter=turn:) BOOL on;
@property(readonly) int fixed;
@property(class) int shared;
@property(nonatomic) double fraction;
@property(nonatomic) float single;
@property(nonatomic) char letter;
@property(copy) int (^block)(void);
@end
static int sharedNumber;
@implementation Owner
@synthesize fixed = renamed;
+ (int)shared {
  return sharedNumber;
}
+ (void)setShared:(int)value {
  sharedNumber = value;
}
- (instancetype)init {
  self = [super init];
  if (self != nil) renamed = 77;
  return self;
}
- (void)dealloc {
  [_retained release];
  [_retainedNonatomic release];
  [_copied release];
  [_copiedNonatomic release];
  [_block release];
  [super dealloc];
}
@end

BEHAVIOUR(aRetainedValueIsKept) {
  Owner *owner = [Owner new];
  NSObject *value = [NSObject new];
  owner.retained = value;
  equal(value.retainCount, 2);
  owner.retained = value;
  equal(value.retainCount, 2);
  owner.retained = nil;
  equal(value.retainCount, 1);
  owner.retainedNonatomic = value;
  equal(value.retainCount, 2);
  [owner release];
  equal(value.retainCount, 1);
  [value release];
}

BEHAVIOUR(anAtomicGetterKeepsItsResultAlive) {
  Owner *owner = [Owner new];
  NSObject *value = [NSObject new];
  owner.retained = value;
  @autoreleasepool {
    same(owner.retained, value);
    equal(value.retainCount, 3);
  }
  equal(value.retainCount, 2);
  [owner release];
  [value release];
}

BEHAVIOUR(aNonatomicGetterReturnsItAsItIs) {
  Owner *owner = [Owner new];
  NSObject *value = [NSObject new];
  owner.retainedNonatomic = value;
  same(owner.retainedNonatomic, value);
  equal(value.retainCount, 2);
  [owner release];
  [value release];
}

BEHAVIOUR(aCopiedValueIsACopy) {
  Owner *owner = [Owner new];
  Text *text = [Text new];
  owner.copied = text;
  owner.copiedNonatomic = text;
  equal(text.retainCount, 1);
  equal(owner.copied->copies, 1);
  equal(owner.copiedNonatomic->copies, 1);
  equal(owner.copied != text, 1);
  [owner release];
  [text release];
}

BEHAVIOUR(anAssignedValueIsNotKept) {
  Owner *owner = [Owner new];
  NSObject *value = [NSObject new];
  owner.assigned = value;
  equal(value.retainCount, 1);
  same(owner.assigned, value);
  [value release];
  [owner release];
}

BEHAVIOUR(structuresAreCopied) {
  Owner *owner = [Owner new];
  owner.size = (struct Size){1.5, 2.5, 3};
  owner.sizeNonatomic = owner.size;
  equalDoubles(owner.size.width, 1.5);
  equalDoubles(owner.sizeNonatomic.height, 2.5);
  equal(owner.sizeNonatomic.deep, 3);
  [owner release];
}

BEHAVIOUR(numbersOfEverySizeAreKept) {
  Owner *owner = [Owner new];
  owner.number = -5;
  owner.fraction = 0.25;
  owner.single = 0.5F;
  owner.letter = 'q';
  equal(owner.number, -5);
  equalDoubles(owner.fraction, 0.25);
  equalDoubles(owner.single, 0.5);
  equal(owner.letter, 'q');
  [owner release];
}

BEHAVIOUR(accessorsMayHaveOtherNames) {
  Owner *owner = [Owner new];
  [owner turn:YES];
  equal(owner.isOn, 1);
  equal([owner respondsToSelector:@selector(on)], 0);
  equal([owner respondsToSelector:sel_registerName("setOn:")], 0);
  [owner release];
}

BEHAVIOUR(aReadonlyPropertyHasNoSetter) {
  Owner *owner = [Owner new];
  equal(owner.fixed, 77);
  equal([owner respondsToSelector:sel_registerName("setFixed:")], 0);
  [owner release];
}

BEHAVIOUR(aClassHasProperties) {
  Owner.shared = 9;
  equal(Owner.shared, 9);
}

BEHAVIOUR(aCopiedBlockIsOnTheHeap) {
  Owner *owner = [Owner new];
  int captured = 6;
  owner.block = ^{
    return captured;
  };
  equal(owner.block(), 6);
  [owner release];
}
