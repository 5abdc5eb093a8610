// Literals, boxed expressions, subscripts, and constant strings.
#import "behaviour.h"

typedef struct __attribute__((objc_boxable)) {
  double x, y;
} Spot;
enum Color { red = 3, green };

BEHAVIOUR(numberLiteralsKeepTheirKind) {
  equal([@42 intValue], 42);
  equal([@-7L longLongValue], -7);
  equal([@0xffffffffffffffffULL unsignedLongLongValue], -1);
  equalDoubles([@1.5 doubleValue], 1.5);
  equalDoubles([@0.25F floatValue], 0.25);
  equal([@'x' charValue], 'x');
  equal([@YES boolValue], 1);
  equal([@NO boolValue], 0);
}

BEHAVIOUR(expressionsAreBoxed) {
  int number = 6;
  unsigned char byte = 200;
  short little = -3;
  unsigned wide = 4000000000U;
  equal(@(number * 7).intValue, 42);
  equal(@(byte).unsignedCharValue, 200);
  equal(@(little).shortValue, -3);
  equal(@(wide).unsignedIntValue, 4000000000LL);
  equal(@(number > 5).boolValue, 1);
  equal(@(green).intValue, 4);
}

BEHAVIOUR(aCStringIsBoxedAsAString) {
  const char *text = "boxed";
  equalStrings(@(text), "boxed");
}

BEHAVIOUR(aStructureIsBoxedAsAValue) {
  Spot spot = {1.5, -2};
  NSValue *value = @(spot);
  Spot back = {0, 0};
  [value getValue:&back];
  equalDoubles(back.x, 1.5);
  equalDoubles(back.y, -2);
  equalTexts(value.objCType, @encode(Spot));
}

BEHAVIOUR(arrayLiteralsKeepTheirOrder) {
  NSArray *array = @[ @"a", @2, @[ @"c" ] ];
  equal(array.count, 3);
  equalStrings(array[0], "a");
  equal([array[1] intValue], 2);
  equalStrings(array[2][0], "c");
  equal(@[].count, 0);
}

BEHAVIOUR(aNilInAnArrayLiteralRaises) {
  id none = nil;
  int raised = 0;
  @try {
    equal((@[ @1, none ].count), 2);
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSInvalidArgumentException");
    raised = 1;
  }
  equal(raised, 1);
}

BEHAVIOUR(dictionaryLiteralsFindTheirValues) {
  NSDictionary *dictionary = @{@"one" : @1, @2 : @"two", @"none" : [NSNull null]};
  equal(dictionary.count, 3);
  equal([dictionary[@"one"] intValue], 1);
  equalStrings(dictionary[@2], "two");
  same(dictionary[@"none"], [NSNull null]);
  same(dictionary[@"absent"], nil);
}

BEHAVIOUR(subscriptsSetElements) {
  NSMutableArray *array = [@[ @"a", @"b" ] mutableCopy];
  array[0] = @"x";
  array[2] = @"c";
  equal(array.count, 3);
  equalStrings(array[0], "x");
  equalStrings(array[2], "c");
}

BEHAVIOUR(subscriptsSetEntries) {
  NSMutableDictionary *dictionary = [NSMutableDictionary dictionary];
  dictionary[@"key"] = @"value";
  dictionary[@"other"] = @2;
  equalStrings(dictionary[@"key"], "value");
  dictionary[@"key"] = nil;
  equal(dictionary.count, 1);
}

BEHAVIOUR(aSubscriptBeyondTheEndRaises) {
  NSArray *array = @[ @1 ];
  int raised = 0;
  @try {
    [array[1] self];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSRangeException");
    raised = 1;
  }
  equal(raised, 1);
}

BEHAVIOUR(constantStringsAreStrings) {
  equal(@"constant".length, 8);
  equalStrings(@"constant", "constant");
  equal([@"constant" isKindOfClass:[NSString class]], 1);
  equal([@"" length], 0);
}

BEHAVIOUR(constantsOfOtherAlphabetsAreStrings) {
  equal(@"größe".length, 5);
  equalStrings(@"größe", "größe");
  equal([@"日本語" isEqualToString:[NSString stringWithUTF8String:"日本語"]], 1);
  equal(@"😀".length, 2);
  equalStrings([@"é" stringByAppendingString:@"!"], "é!");
}

BEHAVIOUR(aConstantWithAZeroInsideIsWhole) { equal(@"a\0b".length, 3); }

BEHAVIOUR(equalConstantsAreEqualToMadeStrings) {
  NSString *made = [NSString stringWithFormat:@"%s%d", "n", 5];
  equal([made isEqual:@"n5"], 1);
  equal(made.hash == @"n5".hash, 1);
  equal([@{@"n5" : @YES}[made] boolValue], 1);
}

BEHAVIOUR(valuesKeepBytes) {
  NSRange range = {3, 4};
  equal([NSValue valueWithRange:range].rangeValue.length, 4);
  int local = 1;
  samePointers([NSValue valueWithPointer:&local].pointerValue, &local);
  NSObject *object = [NSObject new];
  same([NSValue valueWithNonretainedObject:object].nonretainedObjectValue, object);
  equal([[NSValue valueWithRange:range] isEqual:[NSValue valueWithRange:range]], 1);
}

BEHAVIOUR(numbersCompare) {
  equal([@1 compare:@2], NSOrderedAscending);
  equal([@2.5 compare:@2], NSOrderedDescending);
  equal([@2 compare:@2.0], NSOrderedSame);
  equal([@2 isEqualToNumber:@2.0], 1);
  equal([@YES isEqual:@1], 1);
  equalStrings([@17 stringValue], "17");
}

BEHAVIOUR(numbersAreValues) { equal([@1 isKindOfClass:[NSValue class]], 1); }
