// What crosses between compiled code and the platform's C++: exceptions, subclasses, categories,
// classes that the process lacks.
#import "behaviour.h"

@interface Report : NSException {
 @public
  int code;
  NSString *detail;
}
@end
@implementation Report
- (NSString *)reason {
  return [[super reason] stringByAppendingString:@"!"];
}
@end

@interface CountingArray : NSMutableArray {
 @public
  int added;
}
@end
@implementation CountingArray
- (void)addObject:(id)object {
  ++added;
  [super addObject:object];
}
@end

@interface NSString (Shouted)
- (NSString *)shouted;
@end
@implementation NSString (Shouted)
- (NSString *)shouted {
  return [self stringByAppendingString:@"!"];
}
@end

@interface NSObject (Everybody)
- (int)everybody;
+ (int)everyClass;
@end
@implementation NSObject (Everybody)
- (int)everybody {
  return 8;
}
+ (int)everyClass {
  return 9;
}
@end

__attribute__((weak_import)) @interface MissingOnThisPhone : NSObject
@end
@interface BelowMissing : MissingOnThisPhone
@end
@implementation BelowMissing
@end
@interface MissingOnThisPhone (Category)
@end
@implementation MissingOnThisPhone (Category)
+ (void)load {
  note("never");
}
@end

@protocol Shared <NSObject>
@end

#define EXPORT __attribute__((visibility("default")))

EXPORT void throwReport(void);
EXPORT void throwReport(void) {
  Report *report = [[Report alloc] initWithName:@"Report" reason:@"from compiled code" userInfo:nil];
  @throw report;
}

EXPORT void throwPlainObject(void);
EXPORT void throwPlainObject(void) { @throw @"just words"; }

/// What a handler sees of an exception that the function throws: its class, or a word.
EXPORT const char *caughtFrom(void (*function)(void));
EXPORT const char *caughtFrom(void (*function)(void)) {
  @try {
    function();
  } @catch (NSException *exception) {
    return exception.name.UTF8String;
  } @catch (id object) {
    return object_getClassName(object);
  } @catch (...) {
    return "something";
  }
  return "nothing";
}

EXPORT void throughFinally(void (*function)(void), int *ran);
EXPORT void throughFinally(void (*function)(void), int *ran) {
  @try {
    function();
  } @finally {
    ++*ran;
  }
}

EXPORT void *sharedProtocol(void);
EXPORT void *sharedProtocol(void) { return (__bridge void *)@protocol(Shared); }

BEHAVIOUR(aSubclassOfAPlatformClassKeepsItsVariables) {
  Report *report = [[Report alloc] initWithName:@"N" reason:@"R" userInfo:nil];
  equal(report->code, 0);
  report->code = 5;
  report->detail = @"detail";
  equalStrings(report.name, "N");
  equalStrings(report.reason, "R!");
  equal(report->code, 5);
  equalStrings(report->detail, "detail");
}

BEHAVIOUR(aSubclassOfACollectionOverridesIt) {
  CountingArray *array = [[CountingArray alloc] init];
  [array addObject:@1];
  [array addObject:@2];
  equal(array->added, 2);
  equal(array.count, 2);
  equal([array[1] intValue], 2);
}

BEHAVIOUR(aCategoryOnAPlatformClassReachesItsInstances) {
  equalStrings([@"hey" shouted], "hey!");
  equalStrings(([[NSString stringWithFormat:@"%d", 1] shouted]), "1!");
}

BEHAVIOUR(aCategoryOnTheRootReachesEverything) {
  equal([@[] everybody], 8);
  equal([[NSString class] everybody], 8);
  equal([NSNumber everyClass], 9);
}

BEHAVIOUR(aMissingClassIsNil) {
  same([MissingOnThisPhone class], nil);
  same([BelowMissing class], nil);
  same(objc_getClass("BelowMissing"), nil);
  equalTexts(noted(), "");
}

BEHAVIOUR(aSubclassOfAnExceptionIsCaughtByItsClass) {
  @try {
    throwReport();
  } @catch (Report *report) {
    equalStrings(report.reason, "from compiled code!");
  }
}
