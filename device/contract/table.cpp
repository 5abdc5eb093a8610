#include "contract/table.h"

#include <array>
#include <initializer_list>
#include <map>
#include <set>

namespace varnix::device {
namespace {

/// A line of a class's table: a member, with its types on both widths.
struct Line {
  std::set<std::string> narrow, wide, uses;
  std::string source;
};
using Lines = std::map<std::string, Line>;

struct Symbol {
  std::string library;
  std::string reason;  ///< Why it is listed by hand; empty if the SDKs have it.
  bool isWeak = false;
  std::set<Width> widths;
};

struct Contract {
  std::map<std::string, Lines> classes;
  std::map<std::string, Symbol> symbols;
};

std::string usedAs(UseKind kind) {
  switch (kind) {
    case UseKind::message:
      return "sent";
    case UseKind::hook:
      return "replaced";
    case UseKind::addition:
      return "added";
    case UseKind::super:
      return "sent to super";
    case UseKind::lookUp:
      return "looked up";
    case UseKind::overriding:
      return "overridden";
    default:
      return "read";
  }
}

std::string sourceOf(const Judged& judged) {
  switch (judged.origin) {
    case Origin::fact:
      return judged.source.empty() ? "iOS 9.0.2" : "iOS 9.0.2: " + judged.source;
    case Origin::hand:
      return "by hand: " + judged.source;
    case Origin::added:
      return "ours";
    default:
      return "not known";
  }
}

/// Sorts before all members.
const std::string kTheClass;

std::string memberOf(const Use& use) {
  if (use.kind == UseKind::lookUp) return kTheClass;
  if (use.kind == UseKind::variable) return "`" + use.name + "`, a variable";
  return "`" + use.name + "`";
}

std::string typesOf(const Use& use) {
  if (use.kind == UseKind::lookUp) return "";
  return use.kind == UseKind::variable ? use.types : methodInWords(use.types);
}

void collect(const std::vector<Judged>& all, Width width, Contract& into) {
  for (const Judged& judged : all) {
    const Use& use = judged.use;
    if (judged.origin == Origin::own) continue;
    if (use.kind == UseKind::symbol) {
      Symbol& symbol = into.symbols[use.name];
      symbol.library = use.owner;
      symbol.isWeak |= use.isWeak;
      symbol.reason = judged.origin == Origin::hand ? judged.source : "";
      symbol.widths.insert(width);
    } else {
      Line& line = into.classes[judged.cls][memberOf(use)];
      (width == Width::narrow ? line.narrow : line.wide).insert(typesOf(use));
      line.uses.insert(usedAs(use.kind));
      line.source = sourceOf(judged);
    }
  }
}

std::string joined(const std::set<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return all;
}

std::string row(std::initializer_list<std::string> cells) {
  std::string text = "|";
  for (const std::string& cell : cells) text += cell.empty() ? " |" : " " + cell + " |";
  return text + "\n";
}

std::string head(std::initializer_list<std::string> titles) {
  std::string text = row(titles) + "|";
  for (std::size_t i = 0; i < titles.size(); ++i) text += " --- |";
  return text + "\n";
}

std::string classTable(const std::string& name, const Lines& lines) {
  std::string text = "\n### " + name + "\n\n" +
                     head({"member", "32 bits", "64 bits", "how it is used", "known from"});
  for (const auto& [member, line] : lines) {
    const bool isSame = line.narrow == line.wide;
    text +=
        row({member == kTheClass ? "the class" : member, joined(line.narrow),
             isSame && line.narrow != std::set<std::string>{""} ? "the same" : joined(line.wide),
             joined(line.uses), line.source});
  }
  return text;
}

constexpr std::array kSystems{"9.3", "10.3", "11.4"};

/// What each SDK says of the symbols as a whole.
std::string systemTable(const std::map<std::string, Symbol>& symbols, const Facts& facts) {
  std::string text = "\n## Systems\n\n" + head({"SDK", "has", "does not tell of"});
  for (std::size_t system = 0; system < kSystems.size(); ++system) {
    std::set<std::string> unknown;
    for (const auto& each : symbols) {
      const ExportFact* fact = facts.exported(each.first);
      if (fact == nullptr || fact->systems[system] == "?") unknown.insert("`" + each.first + "`");
    }
    text += row({kSystems[system],
                 std::to_string(symbols.size() - unknown.size()) + " of " +
                     std::to_string(symbols.size()) + " symbols",
                 joined(unknown)});
  }
  return text;
}

std::string nameOf(const Symbol& symbol, const std::string& name) {
  std::string text = "`" + name + "`";
  if (symbol.isWeak) text += ", weakly";
  if (symbol.widths.size() == 1)
    text += symbol.widths.contains(Width::narrow) ? ", armv7 alone" : ", arm64 alone";
  return text;
}

std::string symbolTable(const std::map<std::string, Symbol>& symbols, const Facts& facts) {
  std::map<std::string, std::string> ofLibraries;
  for (const auto& [name, symbol] : symbols) {
    const ExportFact* fact = facts.exported(name);
    const auto in = [&](std::size_t system) {
      return fact == nullptr ? std::string("?") : fact->systems[system];
    };
    ofLibraries[symbol.library] +=
        row({nameOf(symbol, name), in(0), in(1), in(2),
             symbol.reason.empty() ? "SDKs" : "by hand: " + symbol.reason});
  }
  std::string text;
  for (const auto& [library, rows] : ofLibraries)
    text += "\n### Of " + library + "\n\n" +
            head({"symbol", "SDK 9.3", "SDK 10.3", "SDK 11.4", "known from"}) + rows;
  return text;
}

}  // namespace

std::string contractTable(const std::vector<Judged>& narrow, const std::vector<Judged>& wide,
                          const Facts& facts) {
  Contract contract;
  collect(narrow, Width::narrow, contract);
  collect(wide, Width::wide, contract);
  std::string text = systemTable(contract.symbols, facts) + "\n## Classes\n";
  for (const auto& [name, lines] : contract.classes) text += classTable(name, lines);
  return text + "\n## Functions, constants and classes that are linked\n" +
         symbolTable(contract.symbols, facts);
}

}  // namespace varnix::device
