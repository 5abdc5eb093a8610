// Ways to break the rules of lazy pointers, stubs, exports and initialisers.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"
#include "rules/stub_code.h"

namespace device_test {

namespace {

using Kind = device::FixupStep::Kind;
using Section = SectionField;

const device::SectionHeader& sectionOf(const Spoiled& it, const char* name) {
  return it.header(name);
}

/// Where the first lazy pointer and its helper are.
uint64_t lazyPointer(const Spoiled& it) { return sectionOf(it, "__la_symbol_ptr").address; }
uint64_t helper(const Spoiled& it) { return it.at(it.wordAt(lazyPointer(it))); }

uint64_t initialiser(const Spoiled& it) { return sectionOf(it, "__mod_init_func").address; }

/// The export's terminal: flags, then an address.
uint64_t terminal(const Spoiled& it) { return it.terminal("_ruledBegin"); }

constexpr const char* k64 = "arm64";
constexpr const char* k32 = "armv7";

const Spoiler kCodeSpoilers[] = {
    {"lazy.opcodes",
     "an addend",
     [](Spoiled& it) { it.put8(it.step(Info::lazyBinds, Kind::library), 0x61); },
     {"lazy.info", "lazy.streams", "stubs.target"},
     k64},
    {"lazy.opcodes",
     "unknown",
     [](Spoiled& it) { it.put8(it.step(Info::lazyBinds, Kind::library), 0xd0); },
     {"lazy.info", "lazy.streams", "stubs.target"},
     k64},
    {"lazy.opcodes",
     "many at once",
     [](Spoiled& it) { it.put8(it.step(Info::lazyBinds, Kind::write), 0xb0); },
     {"lazy.info", "lazy.streams", "stubs.target"},
     k64},
    {"lazy.streams",
     "one that binds nothing",
     [](Spoiled& it) {
       for (uint64_t i = it.info(Info::lazyBinds); i < it.step(Info::lazyBinds, Kind::done); ++i)
         it.put8(i, 0);
     },
     {"stubs.target"},
     k64},
    {"lazy.streams",
     "without an end",
     [](Spoiled& it) {
       // The last opcode except those that end the stream.
       uint64_t last = 0;
       for (size_t i = 0; i < it.sound.fixups.lazyBinds.words.size(); ++i)
         last = it.step(Info::lazyBinds, Kind::write, i);
       it.info(Info::lazyBinds, static_cast<uint32_t>(it.info(Info::lazyBinds)),
               static_cast<uint32_t>(last + 1 - it.info(Info::lazyBinds)));
     },
     {},
     k64},
    {"lazy.must-be-there",
     "may be missing",
     [](Spoiled& it) {
       it.put8(it.step(Info::lazyBinds, Kind::symbol), 0x41);
       const uint64_t description = it.symbol(it.sound.fixups.lazyBinds.words[0].symbol) + 6;
       it.put8(description, device::macho::kWeakReference);
     },
     {},
     k64},
    {"lazy.rebased",
     "not at all",
     [](Spoiled& it) { it.info(Info::rebases, 0, 0); },
     {"class-lists.fixed", "classes.pointers", "initialisers.rebased"},
     k64},
    {"lazy.info",
     "none",
     [](Spoiled& it) { it.info(Info::lazyBinds, 0, 0); },
     {"stubs.target"},
     k64},
    {"lazy.info",
     "of a pointer that is bound at once",
     [](Spoiled& it) {
       it.section("__nl_symbol_ptr", Section::flags, device::macho::kLazySymbolPointers);
     },
     {"stubs.target"},
     k32},
    {"lazy.helper", "another bind", [](Spoiled& it) { it.put32(helper(it) + 8, 1); }, {}, k64},
    {"lazy.helper",
     "another branch",
     [](Spoiled& it) { it.put32(helper(it) + 4, it.u32(helper(it) + 4) ^ 1); },
     {},
     k64},
    {"lazy.helper",
     "the next helper",
     [](Spoiled& it) { it.putWordAt(lazyPointer(it), it.wordAt(lazyPointer(it)) + 12); },
     {},
     k64},
    {"lazy.helper",
     "no helpers",
     [](Spoiled& it) { it.put8(it.section("__stub_helper") + 2, 'x'); },
     {"lazy.binder"},
     k64},
    {"lazy.binder",
     "called otherwise",
     [](Spoiled& it) { it.renameSymbol("dyld_stub_binder", "dyld_stub_bindex"); },
     {},
     k64},
    {"lazy.binder",
     "taken from elsewhere",
     [](Spoiled& it) {
       const uint64_t load = it.at(sectionOf(it, "__stub_helper").address) + 16;
       it.put32(load, it.u32(load) ^ 0x400);
     },
     {},
     k64},
    {"lazy.cache",
     "a number",
     [](Spoiled& it) { it.putWordAt(device::readCommonHelper(it.sound.image)->cache, 5); },
     {},
     k64},
    {"stubs.table", "an index behind it",
     [](Spoiled& it) { it.section("__stubs", Section::firstIndirect, 9000); }},
    {"stubs.table", "no size", [](Spoiled& it) { it.section("__stubs", Section::stubSize, 0); }},
    {"stubs.table", "a symbol that is not there",
     [](Spoiled& it) {
       it.put32(it.sound.image.indirectSymbols->offset + 4 * sectionOf(it, "__stubs").firstIndirect,
                9000);
     }},
    {"stubs.target", "another pointer",
     [](Spoiled& it) {
       const uint64_t stub = it.at(sectionOf(it, "__stubs").address);
       if (it.is64()) it.put32(stub + 4, it.u32(stub + 4) ^ 0x400);
       else it.put8(stub + 2, static_cast<uint8_t>(it.bytes[stub + 2] ^ 4));
     }},
    {"stubs.target", "another symbol",
     [](Spoiled& it) {
       const uint64_t entry =
           it.sound.image.indirectSymbols->offset + 4 * sectionOf(it, "__stubs").firstIndirect;
       it.put32(entry, it.u32(entry + 4));
     }},
    {"exports.tree", "200 edges", [](Spoiled& it) { it.put8(it.info(Info::exports) + 1, 200); }},
    {"exports.tree",
     "a loop",
     [](Spoiled& it) {
       // The only edge of the root leads back to it.
       const uint64_t edge = it.info(Info::exports) + 2;
       it.put8(edge + it.sound.image.bytes.text(edge).size() + 1, 0);
     },
     {"exports.found"}},
    {"exports.found",
     "another edge",
     [](Spoiled& it) { it.put8(it.info(Info::exports) + 2, 'x'); },
     {"exports.listed"}},
    {"exports.kind", "of a thread", [](Spoiled& it) { it.put8(terminal(it), 1); }},
    {"exports.kind", "of another library", [](Spoiled& it) { it.put8(terminal(it), 8); }},
    {"exports.address", "elsewhere",
     [](Spoiled& it) {
       it.put8(terminal(it) + 1, static_cast<uint8_t>(it.bytes[terminal(it) + 1] ^ 0x40));
     }},
    {"exports.thumb",
     "an Arm function",
     [](Spoiled& it) {
       it.put8(terminal(it) + 1, static_cast<uint8_t>(it.bytes[terminal(it) + 1] ^ 1));
     },
     {},
     k32},
    {"exports.listed", "hidden", [](Spoiled& it) { it.put8(it.symbol("_ruledBegin") + 4, 0x0e); }},
    {"initialisers.present", "of another type",
     [](Spoiled& it) { it.section("__mod_init_func", Section::flags, 0); }},
    {"initialisers.present", "none",
     [](Spoiled& it) {
       it.section("__mod_init_func", Section::flags, 0);
       it.put8(it.section("__mod_init_func") + 2, 'x');
     }},
    {"initialisers.size", "half a word",
     [](Spoiled& it) { it.section("__mod_init_func", Section::size, 2); }},
    {"initialisers.rebased",
     "not",
     [](Spoiled& it) {
       it.section("__mod_init_func", Section::address, initialiser(it));
       it.info(Info::rebases, 0, 0);
     },
     {"class-lists.fixed", "classes.pointers"},
     nullptr,
     true,
     {"lazy.rebased"}},
    {"initialisers.code", "data",
     [](Spoiled& it) {
       it.putWordAt(initialiser(it),
                    it.sound.image.segment("__DATA")->address + (it.is64() ? 0x100 : 0x101));
     }},
    {"initialisers.entry", "an Arm function, or half an instruction",
     [](Spoiled& it) {
       it.putWordAt(initialiser(it), it.is64() ? it.wordAt(initialiser(it)) | 2
                                               : it.wordAt(initialiser(it)) & ~uint64_t{1});
     }},
    {"initialisers.no-terminator", "one",
     [](Spoiled& it) {
       it.section("__data", Section::flags, device::macho::kModTermFuncPointers);
     }},
    {"class-lists.size",
     "half a word more",
     [](Spoiled& it) { it.section("__objc_classlist", Section::size, 3 * it.word() + 2); },
     {"classes.sections"}},
    {"class-lists.fixed",
     "not",
     [](Spoiled& it) { it.info(Info::rebases, 0, 0); },
     {"classes.pointers", "initialisers.rebased"},
     nullptr,
     true,
     {"lazy.rebased"}},
};

}  // namespace

std::span<const Spoiler> codeSpoilers() { return kCodeSpoilers; }

}  // namespace device_test
