// The Objective-C run-time's C interface: the names that the library and the stand-in share.
#pragma once

#include <cstddef>
#include <cstdint>

struct NSObject;
struct objc_class;
struct objc_selector;
struct objc_method;
struct objc_ivar;
struct objc_cache;

using id = NSObject*;
using Class = objc_class*;
using SEL = const objc_selector*;
using IMP = void (*)();

/// Receiver and the class whose methods are searched first, for a message to super.
struct objc_super {
  const void* receiver;
  Class superclass;
};

/// How an associated object is kept. The values are the run-time's own.
enum class AssociationPolicy : std::uintptr_t {
  assign = 0,
  retainNonatomic = 1,
  copyNonatomic = 3,
  retain = 0x301,
  copy = 0x303,
};

// The platform exports these, whatever the visibility of our own code.
#pragma GCC visibility push(default)
extern "C" {
/// The messengers, declared without arguments: a send casts them to the callee's type.
void objc_msgSend();
void objc_msgSendSuper();
#if !defined(__aarch64__)
void objc_msgSend_stret();
void objc_msgSendSuper_stret();
#endif

SEL sel_registerName(const char* name);
const char* sel_getName(SEL selector);

/// The class of that name, or nil. Never raises.
Class objc_getClass(const char* name);
Class objc_getMetaClass(const char* name);
Class object_getClass(const void* object);
const char* class_getName(Class cls);
Class class_getSuperclass(Class cls);
bool class_isMetaClass(Class cls);
std::size_t class_getInstanceSize(Class cls);

bool class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);
IMP class_replaceMethod(Class cls, SEL selector, IMP implementation, const char* types);
objc_method* class_getInstanceMethod(Class cls, SEL selector);
objc_method* class_getClassMethod(Class cls, SEL selector);
IMP class_getMethodImplementation(Class cls, SEL selector);
bool class_respondsToSelector(Class cls, SEL selector);
SEL method_getName(objc_method* method);
IMP method_getImplementation(objc_method* method);
const char* method_getTypeEncoding(objc_method* method);
IMP method_setImplementation(objc_method* method, IMP implementation);

objc_ivar* class_getInstanceVariable(Class cls, const char* name);
std::ptrdiff_t ivar_getOffset(objc_ivar* ivar);
const char* ivar_getName(objc_ivar* ivar);
const char* ivar_getTypeEncoding(objc_ivar* ivar);

/// A new class, or nil if the name is taken. A nil superclass makes a root class.
Class objc_allocateClassPair(Class superclass, const char* name, std::size_t extraBytes);
void objc_registerClassPair(Class cls);
bool class_addIvar(Class cls, const char* name, std::size_t size, std::uint8_t log2Alignment,
                   const char* types);
id class_createInstance(Class cls, std::size_t extraBytes);
id object_dispose(id object);

id objc_retain(id object);
void objc_release(id object);
id objc_autorelease(id object);
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);

void objc_setAssociatedObject(id object, const void* key, id value, AssociationPolicy policy);
id objc_getAssociatedObject(id object, const void* key);

/// Enter and leave the object's lock. One thread at a time holds it, any number of times.
int objc_sync_enter(const void* object);
int objc_sync_exit(const void* object);

void* _Block_copy(const void* block);
void _Block_release(const void* block);
extern void* _NSConcreteStackBlock[32];
extern void* _NSConcreteGlobalBlock[32];

/// The empty method cache with which class metadata starts.
extern objc_cache _objc_empty_cache;
}
#pragma GCC visibility pop
