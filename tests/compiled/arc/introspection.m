// What code asks about classes, methods, variables, properties and binaries.
#import "behaviour.h"

struct Pair {
  int one;
  double two;
};

@interface Shape : NSObject {
 @public
  int corners;
  char letter;
  double width;
  struct Pair pair;
  __weak id weakOne;
  id strongOne;
  __unsafe_unretained id unsafeOne;
}
@property(nonatomic, copy) NSString *name;
@property(readonly) int area;
@property(weak) Shape *next;
@property(class, strong) id shared;
- (int)takes:(double)number and:(NSString *)text;
- (struct Pair)pairOf:(struct Pair *)pointer;
- (void)calls:(void (^)(int))block;
+ (void)ofClass;
@end
@implementation Shape
@dynamic shared;
- (int)area {
  return 1;
}
- (int)takes:(double)number and:(NSString *)text {
  return 1;
}
- (struct Pair)pairOf:(struct Pair *)pointer {
  return *pointer;
}
- (void)calls:(void (^)(int))block {
  block(1);
}
+ (void)ofClass {
}
@end

@interface Square : Shape
@end
@implementation Square {
  int extra;
}
- (int)side {
  return extra;
}
@end

@interface Shape (Category)
@property(readonly) int added;
- (void)fromCategory;
@end
@implementation Shape (Category)
- (int)added {
  return 3;
}
- (void)fromCategory {
}
@end

static BOOL hasMethod(Class cls, const char *name) {
  unsigned count = 0;
  Method *methods = class_copyMethodList(cls, &count);
  BOOL found = NO;
  for (unsigned i = 0; i < count; ++i)
    if (method_getName(methods[i]) == sel_registerName(name)) found = YES;
  free(methods);
  return found;
}

BEHAVIOUR(classesHaveNames) {
  equalTexts(class_getName([Shape class]), "Shape");
  equalTexts(object_getClassName([Square new]), "Square");
  equalTexts(class_getName(object_getClass([Shape class])), "Shape");
  equalTexts(class_getName(Nil), "nil");
}

BEHAVIOUR(classesAreFoundByName) {
  same(objc_getClass("Shape"), [Shape class]);
  same(objc_lookUpClass("Square"), [Square class]);
  same(objc_getClass("NoSuchClass"), Nil);
  same(objc_getMetaClass("Shape"), object_getClass([Shape class]));
}

BEHAVIOUR(classesHaveSuperclasses) {
  same(class_getSuperclass([Square class]), [Shape class]);
  same(class_getSuperclass([Shape class]), [NSObject class]);
  same(class_getSuperclass([NSObject class]), Nil);
  same([Square superclass], [Shape class]);
  same([Square new].superclass, [Shape class]);
}

BEHAVIOUR(metaclassesFormARing) {
  Class meta = object_getClass([Shape class]);
  equal(class_isMetaClass(meta), 1);
  equal(class_isMetaClass([Shape class]), 0);
  same(class_getSuperclass(object_getClass([Square class])), meta);
  Class root = object_getClass([NSObject class]);
  same(object_getClass(meta), root);
  same(object_getClass(root), root);
  same(class_getSuperclass(root), [NSObject class]);
}

BEHAVIOUR(aClassIsAnObjectThatSaysSo) {
  equal(object_isClass([Shape class]), 1);
  equal(object_isClass([Shape new]), 0);
  equal(object_isClass(nil), 0);
}

BEHAVIOUR(instancesKnowTheirKind) {
  Square *square = [Square new];
  equal([square isKindOfClass:[Shape class]], 1);
  equal([square isMemberOfClass:[Shape class]], 0);
  equal([square isMemberOfClass:[Square class]], 1);
  equal([[Shape new] isKindOfClass:[Square class]], 0);
  equal([Square isSubclassOfClass:[Shape class]], 1);
  equal([Shape isSubclassOfClass:[Square class]], 0);
  equal([[Square class] isKindOfClass:[NSObject class]], 1);
}

BEHAVIOUR(methodsAreListed) {
  equal(hasMethod([Shape class], "takes:and:"), 1);
  equal(hasMethod([Shape class], "name"), 1);
  equal(hasMethod([Shape class], "setName:"), 1);
  equal(hasMethod([Shape class], "fromCategory"), 1);
  equal(hasMethod([Shape class], "ofClass"), 0);
  equal(hasMethod(object_getClass([Shape class]), "ofClass"), 1);
  equal(hasMethod([Square class], "takes:and:"), 0);
}

BEHAVIOUR(aMethodTellsItsTypes) {
  Method method = class_getInstanceMethod([Shape class], @selector(takes:and:));
  equalTexts(sel_getName(method_getName(method)), "takes:and:");
  equal(method_getNumberOfArguments(method), 4);
  char *type = method_copyReturnType(method);
  equalTexts(type, "i");
  free(type);
  type = method_copyArgumentType(method, 2);
  equalTexts(type, "d");
  free(type);
  type = method_copyArgumentType(method, 3);
  equalTexts(type, "@");
  free(type);
  samePointers(method_copyArgumentType(method, 4), 0);
  char buffer[8];
  method_getArgumentType(method, 1, buffer, sizeof buffer);
  equalTexts(buffer, ":");
  method_getReturnType(method, buffer, sizeof buffer);
  equalTexts(buffer, "i");
}

BEHAVIOUR(aMethodTellsStructuresAndBlocks) {
  Method method = class_getInstanceMethod([Shape class], @selector(pairOf:));
  char *type = method_copyReturnType(method);
  equalTexts(type, "{Pair=id}");
  free(type);
  type = method_copyArgumentType(method, 2);
  equalTexts(type, "^{Pair=id}");
  free(type);
  type = method_copyArgumentType(class_getInstanceMethod([Shape class], @selector(calls:)), 2);
  equalTexts(type, "@?");
  free(type);
}

BEHAVIOUR(aMethodHasADescription) {
  Method method = class_getInstanceMethod([Shape class], @selector(area));
  struct objc_method_description *description = method_getDescription(method);
  samePointers(description->name, @selector(area));
  equalTexts(description->types, method_getTypeEncoding(method));
}

BEHAVIOUR(inheritedMethodsAreFound) {
  samePointers(class_getInstanceMethod([Square class], @selector(area)),
               class_getInstanceMethod([Shape class], @selector(area)));
  samePointers(class_getInstanceMethod([Shape class], sel_registerName("nothing")), 0);
  samePointers(class_getClassMethod([Square class], @selector(ofClass)),
               class_getClassMethod([Shape class], @selector(ofClass)));
}

BEHAVIOUR(variablesAreListedInOrder) {
  unsigned count = 0;
  Ivar *ivars = class_copyIvarList([Shape class], &count);
  equal(count, 9);
  equalTexts(ivar_getName(ivars[0]), "corners");
  equalTexts(ivar_getTypeEncoding(ivars[0]), "i");
  equalTexts(ivar_getName(ivars[2]), "width");
  equalTexts(ivar_getTypeEncoding(ivars[3]), "{Pair=\"one\"i\"two\"d}");
  equalTexts(ivar_getTypeEncoding(ivars[7]), "@\"NSString\"");
  equal(ivar_getOffset(ivars[0]) < ivar_getOffset(ivars[1]), 1);
  samePointers(ivars[9], 0);
  free(ivars);
}

BEHAVIOUR(aVariableIsWhereItsOffsetSays) {
  Shape *shape = [Shape new];
  shape->width = 2.5;
  ptrdiff_t offset = ivar_getOffset(class_getInstanceVariable([Square class], "width"));
  equalDoubles(*(double *)((char *)(__bridge void *)shape + offset), 2.5);
  samePointers(class_getInstanceVariable([Shape class], "nothing"), 0);
}

BEHAVIOUR(aVariableIsReadByDescription) {
  Shape *shape = [Shape new];
  NSObject *value = [NSObject new];
  shape->strongOne = value;
  same(object_getIvar(shape, class_getInstanceVariable([Shape class], "strongOne")), value);
}

BEHAVIOUR(aStrongVariableKeepsWhatIsSet) {
  Shape *shape = [Shape new];
  __weak id weak = nil;
  @autoreleasepool {
    NSObject *value = [NSObject new];
    weak = value;
    object_setIvar(shape, class_getInstanceVariable([Shape class], "strongOne"), value);
  }
  equal(weak != nil, 1);
  shape->strongOne = nil;
  same(weak, nil);
}

BEHAVIOUR(aWeakVariableDoesNotKeepWhatIsSet) {
  Shape *shape = [Shape new];
  Ivar ivar = class_getInstanceVariable([Shape class], "weakOne");
  @autoreleasepool {
    NSObject *value = [NSObject new];
    object_setIvar(shape, ivar, value);
    same(shape->weakOne, value);
    same(object_getIvar(shape, ivar), value);
  }
  same(shape->weakOne, nil);
}

BEHAVIOUR(instanceSizesIncludeTheSuperclasses) {
  equal(class_getInstanceSize([NSObject class]), sizeof(void *));
  equal(class_getInstanceSize([Square class]) > class_getInstanceSize([Shape class]), 1);
  equal(class_getInstanceSize([Shape class]) % sizeof(void *), 0);
}

BEHAVIOUR(propertiesAreListed) {
  unsigned count = 0;
  objc_property_t *properties = class_copyPropertyList([Shape class], &count);
  equal(count, 4);
  free(properties);
  equalTexts(property_getName(class_getProperty([Shape class], "name")), "name");
  samePointers(class_getProperty([Square class], "name"), class_getProperty([Shape class], "name"));
  equal(class_getProperty([Shape class], "added") != NULL, 1);
  samePointers(class_getProperty([Shape class], "nothing"), 0);
}

BEHAVIOUR(aPropertyTellsItsAttributes) {
  equalTexts(property_getAttributes(class_getProperty([Shape class], "name")),
             "T@\"NSString\",C,N,V_name");
  equalTexts(property_getAttributes(class_getProperty([Shape class], "area")), "Ti,R");
  equalTexts(property_getAttributes(class_getProperty([Shape class], "next")),
             "T@\"Shape\",W,V_next");
}

BEHAVIOUR(anAttributeIsReadAlone) {
  objc_property_t name = class_getProperty([Shape class], "name");
  char *value = property_copyAttributeValue(name, "T");
  equalTexts(value, "@\"NSString\"");
  free(value);
  value = property_copyAttributeValue(name, "V");
  equalTexts(value, "_name");
  free(value);
  value = property_copyAttributeValue(name, "C");
  equalTexts(value, "");
  free(value);
  samePointers(property_copyAttributeValue(name, "W"), 0);
}

BEHAVIOUR(attributesAreListed) {
  unsigned count = 0;
  objc_property_attribute_t *attributes =
      property_copyAttributeList(class_getProperty([Shape class], "name"), &count);
  equal(count, 4);
  equalTexts(attributes[0].name, "T");
  equalTexts(attributes[0].value, "@\"NSString\"");
  equalTexts(attributes[3].name, "V");
  equalTexts(attributes[3].value, "_name");
  free(attributes);
}

BEHAVIOUR(aClassPropertyIsTheMetaclasss) {
  equal(class_getProperty(object_getClass([Shape class]), "shared") != NULL, 1);
  samePointers(class_getProperty([Shape class], "shared"), 0);
}

BEHAVIOUR(theListOfClassesHasThemAll) {
  unsigned count = 0;
  Class *classes = objc_copyClassList(&count);
  int found = 0;
  for (unsigned i = 0; i < count; ++i)
    if (classes[i] == [Shape class] || classes[i] == [NSObject class]) ++found;
  free(classes);
  equal(found, 2);
  equal(objc_getClassList(NULL, 0), count);
  Class one = Nil;
  equal(objc_getClassList(&one, 1), count);
  equal(one != Nil, 1);
}

BEHAVIOUR(aClassKnowsItsBinary) {
  const char *path = class_getImageName([Shape class]);
  equal(path != NULL, 1);
  unsigned count = 0;
  const char **names = objc_copyImageNames(&count);
  int found = 0;
  for (unsigned i = 0; i < count; ++i)
    if (strcmp(names[i], path) == 0) ++found;
  free(names);
  equal(found, 1);
  names = objc_copyClassNamesForImage(path, &count);
  equal(count, 2);
  free(names);
  samePointers(objc_copyClassNamesForImage("/nowhere", &count), 0);
  equal(count, 0);
}

BEHAVIOUR(versionsAreKept) {
  equal(class_getVersion([Shape class]), 0);
  class_setVersion([Shape class], 3);
  equal(class_getVersion([Shape class]), 3);
}

BEHAVIOUR(anObjectMayChangeItsClass) {
  Shape *shape = [Shape new];
  same(object_setClass(shape, [Square class]), [Shape class]);
  equal([shape isKindOfClass:[Square class]], 1);
  object_setClass(shape, [Shape class]);
}

BEHAVIOUR(implementationsAreFound) {
  IMP area = [[Shape new] methodForSelector:@selector(area)];
  samePointers(area, [Square instanceMethodForSelector:@selector(area)]);
  equal(((int (*)(id, SEL))area)([Shape new], @selector(area)), 1);
}

BEHAVIOUR(selectorsAreUnique) {
  samePointers(sel_registerName("takes:and:"), @selector(takes:and:));
  samePointers(sel_getUid("area"), @selector(area));
  equal(sel_isEqual(@selector(area), @selector(name)), 0);
}
