// Methods that are added, replaced and exchanged while they are in use; classes made at run time.
#import "behaviour.h"

@interface Base : NSObject
- (int)one;
- (int)two;
+ (int)ofClass;
@end
@implementation Base
- (int)one {
  return 1;
}
- (int)two {
  return 2;
}
+ (int)ofClass {
  return 5;
}
@end
@interface Below : Base
@end
@implementation Below
@end

static int ten(id self, SEL selector) { return 10; }
static IMP saved;
static int addToOld(id self, SEL selector) { return 100 + ((int (*)(id, SEL))saved)(self, selector); }

BEHAVIOUR(implementationsAreExchanged) {
  Base *base = [Base new];
  equal([base one], 1);
  method_exchangeImplementations(class_getInstanceMethod([Base class], @selector(one)),
                                 class_getInstanceMethod([Base class], @selector(two)));
  equal([base one], 2);
  equal([base two], 1);
  equal([[Below new] one], 2);
}

BEHAVIOUR(anImplementationIsReplacedAndCalled) {
  Base *base = [Base new];
  equal([base one], 1);
  saved = method_setImplementation(class_getInstanceMethod([Base class], @selector(one)),
                                   (IMP)addToOld);
  equal([base one], 101);
  equal([[Below new] one], 101);
}

BEHAVIOUR(replacingAnInheritedMethodAddsOne) {
  samePointers(class_replaceMethod([Below class], @selector(one), (IMP)ten, "i@:"), 0);
  equal([[Below new] one], 10);
  equal([[Base new] one], 1);
  samePointers(class_replaceMethod([Below class], @selector(one), (IMP)addToOld, "i@:"), ten);
}

BEHAVIOUR(addingAMethodThatIsThereFails) {
  equal(class_addMethod([Base class], @selector(one), (IMP)ten, "i@:"), 0);
  equal(class_addMethod([Below class], @selector(one), (IMP)ten, "i@:"), 1);
  equal([[Below new] one], 10);
}

BEHAVIOUR(classMethodsAreReplacedOnTheMetaclass) {
  equal([Below ofClass], 5);
  class_replaceMethod(object_getClass([Base class]), @selector(ofClass), (IMP)ten, "i@:");
  equal([Below ofClass], 10);
}

BEHAVIOUR(anInstanceRespondsToAnAddedMethod) {
  SEL added = sel_registerName("addedLater");
  equal([[Base new] respondsToSelector:added], 0);
  class_addMethod([Base class], added, (IMP)ten, "i@:");
  equal([[Below new] respondsToSelector:added], 1);
  equal(((int (*)(id, SEL))objc_msgSend)([Below new], added), 10);
}

BEHAVIOUR(aClassIsMadeAtRunTime) {
  Class made = objc_allocateClassPair([Base class], "MadeUp", 0);
  equal(class_addIvar(made, "number", sizeof(int), 2, "i"), 1);
  equal(class_addIvar(made, "number", sizeof(int), 2, "i"), 0);
  equal(class_addMethod(made, @selector(one), (IMP)ten, "i@:"), 1);
  objc_registerClassPair(made);
  same(objc_getClass("MadeUp"), made);
  Base *object = [made new];
  equal([object one], 10);
  equal([object two], 2);
  equal([object isKindOfClass:[Base class]], 1);
  equal(class_addIvar(made, "late", sizeof(int), 2, "i"), 0);
}

BEHAVIOUR(aTakenNameMakesNoClass) {
  same(objc_allocateClassPair([NSObject class], "Base", 0), Nil);
}

BEHAVIOUR(aMadeClassOverridesAClassMethod) {
  Class made = objc_allocateClassPair([Base class], "MadeWithClassMethod", 0);
  class_addMethod(object_getClass(made), @selector(ofClass), (IMP)ten, "i@:");
  objc_registerClassPair(made);
  equal([made ofClass], 10);
  equal([Base ofClass], 5);
}

BEHAVIOUR(aDisposedClassIsNotFound) {
  Class made = objc_allocateClassPair([Base class], "Passing", 0);
  objc_registerClassPair(made);
  objc_disposeClassPair(made);
  same(objc_getClass("Passing"), Nil);
  Class again = objc_allocateClassPair([Base class], "Passing", 0);
  equal(again != Nil, 1);
  objc_disposeClassPair(again);
}

BEHAVIOUR(aDuplicateHasTheSameMethods) {
  Class copy = objc_duplicateClass([Base class], "BaseCopy", 0);
  same(objc_getClass("BaseCopy"), copy);
  same(class_getSuperclass(copy), [NSObject class]);
  id object = [copy new];
  equal([(Base *)object one], 1);
  equal([object isKindOfClass:[Base class]], 0);
  class_replaceMethod(copy, @selector(one), (IMP)ten, "i@:");
  equal([(Base *)object one], 10);
  equal([[Base new] one], 1);
}

BEHAVIOUR(propertiesAreAdded) {
  objc_property_attribute_t attributes[] = {{"T", "@\"NSString\""}, {"C", ""}, {"V", "_made"}};
  equal(class_addProperty([Base class], "made", attributes, 3), 1);
  equal(class_addProperty([Base class], "made", attributes, 3), 0);
  equalTexts(property_getAttributes(class_getProperty([Base class], "made")),
             "T@\"NSString\",C,V_made");
  class_replaceProperty([Base class], "made", attributes, 1);
  equalTexts(property_getAttributes(class_getProperty([Base class], "made")), "T@\"NSString\"");
}

BEHAVIOUR(anAssociatedObjectGoesWithItsOwner) {
  static char key;
  __weak id weak = nil;
  @autoreleasepool {
    Base *owner = [Base new];
    @autoreleasepool {
      NSObject *value = [NSObject new];
      weak = value;
      objc_setAssociatedObject(owner, &key, value, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    }
    equal(weak != nil, 1);
    same(objc_getAssociatedObject(owner, &key), weak);
  }
  same(weak, nil);
}

BEHAVIOUR(associatedObjectsAreReplacedAndRemoved) {
  static char key, other;
  Base *owner = [Base new];
  objc_setAssociatedObject(owner, &key, @"one", OBJC_ASSOCIATION_RETAIN);
  objc_setAssociatedObject(owner, &key, @"two", OBJC_ASSOCIATION_COPY);
  objc_setAssociatedObject(owner, &other, @"three", OBJC_ASSOCIATION_ASSIGN);
  equalStrings(objc_getAssociatedObject(owner, &key), "two");
  objc_setAssociatedObject(owner, &key, nil, OBJC_ASSOCIATION_RETAIN);
  same(objc_getAssociatedObject(owner, &key), nil);
  objc_removeAssociatedObjects(owner);
  same(objc_getAssociatedObject(owner, &other), nil);
}

BEHAVIOUR(aClassHasAssociatedObjects) {
  static char key;
  objc_setAssociatedObject([Base class], &key, @"kept", OBJC_ASSOCIATION_RETAIN);
  equalStrings(objc_getAssociatedObject([Base class], &key), "kept");
}
