// Messages: to nil, to super, with every kind of result and argument.
#import "behaviour.h"

struct Small {
  int one, two;
};
struct Medium {
  double one, two;
};
struct Large {
  long long words[5];
};
struct Mixed {
  int whole;
  double fraction;
};

@interface Sender : NSObject
- (int)integer;
- (char)character;
- (short)shortNumber;
- (unsigned char)byte;
- (long long)longLong;
- (float)single;
- (double)fraction;
- (long double)longDouble;
- (_Complex double)complexNumber;
- (struct Small)small;
- (struct Medium)medium;
- (struct Large)large;
- (struct Mixed)mixed;
- (double)sumOf:(int)a and:(double)b and:(float)c and:(long long)d and:(char)e and:(short)f
            and:(double)g and:(int)h and:(int)i and:(int)j;
- (long long)sumOfLarge:(struct Large)large and:(struct Small)small;
- (int)countOf:(int)first, ...;
+ (int)ofClass;
@end

@implementation Sender
- (int)integer {
  return -7;
}
- (char)character {
  return 'x';
}
- (short)shortNumber {
  return -300;
}
- (unsigned char)byte {
  return 200;
}
- (long long)longLong {
  return 0x123456789abcdefLL;
}
- (float)single {
  return 0.5F;
}
- (double)fraction {
  return 2.25;
}
- (long double)longDouble {
  return 3.5L;
}
- (_Complex double)complexNumber {
  return 1.5 + 2.5i;
}
- (struct Small)small {
  return (struct Small){1, 2};
}
- (struct Medium)medium {
  return (struct Medium){1.5, 2.5};
}
- (struct Large)large {
  return (struct Large){{1, 2, 3, 4, 5}};
}
- (struct Mixed)mixed {
  return (struct Mixed){9, 0.25};
}
- (double)sumOf:(int)a and:(double)b and:(float)c and:(long long)d and:(char)e and:(short)f
            and:(double)g and:(int)h and:(int)i and:(int)j {
  return a + b + c + d + e + f + g + h + i + j;
}
- (long long)sumOfLarge:(struct Large)large and:(struct Small)small {
  long long sum = small.one + small.two;
  for (int i = 0; i < 5; ++i) sum += large.words[i];
  return sum;
}
- (int)countOf:(int)first, ... {
  __builtin_va_list rest;
  __builtin_va_start(rest, first);
  int count = 0;
  for (int one = first; one != 0; one = __builtin_va_arg(rest, int)) ++count;
  __builtin_va_end(rest);
  return count;
}
+ (int)ofClass {
  return 11;
}
@end

@interface Receiver : Sender
@end
@implementation Receiver
- (int)integer {
  return [super integer] - 1;
}
- (struct Large)large {
  struct Large large = [super large];
  large.words[0] = 10;
  return large;
}
- (double)fraction {
  return [super fraction] * 2;
}
+ (int)ofClass {
  return [super ofClass] + 1;
}
@end
@interface ReceiverBelow : Receiver
@end
@implementation ReceiverBelow
- (int)integer {
  return [super integer] - 1;
}
@end

BEHAVIOUR(integersOfEverySizeComeBack) {
  Sender *sender = [Sender new];
  equal([sender integer], -7);
  equal([sender character], 'x');
  equal([sender shortNumber], -300);
  equal([sender byte], 200);
  equal([sender longLong], 0x123456789abcdefLL);
}

BEHAVIOUR(fractionsComeBack) {
  Sender *sender = [Sender new];
  equalDoubles([sender single], 0.5);
  equalDoubles([sender fraction], 2.25);
}

BEHAVIOUR(longDoublesComeBack) { equalDoubles((double)[[Sender new] longDouble], 3.5); }

BEHAVIOUR(complexNumbersComeBack) {
  _Complex double number = [[Sender new] complexNumber];
  equalDoubles(__real__ number, 1.5);
  equalDoubles(__imag__ number, 2.5);
}

BEHAVIOUR(smallStructuresComeBack) {
  struct Small small = [[Sender new] small];
  equal(small.one, 1);
  equal(small.two, 2);
}

BEHAVIOUR(structuresOfFractionsComeBack) {
  struct Medium medium = [[Sender new] medium];
  equalDoubles(medium.one, 1.5);
  equalDoubles(medium.two, 2.5);
  struct Mixed mixed = [[Sender new] mixed];
  equal(mixed.whole, 9);
  equalDoubles(mixed.fraction, 0.25);
}

BEHAVIOUR(largeStructuresComeBack) {
  struct Large large = [[Sender new] large];
  equal(large.words[0], 1);
  equal(large.words[4], 5);
}

BEHAVIOUR(manyArgumentsArrive) {
  equalDoubles([[Sender new] sumOf:1 and:2.5 and:0.25F and:4 and:5 and:6 and:7.5 and:8 and:9 and:10],
               53.25);
}

BEHAVIOUR(structuresArriveAsArguments) {
  struct Large large = {{1, 2, 3, 4, 5}};
  struct Small small = {10, 20};
  equal([[Sender new] sumOfLarge:large and:small], 45);
}

BEHAVIOUR(unnamedArgumentsArrive) { equal(([[Sender new] countOf:1, 2, 3, 4, 5, 6, 7, 8, 0]), 8); }

BEHAVIOUR(nilAnswersZeroToEverything) {
  Sender *none = nil;
  equal([none integer], 0);
  equal([none longLong], 0);
  equalDoubles([none single], 0);
  equalDoubles([none fraction], 0);
  equalDoubles((double)[none longDouble], 0);
  equalDoubles(__imag__ [none complexNumber], 0);
  same([none self], nil);
}

BEHAVIOUR(nilAnswersStructuresOfZeros) {
  Sender *none = nil;
  equal([none small].two, 0);
  equalDoubles([none medium].two, 0);
  equal([none large].words[4], 0);
}

BEHAVIOUR(superStartsAboveTheClassOfTheMethod) {
  equal([[Receiver new] integer], -8);
  equal([[ReceiverBelow new] integer], -9);
}

BEHAVIOUR(superReturnsLargeStructures) {
  struct Large large = [[Receiver new] large];
  equal(large.words[0], 10);
  equal(large.words[4], 5);
}

BEHAVIOUR(superReturnsFractions) { equalDoubles([[Receiver new] fraction], 4.5); }

BEHAVIOUR(superOfAClassMethodStartsAtTheMetaclassAbove) {
  equal([Receiver ofClass], 12);
  equal([ReceiverBelow ofClass], 12);
}

BEHAVIOUR(aSelectorOfTheCompilersIsTheRuntimes) {
  samePointers(@selector(integer), sel_registerName("integer"));
  equalTexts(sel_getName(@selector(sumOfLarge:and:)), "sumOfLarge:and:");
}

BEHAVIOUR(theMessengerIsAFunction) {
  int (*send)(id, SEL) = (int (*)(id, SEL))objc_msgSend;
  equal(send([Sender new], @selector(integer)), -7);
}

BEHAVIOUR(messagesByNameReturnObjects) {
  Sender *sender = [Sender new];
  same([sender performSelector:@selector(self)], sender);
  same([sender performSelector:@selector(forwardingTargetForSelector:) withObject:nil], nil);
}

BEHAVIOUR(superByHandSearchesTheGivenClass) {
  Receiver *receiver = [Receiver new];
  struct objc_super above = {receiver, [Sender class]};
  int (*send)(struct objc_super *, SEL) = (int (*)(struct objc_super *, SEL))objc_msgSendSuper;
  equal(send(&above, @selector(integer)), -7);
  struct objc_super running = {receiver, [Receiver class]};
  int (*send2)(struct objc_super *, SEL) = (int (*)(struct objc_super *, SEL))objc_msgSendSuper2;
  equal(send2(&running, @selector(integer)), -7);
}
