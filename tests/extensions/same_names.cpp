// An extension with classes of all our names, like another extension with a copy of our sources.
// Each class answers with a number of its own.
#include "objc/define.h"
#include "platform/Foundation.h"

namespace {

template <int N>
struct Other : NSObject {
  int number() { return N; }
};

}  // namespace

#define OTHER_CLASS(Name, N) \
  OBJC_CLASS_NAMED(Name, NSObject, Other<N>, NSObject, objc::Method<"number", &Other<N>::number>)

OTHER_CLASS(KTPrefsManager, 1)
OTHER_CLASS(VXPrefsManager, 2)
OTHER_CLASS(VNXManager, 3)
OTHER_CLASS(CQColorPicker, 4)
OTHER_CLASS(CQColorScheme, 5)
OTHER_CLASS(VarnixNowPlayingDelegate, 6)
OTHER_CLASS(VarnixInstallation, 7)
OTHER_CLASS(QKBarButtonItem, 8)
OTHER_CLASS(QKTwitterShareHandler, 9)
OTHER_CLASS(QKWelcomeTwitterHandler, 10)

/// Its own classes, in the order of their numbers, whichever classes the names find.
extern "C" [[gnu::visibility("default")]] const Class same_classes[] = {
    &objc_class_KTPrefsManager,
    &objc_class_VXPrefsManager,
    &objc_class_VNXManager,
    &objc_class_CQColorPicker,
    &objc_class_CQColorScheme,
    &objc_class_VarnixNowPlayingDelegate,
    &objc_class_VarnixInstallation,
    &objc_class_QKBarButtonItem,
    &objc_class_QKTwitterShareHandler,
    &objc_class_QKWelcomeTwitterHandler,
};
