// Ways to break the rules of methods, instance variables and properties.
#include "device/spoilers/spoiled.h"

namespace device_test {

namespace {

const device::ClassHalf& owner(const Spoiled& it) { return it.sound.classNamed("Pair"); }

/// The place of its list of methods, variables or properties.
uint64_t list(const Spoiled& it, uint64_t index) {
  return it.wordAt(owner(it).data.target + (it.is64() ? 16 : 12) + index * it.word());
}
uint64_t methods(const Spoiled& it) { return list(it, 2); }
uint64_t variables(const Spoiled& it) { return list(it, 4); }
uint64_t properties(const Spoiled& it) { return list(it, 6); }

const device::MethodEntry& method(const Spoiled& it) { return owner(it).methods[0]; }
const device::VariableEntry& variable(const Spoiled& it, size_t index) {
  return owner(it).variables[index];
}
const device::PropertyEntry& property(const Spoiled& it) { return owner(it).properties[0]; }

uint32_t methodSize(const Spoiled& it) { return static_cast<uint32_t>(3 * it.word()); }

/// The place of a variable's alignment; its size follows.
uint64_t alignment(const Spoiled& it, size_t index) {
  return variable(it, index).offset.at + 3 * it.word();
}

void move(Spoiled& it, size_t index, uint32_t offset) {
  it.put32At(variable(it, index).offset.target, offset);
}

const Spoiler kMemberSpoilers[] = {
    {"lists.aligned",
     "two bytes along",
     [](Spoiled& it) {
       it.putWordAt(owner(it).data.target + (it.is64() ? 16 : 12) + 2 * it.word(), methods(it) + 2);
     },
     {"properties.accessors"}},
    {"lists.entry-size",
     "of methods, with a flag",
     [](Spoiled& it) { it.put32At(methods(it), methodSize(it) | 3); },
     {"properties.accessors"}},
    {"lists.entry-size",
     "of methods, four bytes more",
     [](Spoiled& it) { it.put32At(methods(it), methodSize(it) + 4); },
     {"properties.accessors"}},
    {"lists.entry-size",
     "of variables",
     [](Spoiled& it) { it.put32At(variables(it), methodSize(it) + 4); },
     {"properties.variable", "variables.filled"}},
    {"lists.entry-size", "of properties",
     [](Spoiled& it) { it.put32At(properties(it), methodSize(it)); }},
    {"lists.count",
     "none",
     [](Spoiled& it) { it.put32At(methods(it) + 4, 0); },
     {"properties.accessors"}},
    {"lists.count",
     "6000",
     [](Spoiled& it) { it.put32At(methods(it) + 4, 6000); },
     {"properties.accessors"}},
    {"lists.count",
     "900 variables, beyond the section",
     [](Spoiled& it) { it.put32At(variables(it) + 4, 900); },
     {"properties.variable", "variables.filled"}},
    {"lists.own", "another class's",
     [](Spoiled& it) {
       const auto& other = it.sound.classNamed("Triple");
       it.putWordAt(other.data.target + (it.is64() ? 16 : 12) + 2 * it.word(), methods(it));
     }},
    {"methods.name", "none",
     [](Spoiled& it) {
       it.putWordAt(method(it).name.pointer.at,
                    method(it).name.pointer.target + method(it).name.text.size());
     }},
    {"methods.name", "with a space",
     [](Spoiled& it) { it.put8(it.at(method(it).name.pointer.target), ' '); }},
    {"methods.name", "in writable memory",
     [](Spoiled& it) { it.putWordAt(method(it).name.pointer.at, owner(it).data.target); }},
    {"methods.once", "the next one's name",
     [](Spoiled& it) {
       it.putWordAt(method(it).name.pointer.at, owner(it).methods[1].name.pointer.target);
       it.putWordAt(method(it).types.pointer.at, owner(it).methods[1].types.pointer.target);
     }},
    {"methods.types", "its name",
     [](Spoiled& it) {
       it.putWordAt(method(it).types.pointer.at, method(it).name.pointer.target);
     }},
    {"methods.types", "too few",
     [](Spoiled& it) {
       it.putWordAt(owner(it).methods[0].types.pointer.at, variable(it, 2).type.pointer.target);
     }},
    {"methods.function", "another instruction set, or half an instruction",
     [](Spoiled& it) {
       const uint64_t function = method(it).function.target;
       it.putWordAt(method(it).function.at, it.is64() ? function + 2 : function ^ 1);
     }},
    {"methods.function", "no code",
     [](Spoiled& it) { it.putWordAt(method(it).function.at, methods(it) | (it.is64() ? 0 : 1)); }},
    {"variables.word",
     "the next one's",
     [](Spoiled& it) { it.putWordAt(variable(it, 0).offset.at, variable(it, 1).offset.target); },
     {"variables.filled"}},
    {"variables.word",
     "of code",
     [](Spoiled& it) { it.putWordAt(variable(it, 0).offset.at, 2); },
     {"variables.filled"}},
    {"variables.offset",
     "in the superclass",
     [](Spoiled& it) { move(it, 0, 0); },
     {"variables.filled"}},
    {"variables.offset",
     "behind the instance",
     [](Spoiled& it) { move(it, 2, static_cast<uint32_t>(16 * it.word())); },
     {"variables.filled"}},
    {"variables.offset",
     "not aligned",
     [](Spoiled& it) { move(it, 2, *variable(it, 2).value - 1); },
     {"variables.filled"}},
    {"variables.alignment",
     "512 bytes",
     [](Spoiled& it) { it.put32At(alignment(it, 0), 9); },
     {"variables.offset", "variables.type"}},
    {"variables.filled", "over the one before",
     [](Spoiled& it) { move(it, 1, *variable(it, 0).value); }},
    {"variables.filled",
     "more room behind",
     [](Spoiled& it) { it.put32At(owner(it).data.target + 8, owner(it).size + 4); },
     {"classes.instance-size"}},
    {"variables.type",
     "of another size",
     [](Spoiled& it) { it.put32At(alignment(it, 2) + 4, 2); },
     {"variables.filled"}},
    {"variables.type", "no type",
     [](Spoiled& it) {
       it.putWordAt(variable(it, 0).type.pointer.at, variable(it, 0).name.pointer.target);
     }},
    {"variables.type",
     "the next one's name",
     [](Spoiled& it) {
       it.putWordAt(variable(it, 0).name.pointer.at, variable(it, 1).name.pointer.target);
     },
     {"properties.variable"}},
    {"properties.attributes", "its name",
     [](Spoiled& it) {
       it.putWordAt(property(it).attributes.pointer.at, property(it).name.pointer.target);
     }},
    {"properties.accessors", "the name of a variable",
     [](Spoiled& it) {
       it.putWordAt(property(it).name.pointer.at, variable(it, 0).name.pointer.target);
     }},
    {"properties.variable", "one that is not there",
     [](Spoiled& it) {
       const auto& attributes = property(it).attributes;
       it.put8(it.at(attributes.pointer.target) + attributes.text.size() - 1, 'X');
     }},
};

}  // namespace

std::span<const Spoiler> memberSpoilers() { return kMemberSpoilers; }

}  // namespace device_test
