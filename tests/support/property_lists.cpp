#include "support/property_lists.h"

namespace test {

std::string binaryPropertyList() {
  constexpr std::string_view kDigits =
      "62706c6973743030dd0102030405060708090a0b0c0d0e0f10111213141a1b1c1d1e1f5362696754626c"
      "6f6255636f756e74546461746555656d70747957656e61626c6564546c697374546e616d65586e656761"
      "74697665546e6f6e65536f666655706c61696e547265616c140000000000000000800000000000000544"
      "0001feff10073341bba9d791000000d009a315161710015374776fd11819557468726565100369004700"
      "7200fc006e002082720020d83dde0013fffffffffffffffba0085568656c6c6f233fb999999999999a08"
      "23272c32373d454a4f585d61676c7d82848d8e8f9395999ca2a4b7c0c1c2c80000000000000101000000"
      "0000000020000000000000000000000000000000d1";
  std::string bytes;
  for (std::size_t i = 0; i < kDigits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(std::string(kDigits.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

std::string bigEndian(std::uint64_t value, int size) {
  std::string bytes;
  for (int i = size - 1; i >= 0; --i) bytes += static_cast<char>(value >> (8 * i) & 0xff);
  return bytes;
}

std::string binaryFromObjects(const std::vector<std::string>& objects, std::uint64_t top) {
  std::string bytes = "bplist00";
  std::string offsets;
  for (const std::string& object : objects) {
    offsets += bigEndian(bytes.size(), 4);
    bytes += object;
  }
  const std::size_t table = bytes.size();
  return bytes + offsets + std::string(6, '\0') + "\4\2" + bigEndian(objects.size(), 8) +
         bigEndian(top, 8) + bigEndian(table, 8);
}

std::string binaryArray(const std::vector<std::uint64_t>& items) {
  std::string bytes = "\xaf\x11" + bigEndian(items.size(), 2);
  for (std::uint64_t item : items) bytes += bigEndian(item, 2);
  return bytes;
}

}  // namespace test
