// Protocols: as objects, in classes, and made at run time.
#import "behaviour.h"

@protocol Above <NSObject>
- (int)required;
@end
@protocol Drawn <Above>
- (int)draw:(int)count;
+ (void)ofClass;
@property(readonly) int size;
@optional
- (void)maybe;
+ (int)maybeOfClass;
@end
@protocol Unrelated
@end
@protocol FromCategory
@end

@interface Picture : NSObject <Drawn>
@end
@implementation Picture
- (int)required {
  return 1;
}
- (int)draw:(int)count {
  return count;
}
- (int)size {
  return 3;
}
+ (void)ofClass {
}
@end
@interface Photo : Picture
@end
@implementation Photo
@end
@interface Picture (More) <FromCategory>
@end
@implementation Picture (More)
@end

BEHAVIOUR(aProtocolIsAnObject) {
  Protocol *protocol = @protocol(Drawn);
  equal([protocol isKindOfClass:objc_getClass("Protocol")], 1);
  equalTexts(protocol_getName(protocol), "Drawn");
  same([protocol self], protocol);
}

BEHAVIOUR(aProtocolIsTheSameEverywhere) {
  same(@protocol(Drawn), @protocol(Drawn));
  same(objc_getProtocol("Drawn"), @protocol(Drawn));
  same(objc_getProtocol("NoSuchProtocol"), nil);
  equal(protocol_isEqual(@protocol(Drawn), @protocol(Drawn)), 1);
  equal(protocol_isEqual(@protocol(Drawn), @protocol(Above)), 0);
}

BEHAVIOUR(classesConform) {
  equal([Picture conformsToProtocol:@protocol(Drawn)], 1);
  equal([Picture conformsToProtocol:@protocol(Above)], 1);
  equal([Picture conformsToProtocol:@protocol(NSObject)], 1);
  equal([Picture conformsToProtocol:@protocol(Unrelated)], 0);
}

BEHAVIOUR(subclassesConformToo) {
  equal([Photo conformsToProtocol:@protocol(Drawn)], 1);
  equal([[Photo new] conformsToProtocol:@protocol(Drawn)], 1);
  // The function looks at one class only.
  equal(class_conformsToProtocol([Photo class], @protocol(Drawn)), 0);
  equal(class_conformsToProtocol([Picture class], @protocol(Drawn)), 1);
}

BEHAVIOUR(aCategoryAddsProtocols) {
  equal([Picture conformsToProtocol:@protocol(FromCategory)], 1);
}

BEHAVIOUR(protocolsConformToProtocols) {
  equal(protocol_conformsToProtocol(@protocol(Drawn), @protocol(Above)), 1);
  equal(protocol_conformsToProtocol(@protocol(Drawn), @protocol(Drawn)), 1);
  equal(protocol_conformsToProtocol(@protocol(Above), @protocol(Drawn)), 0);
}

BEHAVIOUR(adoptedProtocolsAreListed) {
  unsigned count = 0;
  Protocol *__unsafe_unretained *list = class_copyProtocolList([Picture class], &count);
  equal(count, 2);
  free(list);
  list = protocol_copyProtocolList(@protocol(Drawn), &count);
  equal(count, 1);
  same(list[0], @protocol(Above));
  free(list);
}

BEHAVIOUR(aProtocolDescribesItsMethods) {
  struct objc_method_description method =
      protocol_getMethodDescription(@protocol(Drawn), @selector(draw:), YES, YES);
  samePointers(method.name, @selector(draw:));
  equal(method.types[0], 'i');
  method = protocol_getMethodDescription(@protocol(Drawn), @selector(draw:), NO, YES);
  samePointers(method.name, 0);
  method = protocol_getMethodDescription(@protocol(Drawn), @selector(maybe), NO, YES);
  samePointers(method.name, @selector(maybe));
  method = protocol_getMethodDescription(@protocol(Drawn), @selector(ofClass), YES, NO);
  samePointers(method.name, @selector(ofClass));
}

BEHAVIOUR(aProtocolDescribesInheritedMethods) {
  struct objc_method_description method =
      protocol_getMethodDescription(@protocol(Drawn), @selector(required), YES, YES);
  samePointers(method.name, @selector(required));
}

BEHAVIOUR(aProtocolListsItsMethods) {
  unsigned count = 0;
  struct objc_method_description *methods =
      protocol_copyMethodDescriptionList(@protocol(Drawn), YES, YES, &count);
  equal(count, 2);
  free(methods);
  methods = protocol_copyMethodDescriptionList(@protocol(Drawn), NO, NO, &count);
  equal(count, 1);
  samePointers(methods[0].name, @selector(maybeOfClass));
  free(methods);
}

BEHAVIOUR(aProtocolHasProperties) {
  objc_property_t size = protocol_getProperty(@protocol(Drawn), "size", YES, YES);
  equalTexts(property_getAttributes(size), "Ti,R");
  samePointers(protocol_getProperty(@protocol(Drawn), "nothing", YES, YES), 0);
  unsigned count = 0;
  objc_property_t *list = protocol_copyPropertyList(@protocol(Drawn), &count);
  equal(count, 1);
  free(list);
}

BEHAVIOUR(aClassAdoptsAProtocolLater) {
  equal(class_addProtocol([Picture class], @protocol(Unrelated)), 1);
  equal(class_addProtocol([Picture class], @protocol(Unrelated)), 0);
  equal([Photo conformsToProtocol:@protocol(Unrelated)], 1);
}

BEHAVIOUR(aProtocolIsMadeAtRunTime) {
  Protocol *made = objc_allocateProtocol("MadeUpProtocol");
  protocol_addMethodDescription(made, @selector(draw:), "i@:i", YES, YES);
  protocol_addProtocol(made, @protocol(Above));
  same(objc_getProtocol("MadeUpProtocol"), nil);
  objc_registerProtocol(made);
  same(objc_getProtocol("MadeUpProtocol"), made);
  equal(protocol_conformsToProtocol(made, @protocol(Above)), 1);
  equalTexts(protocol_getMethodDescription(made, @selector(draw:), YES, YES).types, "i@:i");
  // Too late.
  protocol_addMethodDescription(made, @selector(maybe), "v@:", YES, YES);
  samePointers(protocol_getMethodDescription(made, @selector(maybe), YES, YES).name, 0);
  same(objc_allocateProtocol("MadeUpProtocol"), nil);
}

BEHAVIOUR(allProtocolsAreListed) {
  unsigned count = 0;
  Protocol *__unsafe_unretained *all = objc_copyProtocolList(&count);
  int found = 0;
  for (unsigned i = 0; i < count; ++i)
    if (all[i] == @protocol(Drawn) || all[i] == @protocol(Unrelated)) ++found;
  free(all);
  equal(found, 2);
}
