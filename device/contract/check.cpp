#include "contract/check.h"

namespace varnix::device {
namespace {

class Judge {
 public:
  Judge(const Uses& uses, Width width, Facts& facts) : uses_(uses), width_(width), facts_(facts) {}

  Judged operator()(const Use& use) {
    Judged judged{use, use.owner, Origin::unknown, {}, {}};
    switch (use.kind) {
      case UseKind::message:
      case UseKind::hook:
        method(judged, use.owner);
        break;
      case UseKind::super:
        superMethod(judged);
        break;
      case UseKind::addition:
        addition(judged);
        break;
      case UseKind::lookUp:
        lookUp(judged);
        break;
      case UseKind::variable:
        variable(judged);
        break;
      case UseKind::symbol:
        symbol(judged);
        break;
      case UseKind::overriding:
        // Only overriding() makes these, and compares them itself.
        break;
    }
    return judged;
  }

  /// The methods of our own classes that the platform has too, and so may call.
  std::vector<Judged> overriding() {
    std::vector<Judged> all;
    for (const auto& [name, own] : uses_.own) {
      const std::string cls = platformClass(name);
      if (cls.empty()) continue;
      for (const auto& [method, types] : own.methods) {
        const MethodFact* fact = facts_.method(cls, method);
        if (fact == nullptr) continue;
        Use use{UseKind::overriding, name, method, types, false};
        all.push_back({std::move(use), cls, Origin::fact, {}, {}});
        compareWithFact(all.back(), cls, *fact);
      }
    }
    return all;
  }

 private:
  static void complain(Judged& judged, const std::string& what) {
    judged.complaints.push_back(judged.use.text() + ": " + what);
  }

  static std::string thing(const Use& use) {
    switch (use.kind) {
      case UseKind::lookUp:
      case UseKind::variable:
      case UseKind::symbol:
        return use.text();
      default:
        return "method " + use.subject();
    }
  }

  /// The class of the platform that one of ours derives from; empty if the list does not say.
  std::string platformClass(std::string cls) const {
    for (auto own = uses_.own.find(cls); own != uses_.own.end(); own = uses_.own.find(cls))
      cls = own->second.superclass;
    return cls;
  }

  /// Relies on the list by hand, or reports what is missing.
  void byHand(Judged& judged, const std::string& what) {
    if (const std::string* reason = facts_.byHand(thing(judged.use))) {
      judged.origin = Origin::hand;
      judged.source = *reason;
    } else {
      complain(judged, what);
    }
  }

  bool isKnownClass(const std::string& name) {
    if (uses_.own.contains(name)) return true;
    if (facts_.hasClass(name)) return facts_.tell("class " + name), true;
    return facts_.byHand("class " + name) != nullptr;
  }

  /// Whether our value may stand in for theirs.
  static bool fits(const Use& use, std::size_t place, const std::string& theirs,
                   const std::string& ours) {
    // A replacement may return a value where the original returns none: no caller looks at it.
    if (place == 0 && use.kind == UseKind::hook && theirs == "v" && ours == "@") return true;
    return travelAlike(theirs, ours);
  }

  void compare(Judged& judged, const std::vector<std::string>& theirs, const std::string& where) {
    const std::vector<std::string> ours = valuesOfEncoding(judged.use.types);
    if (ours.size() != theirs.size())
      return complain(judged, std::to_string(ours.size() - 1) + " arguments, not " +
                                  std::to_string(theirs.size() - 1) + " as " + where + " has it");
    for (std::size_t i = 0; i < ours.size(); ++i) {
      if (fits(judged.use, i, theirs[i], ours[i])) continue;
      const std::string place = i == 0 ? "result" : "argument " + std::to_string(i);
      complain(judged, place + " is " + inWords(ours[i]) + ", not " + inWords(theirs[i]) + " as " +
                           where + " has it");
    }
  }

  void compareWithOwn(Judged& judged, Origin origin, const std::string& types,
                      const std::string& where) {
    judged.origin = origin;
    compare(judged, valuesOfEncoding(types), where);
  }

  void compareWithFact(Judged& judged, const std::string& cls, const MethodFact& fact) {
    judged.origin = Origin::fact;
    judged.source = fact.framework;
    if (fact.declaredBy != cls) judged.source += ", of " + fact.declaredBy;
    const std::vector<std::string> ours = valuesOfEncoding(judged.use.types);
    std::vector<std::string> theirs = valuesOfFact(fact.types);
    for (std::size_t i = 0; i < theirs.size(); ++i) {
      const std::string wide = widened(theirs[i], width_);
      // Values that really are an int or a float are listed by hand, since the facts do not tell.
      const bool staysNarrow = wide != theirs[i] && i < ours.size() && ours[i] == theirs[i] &&
                               facts_.byHand("narrow " + judged.use.subject()) != nullptr;
      if (!staysNarrow) theirs[i] = wide;
    }
    compare(judged, theirs, "the platform");
  }

  /// A method that we add to a class of the platform, or to one that this derives from.
  const Use* added(const std::string& cls, const std::string& name) {
    for (const Use& use : uses_.all)
      if (use.kind == UseKind::addition && use.name == name && facts_.derives(cls, use.owner))
        return &use;
    return nullptr;
  }

  void method(Judged& judged, std::string cls) {
    const std::string& name = judged.use.name;
    for (auto own = uses_.own.find(cls); own != uses_.own.end(); own = uses_.own.find(cls)) {
      const auto found = own->second.methods.find(name);
      if (found != own->second.methods.end())
        return compareWithOwn(judged, Origin::own, found->second, "our own class");
      cls = own->second.superclass;
      if (cls.empty()) return complain(judged, "our own class has no such method");
    }
    judged.cls = cls;
    if (!isKnownClass(cls)) return complain(judged, "no class " + cls + " is known");
    if (const MethodFact* fact = facts_.method(cls, name)) {
      facts_.tell(thing(judged.use));
      return compareWithFact(judged, cls, *fact);
    }
    if (const Use* ours = added(cls, name))
      return compareWithOwn(judged, Origin::added, ours->types, "our own addition");
    byHand(judged, "the platform has no such method");
  }

  void superMethod(Judged& judged) {
    const auto own = uses_.own.find(judged.use.owner);
    if (own == uses_.own.end() || own->second.superclass.empty())
      return complain(judged, "its superclass is not known");
    method(judged, own->second.superclass);
  }

  void addition(Judged& judged) {
    judged.origin = Origin::added;
    const Use& use = judged.use;
    if (!isKnownClass(use.owner)) complain(judged, "no class " + use.owner + " is known");
    if (facts_.method(use.owner, use.name) != nullptr)
      complain(judged, "the platform has one, and ours would not be added");
  }

  void lookUp(Judged& judged) {
    const std::string& name = judged.use.owner;
    if (uses_.own.contains(name)) {
      judged.origin = Origin::own;
    } else if (facts_.hasClass(name)) {
      facts_.tell(thing(judged.use));
      judged.origin = Origin::fact;
      judged.source = facts_.frameworkOf(name);
    } else {
      byHand(judged, "no such class is known");
    }
  }

  void variable(Judged& judged) {
    const Use& use = judged.use;
    const std::string* held = facts_.variable(use.owner, use.name);
    if (held == nullptr) return byHand(judged, "the class has no such variable");
    facts_.tell(thing(use));
    judged.origin = Origin::fact;
    judged.source = "holds " + *held;
    if (!facts_.derives(*held, use.types))
      complain(judged, "holds " + *held + ", which is not known to be a " + use.types);
  }

  void symbol(Judged& judged) {
    const Use& use = judged.use;
    const ExportFact* fact = facts_.exported(use.name);
    if (fact == nullptr) return byHand(judged, "no library is known to have it");
    if (fact->library != use.owner)
      complain(judged, "bound to " + use.owner + ", but " + fact->library + " has it");
    if (!fact->isKnown()) return byHand(judged, "SDK 9.3 does not tell whether it is there");
    facts_.tell(thing(use));
    judged.origin = Origin::fact;
    judged.source = fact->library;
  }

  const Uses& uses_;
  const Width width_;
  Facts& facts_;
};

}  // namespace

std::vector<Judged> judge(const Uses& uses, Width width, Facts& facts) {
  Judge judge(uses, width, facts);
  std::vector<Judged> all;
  for (const Use& use : uses.all) all.push_back(judge(use));
  for (Judged& each : judge.overriding()) all.push_back(std::move(each));
  return all;
}

}  // namespace varnix::device
