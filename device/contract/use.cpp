#include "contract/use.h"

#include <array>
#include <sstream>
#include <string_view>

#include "contract/types.h"
#include "macho/error.h"

namespace varnix::device {
namespace {

using Words = std::vector<std::string>;

struct Kind {
  std::string_view word;
  UseKind kind;
};
constexpr std::array kKinds{
    Kind{"message", UseKind::message}, Kind{"hook", UseKind::hook},
    Kind{"add", UseKind::addition},    Kind{"super", UseKind::super},
    Kind{"class", UseKind::lookUp},    Kind{"variable", UseKind::variable},
    Kind{"symbol", UseKind::symbol},   Kind{"override", UseKind::overriding}};

Words split(const std::string& line) {
  std::istringstream in(line);
  Words words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

bool isSign(const std::string& word) { return word == "-" || word == "+"; }

Use method(UseKind kind, const std::string& owner, const std::string& name,
           const std::string& types) {
  static_cast<void>(valuesOfEncoding(types));  // throws if they cannot be read
  return {kind, owner, name, types, false};
}

bool readOwn(const Words& words, Uses& into) {
  if (words.size() == 3 && words[1] == "class") {
    into.own[words[2]];
  } else if (words.size() == 4 && words[1] == "superclass") {
    into.own[words[2]].superclass = words[3];
  } else if (words.size() == 5 && words[1] == "class") {
    into.own[words[2]].methods[words[3]] = words[4];
  } else {
    return false;
  }
  return true;
}

bool readLine(const Words& words, Uses& into) {
  if (words[0] == "own") return readOwn(words, into);
  for (const Kind& known : kKinds) {
    if (known.word != words[0]) continue;
    switch (known.kind) {
      case UseKind::message:
      case UseKind::hook:
      case UseKind::addition:
        if (words.size() != 5 || !isSign(words[1])) return false;
        into.all.push_back(method(known.kind, words[2], words[1] + words[3], words[4]));
        return true;
      case UseKind::super:
        if (words.size() != 4) return false;
        into.all.push_back(method(known.kind, words[1], "-" + words[2], words[3]));
        return true;
      case UseKind::lookUp:
        if (words.size() != 2) return false;
        into.all.push_back({known.kind, words[1], {}, {}, false});
        return true;
      case UseKind::variable:
        if (words.size() != 4) return false;
        into.all.push_back({known.kind, words[1], words[2], words[3], false});
        return true;
      case UseKind::symbol: {
        const bool isWeak = words.size() == 4 && words[3] == "(weak_import)";
        if (words.size() != 3 && !isWeak) return false;
        into.all.push_back({known.kind, words[1], words[2], {}, isWeak});
        return true;
      }
      case UseKind::overriding:
        // No line says it: our own classes' methods do.
        return false;
    }
  }
  return false;
}

}  // namespace

std::string Use::subject() const {
  switch (kind) {
    case UseKind::lookUp:
      return owner;
    case UseKind::symbol:
      return name;
    case UseKind::variable:
      return owner + "." + name;
    default:
      return name.substr(0, 1) + "[" + owner + " " + name.substr(1) + "]";
  }
}

std::string Use::text() const {
  for (const Kind& known : kKinds)
    if (known.kind == kind) return std::string(known.word) + " " + subject();
  return subject();
}

Uses readUses(const std::string& text) {
  Uses uses;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    if (!readLine(split(line), uses)) throw Error("a line that cannot be read: " + line);
  }
  return uses;
}

}  // namespace varnix::device
