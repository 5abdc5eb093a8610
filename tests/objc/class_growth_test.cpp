// Instance variables of a class whose superclass has grown since its binary was compiled.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "Foundation/log.h"
#include "objc/metadata.h"
#include "objc/object.h"

extern "C" void objc_mapImage(Class* classes, Class* classesEnd, objc::CategoryData** categories,
                              objc::CategoryData** categoriesEnd);

namespace {

/// A class in a binary of its own, as a compiler would write it.
class Image {
 public:
  struct Variable {
    const char* name;
    const char* types;
    std::int32_t offset;
    std::uint32_t size;
    std::uint32_t log2Alignment;
  };

  Image(std::string name, Class superclass, std::uint32_t start, std::uint32_t size,
        std::vector<Variable> variables)
      : name_(std::move(name)) {
    ivars_.header = {sizeof(objc::IvarEntry), static_cast<std::uint32_t>(variables.size())};
    for (std::size_t i = 0; i < variables.size(); ++i) {
      const Variable& one = variables[i];
      offsets_[i] = one.offset;
      ivars_.entries[i] = {&offsets_[i], one.name, one.types, one.log2Alignment, one.size};
    }
    ro_.instanceStart = start;
    ro_.instanceSize = size;
    ro_.name = name_.c_str();
    ro_.ivars = &ivars_;
    metaRo_.flags = objc::kMetaClass;
    metaRo_.instanceStart = metaRo_.instanceSize = sizeof(objc_class);
    metaRo_.name = name_.c_str();
    meta_ = {objc_getMetaClass("NSObject"), superclass->isa, &_objc_empty_cache, nullptr, &metaRo_};
    class_ = {&meta_, superclass, &_objc_empty_cache, nullptr, &ro_};
  }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  void load() {
    Class listed = &class_;
    objc_mapImage(&listed, &listed + 1, nullptr, nullptr);
  }
  Class cls() { return &class_; }
  /// The word from which the binary's own code reads the offset.
  std::int32_t offset(std::size_t i) const { return offsets_[i]; }

 private:
  std::string name_;
  std::int32_t offsets_[4]{};
  struct {
    objc::ListHeader header;
    objc::IvarEntry entries[4];
  } ivars_{};
  objc::ClassRo ro_{};
  objc::ClassRo metaRo_{};
  objc_class meta_{};
  objc_class class_{};
};

/// What the subclasses below were compiled against: nothing after the isa.
constexpr std::uint32_t kOldEnd = sizeof(Class);

/// A name that no class has, even if other cases ran before.
std::string unused(const char* name) {
  static int made = 0;
  return name + std::to_string(++made);
}

/// Images are never freed, since the run-time keeps pointers into them.
Image& grownSuperclass(std::uint32_t size) {
  auto* image = new Image(unused("GrownFixture"), objc_getClass("NSObject"), kOldEnd,
                          kOldEnd + size, {{"_grown", "[16c]", kOldEnd, size, 0}});
  image->load();
  return *image;
}

Image& subclass(Class superclass) {
  auto* image = new Image(unused("GrownChildFixture"), superclass, kOldEnd, 24,
                          {{"_flag", "B", kOldEnd, 1, 0}, {"_number", "d", 16, 8, 3}});
  image->load();
  return *image;
}

std::ptrdiff_t offsetOf(Class cls, const char* name) {
  return ivar_getOffset(class_getInstanceVariable(cls, name));
}

void expectChild(std::uint32_t grownBy, std::int32_t flagAt, std::int32_t numberAt,
                 std::size_t size) {
  Image& child = subclass(grownSuperclass(grownBy).cls());
  EXPECT_EQ(child.offset(0), flagAt);
  EXPECT_EQ(child.offset(1), numberAt);
  EXPECT_EQ(offsetOf(child.cls(), "_flag"), flagAt);
  EXPECT_EQ(offsetOf(child.cls(), "_number"), numberAt);
  EXPECT_EQ(offsetOf(class_getSuperclass(child.cls()), "_grown"), kOldEnd);
  EXPECT_EQ(class_getInstanceSize(child.cls()), size);
}

TEST(GrownSuperclass, MovesTheIvarsBehindIt) { expectChild(16, kOldEnd + 16, 32, 40); }

// The move is a multiple of the strictest alignment, so every variable stays aligned.
TEST(GrownSuperclass, KeepsTheAlignment) { expectChild(3, kOldEnd + 8, 24, 32); }

TEST(GrownSuperclass, MovesNothingWhereNothingGrew) { expectChild(0, kOldEnd, 16, 24); }

TEST(GrownSuperclass, MovesGrandchildrenToo) {
  Image& child = subclass(grownSuperclass(16).cls());
  auto* grandchild =
      new Image(unused("GrandchildFixture"), child.cls(), 24, 28, {{"_count", "i", 24, 4, 2}});
  grandchild->load();
  EXPECT_EQ(grandchild->offset(0), 40);
  // Rounded up to whole words.
  EXPECT_EQ(class_getInstanceSize(grandchild->cls()), sizeof(Class) == 8 ? 48U : 44U);
}

// If the superclass is smaller, nothing moves: the gap does no harm.
TEST(GrownSuperclass, StaysWhereTheSuperclassShrank) {
  auto* image = new Image(unused("ShrunkChildFixture"), objc_getClass("NSObject"), 40, 48,
                          {{"_number", "d", 40, 8, 3}});
  image->load();
  EXPECT_EQ(image->offset(0), 40);
  EXPECT_EQ(class_getInstanceSize(image->cls()), 48U);
}

TEST(GrownSuperclass, SharesNoMemoryWithItsSubclass) {
  Image& child = subclass(grownSuperclass(16).cls());
  id object = class_createInstance(child.cls(), 0);
  char* bytes = reinterpret_cast<char*>(object);
  std::memset(bytes + offsetOf(child.cls(), "_grown"), 0x7f, 16);
  double number = -1;
  std::memcpy(&number, bytes + child.offset(1), sizeof number);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(bytes[child.offset(0)], 0);
  objc_release(object);
}

/// The lines of the log about classes that two binaries have.
std::vector<std::string> doubleClasses() {
  std::vector<std::string> lines;
  for (const auto& line : host::logLines())
    if (line.line.find(" is implemented in both ") != line.line.npos) lines.push_back(line.line);
  return lines;
}

TEST(Images, OfTwoClassesOfANameTheFirstIsFoundByIt) {
  Class first = grownSuperclass(16).cls();
  const std::string name = class_getName(first);
  auto* second = new Image(name, objc_getClass("NSObject"), kOldEnd, kOldEnd, {});
  EXPECT_EQ(doubleClasses(), std::vector<std::string>{});
  second->load();
  EXPECT_EQ(objc_getClass(name.c_str()), first);
  EXPECT_EQ(objc_getMetaClass(name.c_str()), object_getClass(first));
  // Neither of them is in a binary.
  EXPECT_EQ(doubleClasses(),
            std::vector<std::string>{"Class " + name +
                                     " is implemented in both ? and ?. One of the two will be "
                                     "used. Which one is undefined."});
}

TEST(Images, OfTwoClassesOfANameBothAreOfUse) {
  Class first = grownSuperclass(16).cls();
  auto* image = new Image(class_getName(first), objc_getClass("NSObject"), kOldEnd, 24,
                          {{"_flag", "B", kOldEnd, 1, 0}});
  image->load();
  Class second = image->cls();
  EXPECT_STREQ(class_getName(second), class_getName(first));
  EXPECT_EQ(class_getInstanceVariable(second, "_grown"), nullptr);
  EXPECT_EQ(offsetOf(second, "_flag"), static_cast<std::ptrdiff_t>(kOldEnd));
  int (*number)(id, SEL) = [](id, SEL) { return 7; };
  EXPECT_TRUE(class_addMethod(second, "number"_sel, reinterpret_cast<IMP>(number), "i@:"));
  EXPECT_FALSE(class_respondsToSelector(first, "number"_sel));
  for (int i = 0; i < 2; ++i) {
    id object = send<id>(send<id>(second, "alloc"_sel), "init"_sel);
    EXPECT_EQ(object_getClass(object), second);
    EXPECT_EQ(send<int>(object, "number"_sel), 7);
    EXPECT_TRUE(send<bool>(object, "isKindOfClass:"_sel, second));
    EXPECT_FALSE(send<bool>(object, "isKindOfClass:"_sel, first));
    objc_release(object);
  }
}

// A third binary's subclass names its superclass by symbol, and so one of the two.
TEST(Images, TheSecondClassOfANameHasSubclasses) {
  Class first = grownSuperclass(16).cls();
  auto* second = new Image(class_getName(first), objc_getClass("NSObject"), kOldEnd, kOldEnd, {});
  second->load();
  Image& child = subclass(second->cls());
  EXPECT_EQ(class_getSuperclass(child.cls()), second->cls());
  EXPECT_EQ(child.offset(0), static_cast<std::int32_t>(kOldEnd));
  EXPECT_EQ(objc_getClass(class_getName(child.cls())), child.cls());
}

TEST(Images, ASecondClassIsMappedOnce) {
  Class first = grownSuperclass(16).cls();
  auto* second = new Image(class_getName(first), objc_getClass("NSObject"), kOldEnd, kOldEnd, {});
  second->load();
  second->load();
  EXPECT_EQ(doubleClasses().size(), 1U);
}

TEST(Images, ANameThatIsTakenIsTakenForClassPairsToo) {
  Class first = grownSuperclass(16).cls();
  EXPECT_EQ(objc_allocateClassPair(first, class_getName(first), 0), nullptr);
}

TEST(Images, OneThatIsMappedTwiceChangesNothing) {
  Image& child = subclass(grownSuperclass(16).cls());
  child.load();
  EXPECT_EQ(child.offset(0), kOldEnd + 16);
  EXPECT_EQ(objc_getClass(class_getName(child.cls())), child.cls());
}

TEST(Images, AnEmptyOneIsFine) { objc_mapImage(nullptr, nullptr, nullptr, nullptr); }

}  // namespace
