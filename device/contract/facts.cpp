#include "contract/facts.h"

#include <string_view>

#include "contract/table_file.h"
#include "contract/types.h"
#include "macho/error.h"

namespace varnix::device {
namespace {

constexpr const char* kRoot = "NSObject";
constexpr std::string_view kClassSymbol = "_OBJC_CLASS_$_";
constexpr std::string_view kSuperclass = "superclass ";

template <class T>
const T* found(const std::map<std::string, T>& all, const std::string& key) {
  const auto at = all.find(key);
  return at == all.end() ? nullptr : &at->second;
}

}  // namespace

Facts::Facts(const std::string& folder, const std::string& list) : listPath_(list) {
  const std::string methods = folder + "/methods.tsv";
  for (const Row& row : readRows(methods, 6)) {
    const std::string& cls = row.fields[0];
    const std::string& types = row.fields[3];
    const std::string& declaredBy = row.fields[4];
    try {
      static_cast<void>(valuesOfFact(types));
    } catch (const Error& error) {
      throw Error(methods + ":" + std::to_string(row.line) + ": " + error.what());
    }
    methods_[cls][row.fields[1] + row.fields[2]] = {types, declaredBy, row.fields[5]};
    classes_[declaredBy] = row.fields[5];
    classes_[cls];
    if (cls != declaredBy) superclasses_[cls].insert(declaredBy);
  }
  for (const Row& row : readRows(folder + "/variables.tsv", 3)) {
    classes_[row.fields[0]];
    variables_[row.fields[0] + "." + row.fields[1]] = row.fields[2];
  }
  for (const Row& row : readRows(folder + "/exports.tsv", 5)) {
    exports_[row.fields[0]] = {row.fields[1], {row.fields[2], row.fields[3], row.fields[4]}};
    if (row.fields[0].starts_with(kClassSymbol))
      classes_[row.fields[0].substr(kClassSymbol.size())];
  }
  for (const Row& row : readRows(list, 2)) {
    const std::string& thing = row.fields[0];
    const std::string place = list + ":" + std::to_string(row.line) + ": ";
    if (!hand_.emplace(thing, HandLine{row.line, row.fields[1]}).second)
      throw Error(place + "a second line for " + thing);
    if (!thing.starts_with(kSuperclass)) continue;
    const std::size_t space = thing.find(' ', kSuperclass.size());
    if (space == thing.npos) throw Error(place + "not \"superclass CLASS SUPERCLASS\"");
    superclassesByHand_[thing.substr(kSuperclass.size(), space - kSuperclass.size())].insert(
        thing.substr(space + 1));
  }
  for (const auto& [cls, each] : superclasses_)
    for (const std::string& super : each) tell(std::string(kSuperclass) + cls + " " + super);
}

bool Facts::hasClass(const std::string& name) const { return classes_.contains(name); }

std::string Facts::frameworkOf(const std::string& cls) const { return classes_.at(cls); }

template <class Ask>
bool Facts::climb(const std::string& cls, const Ask& ask, std::set<std::string>& seen) {
  if (!seen.insert(cls).second) return false;
  if (ask(cls)) return true;
  for (const std::string& super : superclasses_[cls])
    if (climb(super, ask, seen)) return true;
  for (const std::string& super : superclassesByHand_[cls]) {
    if (!climb(super, ask, seen)) continue;
    hand_.at(std::string(kSuperclass) + cls + " " + super).isUsed = true;
    return true;
  }
  return false;
}

const MethodFact* Facts::method(const std::string& cls, const std::string& name) {
  const MethodFact* method = nullptr;
  const auto ask = [&](const std::string& each) {
    const auto* ofClass = found(methods_, each);
    method = ofClass == nullptr ? nullptr : found(*ofClass, name);
    return method != nullptr;
  };
  std::set<std::string> seen;
  if (!climb(cls, ask, seen)) climb(kRoot, ask, seen);
  return method;
}

bool Facts::derives(const std::string& cls, const std::string& from) {
  std::set<std::string> seen;
  return from == kRoot || climb(cls, [&](const std::string& each) { return each == from; }, seen);
}

const std::string* Facts::variable(const std::string& cls, const std::string& name) const {
  return found(variables_, cls + "." + name);
}

const ExportFact* Facts::exported(const std::string& symbol) const {
  return found(exports_, symbol);
}

const std::string* Facts::byHand(const std::string& thing) {
  const auto at = hand_.find(thing);
  if (at == hand_.end()) return nullptr;
  at->second.isUsed = true;
  return &at->second.reason;
}

void Facts::tell(const std::string& thing) {
  const auto at = hand_.find(thing);
  if (at != hand_.end()) at->second.isKnown = true;
}

std::vector<std::string> Facts::stale() const {
  std::vector<std::string> all;
  for (const auto& [thing, line] : hand_) {
    const std::string place = listPath_ + ":" + std::to_string(line.line) + ": " + thing;
    if (line.isKnown) all.push_back(place + ": the facts tell it");
    else if (!line.isUsed) all.push_back(place + ": nothing uses it");
  }
  return all;
}

}  // namespace varnix::device
