// Loops over collections, and what collections answer.
#import "behaviour.h"

@interface Letters : NSObject <NSFastEnumeration> {
  unsigned long changes;
}
@property int count;
@property BOOL mutates;
@end
@implementation Letters
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)capacity {
  static NSString *const names[] = {@"a", @"b", @"c", @"d"};
  NSUInteger given = 0;
  while (given < 2 && given < capacity && state->state < (unsigned long)self.count)
    buffer[given++] = names[state->state++];
  if (self.mutates) ++changes;
  state->itemsPtr = buffer;
  state->mutationsPtr = &changes;
  return given;
}
@end

static void noteMutation(id collection) { note("mutated"); }

static NSInteger downwards(id one, id other, void *context) {
  ++*(int *)context;
  return -[one compare:other];
}

BEHAVIOUR(aLoopVisitsAnArrayInOrder) {
  for (NSString *word in @[ @"one", @"two", @"three" ]) note(word.UTF8String);
  equalTexts(noted(), "one two three");
}

BEHAVIOUR(aLoopVisitsManyElements) {
  NSMutableArray *array = [NSMutableArray array];
  for (int i = 0; i < 100; ++i) [array addObject:@(i)];
  int sum = 0, visits = 0;
  for (NSNumber *number in array) {
    sum += number.intValue;
    ++visits;
  }
  equal(sum, 4950);
  equal(visits, 100);
}

BEHAVIOUR(aLoopVisitsNothingOfNilAndOfEmptyCollections) {
  NSArray *none = nil;
  int visits = 0;
  for (id object in none) visits += object != nil;
  for (id object in @[]) visits += object != nil;
  for (id object in @{}) visits += object != nil;
  for (id object in [NSSet set]) visits += object != nil;
  equal(visits, 0);
}

BEHAVIOUR(aLoopVisitsTheKeysOfADictionary) {
  NSDictionary *dictionary = @{@"a" : @1, @"b" : @2, @"c" : @3};
  int sum = 0;
  for (NSString *key in dictionary) sum += [dictionary[key] intValue];
  equal(sum, 6);
}

BEHAVIOUR(aLoopVisitsASet) {
  NSSet *set = [NSSet setWithObjects:@1, @2, @2, @3, nil];
  equal(set.count, 3);
  int sum = 0;
  for (NSNumber *number in set) sum += number.intValue;
  equal(sum, 6);
}

BEHAVIOUR(breakAndContinueWorkInLoops) {
  for (NSNumber *number in @[ @1, @2, @3, @4 ]) {
    if (number.intValue == 2) continue;
    if (number.intValue == 4) break;
    note(number.stringValue.UTF8String);
  }
  equalTexts(noted(), "1 3");
}

BEHAVIOUR(loopsNest) {
  for (NSArray *row in @[ @[ @"a", @"b" ], @[ @"c" ] ])
    for (NSString *word in row) note(word.UTF8String);
  equalTexts(noted(), "a b c");
}

BEHAVIOUR(aLoopVisitsAClassOfOnesOwn) {
  Letters *letters = [Letters new];
  letters.count = 3;
  for (NSString *letter in letters) note(letter.UTF8String);
  equalTexts(noted(), "a b c");
}

BEHAVIOUR(changingACollectionInItsLoopRaises) {
  NSMutableArray *array = [@[ @1, @2 ] mutableCopy];
  int raised = 0;
  @try {
    for (NSNumber *number in array) [array addObject:number];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSGenericException");
    raised = 1;
  }
  equal(raised, 1);
}

BEHAVIOUR(changingADictionaryOrASetInItsLoopRaises) {
  NSMutableDictionary *dictionary = [@{@"a" : @1, @"b" : @2} mutableCopy];
  NSMutableSet *set = [[NSSet setWithObjects:@1, @2, nil] mutableCopy];
  int raised = 0;
  @try {
    for (NSString *key in dictionary) dictionary[[key stringByAppendingString:@"x"]] = @1;
  } @catch (NSException *exception) {
    ++raised;
  }
  @try {
    for (NSNumber *number in set) [set addObject:@(number.intValue + 10)];
  } @catch (NSException *exception) {
    ++raised;
  }
  equal(raised, 2);
}

BEHAVIOUR(aHandlerIsToldOfChangesInALoop) {
  objc_setEnumerationMutationHandler(noteMutation);
  Letters *letters = [Letters new];
  letters.count = 4;
  letters.mutates = YES;
  int visits = 0;
  for (NSString *letter in letters) visits += letter != nil;
  equal(visits, 4);
  equalTexts(noted(), "mutated mutated");
}

BEHAVIOUR(enumeratorsGoBothWays) {
  NSArray *array = @[ @"a", @"b", @"c" ];
  for (NSString *word in [array reverseObjectEnumerator]) note(word.UTF8String);
  NSEnumerator *enumerator = [array objectEnumerator];
  [enumerator nextObject];
  equal(enumerator.allObjects.count, 2);
  same([enumerator nextObject], nil);
  equalTexts(noted(), "c b a");
}

BEHAVIOUR(blocksVisitAnArrayUntilTheyStop) {
  [@[ @"a", @"b", @"c" ] enumerateObjectsUsingBlock:^(id word, NSUInteger index, BOOL *stop) {
    note([word UTF8String]);
    *stop = index == 1;
  }];
  equalTexts(noted(), "a b");
}

BEHAVIOUR(blocksVisitADictionary) {
  __block int sum = 0;
  [@{@"a" : @1, @"b" : @2} enumerateKeysAndObjectsUsingBlock:^(id key, id value, BOOL *stop) {
    sum += [value intValue] + (int)[key length];
  }];
  equal(sum, 5);
}

BEHAVIOUR(arraysFindElements) {
  NSArray *array = @[ @"a", @"b", @"c", @"b" ];
  equal([array indexOfObject:@"b"], 1);
  equal([array indexOfObject:@"z"], NSNotFound);
  equal([array containsObject:@"c"], 1);
  equal([array indexOfObjectPassingTest:^(id word, NSUInteger index, BOOL *stop) {
    return (BOOL)(index > 1);
  }], 2);
  equalStrings(array.firstObject, "a");
  equalStrings(array.lastObject, "b");
  same(@[].firstObject, nil);
}

BEHAVIOUR(arraysMakeArrays) {
  NSArray *array = @[ @"a", @"b" ];
  equalStrings([[array arrayByAddingObject:@"c"] componentsJoinedByString:@"-"], "a-b-c");
  equalStrings([[array arrayByAddingObjectsFromArray:array] componentsJoinedByString:@""], "abab");
  equalStrings(([[@[ @"a", @"b", @"c", @"d" ] subarrayWithRange:NSMakeRange(1, 2)]
                   componentsJoinedByString:@","]),
               "b,c");
  equal(([array isEqualToArray:@[ @"a", @"b" ]]), 1);
  equal(([array isEqualToArray:@[ @"b", @"a" ]]), 0);
  equal(([NSArray arrayWithObjects:@1, @2, @3, nil].count), 3);
}

BEHAVIOUR(mutableArraysChange) {
  NSMutableArray *array = [NSMutableArray arrayWithCapacity:4];
  [array addObjectsFromArray:@[ @"a", @"b", @"c" ]];
  [array insertObject:@"x" atIndex:1];
  [array removeObjectAtIndex:0];
  [array exchangeObjectAtIndex:0 withObjectAtIndex:2];
  equalStrings([array componentsJoinedByString:@""], "cbx");
  [array removeLastObject];
  [array removeObject:@"c"];
  [array replaceObjectAtIndex:0 withObject:@"z"];
  equalStrings([array componentsJoinedByString:@""], "z");
  [array removeAllObjects];
  equal(array.count, 0);
}

BEHAVIOUR(arraysSendToAll) {
  NSMutableArray *inner = [@[ @1, @2 ] mutableCopy];
  [@[ inner ] makeObjectsPerformSelector:@selector(removeAllObjects)];
  equal(inner.count, 0);
}

BEHAVIOUR(arraysAreSortedBySelector) {
  NSArray *sorted = [@[ @3, @1, @2 ] sortedArrayUsingSelector:@selector(compare:)];
  equalStrings([sorted componentsJoinedByString:@" "], "1 2 3");
  sorted = [@[ @"pear", @"apple", @"fig" ] sortedArrayUsingSelector:@selector(compare:)];
  equalStrings([sorted componentsJoinedByString:@" "], "apple fig pear");
}

BEHAVIOUR(arraysAreSortedByABlock) {
  NSArray *sorted = [@[ @"ccc", @"a", @"bb" ] sortedArrayUsingComparator:^(id one, id other) {
    return [@([other length]) compare:@([one length])];
  }];
  equalStrings([sorted componentsJoinedByString:@" "], "ccc bb a");
}

BEHAVIOUR(arraysAreSortedByAFunction) {
  int calls = 0;
  NSArray *sorted = [@[ @1, @3, @2 ] sortedArrayUsingFunction:downwards context:&calls];
  equalStrings([sorted componentsJoinedByString:@" "], "3 2 1");
  equal(calls > 1, 1);
}

BEHAVIOUR(sortingKeepsTheOrderOfEquals) {
  NSArray *words = @[ @"b1", @"a1", @"b2", @"a2", @"b3" ];
  NSArray *sorted = [words sortedArrayUsingComparator:^(id one, id other) {
    return [@([one characterAtIndex:0]) compare:@([other characterAtIndex:0])];
  }];
  equalStrings([sorted componentsJoinedByString:@" "], "a1 a2 b1 b2 b3");
}

BEHAVIOUR(arraysAreSortedByDescriptors) {
  NSArray *rows = @[
    @{@"name" : @"b", @"age" : @2},
    @{@"name" : @"a", @"age" : @2},
    @{@"name" : @"c", @"age" : @1},
  ];
  NSArray *sorted = [rows sortedArrayUsingDescriptors:@[
    [NSSortDescriptor sortDescriptorWithKey:@"age" ascending:NO],
    [NSSortDescriptor sortDescriptorWithKey:@"name" ascending:YES],
  ]];
  equalStrings([[sorted valueForKey:@"name"] componentsJoinedByString:@""], "abc");
  NSSortDescriptor *up = [NSSortDescriptor sortDescriptorWithKey:@"name"
                                                       ascending:YES
                                                      comparator:^(id one, id other) {
                                                        return [one compare:other];
                                                      }];
  sorted = [rows sortedArrayUsingDescriptors:@[ up.reversedSortDescriptor ]];
  equalStrings([[sorted valueForKey:@"name"] componentsJoinedByString:@""], "cba");
}

BEHAVIOUR(mutableArraysAreSortedInPlace) {
  NSMutableArray *array = [@[ @3, @1, @2 ] mutableCopy];
  [array sortUsingSelector:@selector(compare:)];
  equalStrings([array componentsJoinedByString:@""], "123");
  [array sortUsingComparator:^(id one, id other) {
    return [other compare:one];
  }];
  equalStrings([array componentsJoinedByString:@""], "321");
}

BEHAVIOUR(setsAnswer) {
  NSSet *set = [NSSet setWithArray:@[ @1, @2, @3 ]];
  equal([set containsObject:@2], 1);
  same([set member:@9], nil);
  equal([set.anyObject intValue] > 0, 1);
  equal([[NSSet setWithObject:@1] isSubsetOfSet:set], 1);
  equal(([set intersectsSet:[NSSet setWithObjects:@3, @4, nil]]), 1);
  equal(([set isEqualToSet:[NSSet setWithObjects:@3, @2, @1, nil]]), 1);
  equal([set isEqual:[NSSet setWithObject:@1]], 0);
  equal(set.allObjects.count, 3);
}

BEHAVIOUR(aSetKeepsTheFirstOfEquals) {
  NSMutableSet *set = [NSMutableSet set];
  NSString *first = [NSString stringWithFormat:@"%d", 12345];
  [set addObject:first];
  [set addObject:[NSString stringWithFormat:@"%d", 12345]];
  equal(set.count, 1);
  same([set member:@"12345"], first);
}

BEHAVIOUR(mutableSetsChange) {
  NSMutableSet *set = [NSMutableSet set];
  [set addObject:@1];
  [set addObject:@1];
  [set addObjectsFromArray:@[ @2, @3, @4 ]];
  [set removeObject:@4];
  equal(set.count, 3);
  [set minusSet:[NSSet setWithObject:@1]];
  [set unionSet:[NSSet setWithObject:@7]];
  [set intersectSet:[NSSet setWithObjects:@7, @2, @8, nil]];
  equal(([set isEqualToSet:[NSSet setWithObjects:@2, @7, nil]]), 1);
  NSSet *copy = [set copy];
  [set removeAllObjects];
  equal(copy.count, 2);
}

BEHAVIOUR(dictionariesAnswer) {
  NSDictionary *dictionary = @{@"a" : @1, @"b" : @2, @"c" : @1};
  equal([dictionary allKeysForObject:@1].count, 2);
  equal(dictionary.allValues.count, 3);
  equal(([dictionary isEqualToDictionary:@{@"c" : @1, @"b" : @2, @"a" : @1}]), 1);
  int sum = 0;
  for (NSNumber *number in [dictionary objectEnumerator]) sum += number.intValue;
  equal(sum, 4);
  equal([[dictionary keyEnumerator] allObjects].count, 3);
  equalStrings([NSDictionary dictionaryWithObjects:@[ @"v" ] forKeys:@[ @"k" ]][@"k"], "v");
}

BEHAVIOUR(mutableDictionariesChange) {
  NSMutableDictionary *dictionary = [@{@"a" : @1, @"b" : @2, @"c" : @3} mutableCopy];
  [dictionary removeObjectsForKeys:@[ @"a", @"x" ]];
  equal(dictionary.count, 2);
  NSDictionary *copy = [dictionary copy];
  [dictionary removeAllObjects];
  equal(dictionary.count, 0);
  equal(copy.count, 2);
}

BEHAVIOUR(collectionsKeepTheirElements) {
  __weak id weak = nil;
  NSArray *array = nil;
  @autoreleasepool {
    id element = [NSObject new];
    weak = element;
    array = @[ element ];
  }
  same(array[0], weak);
  @autoreleasepool {
    array = nil;
  }
  same(weak, nil);
}

BEHAVIOUR(stringsAnswer) {
  equal([@"größe" characterAtIndex:2], 0xf6);
  equal([@"a😀" characterAtIndex:1], 0xd83d);
  equal([@"a😀" characterAtIndex:2], 0xde00);
  equalStrings([@"größer" substringWithRange:NSMakeRange(1, 4)], "röße");
  NSRange range = [@"größer" rangeOfString:@"ße"];
  equal(range.location, 3);
  equal(range.length, 2);
  equal([@"abc" rangeOfString:@"z"].location, NSNotFound);
  equal([@"abc" containsString:@"bc"], 1);
  equalStrings([[@"a,b,,c" componentsSeparatedByString:@","] componentsJoinedByString:@"|"],
               "a|b||c");
  equalStrings([@"aXbX" stringByReplacingOccurrencesOfString:@"X" withString:@"--"], "a--b--");
  equalStrings(([@"n=" stringByAppendingFormat:@"%d", 4]), "n=4");
  equal([@"a" compare:@"b"], NSOrderedAscending);
}
