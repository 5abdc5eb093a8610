// The colours that a theme sets, or could set, and the theme with another one.
#pragma once

#include <string>
#include <vector>

#include "drawing/byte_color.h"
#include "platform/Foundation.h"
#include "settings/file.h"

namespace varnix::cli {

/// A setting for a colour.
struct Knob {
  std::string key;
  std::string typeKey;         ///< of an element that would get its own colour; else empty
  drawing::ByteColor present;  ///< the colour, or that which an element follows
  std::string rest;            ///< the alpha behind its digits, ":0.5"; may be empty

  /// What has to be stored for that colour.
  std::vector<Entry> entriesFor(const drawing::ByteColor& color) const;
};

/// The colours in use first, then those that elements could have of their own. Some of the first
/// may have no effect.
std::vector<Knob> knobsOf(NSDictionary* settings);

/// A settings file's bytes. Throws Failure.
std::string settingsWith(NSDictionary* settings, const std::vector<Entry>& entries);

}  // namespace varnix::cli
