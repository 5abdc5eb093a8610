// Ad-hoc signatures: their contents, digest by digest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/evp.h>

#include "device/toolbox.h"
#include "macho/bytes.h"
#include "macho/error.h"
#include "macho/files.h"
#include "signer/sign.h"

namespace {

using namespace device_test;
using testing::HasSubstr;
namespace device = varnix::device;

constexpr const char* kIdentifier = "com.example.it";

const char* const kSource = R"(
  .section __TEXT,__text,regular,pure_instructions
  .globl _start
  %s
  .p2align 2
  _start:
  nop
  .section __DATA,__data
  .p2align 2
  .globl _data
  _data: .space 70001, 7
)";

std::string source(const std::string& thumb) {
  std::string text = kSource;
  return text.replace(text.find("%s"), 2, thumb);
}

/// Has no signature, and its size is not a whole number of pages.
Bytes narrow() {
  return linked(assemble(source(".code 16\n.thumb_func _start")), options({"_start", "_data"}));
}

Bytes wide(const std::string& flags = "-no_adhoc_codesign") {
  const Folder folder;
  device::writeFile(folder / "it.o", assemble(source(""), "arm64-apple-ios9.3"));
  printed("ld64.lld-19 -dylib -arch arm64 -platform_version ios 9.3 9.3 -install_name /it " +
          flags + " -o " + (folder / "it") + " " + (folder / "it.o"));
  return device::readFile(folder / "it");
}

/// Most significant byte first.
uint32_t big32(const Bytes& bytes, size_t at) {
  return __builtin_bswap32(device::Reader(bytes).u32(at));
}

Bytes part(const Bytes& bytes, size_t at, size_t size) {
  const auto span = device::Reader(bytes).at(at, size);
  return {span.begin(), span.end()};
}

Bytes digest(const EVP_MD* kind, const Bytes& bytes) {
  Bytes result(static_cast<size_t>(EVP_MD_get_size(kind)));
  EVP_Digest(bytes.data(), bytes.size(), result.data(), nullptr, kind, nullptr);
  return result;
}

/// Where llvm-objdump finds the signature.
struct Place {
  size_t offset, size;
};
Place signaturePlace(const Bytes& library) {
  const ReadBack read(library);
  const auto found = findAll(read.objdump("--macho --private-headers"),
                             "cmd LC_CODE_SIGNATURE\\s+cmdsize 16\\s+dataoff ([0-9]+)\\s+"
                             "datasize ([0-9]+)");
  EXPECT_EQ(found.size(), 1u);
  return {std::stoul(found.at(0).at(1)), std::stoul(found.at(0).at(2))};
}

/// The blobs, by slot number.
std::map<uint32_t, Bytes> blobs(const Bytes& library) {
  const Place place = signaturePlace(library);
  EXPECT_EQ(place.offset + place.size, library.size());
  const Bytes whole = part(library, place.offset, place.size);
  EXPECT_EQ(big32(whole, 0), 0xfade0cc0u);
  EXPECT_LE(big32(whole, 4), whole.size());
  std::map<uint32_t, Bytes> found;
  for (uint32_t i = 0; i < big32(whole, 8); ++i) {
    const uint32_t offset = big32(whole, 16 + 8 * i);
    found[big32(whole, 12 + 8 * i)] = part(whole, offset, big32(whole, offset + 4));
  }
  return found;
}

void checkDirectory(const Bytes& directory, const EVP_MD* kind, const Bytes& library,
                    const Bytes& requirements) {
  const size_t length = static_cast<size_t>(EVP_MD_get_size(kind));
  const Place place = signaturePlace(library);
  EXPECT_EQ(big32(directory, 0), 0xfade0c02u);
  EXPECT_EQ(big32(directory, 12), 2u) << "ad hoc";
  EXPECT_EQ(directory[36], length);
  EXPECT_EQ(directory[37], length == 20 ? 1 : 2);
  EXPECT_EQ(directory[39], 12) << "pages of 4 KiB";
  EXPECT_EQ(device::Reader(directory).text(big32(directory, 20)), kIdentifier);
  const uint32_t hashes = big32(directory, 16), special = big32(directory, 24),
                 pages = big32(directory, 28), limit = big32(directory, 32);
  EXPECT_EQ(limit, place.offset);
  ASSERT_EQ(pages, (limit + 4095) / 4096);
  ASSERT_EQ(special, 2u);
  EXPECT_EQ(part(directory, hashes - length, length), Bytes(length)) << "no property list";
  EXPECT_EQ(part(directory, hashes - 2 * length, length), digest(kind, requirements));
  for (uint32_t page = 0; page < pages; ++page) {
    const size_t at = size_t{page} * 4096;
    const Bytes code = part(library, at, std::min<size_t>(4096, limit - at));
    EXPECT_EQ(part(directory, hashes + page * length, length), digest(kind, code)) << page;
  }
  EXPECT_EQ(directory.size(), hashes + pages * length);
}

void checkSignature(const Bytes& library) {
  const auto found = blobs(library);
  ASSERT_EQ(found.size(), 4u);
  EXPECT_EQ(found.at(2), (Bytes{0xfa, 0xde, 0x0c, 0x01, 0, 0, 0, 12, 0, 0, 0, 0}));
  EXPECT_EQ(found.at(0x10000), (Bytes{0xfa, 0xde, 0x0b, 0x01, 0, 0, 0, 8}));
  checkDirectory(found.at(0), EVP_sha1(), library, found.at(2));
  checkDirectory(found.at(0x1000), EVP_sha256(), library, found.at(2));
}

TEST(DeviceSigner, BothDigestsOfEveryPage) {
  checkSignature(device::sign(narrow(), kIdentifier));
  checkSignature(device::sign(wide(), kIdentifier));
}

TEST(DeviceSigner, ReplacesAnotherSignature) {
  const Bytes other = wide("-adhoc_codesign");
  ASSERT_EQ(blobs(other).size(), 1u);
  const Bytes library = device::sign(other, kIdentifier);
  checkSignature(library);
}

TEST(DeviceSigner, SigningTwiceChangesNothing) {
  for (const Bytes& library : {narrow(), wide()}) {
    const Bytes once = device::sign(library, kIdentifier);
    EXPECT_EQ(device::sign(once, kIdentifier), once);
  }
}

TEST(DeviceSigner, OnlyTheHeaderAndTheEndChange) {
  const Bytes before = narrow(), after = device::sign(before, kIdentifier);
  const ReadBack read(before);
  const size_t text = read.section("__text").address;
  EXPECT_EQ(part(before, text, before.size() - text), part(after, text, before.size() - text));
}

TEST(DeviceSigner, TheLastSegmentHoldsTheSignature) {
  for (const Bytes& library : {narrow(), wide()}) {
    const Bytes after = device::sign(library, kIdentifier);
    const auto found = findAll(ReadBack(after).objdump("--macho --private-headers"),
                               "segname __LINKEDIT\\s+vmaddr \\S+\\s+vmsize (\\S+)\\s+fileoff "
                               "([0-9]+)\\s+filesize ([0-9]+)");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(std::stoul(found[0][2]) + std::stoul(found[0][3]), after.size());
    EXPECT_GE(hexadecimal(found[0][1]), std::stoul(found[0][3]));
    EXPECT_EQ(hexadecimal(found[0][1]) % 0x4000, 0u);
  }
}

std::string complaint(const Bytes& library, const std::string& identifier = kIdentifier) {
  try {
    device::verify(library, identifier);
  } catch (const device::Error& error) {
    return error.what();
  }
  return {};
}

TEST(DeviceSigner, VerifyingSeesEveryChange) {
  const Bytes library = device::sign(narrow(), kIdentifier);
  EXPECT_EQ(complaint(library), "");
  EXPECT_EQ(complaint(narrow()), "not signed");
  const std::string message = "the signature is not that of these bytes";
  EXPECT_EQ(complaint(library, "com.example.other"), message);
  EXPECT_EQ(complaint(wide("-adhoc_codesign")), message);
  const ReadBack read(library);
  for (size_t at = read.section("__text").address; at < library.size(); at += 997) {
    Bytes changed = library;
    changed[at] ^= 1;
    EXPECT_EQ(complaint(changed), message) << at;
  }
}

TEST(DeviceSigner, RefusesWhatItCannotSign) {
  const auto refusal = [](const Bytes& file) -> std::string {
    try {
      device::sign(file, kIdentifier);
    } catch (const device::Error& error) {
      return error.what();
    }
    return {};
  };
  EXPECT_EQ(refusal(assemble(source(""), "arm64-apple-ios9.3")),
            "not a library for one Arm architecture");
  EXPECT_THAT(refusal({}), HasSubstr("cut short"));
  // Adds other load commands until only one signature's command fits before the first section, and
  // one less.
  for (const Bytes& library : {narrow(), wide()}) {
    const bool is64 = device::Reader(library).u32(0) == 0xfeedfacf;
    const uint32_t header = is64 ? 32 : 28;
    const uint32_t size = device::Reader(library).u32(20);
    const auto first = findAll(ReadBack(library).objdump("--macho --private-headers"),
                               "sectname __text\\s+segname __TEXT\\s+addr \\S+\\s+size \\S+\\s+"
                               "offset ([0-9]+)");
    ASSERT_EQ(first.size(), 1u);
    const auto room = static_cast<uint32_t>(std::stoul(first[0][1])) - header - size;
    ASSERT_GE(room, is64 ? 24u : 16u);
    const auto filled = [&](uint32_t with) {
      Bytes result = library;
      device::put32(result, 16, device::Reader(library).u32(16) + 1);
      device::put32(result, 20, size + with);
      device::put32(result, header + size, 0x2a);
      device::put32(result, header + size + 4, with);
      return result;
    };
    EXPECT_EQ(refusal(filled(room)), "no room for the load command of a signature") << is64;
    if (room >= 32) {
      EXPECT_EQ(refusal(filled(room - 16)), "") << is64;
      EXPECT_NE(refusal(filled(room - 8)), "") << is64;
    }
  }
  // A segment whose sections would reach beyond its command, in both widths.
  for (Bytes library : {narrow(), wide()}) {
    const bool is64 = device::Reader(library).u32(0) == 0xfeedfacf;
    const size_t segment = is64 ? 32 : 28;
    device::put32(library, segment + (is64 ? 64 : 48), 1000);
    EXPECT_THAT(refusal(library), HasSubstr("cut short")) << is64;
  }
  // The header gives the commands more room than they fill: an added command would not be found.
  Bytes loose = narrow();
  device::put32(loose, 20, device::Reader(loose).u32(20) + 16);
  EXPECT_EQ(refusal(loose), "the load commands do not fill their room");
  Bytes longer = narrow();
  longer.push_back(0);
  EXPECT_EQ(refusal(longer), "__LINKEDIT does not end where the file ends");
}

}  // namespace
