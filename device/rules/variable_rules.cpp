// Instance variables and properties.
#include <algorithm>
#include <cctype>
#include <optional>

#include "macho/error.h"
#include "macho/type.h"
#include "rules/class_data.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

constexpr uint32_t kLargestAlignment = 4, kNobodysAlignment = ~0u;

/// A variable with its class, and where the one before it ends.
struct PlacedVariable {
  VariableEntry it;
  const ClassHalf* owner = nullptr;
  uint64_t before = 0;
};

std::string labelOf(const PlacedVariable& placed) { return labelOf(placed.it); }

struct OwnedProperty {
  PropertyEntry it;
  const ClassHalf* owner = nullptr;
};

std::string labelOf(const OwnedProperty& owned) { return labelOf(owned.it); }

std::vector<const ClassHalf*> owners(const ClassData& data) {
  std::vector<const ClassHalf*> result;
  for (const ClassEntry& entry : data.classes)
    if (entry.half && entry.half->hasData) result.push_back(&*entry.half);
  return result;
}

std::vector<PlacedVariable> variablesOf(const ClassData& data) {
  std::vector<PlacedVariable> result;
  for (const ClassHalf* owner : owners(data)) {
    uint64_t before = owner->start;
    for (const VariableEntry& it : owner->variables) {
      result.push_back({it, owner, before});
      if (it.value) before = uint64_t{*it.value} + it.size;
    }
  }
  return result;
}

std::vector<OwnedProperty> propertiesOf(const ClassData& data) {
  std::vector<OwnedProperty> result;
  for (const ClassHalf* owner : owners(data))
    for (const PropertyEntry& it : owner->properties) result.push_back({it, owner});
  return result;
}

void offsetsDiffer(const ClassData& data, const Say& say) {
  for (const ClassHalf* owner : owners(data)) {
    std::set<uint64_t> seen;
    for (const VariableEntry& it : owner->variables) {
      const bool isFixed = data.fixups->isRebased(it.offset.target) ||
                           data.fixups->bound(it.offset.target) != nullptr;
      if (!it.value || isFixed || !seen.insert(it.offset.target).second)
        say(labelOf(it) + ": no word of its own at " + hex(it.offset.target));
    }
  }
}

/// The variables fill the instance one after another, up to its end.
void filled(const ClassData& data, const Say& say) {
  for (const PlacedVariable& placed : variablesOf(data)) {
    if (!placed.it.value) continue;
    const uint64_t start = *placed.it.value, alignment = placed.it.alignment(data.pointerSize());
    if (start < placed.before || start - placed.before >= alignment)
      say(labelOf(placed) + ": at " + std::to_string(start) + ", the one before ends at " +
          std::to_string(placed.before));
  }
  for (const ClassHalf* owner : owners(data)) {
    uint64_t end = owner->start;
    for (const VariableEntry& it : owner->variables)
      if (it.value) end = uint64_t{*it.value} + it.size;
    if (end != owner->size)
      say(labelOf(*owner) + ": variables end at " + std::to_string(end) + ", instances at " +
          std::to_string(owner->size));
  }
}

std::string offsetFits(const ClassData& data, const PlacedVariable& placed) {
  if (!placed.it.value) return {};
  const uint64_t start = *placed.it.value;
  uint64_t alignment = placed.it.alignment(data.pointerSize());
  // On 32 bits, numbers of 64 bits are where words may be.
  if (data.pointerSize() == 4 && alignment == 8) alignment = 4;
  return unless(start >= placed.owner->start && start + placed.it.size <= placed.owner->size &&
                    start % alignment == 0,
                std::to_string(start) + " and " + std::to_string(placed.it.size) + " bytes");
}

std::string typeFits(const ClassData& data, const PlacedVariable& placed) {
  const VariableEntry& it = placed.it;
  if (!it.name.wrong.empty()) return it.name.wrong;
  if (!it.type.wrong.empty()) return it.type.wrong;
  const auto isSame = [&](const VariableEntry& other) { return other.name.text == it.name.text; };
  if (it.name.text.empty() || std::ranges::count_if(placed.owner->variables, isSame) != 1)
    return "no name of its own";
  Encoding encoding(it.type.text, static_cast<uint32_t>(data.pointerSize()));
  Type type;
  try {
    type = encoding.nextVariable();
  } catch (const Error&) {
  }
  // A bit field shares its bytes with its neighbours.
  if (type.scalar == 'b' && encoding.atEnd()) return {};
  if (type.size == 0 || !encoding.atEnd()) return printable(it.type.text) + " is not a type";
  // On 32 bits, structures have no gaps before numbers of 64 bits.
  if (data.pointerSize() == 4 && type.isStructure && type.alignment > 4) {
    type.size = static_cast<uint32_t>(4 * type.words.size());
    type.alignment = 4;
  }
  return unless(type.size == it.size && type.alignment == it.alignment(data.pointerSize()),
                printable(it.type.text) + " of " + std::to_string(it.size) + " bytes, aligned to " +
                    std::to_string(it.alignment(data.pointerSize())));
}

std::vector<std::string_view> parts(std::string_view attributes) {
  std::vector<std::string_view> result;
  for (size_t comma = 0; comma != std::string_view::npos;) {
    comma = attributes.find(',');
    result.push_back(attributes.substr(0, comma));
    if (comma != std::string_view::npos) attributes.remove_prefix(comma + 1);
  }
  return result;
}

std::string attributesFit(const ClassData& data, const OwnedProperty& owned) {
  for (const ClassText& text : {owned.it.name, owned.it.attributes})
    if (!text.wrong.empty()) return text.wrong;
  const auto each = parts(owned.it.attributes.text);
  const auto types =
      each[0].starts_with('T') ? splitTypes(each[0].substr(1), data.pointerSize()) : std::nullopt;
  const bool isKnown = std::all_of(each.begin() + 1, each.end(), [](std::string_view part) {
    constexpr std::string_view kinds = "RC&NWDVGS";
    return !part.empty() && kinds.find(part[0]) != std::string_view::npos;
  });
  const bool endsWithVariable =
      std::none_of(each.begin() + 1, each.end() - 1,
                   [](std::string_view part) { return part.starts_with('V'); });
  return unless(types && types->size() == 1 && isKnown && endsWithVariable,
                printable(owned.it.attributes.text));
}

/// What follows the letter in the attributes; nothing if the letter is not there.
std::optional<std::string> attribute(const OwnedProperty& owned, char letter) {
  for (const std::string_view part : parts(owned.it.attributes.text))
    if (part.starts_with(letter)) return std::string(part.substr(1));
  return {};
}

std::string accessorsAreThere(const ClassData&, const OwnedProperty& owned) {
  const std::string name(owned.it.name.text);
  if (name.empty()) return "no name";
  // Those of a property without a variable may be a superclass's: a protocol can ask for it.
  if (attribute(owned, 'D') || !attribute(owned, 'V')) return {};
  const std::string setter =
      "set" + std::string(1, static_cast<char>(std::toupper(name[0]))) + name.substr(1) + ":";
  return unless(
      owned.owner->has(attribute(owned, 'G').value_or(name)) &&
          (attribute(owned, 'R') || owned.owner->has(attribute(owned, 'S').value_or(setter))),
      "a method is missing");
}

std::string variableIsThere(const ClassData&, const OwnedProperty& owned) {
  const auto variable = attribute(owned, 'V');
  if (!variable) return {};
  const std::string_view name = *variable;
  return unless(
      std::ranges::any_of(owned.owner->variables,
                          [&](const VariableEntry& each) { return each.name.text == name; }),
      printable(name) + " is missing");
}

constexpr ClassRule kVariables[] = {
    {"variables.word",
     "Each variable's offset is in a word of its own, which nothing rebases or binds.",
     offsetsDiffer},
    {"variables.offset", "A variable is within its instances, at a multiple of its alignment.",
     each<variablesOf, offsetFits>},
    {"variables.alignment", "A variable is aligned to at most 16 bytes.",
     each<variablesOf,
          [](const ClassData&, const PlacedVariable& placed) {
            const uint32_t bits = placed.it.alignmentBits;
            return unless(bits <= kLargestAlignment || bits == kNobodysAlignment,
                          "2^" + std::to_string(bits));
          }>},
    {"variables.filled", "Variables follow each other, and the last one ends its instance.", filled,
     Asker::project},
    {"variables.type", "A variable has a name of its own, and its type's size and alignment.",
     each<variablesOf, typeFits>},
    {"properties.attributes",
     "A property's attributes are a type, known letters, then a variable if it has one.",
     each<propertiesOf, attributesFit>},
    {"properties.accessors", "The methods of a property with a variable exist.",
     each<propertiesOf, accessorsAreThere>},
    {"properties.variable", "A property's variable exists, if it has one.",
     each<propertiesOf, variableIsThere>},
};

}  // namespace

std::span<const ClassRule> variableRules() { return kVariables; }

}  // namespace varnix::device
