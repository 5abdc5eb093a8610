// Which keys the settings file may hold, and values of which kind. The command takes and gives the
// same entries as the pane, so it compiles this too.
#pragma once

#include "platform/Foundation.h"
#include "prefs/keys.h"

namespace varnix::pane {

/// The kind of that setting, a general one or an application's own. `data` for anything else, which
/// is nothing that a user sets.
settings::Kind kindOf(NSString* key);

/// Whether a stored value can be read as that kind; never for `data`.
bool isOfKind(NSObject* value, settings::Kind kind);

/// Calls the function with every key of the dictionary that is a string.
template <class F>
void eachKey(NSDictionary* dictionary, F function) {
  NSArray* keys = send(dictionary, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
    if (auto* key = objc::as<NSString>(send(keys, NSArray::objectAtIndex, i))) function(key);
  }
}

/// The entries that a user may have set: known keys with values of their kind. Nothing that the
/// library computed. Empty for nil.
NSDictionary* knownEntries(NSDictionary* entries);

}  // namespace varnix::pane
