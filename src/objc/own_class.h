// Classes of this binary. Code reaches them through their own class objects, never by name: another
// binary may define a class of the same name, and a look-up by name finds whichever came first.
#pragma once

#include "objc/class_name.h"
#include "objc/metadata.h"

#define OBJC_DECLARE_CLASS_SYMBOLS_(Name, Attributes)                                        \
  extern "C" {                                                                               \
  Attributes extern objc_class objc_class_##Name OBJC_SYMBOL("OBJC_CLASS_$_" #Name);         \
  Attributes extern objc_class objc_metaclass_##Name OBJC_SYMBOL("OBJC_METACLASS_$_" #Name); \
  }

// Code outside the binary that includes these headers, such as a test, has only the names.
#if defined(OBJC_CLASSES_BY_NAME)
#define OBJC_OWN_CLASS_(Name, Visibility, Found) static_assert(true)
#else
#define OBJC_OWN_CLASS_(Name, Visibility, Found) \
  OBJC_DECLARE_CLASS_SYMBOLS_(Name, Visibility)  \
  template <>                                    \
  struct objc::ClassOf<Name> {                   \
    static Class get() { return Found; }         \
  }
#endif

/// Goes after the view of a class that this binary defines: private to it, or for others to link
/// against.
#define OBJC_OWN_CLASS(Name) OBJC_OWN_CLASS_(Name, OBJC_HIDDEN, &objc_class_##Name)
#define OBJC_OWN_EXPORTED_CLASS(Name) OBJC_OWN_CLASS_(Name, OBJC_EXPORTED, &objc_class_##Name)
/// The same for a class that does not exist in a process without its superclass.
#define OBJC_OWN_EXPORTED_CLASS_IF_SUPERCLASS(Name, Super) \
  OBJC_OWN_CLASS_(Name, OBJC_EXPORTED,                     \
                  objc::classOf<Super>() == nullptr ? nullptr : &objc_class_##Name)
