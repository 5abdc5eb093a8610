// What other people write, with the parts of class data that this project's own binaries lack:
// protocols, reference counts by the compiler, weak references, properties of every kind, blocks that
// capture, handlers of exceptions, and sends to super.
typedef struct _NSRange {
  unsigned long location, length;
} NSRange;

__attribute__((objc_root_class)) @interface NSObject {
  Class isa;
}
+ (Class)class;
+ (id)alloc;
- (id)init;
@end
@interface NSString : NSObject
@end
__attribute__((objc_exception)) @interface NSException : NSObject
@end

@protocol Named
@property(nonatomic, readonly) NSString *name;
@optional
- (int)ageIn:(NSRange)range;
@end

@interface Base : NSObject <Named> {
  int _matrix[3][2];
  union {
    int whole;
    float fraction;
  } _either;
  unsigned _narrow : 3, _wide : 5;
  __weak id _other;
}
@property(strong) NSString *title;
@property(nonatomic, copy) void (^block)(int);
@property(nonatomic, getter=isBusy, setter=makeBusy:) signed char busy;
@property(nonatomic) int elsewhere;
@end

@implementation Base
@dynamic elsewhere;
+ (void)load {
}
- (NSString *)name {
  return @"n\u00e4me";
}
- (int)ageIn:(NSRange)range {
  return (int)range.length + _matrix[1][0] + _either.whole + (int)_wide + (_other != 0);
}
@end

@interface Derived : Base
@end

@implementation Derived
- (NSString *)name {
  return [super name];
}
- (int)try:(id<Named>)it {
  @try {
    return [it name] != 0;
  } @catch (NSException *raised) {
    return 2;
  } @catch (id thrown) {
    return 3;
  } @finally {
    self.title = @"done";
  }
}
- (void)count {
  __block int sum = 0;
  Base *me = self;
  self.block = ^(int by) {
    sum += by + [me isBusy];
  };
  self.block(3);
}
@end

@interface NSObject (Extra)
- (int)extra;
@end

@implementation NSObject (Extra)
+ (void)load {
}
- (int)extra {
  return 7;
}
@end

__attribute__((visibility("default"))) id compiledProtocol(void) {
  return @protocol(Named);
}
__attribute__((visibility("default"))) Class compiledClass(void) {
  return [Derived class];
}
