/* The functions and classes for settings panes, from C, C++ and Objective-C.
 *
 * Link against Varnix.dylib. Call everything on the main thread; QKVersionCopyrightSpecifier, which
 * waits for a shell, and QKKillProcess may also be called on another. Arguments are borrowed: the
 * caller keeps its own references, and the platform retains what it needs longer. Results are
 * autoreleased. Only QKKillProcess reports a result. No function raises for nil.
 */
#ifndef VARNIX_PANE_H
#define VARNIX_PANE_H

/* Laid out like Objective-C headers, with the star beside the name. */
/* clang-format off */

#ifdef __OBJC__
#import <Foundation/Foundation.h>
@class PSSpecifier, UIColor, UIImage, UIViewController;
#elif defined(__cplusplus)
struct NSString;
struct PSSpecifier;
struct UIColor;
struct UIImage;
struct UIViewController;
#else
typedef struct NSString NSString;
typedef struct PSSpecifier PSSpecifier;
typedef struct UIColor UIColor;
typedef struct UIImage UIImage;
typedef struct UIViewController UIViewController;
#endif

#define VARNIX_PANE_FUNCTION __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/* Dyes the pane and the navigation bar above it.
 *
 * controller  The pane. The bar is that of the last column of its split view. If it is not in a
 *             split view, only its own edges and controls change. Nil: nothing happens.
 *             From now on its content extends under bars at the bottom edge only. Segmented
 *             controls, sliders' tracks and switches that are added to a pane of this class after
 *             the call are dyed, until the process ends.
 * color       The bar's title, buttons and the visible page's tint. Nil: the system's colours. */
VARNIX_PANE_FUNCTION void QKSetPrefsTint(UIViewController *controller, UIColor *color);

/* Restores the system colours of the navigation bar and the visible page, with the title in black.
 * The page's edges and the controls' colours stay as QKSetPrefsTint left them. Call it when the
 * pane disappears (viewWillDisappear:), since other panes share the bar.
 *
 * controller  The pane. Nil, or a pane outside a split view: nothing happens. */
VARNIX_PANE_FUNCTION void QKResetPrefsTint(UIViewController *controller);

/* A new group specifier whose centred footer is "© HOLDER YEARS", a line break, a blank and the
 * package's "Version: ..." line. YEARS is the present year (GMT), or FIRST - PRESENT. Nil if the
 * process has no PSSpecifier. Waits for dpkg.
 *
 * package     The package's identifier. It becomes part of a shell command unescaped, so it must
 *             be a constant in the pane's code, never text from elsewhere: only letters, digits,
 *             "+", "-" and ".". For an unknown package the version line is empty.
 * holder      The holder of the copyright, shown as given.
 * firstYear   Four digits. */
VARNIX_PANE_FUNCTION PSSpecifier *QKVersionCopyrightSpecifier(NSString *package, NSString *holder,
                                                              NSString *firstYear);

/* Sends a signal to every process of that name with /usr/bin/killall, and does not wait for it.
 * Nor is the child reaped: it stays a zombie until the calling process ends.
 *
 * signal      A signal's name or number without the hyphen ("HUP", "15"). Nil: 9, which ends it.
 * name        The process's name ("SpringBoard").
 * result      posix_spawn's: 0, or an error number such as ENOENT if killall is missing. It does
 *             not say whether there was a process of that name. */
VARNIX_PANE_FUNCTION int QKKillProcess(NSString *signal, NSString *name);

/* Opens "mailto:" and the address in the mail application.
 *
 * address     Put into the URL unescaped: the caller escapes what a URL cannot contain. Nil, or an
 *             address that gives no valid URL: nothing opens. */
VARNIX_PANE_FUNCTION void QKOpenMailAddress(NSString *address);

/* Asks whether the user wants to follow an account on the social network, and follows it with the
 * device's accounts if so. Asks at every call: the pane remembers whether it has asked.
 *
 * title       The question's title.
 * message     Its text. Nil: the library's own text.
 * username    The account to follow, without a leading sign. */
VARNIX_PANE_FUNCTION void QKShowTwitterFollowAlert(NSString *title, NSString *message,
                                                   NSString *username);

/* Opens an account's profile in the first client application that is installed, or else on the
 * web.
 *
 * username    Without a leading sign; put into the URL unescaped. */
VARNIX_PANE_FUNCTION void QKOpenTwitterUsername(NSString *username);

/* Makes a share button the right-hand button of the pane's navigation item. It opens the system's
 * compose sheet.
 *
 * controller  The pane. The button does not keep it alive, and presents the sheet from it.
 * image       The button's image.
 * text        The initial text of the sheet; kept by the button. */
VARNIX_PANE_FUNCTION void QKAddTwitterShareButton(UIViewController *controller, UIImage *image,
                                                  NSString *text);

#ifdef __cplusplus
}
#endif

/* KTPrefsManager: the settings of one preferences domain, and the bridge between them and a pane's
 * rows. The library exports this class; C and C++ reach it by name through the run-time. Use it on
 * the main thread. */
#ifdef __OBJC__
VARNIX_PANE_FUNCTION
@interface KTPrefsManager : NSObject

/* A store for /var/mobile/Library/Preferences/IDENTIFIER.plist.
 *
 * identifier    The domain, which is the file's name without extension.
 * defaults      The values of keys that are not in the file; copied. May be nil.
 * notification  The Darwin notification of a change of the file: observed from now on, and posted
 *               by notifyEveryone. With one, the store must live as long as the process, since it
 *               never stops observing. Nil: neither, and the callback is ignored.
 * callback      Called with the store after each reload. Not kept alive and not copied: pass a
 *               block that its owner has copied and keeps as long as the store lives. May be nil. */
- (instancetype)initWithId:(NSString *)identifier
             defaultValues:(NSDictionary *)defaults
              notification:(NSString *)notification
      notificationCallback:(void (^)(KTPrefsManager *store))callback;

/* The domain. */
- (NSString *)identifier;

/* The stored value, of any kind, or else the default, or else nil. */
- (id)objectForKey:(NSString *)key;
/* The value read as that type: zero if there is none, or if it is neither number nor string. */
- (BOOL)boolForKey:(NSString *)key;
- (int)intForKey:(NSString *)key;
- (float)floatForKey:(NSString *)key;

/* Only in memory, and lost at the next reload, until save. Neither argument may be nil. */
- (void)setObject:(id)object forKey:(NSString *)key;
- (void)removeObjectForKey:(NSString *)key;

/* Writes all values of the store, defaults included, over the file in place, as an XML property
 * list. A failure is not reported. */
- (void)save;
/* Posts the notification, which reloads every store of the domain in every process. */
- (void)notifyEveryone;
- (void)saveAndNotify;

/* What a row shows: the value for its property "key", or else its property "default". */
- (id)readPreferenceValue:(PSSpecifier *)specifier;
/* Stores under the row's property "key", saves and notifies. A nil row: nothing happens. */
- (void)setPreferenceValue:(id)value specifier:(PSSpecifier *)specifier;

@end
#endif

#endif
