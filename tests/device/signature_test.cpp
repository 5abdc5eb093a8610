// Where arguments travel on Arm, on the device and on Linux, and the code that bridges the two.
#include <gmock/gmock.h>

#include <cstring>

#include "abi/bridge.h"
#include "abi/word_bridge.h"
#include "device/toolbox.h"
#include "macho/error.h"
#include "macho/files.h"

namespace {

using namespace varnix::device;
using device_test::Bytes;

/// "B in x2, s in x4; 8 at 0/0, 1 at 8/8": the small arguments, and the places on the stack on the
/// device and on Linux.
std::string told(std::string_view encoding) {
  constexpr const char* kNames[] = {"", "u8", "s8", "u16", "s16"};
  const CallSignature call = readSignature(encoding);
  std::string words = call.result == Small::none
                          ? std::string()
                          : std::string(kNames[static_cast<int>(call.result)]) + " ";
  for (size_t i = 0; i < call.registers.size(); ++i) {
    if (call.registers[i] != Small::none)
      words += "x" + std::to_string(i) + ":" + kNames[static_cast<int>(call.registers[i])] + " ";
    if (call.blocks[i]) words += "x" + std::to_string(i) + ":block ";
  }
  for (const StackArgument& each : call.stack)
    words += std::to_string(each.size) + "@" + std::to_string(each.deviceOffset) + "/" +
             std::to_string(each.linuxOffset) + " ";
  if (!words.empty()) words.pop_back();
  return words;
}

std::string refused(std::string_view encoding) {
  try {
    readSignature(encoding);
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

TEST(Signatures, TellSmallIntegersAndBlocks) {
  EXPECT_EQ(told("v@:"), "");
  EXPECT_EQ(told("v20@0:8B16"), "x2:u8");
  EXPECT_EQ(told("B@:cCsS"), "u8 x2:s8 x3:u8 x4:s16 x5:u16");
  EXPECT_EQ(told("c@:@\"NSString\"@?"), "s8 x3:block");
  // Floating-point numbers and structures of them do not count.
  EXPECT_EQ(told("v@:dfB{CGRect={CGPoint=dd}{CGSize=dd}}c"), "x2:u8 x3:s8");
}

TEST(Signatures, CountStructures) {
  // Two registers; the address of a large structure; padded structures on the stack.
  EXPECT_EQ(told("v@:{_NSRange=\"location\"Q\"length\"Q}B"), "x4:u8");
  EXPECT_EQ(told("v@:{CGAffineTransform=dddddd}B"), "x3:u8");
  EXPECT_EQ(told("v@:r^{CGImage=}^{Node=@^{Node}}B"), "x4:u8");
  EXPECT_EQ(told("v@:^{Flags=b3b5}^(Either=i[2{Deep=b1}])^[4i]B"), "x5:u8");
  EXPECT_EQ(told("v@:{Matrix=[4d]}{Row=[3f]}B"), "x2:u8");
  EXPECT_EQ(told("v@:DjdjiB"), "x3:u8");
  EXPECT_EQ(told("v@:{Pairs=[2[2i]]}B"), "x4:u8");
  EXPECT_EQ(told("v@:QQQQQ{_NSRange=QQ}B"), "16@0/0 1@16/16");
}

TEST(Signatures, PackTheStackOnTheDeviceAlone) {
  EXPECT_EQ(told("@QQQQQ@I@^dBi"), "8@0/0 1@8/8 4@12/16");
  EXPECT_EQ(told("v@:qqqqqqccsid"), "1@0/0 1@1/8 2@2/16 4@4/24");
  EXPECT_EQ(told("v@:ddddddddff"), "4@0/0 4@4/8");
  EXPECT_EQ(told("v@:dddddd{CGRect=dddd}f"), "32@0/0 4@32/32");
  EXPECT_FALSE(readSignature("v@:qqqqqqq").hasPackedStack());
  EXPECT_TRUE(readSignature("v@:qqqqqqii").hasPackedStack());
}

TEST(Signatures, RefuseWhatIsNone) {
  for (const char* text :
       {"", "v@:{CGRect", "v@:(union=if)", "v@:[4i]", "v@:b3", "v@:v", "v@:@\"x", "v@:{=", "v@:^"})
    EXPECT_NE(refused(text), "") << text;
  EXPECT_NE(refused("v" + std::string(100, '^') + "v"), "");
}

/// Instructions as llvm prints them.
std::string disassembled(const std::vector<uint32_t>& code, const char* target) {
  std::string source;
  for (const uint32_t word : code) source += ".inst " + std::to_string(word) + "\n";
  const device_test::Folder folder;
  writeFile(folder / "it.o", device_test::assemble(source, target));
  std::string lines;
  for (const auto& match :
       device_test::findAll(device_test::printed("llvm-objdump-19 -D -j .text --no-show-raw-insn " +
                                                 (folder / "it.o")),
                            "\n +[0-9a-f]+: +\t?([^\n]+)"))
    lines += match[1] + "\n";
  return lines;
}

std::string disassembled(const CallSignature& call, Direction direction) {
  const auto code = bridgeCode(call, direction, 0x1122334455667788);
  EXPECT_EQ(code[code.size() - 2], 0x55667788u);
  EXPECT_EQ(code[code.size() - 1], 0x11223344u);
  return disassembled(code, "aarch64-linux-gnu");
}

TEST(Bridges, AreOnlyWrittenWhereNeeded) {
  EXPECT_FALSE(needsBridge(readSignature("v@:B"), Direction::toLinux));
  EXPECT_TRUE(needsBridge(readSignature("v@:B"), Direction::toDevice));
  EXPECT_TRUE(needsBridge(readSignature("B@:"), Direction::toLinux));
  EXPECT_FALSE(needsBridge(readSignature("B@:"), Direction::toDevice));
  EXPECT_TRUE(needsBridge(readSignature("@QQQQQ@I@^dBi"), Direction::toLinux));
  EXPECT_FALSE(needsBridge(readSignature("v@:qqqqqqqq"), Direction::toLinux));
}

TEST(Bridges, ExtendAndCopy) {
  using testing::HasSubstr;
  const std::string arguments = disassembled(readSignature("v@:BcSs"), Direction::toDevice);
  for (const char* line :
       {"uxtb\tw2, w2", "sxtb\tw3, w3", "uxth\tw4, w4", "sxth\tw5, w5", "br\tx16"})
    EXPECT_THAT(arguments, HasSubstr(line));
  EXPECT_THAT(arguments, testing::Not(HasSubstr("blr")));
  const std::string result = disassembled(readSignature("c@:"), Direction::toLinux);
  EXPECT_THAT(result, HasSubstr("blr\tx16\nsxtb\tw0, w0\n"));
  const std::string copied = disassembled(readSignature("@QQQQQ@I@^dBi"), Direction::toLinux);
  EXPECT_THAT(copied, HasSubstr("ldr\tx9, [x29, #0x10]\nstr\tx9, [sp]\n"
                                "ldrb\tw9, [x29, #0x18]\nstrb\tw9, [sp, #0x8]\n"
                                "ldr\tw9, [x29, #0x1c]\nstr\tw9, [sp, #0x10]\n"));
  const std::string back = disassembled(readSignature("@QQQQQ@I@^dBi"), Direction::toDevice);
  EXPECT_THAT(back, HasSubstr("ldr\tw9, [x29, #0x20]\nstr\tw9, [sp, #0xc]\n"));
}

/// "0 1 2 4-5": the Linux places of the words that the device passes in one row.
std::string placed(std::string_view encoding) {
  std::string text;
  for (const uint32_t place : readWordSignature(encoding).places)
    text += (text.empty() ? "" : " ") + std::to_string(place);
  return text;
}

TEST(WordSignatures, StartNumbersOf64BitsAtEvenWords) {
  EXPECT_EQ(placed("v@:"), "0 1");
  EXPECT_EQ(placed("v@:Bcsifl"), "0 1 2 3 4 5 6 7");
  EXPECT_EQ(placed("v20@0:4d8i16"), "0 1 2 3 4");
  EXPECT_EQ(placed("@@:@dd"), "0 1 2 4 5 6 7");
  EXPECT_EQ(placed("v@:iqiQ"), "0 1 2 4 5 6 8 9");
  EXPECT_EQ(placed("v@?d"), "0 2 3");
  EXPECT_FALSE(readWordSignature("v@:dqd").isShifted());
  EXPECT_TRUE(readWordSignature("v@:id").isShifted());
}

TEST(WordSignatures, CountStructures) {
  EXPECT_EQ(placed("v@:{CGRect={CGPoint=ff}{CGSize=ff}}B"), "0 1 2 3 4 5 6");
  // A result in memory has an address; a result of one word has none.
  EXPECT_EQ(placed("{CGSize=ff}@:d"), "0 1 2 4 5");
  EXPECT_EQ(placed("{Pair=ss}@:d"), "0 1 2 3");
  EXPECT_EQ(placed("d@:d"), "0 1 2 3");
  const auto blocks = readWordSignature("{CGSize=ff}@:f@?").blocks;
  EXPECT_EQ(blocks, (std::vector<bool>{false, false, false, false, true}));
}

// On Linux a structure with 64-bit numbers begins at an even word, and has gaps before them.
TEST(WordSignatures, CountTheWordsOfStructures) {
  EXPECT_EQ(placed("v@:{Coordinate=dd}i"), "0 1 2 3 4 5 6");
  EXPECT_EQ(placed("v@:i{Coordinate=dd}i"), "0 1 2 4 5 6 7 8");
  EXPECT_EQ(placed("v@:{Wide=id}i"), "0 1 2 4 5 6");
  EXPECT_EQ(placed("v@:{Wide=di}i"), "0 1 2 3 4 6");
  EXPECT_EQ(placed("v@:{Outer=c{Inner=qi}s}i"), "0 1 2 4 5 6 8 10");
  EXPECT_EQ(placed("v@:{Small=ccs{Smaller=c}c}i"), "0 1 2 3 4");
  EXPECT_EQ(placed("v@:{Matrix=[3d]}i"), "0 1 2 3 4 5 6 7 8");
  EXPECT_EQ(placed("v@:(Either=di)i"), "0 1 2 3 4");
  EXPECT_EQ(placed("{Coordinate=dd}@:i"), "0 1 2 3");
}

TEST(WordSignatures, RefuseWhatIsNone) {
  for (const char* text : {"", "v@:{CGRect", "v@:[4i]", "v@:v", "{Wide=id}@:", "{Wide=di}@:"})
    EXPECT_THROW(readWordSignature(text), Error) << text;
  EXPECT_THROW(bridgeCode(readWordSignature("v" + std::string(40, 'd')), Direction::toLinux, 0),
               Error);
}

TEST(WordBridges, MoveEachWord) {
  const auto lines = [](const char* encoding, Direction direction) {
    auto code = bridgeCode(readWordSignature(encoding), direction, 0x11223344);
    EXPECT_EQ(code.back(), 0x11223344u);
    return disassembled(code, "armv7-linux-gnueabi");
  };
  using testing::HasSubstr;
  const std::string out = lines("v@:idi", Direction::toLinux);
  EXPECT_THAT(out, HasSubstr("push\t{r0, r1, r2, r3}\npush\t{r4, lr}\nadd\tr4, sp, #8\n"
                             "sub\tsp, sp, #32\nbic\tsp, sp, #7\n"
                             "ldr\tr0, [r4]\nldr\tr1, [r4, #0x4]\nldr\tr2, [r4, #0x8]\n"
                             "ldr\tr12, [r4, #0xc]\nstr\tr12, [sp]\n"
                             "ldr\tr12, [r4, #0x10]\nstr\tr12, [sp, #0x4]\n"
                             "ldr\tr12, [r4, #0x14]\nstr\tr12, [sp, #0x8]\n"));
  const std::string in = lines("v@:idi", Direction::toDevice);
  EXPECT_THAT(in, HasSubstr("ldr\tr2, [r4, #0x8]\nldr\tr3, [r4, #0x10]\n"
                            "ldr\tr12, [r4, #0x14]\nstr\tr12, [sp]\n"
                            "ldr\tr12, [r4, #0x18]\nstr\tr12, [sp, #0x4]\n"));
  EXPECT_THAT(in, HasSubstr("sub\tsp, r4, #8\npop\t{r4, lr}\nadd\tsp, sp, #16\nbx\tlr\n"));
}

}  // namespace
