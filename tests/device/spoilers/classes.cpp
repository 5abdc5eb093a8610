// Ways to break the rules of classes.
#include "device/spoilers/spoiled.h"

namespace device_test {

namespace {

using Half = device::ClassHalf;

const Half& pair(const Spoiled& it) { return it.sound.classNamed("Pair"); }
const Half& meta(const Spoiled& it) { return it.sound.metaclassNamed("Pair"); }
const Half& triple(const Spoiled& it) { return it.sound.classNamed("Triple"); }

/// The words of a class, from zero: isa, superclass, cache, table, data.
uint64_t classWord(const Spoiled& it, const Half& half, uint64_t index) {
  return half.address + index * it.word();
}

/// The words of a class's data: layout, name, methods, protocols, variables, weak layout,
/// properties.
uint64_t dataWord(const Spoiled& it, const Half& half, uint64_t index) {
  return half.data.target + (it.is64() ? 16 : 12) + index * it.word();
}

constexpr uint64_t kLayout = 0, kName = 1, kProtocols = 3;
constexpr uint64_t kFlags = 0, kStart = 4, kSize = 8;

void flags(Spoiled& it, const Half& half, uint32_t value) {
  it.put32At(half.data.target + kFlags, value);
}

/// Copies the address in one word to another.
void copyWord(Spoiled& it, uint64_t from, uint64_t to) { it.putWordAt(to, it.wordAt(from)); }

uint64_t listed(const Spoiled& it) { return it.header("__objc_classlist").address; }

const Spoiler kClassSpoilers[] = {
    {"classes.pointers",
     "nothing is rebased",
     [](Spoiled& it) { it.info(Info::rebases, 0, 0); },
     {"class-lists.fixed", "initialisers.rebased"},
     nullptr,
     true,
     {"lazy.rebased"}},
    {"classes.pointers",
     "nil, but rebased",
     [](Spoiled& it) { it.putWordAt(dataWord(it, triple(it), 4), 0); },
     {"variables.filled"}},
    {"classes.writable", "a segment that is no data's",
     [](Spoiled& it) { it.put8(it.segment("__DATA") + 8 + 5, 'X'); }},
    {"classes.listed", "twice",
     [](Spoiled& it) { copyWord(it, listed(it), listed(it) + it.word()); }},
    {"classes.aligned",
     "two bytes along",
     [](Spoiled& it) { it.putWordAt(listed(it), it.wordAt(listed(it)) + 2); },
     {"classes.cache", "classes.data", "classes.isa", "classes.no-table", "classes.superclass"}},
    {"classes.isa",
     "another's",
     [](Spoiled& it) { copyWord(it, classWord(it, triple(it), 0), classWord(it, pair(it), 0)); },
     {"classes.name", "classes.superclass", "classes.weak-pair"}},
    {"classes.superclass", "no class",
     [](Spoiled& it) {
       it.putWordAt(classWord(it, triple(it), 1), pair(it).address + 5 * it.word());
     }},
    {"classes.superclass", "a root", [](Spoiled& it) { flags(it, pair(it), pair(it).flags | 2); }},
    {"classes.superclass", "another's metaclass",
     [](Spoiled& it) {
       it.putWordAt(classWord(it, it.sound.metaclassNamed("Triple"), 1),
                    it.sound.metaclassNamed("Triple").address);
     }},
    {"classes.weak-pair", "the metaclass must be there",
     [](Spoiled& it) { it.toggleWeak("_OBJC_METACLASS_$_UIBarButtonItem"); }},
    {"classes.cache", "called otherwise",
     [](Spoiled& it) { it.renameSymbol("__objc_empty_cache", "__objc_empty_cachf"); }},
    {"classes.cache", "may be missing", [](Spoiled& it) { it.toggleWeak("__objc_empty_cache"); }},
    {"classes.no-table", "a number",
     [](Spoiled& it) { it.putWordAt(classWord(it, pair(it), 3), 1); }},
    {"classes.data",
     "with a bit",
     [](Spoiled& it) { it.putWordAt(classWord(it, pair(it), 4), pair(it).data.target + 1); },
     {"classes.instance-size"}},
    {"classes.flags", "a metaclass that says it is none",
     [](Spoiled& it) { flags(it, meta(it), 0); }},
    {"classes.flags", "a class that says it is a metaclass",
     [](Spoiled& it) { flags(it, pair(it), 1); }},
    {"classes.flags", "what the run-time sets",
     [](Spoiled& it) { flags(it, pair(it), 0x80000000 | pair(it).flags); }},
    {"classes.no-arc", "with reference counts by the compiler",
     [](Spoiled& it) { flags(it, pair(it), 0x80 | pair(it).flags); }},
    {"classes.flags",
     "a reserved number",
     [](Spoiled& it) { it.put32At(pair(it).data.target + 12, 1); },
     {},
     "arm64"},
    {"classes.destruction", "constructs nothing",
     [](Spoiled& it) { flags(it, pair(it), 4 | pair(it).flags); }},
    {"classes.destruction", "destructs nothing",
     [](Spoiled& it) { flags(it, pair(it), 0x104 | pair(it).flags); }},
    {"classes.instance-size",
     "starts behind the root's end",
     [](Spoiled& it) {
       it.put32At(pair(it).data.target + kStart, static_cast<uint32_t>(3 * it.word()));
     },
     {"variables.filled", "variables.offset"}},
    {"classes.instance-size",
     "starts within the superclass",
     [](Spoiled& it) {
       it.put32At(triple(it).data.target + kStart, static_cast<uint32_t>(it.word()));
     },
     {"variables.filled"}},
    {"classes.meta-size", "a word less",
     [](Spoiled& it) {
       it.put32At(meta(it).data.target + kStart, static_cast<uint32_t>(4 * it.word()));
     }},
    {"classes.meta-size", "a word more",
     [](Spoiled& it) {
       it.put32At(meta(it).data.target + kSize, static_cast<uint32_t>(6 * it.word()));
     }},
    {"classes.no-layout",
     "one",
     [](Spoiled& it) {
       copyWord(it, dataWord(it, pair(it), kName), dataWord(it, pair(it), kLayout));
     },
     {"classes.pointers"}},
    {"classes.no-protocols",
     "some",
     [](Spoiled& it) {
       copyWord(it, dataWord(it, pair(it), kName), dataWord(it, pair(it), kProtocols));
     },
     {"classes.pointers"}},
    {"classes.name", "the metaclass's is another",
     [](Spoiled& it) {
       copyWord(it, dataWord(it, triple(it), kName), dataWord(it, meta(it), kName));
     }},
    {"classes.name", "no name",
     [](Spoiled& it) { it.put8(it.at(pair(it).name.pointer.target), ' '); }},
    {"classes.name-once", "two of one name",
     [](Spoiled& it) {
       copyWord(it, dataWord(it, triple(it), kName), dataWord(it, pair(it), kName));
       copyWord(it, dataWord(it, triple(it), kName), dataWord(it, meta(it), kName));
     }},
    {"classes.load", "is not listed",
     [](Spoiled& it) { it.put8(it.section("__objc_nlclslist") + 2, 'x'); }},
};

}  // namespace

std::span<const Spoiler> classSpoilers() { return kClassSpoilers; }

}  // namespace device_test
