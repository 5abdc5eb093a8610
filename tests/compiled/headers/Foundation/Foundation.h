// The parts of Foundation that the behaviours use.
#pragma once

#include <objc/runtime.h>

typedef struct _NSZone NSZone;
@class NSArray, NSDictionary, NSInvocation, NSMethodSignature, NSSet, NSString;

typedef struct {
  NSUInteger location, length;
} NSRange;
typedef NSInteger NSComparisonResult;
enum { NSOrderedAscending = -1, NSOrderedSame = 0, NSOrderedDescending = 1 };
typedef NSComparisonResult (^NSComparator)(id one, id other);

@protocol NSObject
- (BOOL)isEqual:(id)other;
@property(readonly) NSUInteger hash;
@property(readonly) Class superclass;
- (Class)class;
- (instancetype)self;
- (id)performSelector:(SEL)selector;
- (id)performSelector:(SEL)selector withObject:(id)object;
- (id)performSelector:(SEL)selector withObject:(id)one withObject:(id)two;
- (BOOL)isProxy;
- (BOOL)isKindOfClass:(Class)cls;
- (BOOL)isMemberOfClass:(Class)cls;
- (BOOL)conformsToProtocol:(Protocol*)protocol;
- (BOOL)respondsToSelector:(SEL)selector;
#if !__has_feature(objc_arc)
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
- (NSUInteger)retainCount;
#endif
@property(readonly, copy) NSString* description;
@end

@protocol NSCopying
- (id)copyWithZone:(NSZone*)zone;
@end
@protocol NSMutableCopying
- (id)mutableCopyWithZone:(NSZone*)zone;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (void)load;
+ (void)initialize;
- (instancetype)init;
+ (instancetype)new;
+ (instancetype)allocWithZone:(NSZone*)zone;
+ (instancetype)alloc;
- (void)dealloc;
- (id)copy;
- (id)mutableCopy;
+ (BOOL)instancesRespondToSelector:(SEL)selector;
+ (BOOL)conformsToProtocol:(Protocol*)protocol;
- (IMP)methodForSelector:(SEL)selector;
+ (IMP)instanceMethodForSelector:(SEL)selector;
- (void)doesNotRecognizeSelector:(SEL)selector;
- (id)forwardingTargetForSelector:(SEL)selector;
- (void)forwardInvocation:(NSInvocation*)invocation;
- (NSMethodSignature*)methodSignatureForSelector:(SEL)selector;
+ (NSMethodSignature*)instanceMethodSignatureForSelector:(SEL)selector;
+ (BOOL)isSubclassOfClass:(Class)cls;
+ (BOOL)resolveClassMethod:(SEL)selector;
+ (BOOL)resolveInstanceMethod:(SEL)selector;
+ (NSUInteger)hash;
+ (Class)superclass;
+ (Class)class;
+ (NSString*)description;
@end

@interface Protocol : NSObject
@end

@interface NSString : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(readonly) const char* UTF8String;
+ (instancetype)string;
+ (instancetype)stringWithUTF8String:(const char*)text;
+ (instancetype)stringWithFormat:(NSString*)format, ...;
- (instancetype)initWithUTF8String:(const char*)text;
- (NSString*)stringByAppendingString:(NSString*)tail;
- (BOOL)isEqualToString:(NSString*)other;
- (BOOL)hasPrefix:(NSString*)prefix;
@property(readonly) NSInteger integerValue;
@end

__attribute__((objc_exception))
@interface NSException : NSObject<NSCopying>
+ (NSException*)exceptionWithName:(NSString*)name
                           reason:(NSString*)reason
                         userInfo:(NSDictionary*)info;
+ (void)raise:(NSString*)name format:(NSString*)format, ...;
- (instancetype)initWithName:(NSString*)name reason:(NSString*)reason userInfo:(NSDictionary*)info;
@property(readonly, copy) NSString* name;
@property(readonly, copy) NSString* reason;
@property(readonly, copy) NSDictionary* userInfo;
- (void)raise;
@end

@interface NSMethodSignature : NSObject
+ (NSMethodSignature*)signatureWithObjCTypes:(const char*)types;
@property(readonly) NSUInteger numberOfArguments;
- (const char*)getArgumentTypeAtIndex:(NSUInteger)index;
@property(readonly) const char* methodReturnType;
@property(readonly) NSUInteger methodReturnLength;
@end

@interface NSInvocation : NSObject
+ (NSInvocation*)invocationWithMethodSignature:(NSMethodSignature*)signature;
@property(readonly, retain) NSMethodSignature* methodSignature;
@property(assign) id target;
@property SEL selector;
- (void)getReturnValue:(void*)value;
- (void)setReturnValue:(void*)value;
- (void)getArgument:(void*)value atIndex:(NSInteger)index;
- (void)setArgument:(void*)value atIndex:(NSInteger)index;
- (void)retainArguments;
@property(readonly) BOOL argumentsRetained;
- (void)invoke;
- (void)invokeWithTarget:(id)target;
@end

#define NSNotFound ((NSInteger)(~(NSUInteger)0 >> 1))
static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
  return (NSRange){location, length};
}

typedef struct {
  unsigned long state;
  id __unsafe_unretained* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)count;
@end

@interface NSEnumerator : NSObject <NSFastEnumeration>
- (id)nextObject;
@property(readonly, copy) NSArray* allObjects;
@end

@interface NSValue : NSObject <NSCopying>
@property(readonly) const char* objCType;
+ (NSValue*)valueWithBytes:(const void*)bytes objCType:(const char*)types;
+ (NSValue*)valueWithPointer:(const void*)pointer;
+ (NSValue*)valueWithNonretainedObject:(id)object;
+ (NSValue*)valueWithRange:(NSRange)range;
- (void)getValue:(void*)value;
@property(readonly) void* pointerValue;
@property(readonly) id nonretainedObjectValue;
@property(readonly) NSRange rangeValue;
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithChar:(char)value;
+ (NSNumber*)numberWithUnsignedChar:(unsigned char)value;
+ (NSNumber*)numberWithShort:(short)value;
+ (NSNumber*)numberWithUnsignedShort:(unsigned short)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithUnsignedInt:(unsigned)value;
+ (NSNumber*)numberWithLong:(long)value;
+ (NSNumber*)numberWithUnsignedLong:(unsigned long)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)value;
+ (NSNumber*)numberWithFloat:(float)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value;
@property(readonly) char charValue;
@property(readonly) unsigned char unsignedCharValue;
@property(readonly) short shortValue;
@property(readonly) unsigned short unsignedShortValue;
@property(readonly) int intValue;
@property(readonly) unsigned unsignedIntValue;
@property(readonly) long longValue;
@property(readonly) unsigned long unsignedLongValue;
@property(readonly) long long longLongValue;
@property(readonly) unsigned long long unsignedLongLongValue;
@property(readonly) float floatValue;
@property(readonly) double doubleValue;
@property(readonly) BOOL boolValue;
@property(readonly) NSInteger integerValue;
@property(readonly) NSUInteger unsignedIntegerValue;
@property(readonly, copy) NSString* stringValue;
- (NSComparisonResult)compare:(NSNumber*)other;
- (BOOL)isEqualToNumber:(NSNumber*)other;
@end

@interface NSNull : NSObject <NSCopying>
+ (NSNull*)null;
@end

@interface NSArray : NSObject <NSCopying, NSMutableCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
+ (instancetype)array;
+ (instancetype)arrayWithObject:(id)object;
+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)count;
+ (instancetype)arrayWithObjects:(id)first, ...;
+ (instancetype)arrayWithArray:(NSArray*)array;
- (instancetype)initWithArray:(NSArray*)array;
- (id)objectAtIndex:(NSUInteger)index;
- (id)objectAtIndexedSubscript:(NSUInteger)index;
@property(readonly) id firstObject;
@property(readonly) id lastObject;
- (BOOL)containsObject:(id)object;
- (NSUInteger)indexOfObject:(id)object;
- (NSUInteger)indexOfObjectIdenticalTo:(id)object;
- (NSUInteger)indexOfObjectPassingTest:(BOOL (^)(id object, NSUInteger index, BOOL* stop))test;
- (BOOL)isEqualToArray:(NSArray*)other;
- (NSArray*)arrayByAddingObject:(id)object;
- (NSArray*)arrayByAddingObjectsFromArray:(NSArray*)other;
- (NSArray*)subarrayWithRange:(NSRange)range;
- (NSString*)componentsJoinedByString:(NSString*)separator;
- (NSEnumerator*)objectEnumerator;
- (NSEnumerator*)reverseObjectEnumerator;
- (void)enumerateObjectsUsingBlock:(void (^)(id object, NSUInteger index, BOOL* stop))visitor;
- (void)makeObjectsPerformSelector:(SEL)selector;
- (NSArray*)sortedArrayUsingSelector:(SEL)selector;
- (NSArray*)sortedArrayUsingComparator:(NSComparator)comparator;
- (NSArray*)sortedArrayUsingFunction:(NSInteger (*)(id one, id other, void* context))function
                             context:(void*)context;
- (NSArray*)sortedArrayUsingDescriptors:(NSArray*)descriptors;
@end

@interface NSMutableArray : NSArray
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;
- (instancetype)initWithCapacity:(NSUInteger)capacity;
- (void)addObject:(id)object;
- (void)addObjectsFromArray:(NSArray*)other;
- (void)insertObject:(id)object atIndex:(NSUInteger)index;
- (void)removeObjectAtIndex:(NSUInteger)index;
- (void)removeObject:(id)object;
- (void)removeLastObject;
- (void)removeAllObjects;
- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)object;
- (void)setObject:(id)object atIndexedSubscript:(NSUInteger)index;
- (void)exchangeObjectAtIndex:(NSUInteger)one withObjectAtIndex:(NSUInteger)other;
- (void)sortUsingSelector:(SEL)selector;
- (void)sortUsingComparator:(NSComparator)comparator;
- (void)sortUsingDescriptors:(NSArray*)descriptors;
@end

@interface NSDictionary : NSObject <NSCopying, NSMutableCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(readonly, copy) NSArray* allKeys;
@property(readonly, copy) NSArray* allValues;
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const id[])objects
                              forKeys:(const id<NSCopying>[])keys
                                count:(NSUInteger)count;
+ (instancetype)dictionaryWithObjects:(NSArray*)objects forKeys:(NSArray*)keys;
+ (instancetype)dictionaryWithObjectsAndKeys:(id)first, ...;
+ (instancetype)dictionaryWithDictionary:(NSDictionary*)other;
- (id)objectForKey:(id)key;
- (id)objectForKeyedSubscript:(id)key;
- (NSArray*)allKeysForObject:(id)object;
- (NSEnumerator*)keyEnumerator;
- (NSEnumerator*)objectEnumerator;
- (BOOL)isEqualToDictionary:(NSDictionary*)other;
- (void)enumerateKeysAndObjectsUsingBlock:(void (^)(id key, id object, BOOL* stop))visitor;
@end

@interface NSMutableDictionary : NSDictionary
+ (instancetype)dictionaryWithCapacity:(NSUInteger)capacity;
- (void)setObject:(id)object forKey:(id<NSCopying>)key;
- (void)setObject:(id)object forKeyedSubscript:(id<NSCopying>)key;
- (void)removeObjectForKey:(id)key;
- (void)removeObjectsForKeys:(NSArray*)keys;
- (void)removeAllObjects;
- (void)addEntriesFromDictionary:(NSDictionary*)other;
@end

@interface NSSet : NSObject <NSCopying, NSMutableCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(readonly, copy) NSArray* allObjects;
+ (instancetype)set;
+ (instancetype)setWithObject:(id)object;
+ (instancetype)setWithObjects:(id)first, ...;
+ (instancetype)setWithArray:(NSArray*)array;
- (id)member:(id)object;
- (BOOL)containsObject:(id)object;
- (id)anyObject;
- (BOOL)isSubsetOfSet:(NSSet*)other;
- (BOOL)intersectsSet:(NSSet*)other;
- (BOOL)isEqualToSet:(NSSet*)other;
- (NSEnumerator*)objectEnumerator;
- (void)enumerateObjectsUsingBlock:(void (^)(id object, BOOL* stop))visitor;
@end

@interface NSMutableSet : NSSet
- (void)addObject:(id)object;
- (void)removeObject:(id)object;
- (void)removeAllObjects;
- (void)addObjectsFromArray:(NSArray*)array;
- (void)unionSet:(NSSet*)other;
- (void)minusSet:(NSSet*)other;
- (void)intersectSet:(NSSet*)other;
@end

@interface NSSortDescriptor : NSObject
+ (instancetype)sortDescriptorWithKey:(NSString*)key ascending:(BOOL)ascending;
+ (instancetype)sortDescriptorWithKey:(NSString*)key
                            ascending:(BOOL)ascending
                             selector:(SEL)selector;
+ (instancetype)sortDescriptorWithKey:(NSString*)key
                            ascending:(BOOL)ascending
                           comparator:(NSComparator)comparator;
@property(readonly) NSSortDescriptor* reversedSortDescriptor;
@end

@interface NSObject (NSKeyValueCoding)
- (id)valueForKey:(NSString*)key;
- (void)setValue:(id)value forKey:(NSString*)key;
- (id)valueForKeyPath:(NSString*)path;
- (void)setValue:(id)value forKeyPath:(NSString*)path;
- (id)valueForUndefinedKey:(NSString*)key;
- (void)setValue:(id)value forUndefinedKey:(NSString*)key;
- (void)setNilValueForKey:(NSString*)key;
@end

@interface NSString (Queries)
+ (instancetype)stringWithString:(NSString*)other;
- (unsigned short)characterAtIndex:(NSUInteger)index;
- (NSString*)substringWithRange:(NSRange)range;
- (NSString*)substringFromIndex:(NSUInteger)index;
- (NSRange)rangeOfString:(NSString*)part;
- (BOOL)containsString:(NSString*)part;
- (NSArray*)componentsSeparatedByString:(NSString*)separator;
- (NSString*)stringByReplacingOccurrencesOfString:(NSString*)old withString:(NSString*)with;
- (NSString*)stringByAppendingFormat:(NSString*)format, ...;
- (NSComparisonResult)compare:(NSString*)other;
@property(readonly, copy) NSString* lowercaseString;
@end
