// The parts of the platform's header that are needed to check the header for panes.
#import <stdbool.h>

typedef bool BOOL;
#define nil ((id)0)

@interface NSObject
+ (instancetype)alloc;
@end
@interface NSString : NSObject
@end
@interface NSDictionary : NSObject
@end
