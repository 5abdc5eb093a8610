// As much of the platform's header as the pane's header needs to be checked without the platform.
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
