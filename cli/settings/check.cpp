#include "settings/check.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <utility>

#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "common/escaped.h"
#include "common/temporary_container.h"
#include "common/warning.h"
#include "objc/autorelease_pool.h"
#include "prefs/parsed_color.h"
#include "prefs/value.h"
#include "settings/file.h"
#include "settings/known_key.h"
#include "settings/property_text.h"

namespace varnix::cli {

using settings::Kind;

namespace {

/// Limits for hostile files, which may have a million unknown keys.
constexpr std::size_t kMostHints = 200;
constexpr std::size_t kMostWarnings = 20;

constexpr char kAbsent[] = "it counts as absent";

bool isBoolean(NSObject* value) {
  auto* number = objc::as<NSNumber>(value);
  return number != nullptr && *send<const char*>(number, "objCType"_sel) == 'c';
}

/// Text and numbers as in a list; anything longer or larger by its kind.
std::string shown(NSObject* value) {
  constexpr std::size_t kLongestText = 40;
  if (objc::as<NSData>(value) != nullptr) return "data";
  if (objc::as<NSArray>(value) != nullptr) return "a list";
  if (objc::as<NSDictionary>(value) != nullptr) return "a dictionary";
  if (objc::as<NSString>(value) == nullptr) return valueText(value);
  const auto text = host::text(static_cast<NSString*>(value));
  return text.size() > kLongestText ? "this text" : '"' + std::string(text) + '"';
}

bool isTruthWord(std::string_view text) {
  constexpr std::string_view kWords[] = {"true", "false", "yes", "no", "1", "0"};
  const auto isSame = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
  return std::ranges::any_of(
      kWords, [&](std::string_view word) { return std::ranges::equal(text, word, isSame); });
}

bool isMeantAsBoolean(NSObject* value) {
  if (auto* string = objc::as<NSString>(value)) return isTruthWord(host::text(string));
  const double number = send(static_cast<NSNumber*>(value), NSNumber::doubleValue);
  return number == 0 || number == 1;
}

bool isMeantAsInteger(NSObject* value) {
  if (auto* string = objc::as<NSString>(value)) return fits(Kind::integer, host::text(string));
  return !isBoolean(value) && send(static_cast<NSNumber*>(value), NSNumber::doubleValue) ==
                                  static_cast<double>(integerOf(value));
}

/// Whether it is an archive. The library checks its contents itself.
bool isArchive(NSObject* value) {
  auto* data = objc::as<NSData>(value);
  if (data == nullptr) return false;
  const std::string_view bytes(static_cast<const char*>(send(data, NSData::bytes)),
                               send(data, NSData::length));
  auto* archive = objc::as<NSDictionary>(host::propertyListFromData(bytes));
  return archive != nullptr &&
         objc::as<NSArray>(send(archive, NSDictionary::objectForKey, "$objects"_ns)) != nullptr;
}

/// Empty if the library reads the colour as it is written.
std::string insteadOfColor(NSObject* value, const settings::Key& key) {
  auto* string = objc::as<NSString>(value);
  Rgba color{};
  if (!readColor(send(string, NSString::UTF8String), color))
    return std::string("it counts as ") + key.fallback;
  return isColor(host::text(string)) || color.alpha < 1 ? "" : "its alpha counts as 1";
}

/// Empty if the library reads the value as it was meant.
std::string insteadOf(NSObject* value, const KeyForm& form) {
  if (form.kind == Kind::data)
    return isArchive(value) ? "" : "the icon's colour is looked for anew";
  if (!varnix::isReadable(value)) {
    if (form.isOwn) return std::string(form.plain->name) + " counts in its place";
    return form.plain == nullptr ? kAbsent : std::string("it counts as ") + form.plain->fallback;
  }
  switch (form.kind) {
    case Kind::boolean:
      if (isMeantAsBoolean(value)) return "";
      return boolOf(value) ? "it counts as true" : "it counts as false";
    case Kind::integer:
    case Kind::colorType:
      if (isMeantAsInteger(value)) return "";
      return "it counts as " + std::to_string(integerOf(value));
    case Kind::color:
      return insteadOfColor(value, *form.plain);
    case Kind::data:
      break;
  }
  return "";
}

std::vector<Finding> checkEntries(NSDictionary* stored) {
  std::vector<std::pair<std::string, NSObject*>> entries;
  NSArray* keys = send(stored, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
    auto* key = static_cast<NSString*>(send(keys, NSArray::objectAtIndex, i));
    entries.emplace_back(host::text(key), send(stored, NSDictionary::objectForKey, key));
  }
  std::sort(entries.begin(), entries.end());
  std::vector<Finding> findings;
  for (const auto& [key, value] : entries) {
    const auto form = formOf(key);
    if (!form) {
      const std::string hint = findings.size() < kMostHints ? nearestKeyHint(key) : "";
      findings.push_back({key, "no such setting" + hint, "it is ignored"});
    } else if (const std::string instead = insteadOf(value, *form); !instead.empty()) {
      findings.push_back(
          {key, shown(value) + " is not " + std::string(describe(form->kind)), instead});
    }
  }
  return findings;
}

/// Empty if it is a property list.
std::string whyUnreadable(const std::string& file) {
  const auto bytes = host::fileContents(file, host::kMaximumBytes);
  std::error_code ignored;
  if (!bytes && std::filesystem::is_regular_file(file, ignored) &&
      std::filesystem::file_size(file, ignored) > host::kMaximumBytes)
    return "larger than 16 MiB";
  if (!bytes) return "cannot be read";
  return bytes->empty() ? "empty" : "not a property list, or cut short";
}

}  // namespace

std::vector<Finding> checkSettings(const std::string& file) {
  const objc::AutoreleasePool pool;
  constexpr char kDefaults[] = "every setting has its default";
  std::error_code error;
  if (std::filesystem::symlink_status(file, error).type() == std::filesystem::file_type::not_found)
    return {};
  NSObject* stored = host::propertyListFromFile(file);
  if (stored == nullptr) return {{"", whyUnreadable(file), kDefaults}};
  if (auto* entries = objc::as<NSDictionary>(stored)) return checkEntries(entries);
  return {{"", shown(stored) + " is not a dictionary", kDefaults}};
}

std::string findingText(const Finding& finding) {
  const std::string text = finding.wrong + "; " + finding.instead;
  if (finding.key.empty()) return escaped(text);
  constexpr std::size_t kLongestKey = 300;
  const bool isLong = finding.key.size() > kLongestKey;
  return escaped((isLong ? finding.key.substr(0, kLongestKey) + "..." : finding.key) + ": " + text);
}

int printFindings(const std::vector<Finding>& findings) {
  for (const Finding& finding : findings) std::cout << findingText(finding) << '\n';
  return findings.empty() ? 0 : 1;
}

int printFindings(const std::string& file) {
  const TemporaryContainer container(kSettingsPath, file);
  return printFindings(checkSettings(container.root() + kSettingsPath));
}

void warnOfSettings(const std::string& file, const std::string& name) {
  const auto findings = checkSettings(file);
  const std::size_t count = std::min(findings.size(), kMostWarnings);
  for (std::size_t i = 0; i < count; ++i) warn(name + ": " + findingText(findings[i]));
  if (count < findings.size())
    warn(name + ": " + std::to_string(findings.size() - count) +
         " more, which varnix settings check lists");
}

}  // namespace varnix::cli
