// The settings of a theme, by key.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "common/json_forward.h"
#include "objc/strong.h"
#include "platform/Foundation.h"

namespace varnix::cli {

/// As a property list holds them. Never nil.
using Values = std::map<std::string, Strong<NSObject>>;

/// None for nil.
Values valuesOf(NSDictionary* settings);
/// Autoreleased.
NSDictionary* dictionaryOf(const Values& values);

bool areSame(const Values& a, const Values& b);
/// The keys whose values differ, or that only one of them has.
std::vector<std::string> differences(const Values& a, const Values& b);
/// Gives the key of `to` what `from` has for it.
void take(Values& to, const Values& from, const std::string& key);

/// Truth values, whole numbers and texts as such; anything else as {"text": WORDS}.
Json valueJson(NSObject* value);
/// By key; null for one that is not there.
Json valueJson(const Values& values, const std::string& key);
Json valuesJson(const Values& values);

}  // namespace varnix::cli
