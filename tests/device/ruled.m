// A small library with all kinds of class data that the platform's rules cover.
typedef struct objc_object *Object;

__attribute__((objc_root_class)) @interface NSObject {
  Class _isa;
}
@end
@interface NSString : NSObject
@end
__attribute__((weak_import)) @interface UIBarButtonItem : NSObject
@end
__attribute__((weak_import)) @interface UIColor : NSObject
@end

void use(const void *what);
void callLater(void (^block)(void));

@interface Pair : NSObject {
  NSObject *_first;
  NSObject *_second;
  int _count;
}
@property(nonatomic, assign) NSObject *first;
@property(nonatomic, readonly) int count;
@end

@implementation Pair
@synthesize first = _first;
@synthesize count = _count;
- (void)swap {
  NSObject *first = _first;
  _first = _second;
  _second = first;
  callLater(^{
    use(first);
  });
}
+ (int)numberOf:(Object)what in:(NSObject *)list {
  use(what);
  return list != 0;
}
@end

@interface Triple : Pair {
  int _third;
}
@end

@implementation Triple
- (int)third {
  return _third;
}
@end

@interface Button : UIBarButtonItem {
  Object _target;
}
@end

@implementation Button
- (Object)target {
  return _target;
}
+ (void)load {
  use(@"loaded");
}
@end

@implementation UIColor (Ruled)
- (void)ruled {
}
+ (void)ruledToo {
}
@end

@interface NSObject (Root)
@end
@implementation NSObject (Root)
- (void)rooted {
}
+ (void)load {
}
@end

static int zeros[64];
void (^const constantBlock)(int) = ^(int number) {
  zeros[0] = number;
};
NSString *const names[] = {@"first", @"second"};

__attribute__((visibility("default"))) void ruledBegin(void) {
  use((const void *)constantBlock);
  use(zeros);
  use(names[zeros[3]]);
}

__attribute__((visibility("default"))) int ruledNumber = 17;

__attribute__((constructor)) static void begin(void) { ruledBegin(); }
