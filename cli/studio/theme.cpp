#include "studio/theme.h"

#include <filesystem>
#include <utility>

#include "common/errors.h"
#include "common/json.h"
#include "settings/bytes.h"
#include "settings/file.h"

namespace varnix::cli {

namespace {

constexpr char kByFile[] = "file";

Values firstValues(const std::optional<std::string>& file) {
  return file ? valuesOf(settingsIn(*file)) : Values{};
}

/// The keys that both sides changed, differently.
std::vector<std::string> disputed(const Values& base, const Values& ours, const Values& theirs) {
  std::vector<std::string> keys;
  for (const std::string& key : differences(base, theirs)) {
    Values our, their, was;
    take(our, ours, key);
    take(their, theirs, key);
    take(was, base, key);
    if (!areSame(our, was) && !areSame(our, their)) keys.push_back(key);
  }
  return keys;
}

}  // namespace

Theme::Theme(std::optional<std::string> file)
    : file_(std::move(file)), history_(firstValues(file_)), stored_(history_.values()) {
  if (!file_) return;
  const auto folder = std::filesystem::absolute(*file_).parent_path();
  std::error_code ignored;
  if (!std::filesystem::is_directory(folder, ignored))
    throw Failure("no such folder", folder.string());
}

Json Theme::json() const {
  Json labels = Json::array();
  for (const auto& entry : history_.entries()) labels.push_back(entry.label);
  Json conflict;
  if (conflict_) {
    conflict = Json::array();
    for (const std::string& key : disputed(*stored_, values(), *conflict_)) {
      conflict.push_back({{"key", key},
                          {"ours", valueJson(values(), key)},
                          {"theirs", valueJson(*conflict_, key)}});
    }
  }
  return {{"version", version_},
          {"revision", revision_},
          {"file", file_ ? Json(std::filesystem::path(*file_).filename().string()) : Json()},
          {"isSaved", isSaved()},
          {"values", valuesJson(values())},
          {"history", labels},
          {"position", history_.position()},
          {"conflict", conflict},
          {"problem", problem_}};
}

std::string Theme::bytes() const {
  auto bytes = settingsBytes(dictionaryOf(values()));
  if (!bytes) throw Failure("cannot be written", "settings that no property list can hold");
  return *std::move(bytes);
}

void Theme::show(History::Entry entry, const std::string& by) {
  const auto keys = differences(values(), entry.values);
  if (keys.empty()) return;
  ++revision_;
  ++version_;
  for (const std::string& key : keys) origins_[key] = {revision_, by};
  history_.add(std::move(entry));
}

bool Theme::change(const Change& change) {
  auto isOthers = [&](const std::string& key) {
    const auto origin = origins_.find(key);
    return origin != origins_.end() && origin->second.revision > change.base &&
           origin->second.by != change.page;
  };
  Values next = values();
  for (const auto& [key, value] : change.set) {
    if (isOthers(key)) return false;
    next[key] = value;
  }
  for (const std::string& key : change.removed) {
    if (isOthers(key)) return false;
    next.erase(key);
  }
  show({change.label, change.group, std::move(next), history_.pictures()}, change.page);
  return true;
}

bool Theme::goTo(std::size_t position) {
  const Values before = values();
  if (!history_.goTo(position)) return false;
  ++revision_;
  ++version_;
  for (const std::string& key : differences(before, values())) origins_[key] = {revision_, ""};
  return true;
}

void Theme::changePictures(const std::string& label, PictureNames pictures) {
  ++revision_;
  ++version_;
  if (pictures != history_.pictures()) history_.add({label, "", values(), std::move(pictures)});
}

const Values* Theme::valuesAt(std::size_t position) const {
  const auto& entries = history_.entries();
  return position < entries.size() ? &entries[position].values : nullptr;
}

const PictureNames* Theme::picturesAt(std::size_t position) const {
  const auto& entries = history_.entries();
  return position < entries.size() ? &entries[position].pictures : nullptr;
}

void Theme::noteProblem(const std::string& problem) {
  if (problem_ == problem) return;
  problem_ = problem;
  ++version_;
}

void Theme::merge(const Values& theirs) {
  if (!disputed(*stored_, values(), theirs).empty()) {
    if (conflict_ && areSame(*conflict_, theirs)) return;
    conflict_ = theirs;
    ++version_;
    return;
  }
  Values merged = values();
  for (const std::string& key : differences(*stored_, theirs)) take(merged, theirs, key);
  if (conflict_) ++version_;
  conflict_.reset();
  stored_ = theirs;
  show({kByFile, "", std::move(merged), history_.pictures()}, kByFile);
}

void Theme::look() {
  if (!file_) return;
  std::error_code ignored;
  // A file that was removed comes back with the next change.
  if (!std::filesystem::exists(*file_, ignored)) return;
  try {
    const Values theirs = valuesOf(settingsIn(*file_));
    if (std::exchange(isUnreadable_, false)) noteProblem("");
    if (!areSame(theirs, *stored_)) merge(theirs);
  } catch (const Failure& failure) {
    isUnreadable_ = true;
    noteProblem(failure.what());
  }
}

bool Theme::isSaved() const { return !file_ || areSame(*stored_, values()); }

void Theme::save() {
  // What cannot be read is left to those who wrote it.
  if (isSaved() || conflict_ || isUnreadable_) return;
  bool isOthers = false;
  try {
    update(*file_, [&](NSDictionary* stored) -> NSDictionary* {
      isOthers = stored != nullptr && !areSame(valuesOf(stored), *stored_);
      return isOthers ? nullptr : dictionaryOf(values());
    });
    if (isOthers) return look();
    stored_ = values();
    ++version_;
    problem_.clear();
  } catch (const std::exception& error) {
    noteProblem(error.what());
    look();
  }
}

void Theme::settle(bool keepsTheme) {
  if (!conflict_) return;
  const Values theirs = *std::exchange(conflict_, std::nullopt);
  ++version_;
  Values next = values();
  for (const std::string& key : differences(*stored_, theirs)) take(next, theirs, key);
  if (keepsTheme) {
    for (const std::string& key : disputed(*stored_, values(), theirs)) take(next, values(), key);
  }
  stored_ = theirs;
  show({kByFile, "", std::move(next), history_.pictures()}, kByFile);
}

}  // namespace varnix::cli
