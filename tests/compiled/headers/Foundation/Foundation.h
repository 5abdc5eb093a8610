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
