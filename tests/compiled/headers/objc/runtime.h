// The run-time's C interface as compiled code sees it.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

typedef struct objc_class* Class;
typedef struct objc_selector* SEL;
typedef struct objc_object {
  Class isa;
}* id;
typedef void (*IMP)(void);
typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
typedef struct objc_property* objc_property_t;
#if defined(__LP64__)
typedef bool BOOL;
typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;
#else
typedef signed char BOOL;
typedef int NSInteger;
typedef unsigned int NSUInteger;
typedef float CGFloat;
#endif
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#define nil ((id)0)
#define Nil ((Class)0)

@class Protocol;

struct objc_method_description {
  SEL name;
  char* types;
};
typedef struct {
  const char* name;
  const char* value;
} objc_property_attribute_t;
struct objc_super {
  __unsafe_unretained id receiver;
  Class super_class;
};

enum {
  OBJC_ASSOCIATION_ASSIGN = 0,
  OBJC_ASSOCIATION_RETAIN_NONATOMIC = 1,
  OBJC_ASSOCIATION_COPY_NONATOMIC = 3,
  OBJC_ASSOCIATION_RETAIN = 0x301,
  OBJC_ASSOCIATION_COPY = 0x303,
};

void free(void* memory);
int strcmp(const char* one, const char* other);

id objc_msgSend(id receiver, SEL selector, ...);
id objc_msgSendSuper(struct objc_super* target, SEL selector, ...);
id objc_msgSendSuper2(struct objc_super* target, SEL selector, ...);
void _objc_msgForward(void);
void method_invoke(void);

SEL sel_registerName(const char* name);
SEL sel_getUid(const char* name);
const char* sel_getName(SEL selector);
BOOL sel_isEqual(SEL one, SEL other);

Class objc_getClass(const char* name);
Class objc_getMetaClass(const char* name);
Class objc_lookUpClass(const char* name);
int objc_getClassList(Class* buffer, int size);
Class* objc_copyClassList(unsigned* count);
Class objc_allocateClassPair(Class superclass, const char* name, size_t extraBytes);
void objc_registerClassPair(Class cls);
void objc_disposeClassPair(Class cls);
Class objc_duplicateClass(Class original, const char* name, size_t extraBytes);

const char* class_getName(Class cls);
Class class_getSuperclass(Class cls);
BOOL class_isMetaClass(Class cls);
size_t class_getInstanceSize(Class cls);
int class_getVersion(Class cls);
void class_setVersion(Class cls, int version);
Ivar class_getInstanceVariable(Class cls, const char* name);
Ivar* class_copyIvarList(Class cls, unsigned* count);
const uint8_t* class_getIvarLayout(Class cls);
const uint8_t* class_getWeakIvarLayout(Class cls);
Method class_getInstanceMethod(Class cls, SEL selector);
Method class_getClassMethod(Class cls, SEL selector);
Method* class_copyMethodList(Class cls, unsigned* count);
IMP class_getMethodImplementation(Class cls, SEL selector);
BOOL class_respondsToSelector(Class cls, SEL selector);
BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);
IMP class_replaceMethod(Class cls, SEL selector, IMP implementation, const char* types);
BOOL class_addIvar(Class cls, const char* name, size_t size, uint8_t alignment, const char* types);
BOOL class_addProtocol(Class cls, Protocol* protocol);
BOOL class_conformsToProtocol(Class cls, Protocol* protocol);
Protocol* __unsafe_unretained* class_copyProtocolList(Class cls, unsigned* count);
objc_property_t class_getProperty(Class cls, const char* name);
objc_property_t* class_copyPropertyList(Class cls, unsigned* count);
BOOL class_addProperty(Class cls, const char* name, const objc_property_attribute_t* attributes,
                       unsigned count);
void class_replaceProperty(Class cls, const char* name, const objc_property_attribute_t* attributes,
                           unsigned count);
const char* class_getImageName(Class cls);
const char** objc_copyImageNames(unsigned* count);
const char** objc_copyClassNamesForImage(const char* image, unsigned* count);

SEL method_getName(Method method);
IMP method_getImplementation(Method method);
const char* method_getTypeEncoding(Method method);
unsigned method_getNumberOfArguments(Method method);
char* method_copyReturnType(Method method);
char* method_copyArgumentType(Method method, unsigned index);
void method_getReturnType(Method method, char* to, size_t size);
void method_getArgumentType(Method method, unsigned index, char* to, size_t size);
struct objc_method_description* method_getDescription(Method method);
IMP method_setImplementation(Method method, IMP implementation);
void method_exchangeImplementations(Method one, Method other);

const char* ivar_getName(Ivar ivar);
const char* ivar_getTypeEncoding(Ivar ivar);
ptrdiff_t ivar_getOffset(Ivar ivar);

const char* property_getName(objc_property_t property);
const char* property_getAttributes(objc_property_t property);
char* property_copyAttributeValue(objc_property_t property, const char* name);
objc_property_attribute_t* property_copyAttributeList(objc_property_t property, unsigned* count);

Protocol* objc_getProtocol(const char* name);
Protocol* __unsafe_unretained* objc_copyProtocolList(unsigned* count);
Protocol* objc_allocateProtocol(const char* name);
void objc_registerProtocol(Protocol* protocol);
const char* protocol_getName(Protocol* protocol);
BOOL protocol_isEqual(Protocol* one, Protocol* other);
BOOL protocol_conformsToProtocol(Protocol* protocol, Protocol* other);
Protocol* __unsafe_unretained* protocol_copyProtocolList(Protocol* protocol, unsigned* count);
struct objc_method_description protocol_getMethodDescription(Protocol* protocol, SEL selector,
                                                             BOOL isRequired, BOOL isOfInstances);
struct objc_method_description* protocol_copyMethodDescriptionList(Protocol* protocol,
                                                                   BOOL isRequired,
                                                                   BOOL isOfInstances,
                                                                   unsigned* count);
objc_property_t protocol_getProperty(Protocol* protocol, const char* name, BOOL isRequired,
                                     BOOL isOfInstances);
objc_property_t* protocol_copyPropertyList(Protocol* protocol, unsigned* count);
void protocol_addMethodDescription(Protocol* protocol, SEL selector, const char* types,
                                   BOOL isRequired, BOOL isOfInstances);
void protocol_addProtocol(Protocol* protocol, Protocol* adopted);

Class object_getClass(id object);
Class object_setClass(id object, Class cls);
BOOL object_isClass(id object);
const char* object_getClassName(id object);
id object_getIvar(id object, Ivar ivar);
void object_setIvar(id object, Ivar ivar, id value);
void object_setIvarWithStrongDefault(id object, Ivar ivar, id value);

void objc_setAssociatedObject(id object, const void* key, id value, uintptr_t policy);
id objc_getAssociatedObject(id object, const void* key);
void objc_removeAssociatedObjects(id object);

int objc_sync_enter(id object);
int objc_sync_exit(id object);

IMP imp_implementationWithBlock(id block);
id imp_getBlock(IMP implementation);
BOOL imp_removeBlock(IMP implementation);

void objc_setEnumerationMutationHandler(void (*handler)(id collection));
void* objc_setUncaughtExceptionHandler(void (*handler)(id exception));

// What compilers call; newer ones than ours call more of them.
id objc_alloc(Class cls);
id objc_allocWithZone(Class cls);
id objc_alloc_init(Class cls);
id objc_opt_new(Class cls);
id objc_opt_self(id object);
Class objc_opt_class(id object);
BOOL objc_opt_isKindOfClass(id object, Class cls);
BOOL objc_opt_respondsToSelector(id object, SEL selector);
