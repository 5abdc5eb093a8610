// What is known of the platform: the tables in facts/, and the list by hand.
#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace varnix::device {

struct MethodFact {
  std::string types, declaredBy, framework;
};

/// The systems whose SDKs say what they export: 9.3, 10.3 and 11.4.
struct ExportFact {
  std::string library;
  std::array<std::string, 3> systems;
  bool isKnown() const { return systems[0] != "?"; }
};

/// A line of the list of what the facts do not cover.
struct HandLine {
  std::size_t line = 0;
  std::string reason;
  bool isUsed = false;
  bool isKnown = false;  ///< The facts cover it after all.
};

class Facts {
 public:
  /// Reads methods.tsv, variables.tsv and exports.tsv of the folder, and the list by hand. Throws
  /// Error if one cannot be read.
  Facts(const std::string& folder, const std::string& list);

  bool hasClass(const std::string& name) const;
  /// Of a known class; empty if the facts do not say.
  std::string frameworkOf(const std::string& cls) const;
  /// In that class, or in one that it derives from. The name has the form "-init". Null if there is
  /// none.
  const MethodFact* method(const std::string& cls, const std::string& name);
  /// The class of the variable's object; null if the class has no variable of that name.
  const std::string* variable(const std::string& cls, const std::string& name) const;
  const ExportFact* exported(const std::string& symbol) const;
  /// Whether it is the class itself or derives from it, as far as is known.
  bool derives(const std::string& cls, const std::string& from);

  /// Why something is listed by hand, such as "method -[A b]"; null if it is not. Only for what the
  /// facts do not cover.
  const std::string* byHand(const std::string& thing);
  /// Notes that the facts cover it, so that it need not be listed.
  void tell(const std::string& thing);
  /// Lines by hand that nothing uses, or that the facts cover.
  std::vector<std::string> stale() const;

 private:
  /// Asks the class, then those that it derives from, until one matches.
  template <class Ask>
  bool climb(const std::string& cls, const Ask& ask, std::set<std::string>& seen);

  std::map<std::string, std::map<std::string, MethodFact>> methods_;
  std::map<std::string, std::string> variables_;  ///< By "class.name".
  std::map<std::string, ExportFact> exports_;
  std::map<std::string, std::string> classes_;  ///< Their frameworks.
  std::map<std::string, std::set<std::string>> superclasses_;
  std::string listPath_;
  std::map<std::string, HandLine> hand_;
  std::map<std::string, std::set<std::string>> superclassesByHand_;
};

}  // namespace varnix::device
