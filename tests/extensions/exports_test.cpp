// What other binaries may link: the library's dynamic symbols, on this machine and in the device's
// list.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace {

using Names = std::set<std::string>;

const Names kFunctions{"QKAddTwitterShareButton",  "QKKillProcess",
                       "QKOpenMailAddress",        "QKOpenTwitterUsername",
                       "QKResetPrefsTint",         "QKSetPrefsTint",
                       "QKShowTwitterFollowAlert", "QKVersionCopyrightSpecifier"};
const Names kClasses{"KTPrefsManager", "QKBarButtonItem", "QKTwitterShareHandler",
                     "QKWelcomeTwitterHandler"};

Names expected() {
  Names names = kFunctions;
  for (const std::string& cls : kClasses) {
    names.insert("OBJC_CLASS_$_" + cls);
    names.insert("OBJC_METACLASS_$_" + cls);
  }
  return names;
}

/// False for symbols that a sanitizer adds.
bool isOurs(const std::string& name) { return !name.starts_with("__odr_asan_gen_"); }

#if defined(VARNIX_ARCHITECTURE)
/// A line of the device's table: address, then the name with its underscore.
constexpr const char* kTable =
    "llvm-objdump-19 --macho --exports-trie --arch=" VARNIX_ARCHITECTURE " " VARNIX_LIBRARY;

std::string nameIn(const std::string& line) {
  std::istringstream words(line);
  std::string address, name;
  words >> address >> name;
  return address.starts_with("0x") && name.starts_with("_") ? name.substr(1) : std::string();
}
#else
constexpr const char* kTable = "readelf --dyn-syms --wide " VARNIX_LIBRARY;

/// A line of the table: number, value, size, type, binding, visibility, section, name.
std::string nameIn(const std::string& line) {
  std::istringstream words(line);
  std::string number, value, size, type, binding, visibility, section, name;
  words >> number >> value >> size >> type >> binding >> visibility >> section >> name;
  const bool isDefined = !name.empty() && section != "UND" && section != "Ndx";
  return isDefined ? name : std::string();
}
#endif

TEST(Exports, AreWhatPanesCall) {
  FILE* table = popen(kTable, "r");
  ASSERT_NE(table, nullptr);
  Names names;
  char line[1024];
  while (std::fgets(line, sizeof line, table) != nullptr) {
    const std::string name = nameIn(line);
    if (!name.empty() && isOurs(name)) names.insert(name);
  }
  EXPECT_EQ(pclose(table), 0);
  EXPECT_EQ(names, expected());
}

TEST(Exports, AreTheDevicesToo) {
  std::ifstream list(VARNIX_SAMPLES "/../device/lists/exports.txt");
  ASSERT_TRUE(list);
  Names names;
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line.starts_with("#")) continue;
    ASSERT_TRUE(line.starts_with("_")) << line;
    names.insert(line.substr(1));
  }
  EXPECT_EQ(names, expected());
}

}  // namespace
