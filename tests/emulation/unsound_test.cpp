// The loader enforces the platform's rules: it refuses spoiled copies of the library and names the
// rule.
#include "macho/files.h"
#include "macho/format.h"
#include "macho/opcodes.h"
#include "macho/universal.h"
#include "rules/class_data.h"
#include "rules/rule.h"
#include "support/hosted.h"

namespace {

namespace device = varnix::device;
namespace macho = device::macho;

constexpr bool kIs64 = sizeof(void*) == 8;

device::UniversalSlice ownSlice(device::Reader file) {
  for (uint32_t i = 0; i < device::sliceCount(file); ++i) {
    const device::UniversalSlice slice = device::universalSlice(file, i);
    if (slice.cpu == (kIs64 ? macho::kCpuArm64 : macho::kCpuArm)) return slice;
  }
  throw std::runtime_error("no slice for this processor");
}

class UnsoundLibrary : public test::Hosted {
 protected:
  void SetUp() override {
    start("com.example.app");
    // The valid library, which the copy must differ from.
    sound_ = device::readFile(VARNIX_LIBRARY);
    copy = sound_;
    const device::Reader file(sound_);
    const device::UniversalSlice slice = ownSlice(file);
    begin_ = slice.offset;
    image.bytes = file.part(slice.offset, slice.size);
    device::readHeader(image);
    device::readCommands(image);
    fixups = device::readFixups(image);
    classes = device::readClassData(fixups);
  }

  /// Places count from the start of the slice.
  uint8_t& byte(uint64_t place) { return copy.at(begin_ + place); }
  uint8_t& byteAt(uint64_t address) { return byte(image.place(address).value()); }
  /// The place of the first opcode of that kind.
  uint64_t opcode(device::FixupStream stream, device::FixupStep::Kind kind) const {
    const size_t first = stream == device::FixupStream::rebases ? 0 : 2;
    const uint64_t offset = image.loaderInfo.value().at(first);
    device::FixupSteps steps(stream, image.bytes.part(offset, image.loaderInfo->at(first + 1)),
                             image.pointerSize());
    for (uint64_t at = 0; const auto step = steps.next(); at = steps.position())
      if (step->kind == kind) return offset + at;
    throw std::runtime_error("no such opcode");
  }
  /// The name of a class in the library.
  std::string className() const { return std::string(classes.classes.at(0).half->name.text); }
  std::string pathOfCopy() const { return folder_.path() + "/Copy.dylib"; }
  void load() const {
    device::writeFile(pathOfCopy(), copy);
    host::loadLibrary(pathOfCopy());
  }
  /// What the loader says about the copy, without its path; empty if it is loaded.
  std::string refusal() const {
    EXPECT_NE(copy, sound_) << "nothing was spoiled";
    try {
      load();
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(objc_getClass(className().c_str()), nullptr);
      const std::string said = error.what(), begin = pathOfCopy() + ": ";
      EXPECT_TRUE(said.starts_with(begin)) << said;
      return said.substr(begin.size());
    }
    return {};
  }

  std::vector<uint8_t> copy;
  device::Image image;
  device::Fixups fixups;
  device::ClassData classes;

 private:
  std::vector<uint8_t> sound_;
  uint64_t begin_ = 0;
  test::Folder folder_;
};

TEST_F(UnsoundLibrary, ACopyThatIsNotSpoiledIsLoaded) {
  EXPECT_NO_THROW(load());
  EXPECT_NE(objc_getClass(className().c_str()), nullptr);
}

TEST_F(UnsoundLibrary, ItsHeader) {
  const uint32_t flags = image.flags & ~uint32_t{macho::kTwoLevel};
  byte(24) = static_cast<uint8_t>(flags);
  EXPECT_EQ(refusal(), "header.two-level: " + device::hex(flags));
}

TEST_F(UnsoundLibrary, ItsSegments) {
  for (const device::LoadCommand& command : image.commands) {
    if (command.kind != (kIs64 ? macho::kSegment64 : macho::kSegment) ||
        command.bytes.fixedText(8, 16) != "__DATA")
      continue;
    // The maximum protection, and the initial one.
    byte(command.at + (kIs64 ? 56 : 40)) = 7;
    byte(command.at + (kIs64 ? 60 : 44)) = 7;
  }
  EXPECT_EQ(refusal(), "segments.protection: __DATA: protection 0x7 of 0x7");
}

TEST_F(UnsoundLibrary, ItsRebases) {
  byte(opcode(device::FixupStream::rebases, device::FixupStep::Kind::type)) += 1;
  EXPECT_EQ(refusal().substr(0, 14), "rebases.type: ");
}

TEST_F(UnsoundLibrary, ItsBinds) {
  byte(opcode(device::FixupStream::binds, device::FixupStep::Kind::type)) += 1;
  EXPECT_EQ(refusal().substr(0, 12), "binds.type: ");
}

TEST_F(UnsoundLibrary, ItsSymbols) {
  const uint64_t size = kIs64 ? 16 : 12;
  for (size_t i = 0; i < fixups.symbols.size(); ++i) {
    if (fixups.symbols[i].name != "_OBJC_CLASS_$_NSObject") continue;
    // The number of the symbol's library.
    byte(image.symbolTable.value()[0] + i * size + 7) += 1;
  }
  const std::string said = refusal();
  EXPECT_EQ(said.substr(0, 47), "binds.symbol-table: _OBJC_CLASS_$_NSObject at 0");
  EXPECT_NE(said.find(": not so in the symbol table"), std::string::npos) << said;
}

TEST_F(UnsoundLibrary, ItsClassMetadata) {
  ASSERT_FALSE(classes.lists.empty());
  const device::EntryList& list = classes.lists[0];
  // The size of an entry.
  byteAt(list.pointer.target) += 4;
  EXPECT_EQ(refusal().substr(0, 18), "lists.entry-size: ");
}

TEST_F(UnsoundLibrary, ItsTypesOfMethods) {
  const device::ClassHalf* owner = nullptr;
  for (const device::ClassEntry& each : classes.classes)
    if (!each.half->methods.empty()) owner = &*each.half;
  ASSERT_NE(owner, nullptr);
  byteAt(owner->methods[0].types.pointer.target) = '!';
  EXPECT_EQ(refusal().substr(0, 15), "methods.types: ");
}

TEST_F(UnsoundLibrary, OneThatIsCutShort) {
  // A file with only this slice, without its last segment.
  copy.assign(image.bytes.at(0, image.bytes.size()).begin(),
              image.bytes.at(0, image.bytes.size()).end());
  const device::SegmentCommand& last = *image.segment("__LINKEDIT");
  copy.resize(last.fileOffset);
  EXPECT_EQ(refusal(), "segments.inside-file: __LINKEDIT: ends at " +
                           device::hex(last.fileOffset + last.fileSize) + " of " +
                           device::hex(last.fileOffset));
}

}  // namespace
