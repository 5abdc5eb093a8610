// Where a function of a 32-bit device goes on with an exception.
#include <gmock/gmock.h>

#include <cstring>

#include "abi/handler_table.h"
#include "device/toolbox.h"
#include "macho/error.h"

namespace {

using namespace varnix::device;

/// A table as the compiler writes it, with the types of two handlers and one for everything. Calls:
/// 1 cleans up, 2 has the first handler, then the second, 3 has the second, then a cleanup, 4 has
/// the one for everything.
class Table {
 public:
  const char first = 0, second = 0;

  std::optional<Landing> landing(uint32_t call, const void* thrown) const {
    return findLanding(Reader(bytes_), call, [&](const void* type) {
      asked.push_back(type);
      return type == thrown;
    });
  }

  Table() {
    const std::vector<uint8_t> calls = {0, 0, 1, 1, 2, 5, 0x83, 1, 9};
    // Each a handler's number and the distance to the next, from where the distance is.
    const std::vector<uint8_t> actions = {1, 1, 2, 0, 2, 1, 0, 0, 3, 0};
    bytes_ = {0xff, 0x9b, 0, 3, static_cast<uint8_t>(calls.size())};
    bytes_.insert(bytes_.end(), calls.begin(), calls.end());
    bytes_.insert(bytes_.end(), actions.begin(), actions.end());
    const std::size_t typesAt = bytes_.size();
    bytes_.resize(typesAt + 12 + 2 * sizeof(void*));
    bytes_[2] = static_cast<uint8_t>(typesAt + 12 - 3);
    const void* types[] = {&first, &second};
    for (int i = 0; i < 2; ++i) {
      const std::size_t pointer = typesAt + 12 + static_cast<std::size_t>(i) * sizeof(void*);
      std::memcpy(&bytes_[pointer], &types[i], sizeof types[i]);
      // The last is the first handler's.
      const std::size_t entry = typesAt + 8 - 4 * static_cast<std::size_t>(i);
      const auto distance = static_cast<int32_t>(pointer - entry);
      std::memcpy(&bytes_[entry], &distance, sizeof distance);
    }
  }

  uint8_t& byte(std::size_t at) { return bytes_[at]; }

  mutable std::vector<const void*> asked;

 private:
  std::vector<uint8_t> bytes_;
};

TEST(HandlerTable, FindsCleanups) {
  const Table table;
  const auto landing = table.landing(1, &table.first);
  ASSERT_TRUE(landing);
  EXPECT_EQ(landing->place, 0u);
  EXPECT_EQ(landing->selector, 0);
  EXPECT_TRUE(table.asked.empty());
}

TEST(HandlerTable, AsksHandlersInOrder) {
  const Table table;
  EXPECT_EQ(table.landing(2, &table.first)->selector, 1);
  EXPECT_EQ(table.asked, (std::vector<const void*>{&table.first}));
  table.asked.clear();
  EXPECT_EQ(table.landing(2, &table.second)->selector, 2);
  EXPECT_EQ(table.landing(2, &table.second)->place, 1u);
  EXPECT_FALSE(table.landing(2, nullptr));
}

TEST(HandlerTable, EndsWithACleanup) {
  const Table table;
  EXPECT_EQ(table.landing(3, &table.second)->selector, 2);
  EXPECT_EQ(table.landing(3, nullptr)->selector, 0);
  EXPECT_EQ(table.landing(3, nullptr)->place, 2u);
}

TEST(HandlerTable, ANilTypeTakesEverything) {
  const Table table;
  const auto landing = table.landing(4, nullptr);
  EXPECT_EQ(landing->selector, 3);
  EXPECT_EQ(landing->place, 131u);
  EXPECT_TRUE(table.asked.empty());
}

TEST(HandlerTable, RefusesWhatIsUnknown) {
  EXPECT_THROW(Table().landing(6, nullptr), Error);
  for (const std::size_t at : {0u, 1u}) {
    Table table;
    table.byte(at) = 0x10;
    EXPECT_THROW(table.landing(1, nullptr), Error) << at;
  }
  Table table;
  table.byte(14) = 0x7f;  // the first action's handler: a list of what a function may throw
  EXPECT_THROW(table.landing(2, nullptr), Error);
}

}  // namespace
