// The container root: where the device's paths are on this machine.
#include "process/container.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "support/hosted.h"

namespace {

TEST(HostPath, MapsAbsolutePathsIntoTheRoot) {
  host::setContainerRoot("/some/root/");
  EXPECT_EQ(host::containerRoot(), "/some/root");
  EXPECT_EQ(host::hostPath("/var/mobile/a.plist"), "/some/root/var/mobile/a.plist");
  EXPECT_EQ(host::hostPath("/"), "/some/root");
  EXPECT_EQ(host::hostPath("//var///mobile/./a/"), "/some/root/var/mobile/a");
  EXPECT_EQ(host::hostPath("/a b/é %41/..."), "/some/root/a b/é %41/...");
}

TEST(HostPath, NeverLeavesTheRoot) {
  host::setContainerRoot("/some/root");
  EXPECT_EQ(host::hostPath("/../../etc/passwd"), "/some/root/etc/passwd");
  EXPECT_EQ(host::hostPath("/var/../../../etc"), "/some/root/etc");
  EXPECT_EQ(host::hostPath("/var/mobile/.."), "/some/root/var");
  EXPECT_EQ(host::hostPath("/.."), "/some/root");
}

TEST(HostPath, IsEmptyForWhatIsNoAbsolutePath) {
  host::setContainerRoot("/some/root");
  EXPECT_EQ(host::hostPath(""), "");
  EXPECT_EQ(host::hostPath("var/mobile"), "");
  EXPECT_EQ(host::hostPath("../etc"), "");
  EXPECT_EQ(host::hostPath(std::string_view("/a\0/b", 5)), "");
}

TEST(HostPath, IsReadFromWhatIsInstalledWhereTheRootHasNothing) {
  const test::Folder root;
  const test::Folder packages;
  host::setContainerRoot(root.path());
  host::setInstalledFolder(packages.path());
  std::ofstream(packages.path() + "/a") << "package";
  EXPECT_EQ(host::readablePath("/a"), packages.path() + "/a");
  EXPECT_EQ(host::readablePath("/../a"), packages.path() + "/a");
  EXPECT_EQ(host::hostPath("/a"), root.path() + "/a");
  EXPECT_EQ(host::readablePath("/b"), root.path() + "/b");
  EXPECT_EQ(host::readablePath("a"), "");
  std::ofstream(root.path() + "/a") << "own";
  EXPECT_EQ(host::readablePath("/a"), root.path() + "/a");
  host::setInstalledFolder("");
  std::filesystem::remove(root.path() + "/a");
  EXPECT_EQ(host::readablePath("/a"), root.path() + "/a");
}

TEST(HostPath, IsToldFromTheMachines) {
  host::setContainerRoot("/some/root");
  host::setInstalledFolder("/some/packages");
  EXPECT_EQ(host::devicePath("/some/root/var/a"), "/var/a");
  EXPECT_EQ(host::devicePath("/some/packages/Library/b"), "/Library/b");
  for (const char* other : {"/some/rootless/a", "/some", "/etc/passwd", "", "some/root/a"})
    EXPECT_EQ(host::devicePath(other), "") << other;
  host::setContainerRoot("/");
  EXPECT_EQ(host::devicePath("/etc"), "/etc");
}

TEST(HostPath, IsEmptyWithoutARoot) { EXPECT_EQ(host::hostPath("/etc/passwd"), ""); }

class ResolveContainerRoot : public testing::Test {
 protected:
  ResolveContainerRoot() {
    for (const char* name : {"VARNIX_ROOT", "XDG_DATA_HOME", "HOME"}) unsetenv(name);
  }
  std::string path(const char* below) const { return folder.path() + below; }
  void set(const char* name, const char* below) const { setenv(name, path(below).c_str(), 1); }

  test::Folder folder;
};

TEST_F(ResolveContainerRoot, TakesTheFirstThatIsGiven) {
  set("HOME", "/home");
  EXPECT_EQ(host::resolveContainerRoot(""), path("/home/.local/share/varnix"));
  setenv("XDG_DATA_HOME", "relative", 1);
  EXPECT_EQ(host::resolveContainerRoot(""), path("/home/.local/share/varnix"));
  set("XDG_DATA_HOME", "/data");
  EXPECT_EQ(host::resolveContainerRoot(""), path("/data/varnix"));
  set("VARNIX_ROOT", "/variable");
  EXPECT_EQ(host::resolveContainerRoot(""), path("/variable"));
  EXPECT_EQ(host::resolveContainerRoot(path("/option/deep/")), path("/option/deep"));
  setenv("VARNIX_ROOT", "", 1);
  EXPECT_EQ(host::resolveContainerRoot(""), path("/data/varnix"));
  for (const char* below :
       {"/home/.local/share/varnix", "/data/varnix", "/variable", "/option/deep"}) {
    EXPECT_TRUE(std::filesystem::is_directory(path(below))) << below;
  }
}

TEST_F(ResolveContainerRoot, MakesARelativePathAbsolute) {
  std::filesystem::current_path(folder.path());
  EXPECT_EQ(host::resolveContainerRoot("a/../b"), std::filesystem::current_path().string() + "/b");
  EXPECT_TRUE(std::filesystem::is_directory("b"));
}

TEST_F(ResolveContainerRoot, SaysWhereNoFolderCanBeMade) {
  EXPECT_THROW(host::resolveContainerRoot(""), std::runtime_error);
  std::ofstream(path("/file")) << "text";
  EXPECT_THROW(host::resolveContainerRoot(path("/file")), std::runtime_error);
  EXPECT_THROW(host::resolveContainerRoot(path("/file/below")), std::runtime_error);
  EXPECT_THROW(host::resolveContainerRoot("/proc/none/below"), std::runtime_error);
}

}  // namespace
