#include "theme/theme_file.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <utility>
#include <vector>

#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/joined.h"
#include "common/output_file.h"
#include "common/temporary_container.h"
#include "common/waiting.h"
#include "common/warning.h"
#include "pane/settings/kinds.h"
#include "settings/bytes.h"
#include "settings/check.h"
#include "settings/file.h"

namespace varnix::cli {

namespace {

constexpr char kInput[] = "standard input";

NSDictionary* dictionaryIn(const std::string& file, const std::string& name) {
  if (auto* theme = objc::as<NSDictionary>(host::propertyListFromFile(file))) return theme;
  throw Failure("no settings can be read from", name + ": " + checkSettings(file).front().wrong);
}

/// As much as a settings file may have, and one byte more.
std::string wholeInput() {
  std::string all;
  std::vector<char> block(1 << 16);
  while (all.size() <= host::kMaximumBytes) {
    awaitReadable(STDIN_FILENO, {});
    const ssize_t length = read(STDIN_FILENO, block.data(), block.size());
    if (length < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (length < 0) throw Failure("cannot read", std::string(kInput) + ": " + std::strerror(errno));
    if (length == 0) break;
    all.append(block.data(), static_cast<std::size_t>(length));
  }
  return all;
}

/// One line, whatever the file holds.
void warnOfOmitted(NSDictionary* theme, NSDictionary* known, const std::string& name) {
  constexpr std::size_t kMostNames = 5, kLongestName = 100;
  std::vector<std::string> names;
  pane::eachKey(theme, [&](NSString* key) {
    const std::string text(host::text(key));
    if (send(known, NSDictionary::objectForKey, key) != nullptr) return;
    if (cli::kindOf(text) != settings::Kind::data) names.push_back(text.substr(0, kLongestName));
  });
  if (names.empty()) return;
  std::sort(names.begin(), names.end());
  const std::size_t more = names.size() - std::min(names.size(), kMostNames);
  names.resize(names.size() - more);
  if (more > 0) names.push_back(std::to_string(more) + " more");
  warn(name + ": left out, since the pane would not take it: " + joined(names, ", "));
}

}  // namespace

NSDictionary* themeIn(const std::string& file) {
  const TemporaryContainer copy(kSettingsPath, file);
  return dictionaryIn(copy.root() + kSettingsPath, file);
}

NSDictionary* themeInInput() {
  const TemporaryContainer container;
  const std::string copy = container.root() + "/input";
  if (!host::writeFile(copy, wholeInput(), false)) throw Failure("cannot write", copy);
  return dictionaryIn(copy, kInput);
}

NSDictionary* settingsOf(NSDictionary* theme, const std::string& name) {
  NSDictionary* known = pane::knownEntries(theme);
  if (send(known, NSDictionary::count) == 0) throw Failure("no setting in", name);
  warnOfOmitted(theme, known, name);
  return known;
}

std::string themeText(NSDictionary* theme, const std::string& name) {
  auto bytes = settingsBytes(theme);
  // The other form is for text that XML would change.
  if (!bytes || !bytes->starts_with("<?xml"))
    throw Failure("a value cannot be written as text", name);
  return std::move(*bytes);
}

void writeTheme(NSDictionary* theme, const std::optional<std::string>& file) {
  const std::string text = themeText(theme, file.value_or("standard output"));
  if (file) writeOutput(*file, text);
  else std::cout << text;
}

}  // namespace varnix::cli
