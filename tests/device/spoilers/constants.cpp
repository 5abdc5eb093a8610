// Ways to break the rules of class data's sections, categories, constant strings and blocks.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"

namespace device_test {

namespace {

const device::ClassHalf& classOf(const Spoiled& it) { return it.sound.classNamed("Pair"); }

const device::CategoryEntry& category(const Spoiled& it) { return it.sound.categoryNamed("Ruled"); }

uint64_t imageInfo(const Spoiled& it) { return it.header("__objc_imageinfo").address; }

const device::StringConstant& string(const Spoiled& it) { return it.sound.classes.strings[0]; }
const device::BlockConstant& block(const Spoiled& it) { return it.sound.classes.blocks[0]; }
const device::BlockDescriptor& descriptor(const Spoiled& it) {
  return it.sound.classes.descriptors[0];
}

const Spoiler kConstantSpoilers[] = {
    {"classes.image-info", "another version", [](Spoiled& it) { it.put32At(imageInfo(it), 1); }},
    {"classes.image-info", "garbage collection",
     [](Spoiled& it) { it.put32At(imageInfo(it) + 4, 6); }},
    {"classes.image-info", "signed data",
     [](Spoiled& it) { it.put32At(imageInfo(it) + 4, 0x10008); }},
    {"classes.image-info", "none",
     [](Spoiled& it) { it.put8(it.section("__objc_imageinfo") + 2, 'x'); }},
    {"classes.present", "no list of classes",
     [](Spoiled& it) { it.put8(it.section("__objc_classlist") + 2, 'x'); }},
    {"classes.sections", "a list in code",
     [](Spoiled& it) { it.putText(it.section("__objc_catlist") + 16, "__TEXT"); }},
    {"categories.class", "a class that must be there",
     [](Spoiled& it) { it.toggleWeak("_OBJC_CLASS_$_UIColor"); }},
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
       it.putWordAt(category(it).target.at + 3 * it.word(), category(it).name.pointer.target);
     },
     {"classes.pointers"}},
    {"categories.load", "is not listed",
     [](Spoiled& it) { it.put8(it.section("__objc_nlcatlist") + 2, 'x'); }},
    {"strings.aligned",
     "two bytes along",
     [](Spoiled& it) {
       // Every bound word after it moves too, so this uses one that has none after it.
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
    {"strings.flags", "32-bit characters",
     [](Spoiled& it) { it.put32At(string(it).address + it.word(), 0x7d8); }},
    {"strings.narrow", "16-bit characters",
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
     [](Spoiled& it) { it.putWordAt(block(it).function.at, classOf(it).address); }},
    {"blocks.descriptor", "a reserved number",
     [](Spoiled& it) { it.put32At(block(it).descriptor.target, 1); }},
    {"blocks.descriptor", "another size",
     [](Spoiled& it) { it.put32At(block(it).descriptor.target + it.word(), 8); }},
    {"blocks.signature", "returns a structure, it says",
     [](Spoiled& it) { it.put32At(block(it).address + it.word(), 0x70000000); }},
    {"blocks.signature", "a method's",
     [](Spoiled& it) {
       it.putWordAt(block(it).descriptor.target + 2 * it.word(),
                    classOf(it).methods[0].types.pointer.target);
     }},
    {"blocks.helpers", "no code",
     [](Spoiled& it) { it.putWordAt(descriptor(it).copy.at, classOf(it).address); }},
    {"blocks.result", "a structure",
     [](Spoiled& it) {
       it.putText(it.at(it.wordAt(descriptor(it).address + 4 * it.word())), "{=}@?");
     }},
};

}  // namespace

std::span<const Spoiler> constantSpoilers() { return kConstantSpoilers; }

}  // namespace device_test
