// The loader of the device's libraries: how it reads opcodes and trees of names, and images in
// memory.
#include <gmock/gmock.h>

#include <cstring>

#include "device/loadable.h"
#include "loader/exports.h"
#include "loader/fixups.h"
#include "loader/mapped_image.h"
#include "macho/error.h"
#include "macho/format.h"

namespace {

using namespace device_test;
using device::Architecture;
using device::FixupKind;
using device::ImageFile;
using device::Reader;
using testing::ElementsAre;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

/// Opcodes one after another.
class Opcodes {
 public:
  Opcodes& op(unsigned code, uint8_t immediate = 0) {
    out_.u8(static_cast<uint8_t>(code | immediate));
    return *this;
  }
  Opcodes& uleb(uint64_t value) {
    out_.uleb(value);
    return *this;
  }
  Opcodes& sleb(int64_t value) {
    out_.sleb(value);
    return *this;
  }
  Opcodes& symbol(const char* name, uint8_t flags = 0) {
    op(device::macho::kBindSetSymbolTrailingFlagsImm, flags);
    out_.text(name);
    return *this;
  }
  Opcodes& at(uint8_t segment, uint64_t offset) {
    return op(device::macho::kBindSetSegmentAndOffsetUleb, segment).uleb(offset);
  }
  Opcodes& rebaseAt(uint8_t segment, uint64_t offset) {
    return op(device::macho::kRebaseSetSegmentAndOffsetUleb, segment).uleb(offset);
  }
  Reader read() const { return Reader(out_.written()); }

 private:
  device::Writer out_;
};

constexpr const char* kKinds[] = {"pointer", "absolute", "relative"};

Lines rebasesOf(const Opcodes& opcodes, Architecture architecture = Architecture::arm64) {
  ImageFile image = plainImage(architecture);
  image.rebases = opcodes.read();
  Lines lines;
  for (const auto& each : device::readRebases(image))
    lines.push_back(std::to_string(each.offset) + " " + kKinds[static_cast<int>(each.kind)]);
  return lines;
}

Lines words(const std::vector<device::ImageBind>& binds) {
  Lines lines;
  for (const auto& each : binds)
    lines.push_back(std::to_string(each.offset) + " " + std::string(each.symbol) + " " +
                    std::to_string(each.library) + " " + std::to_string(each.addend) + " " +
                    kKinds[static_cast<int>(each.kind)] + (each.mayBeMissing ? " weak" : ""));
  return lines;
}

Lines bindsOf(const Opcodes& opcodes, Architecture architecture = Architecture::arm64) {
  ImageFile image = plainImage(architecture);
  image.binds = opcodes.read();
  return words(device::readBinds(image));
}

/// The reason for refusing; empty if it is accepted.
template <class Call>
std::string refused(Call call) {
  try {
    call();
  } catch (const device::Error& error) {
    return error.what();
  }
  return {};
}

using namespace device::macho;

TEST(Rebases, EveryOpcodeMovesAndWrites) {
  const Opcodes opcodes = Opcodes()
                              .op(kRebaseSetTypeImm, kPointer)
                              .rebaseAt(1, 0)
                              .op(kRebaseDoImmTimes, 2)  // 4096, 4104
                              .op(kRebaseAddAddressUleb)
                              .uleb(16)
                              .op(kRebaseDoUlebTimes)
                              .uleb(1)  // 4128
                              .op(kRebaseAddAddressImmScaled, 2)
                              .op(kRebaseDoAddAddressUleb)
                              .uleb(8)  // 4152
                              .op(kRebaseDoUlebTimesSkippingUleb)
                              .uleb(2)
                              .uleb(24)  // 4168, 4200
                              .op(kRebaseSetTypeImm, kAbsolute32)
                              .rebaseAt(0, 4)
                              .op(kRebaseDoImmTimes, 1)
                              .op(kRebaseSetTypeImm, kRelative32)
                              .op(kRebaseDoImmTimes, 1)
                              .op(kRebaseDone)
                              .op(0xf0);
  EXPECT_THAT(rebasesOf(opcodes),
              ElementsAre("4096 pointer", "4104 pointer", "4128 pointer", "4152 pointer",
                          "4168 pointer", "4200 pointer", "4 absolute", "12 relative"));
}

TEST(Rebases, WordsAreFourBytesOnArmv7) {
  const Opcodes opcodes = Opcodes()
                              .op(kRebaseSetTypeImm, kPointer)
                              .rebaseAt(1, 8)
                              .op(kRebaseDoImmTimes, 2)
                              .op(kRebaseAddAddressImmScaled, 3)
                              .op(kRebaseDoImmTimes, 1);
  EXPECT_THAT(rebasesOf(opcodes, Architecture::armv7),
              ElementsAre("4104 pointer", "4108 pointer", "4124 pointer"));
}

TEST(Rebases, StayInTheirSegments) {
  auto at = [](uint64_t offset) {
    return refused([=] { rebasesOf(Opcodes().rebaseAt(1, offset).op(kRebaseDoImmTimes, 1)); });
  };
  EXPECT_EQ(at(0xff8), "");
  EXPECT_EQ(at(0xff9), "a fixup outside its segment");
  EXPECT_EQ(at(~uint64_t{0}), "a fixup outside its segment");
  EXPECT_EQ(refused([] { rebasesOf(Opcodes().rebaseAt(2, 0)); }),
            "a fixup in a segment that is not there");
  EXPECT_EQ(refused([] { rebasesOf(Opcodes().op(kRebaseDoImmTimes, 1)); }),
            "a fixup without a segment");
  // Going back to the same place again would never end.
  EXPECT_EQ(refused([] {
              rebasesOf(Opcodes()
                            .rebaseAt(1, 0)
                            .op(kRebaseDoUlebTimesSkippingUleb)
                            .uleb(~uint64_t{0})
                            .uleb(static_cast<uint64_t>(-8)));
            }),
            "more than a million fixups");
}

TEST(Rebases, RefuseWhatTheyDoNotKnow) {
  EXPECT_EQ(refused([] { rebasesOf(Opcodes().op(0x90)); }), "an unknown opcode of the loader: 144");
  EXPECT_EQ(refused([] { rebasesOf(Opcodes().op(kRebaseSetTypeImm, 4)); }),
            "a fixup of an unknown type");
  EXPECT_THAT(refused([] { rebasesOf(Opcodes().op(kRebaseAddAddressUleb)); }),
              HasSubstr("cut short"));
}

TEST(Binds, EveryOpcodeMovesAndWrites) {
  const Opcodes opcodes = Opcodes()
                              .op(kBindSetTypeImm, kPointer)
                              .op(kBindSetDylibOrdinalImm, 1)
                              .symbol("_a")
                              .at(1, 0)
                              .op(kBindDo)  // 4096
                              .op(kBindSetDylibOrdinalUleb)
                              .uleb(2)
                              .symbol("_b", kWeakImport)
                              .op(kBindSetAddendSleb)
                              .sleb(-5)
                              .op(kBindDoAddAddressUleb)
                              .uleb(8)                            // 4104
                              .op(kBindDoAddAddressImmScaled, 2)  // 4120
                              .op(kBindSetDylibSpecialImm, 0xe)
                              .op(kBindDoUlebTimesSkippingUleb)
                              .uleb(2)
                              .uleb(8)  // 4144, 4160
                              .op(kBindAddAddressUleb)
                              .uleb(static_cast<uint64_t>(-80))
                              .op(kBindSetDylibSpecialImm, 0)
                              .op(kBindSetTypeImm, kRelative32)
                              .op(kBindDo)  // 4096
                              .op(kBindDone)
                              .op(kBindDo);
  EXPECT_THAT(bindsOf(opcodes),
              ElementsAre("4096 _a 1 0 pointer", "4104 _b 2 -5 pointer weak",
                          "4120 _b 2 -5 pointer weak", "4144 _b -2 -5 pointer weak",
                          "4160 _b -2 -5 pointer weak", "4096 _b 0 -5 relative weak"));
}

TEST(Binds, LazyOnesGoOnBehindAnEnd) {
  ImageFile image = plainImage(Architecture::arm64);
  const Opcodes lazy = Opcodes()
                           .at(1, 16)
                           .op(kBindSetDylibOrdinalImm, 1)
                           .symbol("_a")
                           .op(kBindDo)
                           .op(kBindDone)
                           .at(1, 24)
                           .op(kBindSetDylibOrdinalImm, 2)
                           .symbol("_b")
                           .op(kBindDo)
                           .op(kBindDone)
                           .op(kBindDone);
  image.lazyBinds = lazy.read();
  EXPECT_THAT(words(device::readBinds(image)),
              ElementsAre("4112 _a 1 0 pointer", "4120 _b 2 0 pointer"));
}

TEST(Binds, WeakOnesHaveAStreamOfTheirOwn) {
  ImageFile image = plainImage(Architecture::arm64);
  // A strong definition is named, but nothing is bound to it.
  const Opcodes weak = Opcodes()
                           .symbol("_strong", kNonWeakDefinition)
                           .at(1, 16)
                           .symbol("_a")
                           .op(kBindDo)
                           .op(kBindDone)
                           .op(kBindDo);
  image.weakBinds = weak.read();
  EXPECT_THAT(words(device::readWeakBinds(image)), ElementsAre("4112 _a 0 0 pointer"));
  EXPECT_TRUE(device::readBinds(image).empty());
}

TEST(Binds, RefuseWhatIsNotThere) {
  EXPECT_EQ(refused([] { bindsOf(Opcodes().op(kBindSetDylibOrdinalImm, 3)); }),
            "a bind to a library that is not there");
  EXPECT_EQ(refused([] { bindsOf(Opcodes().op(kBindSetDylibOrdinalUleb).uleb(1 << 20)); }),
            "a bind to a library that is not there");
  EXPECT_EQ(refused([] { bindsOf(Opcodes().op(kBindSetDylibSpecialImm, 0xc)); }),
            "a bind to an unknown kind of library");
  EXPECT_EQ(refused([] { bindsOf(Opcodes().at(1, 0).op(kBindDo)); }), "a bind without a symbol");
  EXPECT_EQ(refused([] { bindsOf(Opcodes().at(1, 0x1000).symbol("_a").op(kBindDo)); }),
            "a fixup outside its segment");
  EXPECT_EQ(refused([] { bindsOf(Opcodes().op(0xd0)); }), "an unknown opcode of the loader: 208");
  EXPECT_EQ(refused([] {
              bindsOf(Opcodes()
                          .op(kBindAddAddressUleb)
                          .uleb(~uint64_t{0})
                          .op(kBindAddAddressUleb)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0xff)
                          .op(0x02));
            }),
            "a number has more than 64 bits");
}

/// A node: its export, if it has one, then its children.
std::map<std::string, uint64_t, std::less<>> namesOf(const Bytes& tree) {
  ImageFile image = plainImage(Architecture::arm64);
  image.exports = Reader(tree);
  return device::readExports(image);
}

TEST(Exports, AreReadFromTheirTree) {
  // The root leads to "_f", which is a name and leads to "oo".
  const Bytes tree = {0, 1, '_', 'f', 0, 6, 2, 0, 16, 1, 'o', 'o', 0, 15, 0, 3, 0, 0x80, 0x20, 0};
  Bytes fixed = tree;
  fixed[13] = 15;
  EXPECT_THAT(namesOf(fixed), ElementsAre(testing::Pair("_f", 16), testing::Pair("_foo", 4096)));
  EXPECT_TRUE(namesOf({}).empty());
}

TEST(Exports, RefuseLoopsAndWhatLiesOutside) {
  EXPECT_EQ(refused([] { namesOf({0, 1, 'a', 0, 0}); }), "the tree of exports is not a tree");
  EXPECT_EQ(refused([] { namesOf({0, 1, 'a', 0, 99}); }), "an export lies outside the tree");
  EXPECT_THAT(refused([] { namesOf({0, 1, 'a'}); }), HasSubstr("no end"));
  EXPECT_EQ(refused([] { namesOf({3, 0, 0x80, 0x40, 0}); }), "an export lies outside the image: ");
  EXPECT_EQ(refused([] { namesOf({2, 8, 1, 0}); }), "an export of a kind that is not known here: ");
}

TEST(Image, IsWhatTheLinkerWrote) {
  const Bytes library = loadable();
  const ReadBack tools(library);
  const ImageFile image = device::readImageFile(Architecture::arm64, Reader(library));
  EXPECT_EQ(image.installName, "/Library/it.dylib");
  std::vector<uint32_t> rebased;
  for (const auto& each : device::readRebases(image))
    rebased.push_back(static_cast<uint32_t>(each.offset));
  EXPECT_EQ(rebased, tools.rebases());
  EXPECT_FALSE(rebased.empty());
  std::map<std::string, uint32_t> names;
  for (const auto& [name, offset] : device::readExports(image))
    names[name] = static_cast<uint32_t>(offset);
  EXPECT_EQ(names, tools.exports());
  EXPECT_EQ(names.size(), 2u);
}

TEST(Image, OfThe32BitLinkerIsReadToo) {
  const Bytes library =
      linked(assemble(".syntax unified\n.thumb\n.globl _f\n.thumb_func\n_f: bx lr\n"
                      ".data\n.globl _d\n_d: .long _d, _imported+8\n"),
             options({"_f", "_d"}));
  const ReadBack tools(library);
  const ImageFile image = device::readImageFile(Architecture::armv7, Reader(library));
  std::map<std::string, uint32_t> names;
  for (const auto& [name, offset] : device::readExports(image))
    names[name] = static_cast<uint32_t>(offset);
  EXPECT_EQ(names, tools.exports());
  ASSERT_EQ(device::readRebases(image).size(), tools.rebases().size());
  EXPECT_EQ(device::readRebases(image)[0].offset, tools.rebases()[0]);
  const auto binds = device::readBinds(image);
  ASSERT_EQ(binds.size(), 1u);
  EXPECT_EQ(binds[0].symbol, "_imported");
  EXPECT_EQ(image.libraries[binds[0].library - 1].name, "/usr/lib/first.dylib");
  EXPECT_EQ(refused([&] { device::readImageFile(Architecture::arm64, Reader(library)); }),
            "no dynamic library for arm64");
}

TEST(Image, IsTakenOutOfAUniversalFile) {
  const Bytes library = loadable();
  device::Writer file;
  for (const uint32_t field :
       {kUniversalMagic, 1U, kCpuArm64, 0U, 64U, static_cast<uint32_t>(library.size()), 0U})
    file.big32(field);
  file.fillTo(64);
  file.bytes(library);
  const Reader slice = device::sliceFor(Architecture::arm64, Reader(file.written()));
  EXPECT_EQ(slice.size(), library.size());
  EXPECT_EQ(slice.u32(0), kMagic64);
  EXPECT_EQ(refused([&] { device::sliceFor(Architecture::armv7, Reader(file.written())); }),
            "no slice for armv7");
}

/// The process's symbol of that name.
char imported[64];
void* resolve(std::string_view symbol) {
  return symbol == "_imported" || symbol == "_missing" ? imported : nullptr;
}

TEST(Mapping, FixesEveryWord) {
  const Bytes library = loadable();
  const ImageFile file = device::readImageFile(Architecture::arm64, Reader(library));
  const device::MappedImage image(file, resolve);
  const auto* table = static_cast<uintptr_t*>(image.exported("_table"));
  ASSERT_NE(table, nullptr);
  auto address = [](const void* place) { return reinterpret_cast<uintptr_t>(place); };
  EXPECT_EQ(table[0], 17u);
  EXPECT_EQ(table[1], address(table));
  EXPECT_EQ(table[2], address(image.exported("_function")));
  EXPECT_EQ(table[3], address(imported));
  EXPECT_EQ(table[4], address(imported + 24));
  EXPECT_EQ(table[5], 0u);
  EXPECT_THAT(image.words("__mod_init_func"), ElementsAre(address(image.exported("_function"))));
  EXPECT_TRUE(image.words("__nothing").empty());
  EXPECT_EQ(image.exported("_nothing"), nullptr);
  EXPECT_TRUE(image.contains(table));
  EXPECT_FALSE(image.contains(imported));
}

/// The data segment's number, and the offset in it of the table in kLoadableSource.
struct Table {
  uint8_t segment = 0;
  uint64_t offset = 0;
};
Table tableOf(const ImageFile& file) {
  for (uint8_t i = 0; i < file.segments.size(); ++i) {
    if (file.segments[i].name == "__DATA")
      return {i, file.section("__data")->address - file.segments[i].address};
  }
  throw device::Error("no data");
}

TEST(Mapping, WeakBindsTakeTheProcesssDefinitionThenTheirOwn) {
  const Bytes library = loadable();
  ImageFile file = device::readImageFile(Architecture::arm64, Reader(library));
  const Table place = tableOf(file);
  Opcodes weak;
  weak.op(kBindSetTypeImm, kPointer).at(place.segment, place.offset);
  for (const char* name : {"_imported", "_function", "_nobodys"}) weak.symbol(name).op(kBindDo);
  file.weakBinds = weak.read();
  const device::MappedImage image(file, resolve);
  const auto* table = static_cast<uintptr_t*>(image.exported("_table"));
  EXPECT_EQ(table[0], reinterpret_cast<uintptr_t>(imported));
  EXPECT_EQ(table[1], reinterpret_cast<uintptr_t>(image.exported("_function")));
  // The value from the other streams stays.
  EXPECT_EQ(table[2], reinterpret_cast<uintptr_t>(image.exported("_function")));
}

TEST(Mapping, AWeakLibrarysSymbolsAndTheImagesOwn) {
  const Bytes library = loadable();
  ImageFile file = device::readImageFile(Architecture::arm64, Reader(library));
  file.libraries = {{"/usr/lib/first.dylib", false}, {"/usr/lib/second.dylib", true}};
  const Table place = tableOf(file);
  Opcodes binds;
  binds.op(kBindSetTypeImm, kPointer).at(place.segment, place.offset);
  binds.op(kBindSetDylibOrdinalImm, 2)
      .symbol("_nobodys")
      .op(kBindSetAddendSleb)
      .sleb(8)
      .op(kBindDo);
  binds.op(kBindSetDylibSpecialImm, 0).symbol("_table").op(kBindDo);
  file.binds = binds.read();
  file.lazyBinds = {};
  const device::MappedImage image(file, resolve);
  const auto* table = static_cast<uintptr_t*>(image.exported("_table"));
  EXPECT_EQ(table[0], 0u);
  EXPECT_EQ(table[1], reinterpret_cast<uintptr_t>(table) + 8);
}

TEST(Mapping, HalfWordsHoldAddressesAndDistances) {
  const Bytes library = loadable();
  ImageFile file = device::readImageFile(Architecture::arm64, Reader(library));
  const Table place = tableOf(file);
  Opcodes rebases;
  rebases.op(kRebaseSetTypeImm, kAbsolute32).rebaseAt(place.segment, place.offset);
  rebases.op(kRebaseDoImmTimes, 1).op(kRebaseSetTypeImm, kRelative32).op(kRebaseDoImmTimes, 1);
  file.rebases = rebases.read();
  Opcodes binds;
  binds.op(kBindSetDylibSpecialImm, 0xe).symbol("_imported");
  binds.at(place.segment, place.offset + 16).op(kBindSetTypeImm, kAbsolute32).op(kBindDo);
  binds.op(kBindSetTypeImm, kRelative32).op(kBindDo);
  file.binds = binds.read();
  const device::MappedImage image(file, resolve);
  const auto* table = static_cast<uintptr_t*>(image.exported("_table"));
  const auto low = [&](int i) { return static_cast<uint32_t>(table[i]); };
  const auto address = [](const void* at) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(at));
  };
  const uint64_t tableInFile = file.section("__data")->address;
  const auto distance = address(table) - static_cast<uint32_t>(tableInFile);
  EXPECT_EQ(low(0), 17 + distance);
  // The word in the file was the table's address there.
  EXPECT_EQ(low(1), static_cast<uint32_t>(tableInFile) - distance);
  EXPECT_EQ(low(2), address(imported));
  EXPECT_EQ(low(3), address(imported) - (address(&table[3]) + 4));
}

TEST(Mapping, NamesAllThatIsMissingAtOnce) {
  const Bytes library = loadable();
  const ImageFile file = device::readImageFile(Architecture::arm64, Reader(library));
  const auto nobody = [](std::string_view) -> void* { return nullptr; };
  EXPECT_EQ(refused([&] { const device::MappedImage image(file, nobody); }),
            "symbols that are missing: _imported _missing");
}

TEST(Mapping, CodeCannotBeWrittenToAfterwards) {
  const Bytes library = loadable();
  const ImageFile file = device::readImageFile(Architecture::arm64, Reader(library));
  const device::MappedImage image(file, resolve);
  image.protect();
  static_cast<uintptr_t*>(image.exported("_table"))[0] = 5;
  EXPECT_DEATH(*static_cast<volatile char*>(image.exported("_function")) = 1, "");
}

}  // namespace
