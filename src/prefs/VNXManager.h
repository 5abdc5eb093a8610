// Turns settings into answers: is this element dyed, and with which colour.
#pragma once

#include "platform/UIKit.h"
#include "prefs/VXPrefsManager.h"

/// One a process, made when the library is loaded and never released. It reads the store at every
/// question, so that answers follow the settings at once. Main thread.
struct VNXManager : NSObject {
  VNXManager* init();
  void dealloc();

  /// The master switch; yes where nothing is stored.
  bool tweakEnabled();
  /// Whether the settings exclude that application: only an explicit no does.
  bool appIsDisabled(NSString* identifier);
  /// The main bundle's identifier, or nil.
  NSString* bundleId();
  bool isSpringBoard();
  /// SpringBoard: the frontmost application's identifier; nil on the home screen.
  NSString* getOpenAppId();
  /// Whether the plain global colour type asks for icon colours.
  bool wantsIconColor();
  /// Whether SpringBoard's surfaces follow the playing track's artwork.
  bool useAlbumArt();

  /// The colour of whatever follows the dye. Not marked as ours: elements do that.
  UIColor* dye();

  /// An element's colour type: 1 not dyed, 2 its own colour, anything else follows the dye.
  NSInteger statusBarEnabled();
  NSInteger folderEnabled();
  NSInteger ccEnabled();
  NSInteger ncEnabled();
  NSInteger smsEnabled();
  NSInteger keyboardEnabled();
  NSInteger volEnabled();

  /// An element's colour, marked as ours; nil where it is not dyed.
  UIColor* statusBarDye();
  UIColor* folderDye();
  UIColor* ccDye();
  UIColor* ncDye();
  UIColor* smsDye();
  UIColor* keyboardDye();
  UIColor* volDye();

  /// The type under the key: for this process, or with the flag for the open application.
  NSInteger getEnabled(NSString* typeKey, bool inSpringBoardContext);
  /// The colour that goes with the answer of one of the operations above.
  UIColor* getDyeColor(NSString* colorKey, NSString* fallback, SEL enabledOperation);

  Strong<VXPrefsManager> _prefsMan;
  Strong<UIColor> _cachedIconColor;
};
