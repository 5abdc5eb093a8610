// Ways to break the rules of classes, categories, constant strings and blocks.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"

namespace device_test {

namespace {

using Half = device::ClassHalf;
using Section = SectionField;

const Half& pair(const Spoiled& it) { return it.sound.classNamed("Pair"); }
const Half& meta(const Spoiled& it) { return it.sound.metaclassNamed("Pair"); }
const Half& triple(const Spoiled& it) { return it.sound.classNamed("Triple"); }

/// Words of a class, from zero: isa, superclass, cache, table, data.
uint64_t classWord(const Spoiled& it, const Half& half, uint64_t index) {
  return half.address + index * it.word();
}

/// Words of a class's data: layout, name, methods, protocols, variables, weak layout, properties.
uint64_t dataWord(const Spoiled& it, const Half& half, uint64_t index) {
  return half.data.target + (it.is64() ? 16 : 12) + index * it.word();
}

constexpr uint64_t kLayout = 0, kName = 1, kProtocols = 3;
constexpr uint64_t kFlags = 0, kStart = 4, kSize = 8;

void flags(Spoiled& it, const Half& half, uint32_t value) {
  it.put32At(half.data.target + kFlags, value);
}

/// Puts the address that one word holds into another.
void copyWord(Spoiled& it, uint64_t from, uint64_t to) { it.putWordAt(to, it.wordAt(from)); }

uint64_t listed(const Spoiled& it) { return it.header("__objc_classlist").address; }
uint64_t imageInfo(const Spoiled& it) { return it.header("__objc_imageinfo").address; }

const device::CategoryEntry& category(const Spoiled& it) { return it.sound.categoryNamed("Ruled"); }

/// The opcode that names a symbol of the binds.
uint64_t bindOf(const Spoiled& it, std::string_view symbol) {
  for (size_t i = 0;; ++i) {
    const uint64_t place = it.step(Info::binds, device::FixupStep::Kind::symbol, i);
    if (it.sound.image.bytes.text(place + 1) == symbol) return place;
  }
}

/// Says of an import that it may be missing, or that it may not.
void toggleWeak(Spoiled& it, std::string_view symbol) {
  const uint64_t place = bindOf(it, symbol), description = it.symbol(symbol) + 6;
  it.put8(place, static_cast<uint8_t>(it.bytes[place] ^ device::macho::kWeakImport));
  it.put8(description, static_cast<uint8_t>(it.bytes[description] ^ device::macho::kWeakReference));
}

const device::StringConstant& string(const Spoiled& it) { return it.sound.classes.strings[0]; }
const device::BlockConstant& block(const Spoiled& it) { return it.sound.classes.blocks[0]; }
const device::BlockDescriptor& descriptor(const Spoiled& it) {
  return it.sound.classes.descriptors[0];
}

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
     [](Spoiled& it) { toggleWeak(it, "_OBJC_METACLASS_$_UIBarButtonItem"); }},
    {"classes.cache", "called otherwise",
     [](Spoiled& it) { it.renameSymbol("__objc_empty_cache", "__objc_empty_cachf"); }},
    {"classes.cache", "may be missing", [](Spoiled& it) { toggleWeak(it, "__objc_empty_cache"); }},
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
    {"classes.flags", "with reference counts by the compiler",
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
    {"classes.image-info", "another version", [](Spoiled& it) { it.put32At(imageInfo(it), 1); }},
    {"classes.image-info", "garbage collection",
     [](Spoiled& it) { it.put32At(imageInfo(it) + 4, 6); }},
    {"classes.image-info", "signed data",
     [](Spoiled& it) { it.put32At(imageInfo(it) + 4, 0x10008); }},
    {"classes.image-info", "none",
     [](Spoiled& it) { it.put8(it.section("__objc_imageinfo") + 2, 'x'); }},
    {"classes.sections", "no list of classes",
     [](Spoiled& it) { it.put8(it.section("__objc_classlist") + 2, 'x'); }},
    {"classes.sections", "a list in code",
     [](Spoiled& it) { it.putText(it.section("__objc_catlist") + 16, "__TEXT"); }},
    {"categories.class", "a class that must be there",
     [](Spoiled& it) { toggleWeak(it, "_OBJC_CLASS_$_UIColor"); }},
    {"categories.name", "none",
     [](Spoiled& it) { it.put8(it.at(category(it).name.pointer.target), '('); }},
    {"categories.methods",
     "none",
     [](Spoiled& it) {
       it.putWordAt(category(it).target.at + it.word(), 0);
       it.putWordAt(category(it).target.at + 2 * it.word(), 0);
     },
     {"classes.pointers"}},
    {"categories.methods",
     "protocols",
     [](Spoiled& it) {
       copyWord(it, category(it).name.pointer.at, category(it).target.at + 3 * it.word());
     },
     {"classes.pointers"}},
    {"categories.load", "is not listed",
     [](Spoiled& it) { it.put8(it.section("__objc_nlcatlist") + 2, 'x'); }},
    {"strings.aligned",
     "two bytes along",
     [](Spoiled& it) {
       // Every bound word after it moves as well, so that this takes one that stands alone.
       const uint64_t data = it.sound.image.segment("__DATA")->address;
       device::Writer out;
       out.u8(static_cast<uint8_t>(
           device::macho::kBindSetDylibOrdinalImm |
           it.sound.fixups.imports.at("___CFConstantStringClassReference")->description >> 8));
       out.u8(device::macho::kBindSetTypeImm | device::macho::kPointer);
       out.u8(device::macho::kBindSetSymbolTrailingFlagsImm);
       out.text("___CFConstantStringClassReference");
       out.u8(device::macho::kBindSetSegmentAndOffsetUleb | 1);
       out.uleb(string(it).address + 2 - data);
       out.u8(device::macho::kBindDo);
       it.replace(Info::binds, out.take());
     },
     {"categories.class", "classes.cache", "classes.isa", "classes.pointers", "classes.superclass",
      "strings.flags", "strings.text", "stubs.target"},
     nullptr,
     true,
     {"lazy.binder"}},
    {"strings.flags", "16-bit characters",
     [](Spoiled& it) { it.put32At(string(it).address + it.word(), 0x7d0); }},
    {"strings.text", "no ASCII",
     [](Spoiled& it) { it.put8(it.at(string(it).text.pointer.target), 0xe9); }},
    {"strings.length", "one more",
     [](Spoiled& it) {
       const uint64_t at = string(it).address + 3 * it.word();
       it.put32At(at, it.u32At(at) + 1);
     }},
    {"blocks.flags", "not global",
     [](Spoiled& it) { it.put32At(block(it).address + it.word(), 0x40000000); }},
    {"blocks.flags", "a count",
     [](Spoiled& it) { it.put32At(block(it).address + it.word(), 0x51000000); }},
    {"blocks.flags", "a reserved number",
     [](Spoiled& it) { it.put32At(block(it).address + it.word() + 4, 1); }},
    {"blocks.function", "no code",
     [](Spoiled& it) { it.putWordAt(block(it).function.at, pair(it).address); }},
    {"blocks.descriptor", "a reserved number",
     [](Spoiled& it) { it.put32At(block(it).descriptor.target, 1); }},
    {"blocks.descriptor", "another size",
     [](Spoiled& it) { it.put32At(block(it).descriptor.target + it.word(), 8); }},
    {"blocks.signature", "returns a structure, it says",
     [](Spoiled& it) { it.put32At(block(it).address + it.word(), 0x70000000); }},
    {"blocks.signature", "a method's",
     [](Spoiled& it) {
       it.putWordAt(block(it).descriptor.target + 2 * it.word(),
                    pair(it).methods[0].types.pointer.target);
     }},
    {"blocks.helpers", "no code",
     [](Spoiled& it) { it.putWordAt(descriptor(it).copy.at, pair(it).address); }},
    {"blocks.result", "a structure",
     [](Spoiled& it) {
       it.putText(it.at(it.wordAt(descriptor(it).address + 4 * it.word())), "{=}@?");
     }},
};

}  // namespace

std::span<const Spoiler> classSpoilers() { return kClassSpoilers; }

}  // namespace device_test
