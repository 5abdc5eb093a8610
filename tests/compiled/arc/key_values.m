// Values by key and along paths.
#import "behaviour.h"

typedef struct {
  int one;
  double two;
} Both;

@interface Person : NSObject {
  int hidden;
  NSString *_plain;
}
@property(copy) NSString *name;
@property int age;
@property double height;
@property(getter=isTall) BOOL tall;
@property(strong) Person *friend;
@property(copy) NSArray *children;
@property Both both;
@property(weak) Person *boss;
@end
@implementation Person
@end

@interface Open : NSObject
@end
@implementation Open
- (id)valueForUndefinedKey:(NSString *)key {
  return [@"no " stringByAppendingString:key];
}
- (void)setValue:(id)value forUndefinedKey:(NSString *)key {
  note(key.UTF8String);
}
- (void)setNilValueForKey:(NSString *)key {
  note("nil");
}
@end

static Person *person(NSString *name, int age) {
  Person *made = [Person new];
  made.name = name;
  made.age = age;
  return made;
}

BEHAVIOUR(propertiesAreReadByKey) {
  Person *one = person(@"Ada", 36);
  one.height = 1.5;
  one.tall = YES;
  equalStrings([one valueForKey:@"name"], "Ada");
  equal([[one valueForKey:@"age"] intValue], 36);
  equalDoubles([[one valueForKey:@"height"] doubleValue], 1.5);
  equal([[one valueForKey:@"tall"] boolValue], 1);
}

BEHAVIOUR(propertiesAreSetByKey) {
  Person *one = [Person new];
  [one setValue:@"Bob" forKey:@"name"];
  [one setValue:@41 forKey:@"age"];
  [one setValue:@1.75 forKey:@"height"];
  [one setValue:@YES forKey:@"tall"];
  equalStrings(one.name, "Bob");
  equal(one.age, 41);
  equalDoubles(one.height, 1.75);
  equal(one.isTall, 1);
}

BEHAVIOUR(structuresAreValues) {
  Person *one = [Person new];
  one.both = (Both){3, 4.5};
  Both both = {0, 0};
  [[one valueForKey:@"both"] getValue:&both];
  equal(both.one, 3);
  equalDoubles(both.two, 4.5);
  both.one = 9;
  [one setValue:[NSValue valueWithBytes:&both objCType:@encode(Both)] forKey:@"both"];
  equal(one.both.one, 9);
}

BEHAVIOUR(variablesAreReachedByKey) {
  Person *one = [Person new];
  [one setValue:@7 forKey:@"hidden"];
  [one setValue:@"text" forKey:@"plain"];
  equal([[one valueForKey:@"hidden"] intValue], 7);
  equalStrings([one valueForKey:@"plain"], "text");
}

BEHAVIOUR(aPathGoesFromObjectToObject) {
  Person *one = person(@"Ada", 36);
  one.friend = person(@"Bob", 41);
  one.friend.friend = person(@"Cy", 5);
  equalStrings([one valueForKeyPath:@"friend.friend.name"], "Cy");
  [one setValue:@"Di" forKeyPath:@"friend.friend.name"];
  equalStrings(one.friend.friend.name, "Di");
  same([one valueForKeyPath:@"friend.friend.friend.name"], nil);
}

BEHAVIOUR(aPathGoesThroughDictionaries) {
  NSMutableDictionary *inner = [@{@"b" : @1} mutableCopy];
  NSDictionary *outer = @{@"a" : inner};
  equal([[outer valueForKeyPath:@"a.b"] intValue], 1);
  [outer setValue:@2 forKeyPath:@"a.b"];
  equal([inner[@"b"] intValue], 2);
  [inner setValue:nil forKey:@"b"];
  equal(inner.count, 0);
}

BEHAVIOUR(anArrayAsksItsElements) {
  NSArray *people = @[ person(@"a", 1), person(@"b", 2), person(nil, 3) ];
  NSArray *names = [people valueForKey:@"name"];
  equalStrings(names[1], "b");
  same(names[2], [NSNull null]);
  [people setValue:@9 forKey:@"age"];
  equal([people[2] age], 9);
}

BEHAVIOUR(operatorsWorkOnCollections) {
  NSArray *people = @[ person(@"a", 1), person(@"b", 2), person(@"b", 6) ];
  equal([[people valueForKeyPath:@"@count"] intValue], 3);
  equalDoubles([[people valueForKeyPath:@"@sum.age"] doubleValue], 9);
  equalDoubles([[people valueForKeyPath:@"@avg.age"] doubleValue], 3);
  equal([[people valueForKeyPath:@"@max.age"] intValue], 6);
  equal([[people valueForKeyPath:@"@min.age"] intValue], 1);
  equal([[people valueForKeyPath:@"@unionOfObjects.name"] count], 3);
  equal([[people valueForKeyPath:@"@distinctUnionOfObjects.name"] count], 2);
  equal(([[@[ @4, @7 ] valueForKeyPath:@"@max.self"] intValue]), 7);
}

BEHAVIOUR(anOperatorAtTheEndOfAPath) {
  Person *one = [Person new];
  one.children = @[ person(@"a", 4), person(@"b", 8) ];
  equalDoubles([[one valueForKeyPath:@"children.@avg.age"] doubleValue], 6);
}

BEHAVIOUR(anUnknownKeyRaises) {
  int raised = 0;
  @try {
    [[Person new] valueForKey:@"nothing"];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSUnknownKeyException");
    ++raised;
  }
  @try {
    [[Person new] setValue:@1 forKey:@"nothing"];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSUnknownKeyException");
    ++raised;
  }
  equal(raised, 2);
}

BEHAVIOUR(anUnknownKeyMayBeAnswered) {
  Open *open = [Open new];
  equalStrings([open valueForKey:@"thing"], "no thing");
  [open setValue:@1 forKey:@"other"];
  equalTexts(noted(), "other");
}

BEHAVIOUR(nilForANumberRaises) {
  Person *one = person(@"a", 3);
  int raised = 0;
  @try {
    [one setValue:nil forKey:@"age"];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSInvalidArgumentException");
    raised = 1;
  }
  equal(raised, 1);
  equal(one.age, 3);
  [one setValue:nil forKey:@"name"];
  same(one.name, nil);
}
