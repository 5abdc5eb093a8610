/* What a settings pane may call of the library, from C, C++ and Objective-C.
 *
 * Link against Varnix.dylib. Call everything on the main thread; QKVersionCopyrightSpecifier, which
 * waits for a shell, and QKKillProcess may also be called on another. Arguments are borrowed: the
 * caller keeps its own references, and what the platform needs longer it retains by itself. Results
 * are autoreleased. Nothing is reported but QKKillProcess's result, and nothing raises for nil.
 */
#ifndef VARNIX_PANE_H
#define VARNIX_PANE_H

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
 * controller  The pane. The bar is that of the last column of the split view that it is in; where
 *             it is in none, only its own edges and controls change. Nil: nothing happens.
 *             Its content is laid out below the bars but for the bottom edge from now on, and its
 *             class is what controls are dyed in: segmented controls, sliders' tracks and switches
 *             that come into a pane of this class after the call, until the process ends.
 * color       The bar's title, buttons and the visible page's tint. Nil: the system's colours. */
VARNIX_PANE_FUNCTION void QKSetPrefsTint(UIViewController *controller, UIColor *color);

/* Gives the navigation bar and the visible page their system colours again, the title in black.
 * The page's edges and the controls' colours stay as QKSetPrefsTint left them. Call it when the
 * pane goes away (viewWillDisappear:), for the bar is shared with the other panes.
 *
 * controller  The pane. Nil, or a pane in no split view: nothing happens. */
VARNIX_PANE_FUNCTION void QKResetPrefsTint(UIViewController *controller);

/* A new group specifier whose centred footer is "© HOLDER YEARS", a line break, a blank and the
 * package's "Version: ..." line. YEARS is the present year (GMT), or FIRST - PRESENT. Nil where the
 * process has no PSSpecifier. Waits for dpkg.
 *
 * package     The package's identifier. It becomes part of a shell's command as it is, so it must
 *             be a constant of the pane's, never text from elsewhere: letters, digits, "+", "-" and
 *             "." alone. An unknown package leaves the version's line empty.
 * holder      Who holds the copyright, shown as given.
 * firstYear   Four digits. */
VARNIX_PANE_FUNCTION PSSpecifier *QKVersionCopyrightSpecifier(NSString *package, NSString *holder,
                                                              NSString *firstYear);

/* Sends a signal to every process of that name through /usr/bin/killall, and does not wait for it.
 * The child is not reaped either; it goes with the calling process.
 *
 * signal      A signal's name or number without the hyphen ("HUP", "15"). Nil: 9, which ends it.
 * name        The process's name ("SpringBoard").
 * result      posix_spawn's: 0, or an error number such as ENOENT where killall is missing. It says
 *             nothing about whether a process of that name was there. */
VARNIX_PANE_FUNCTION int QKKillProcess(NSString *signal, NSString *name);

/* Opens "mailto:" and the address in the application that writes mail.
 *
 * address     Put into the URL as it is: the caller escapes what a URL cannot hold. Nil, or an
 *             address that does not form a URL: nothing opens. */
VARNIX_PANE_FUNCTION void QKOpenMailAddress(NSString *address);

/* Asks whether the user wants to follow an account on the social network, and follows it with the
 * device's accounts if so. Asks at every call: the pane remembers whether it has asked.
 *
 * title       The question's title.
 * message     Its text. Nil: a text of the library's.
 * username    The account to follow, without a leading sign. */
VARNIX_PANE_FUNCTION void QKShowTwitterFollowAlert(NSString *title, NSString *message,
                                                   NSString *username);

/* Opens an account's profile in the first client application that is installed, else on the web.
 *
 * username    Without a leading sign; put into the URL as it is. */
VARNIX_PANE_FUNCTION void QKOpenTwitterUsername(NSString *username);

/* Makes a share button the right-hand button of the pane's navigation item. It opens the system's
 * compose sheet.
 *
 * controller  The pane. The button does not keep it alive, and presents the sheet from it.
 * image       The button's image.
 * text        What the sheet begins with; kept by the button. */
VARNIX_PANE_FUNCTION void QKAddTwitterShareButton(UIViewController *controller, UIImage *image,
                                                  NSString *text);

#ifdef __cplusplus
}
#endif

/* KTPrefsManager: the settings of one preferences domain, and the bridge between them and a pane's
 * rows. A class that this library exports; C and C++ reach it by name through the run-time. Used on
 * the main thread. */
#ifdef __OBJC__
VARNIX_PANE_FUNCTION
@interface KTPrefsManager : NSObject

/* A store for /var/mobile/Library/Preferences/IDENTIFIER.plist.
 *
 * identifier    The domain, which is the file's name without extension.
 * defaults      What keys mean that the file lacks; copied. May be nil.
 * notification  The Darwin notification that says that the file has changed: observed from now on,
 *               and posted by notifyEveryone. Nil: neither, and the callback is ignored. The store
 *               must then live as long as the process: it is never taken off the observers.
 * callback      Called with the store after each reload. Not kept alive and not copied: pass a
 *               block that its owner has copied and keeps as long as the store lives. May be nil. */
- (instancetype)initWithId:(NSString *)identifier
             defaultValues:(NSDictionary *)defaults
              notification:(NSString *)notification
      notificationCallback:(void (^)(KTPrefsManager *store))callback;

/* The domain. */
- (NSString *)identifier;

/* What is stored, of whatever kind, else the default, else nil. */
- (id)objectForKey:(NSString *)key;
/* The value's reading: zero for none and for a value that is neither number nor string. */
- (BOOL)boolForKey:(NSString *)key;
- (int)intForKey:(NSString *)key;
- (float)floatForKey:(NSString *)key;

/* In memory alone, and lost at the next reload, until save. Neither may be nil. */
- (void)setObject:(id)object forKey:(NSString *)key;
- (void)removeObjectForKey:(NSString *)key;

/* Writes everything that the store answers, defaults included, over the file in place, as an XML
 * property list. A failure is not told. */
- (void)save;
/* Posts the notification, which reloads every store of the domain in every process. */
- (void)notifyEveryone;
- (void)saveAndNotify;

/* What a row shows: the value under its property "key", else its property "default". */
- (id)readPreferenceValue:(PSSpecifier *)specifier;
/* Stores under the row's property "key", saves and notifies. A nil row: nothing happens. */
- (void)setPreferenceValue:(id)value specifier:(PSSpecifier *)specifier;

@end
#endif

#endif
