// The card in which a colour is chosen.
#pragma once

#include <functional>
#include <string>

#include "UIKit/UIView.h"

namespace host {

/// "#RRGGBB:a.aaaaaa".
std::string colorDigits(UIColor* color);

struct ColorAlert : View {
  /// Puts a card on the screen, which keeps it; a card that is there goes as if it were cancelled.
  /// The function gets the colour when the user closes it.
  static void show(UIColor* start, bool withAlpha, std::function<void(UIColor*)> chosen);

  static NSObject* shown();
  NSString* digits();
  void choose(UIColor* wanted);
  void close();
  void cancel();

  Strong<UIColor> color;
  std::function<void(UIColor*)> chosen;
  bool hasAlpha;
};

}  // namespace host
