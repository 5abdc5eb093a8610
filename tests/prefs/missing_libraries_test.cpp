// Devices without the libraries of other packages: the library is still loaded, and reads colours
// by itself.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "support/hosted.h"

namespace {

using namespace test;
using Names = std::vector<std::string>;

/// Red, green, blue, alpha.
using Components = std::array<CGFloat, 4>;

class MissingLibraries : public Hosted {
 protected:
  void startWithout(const Names& names) {
    withoutLibraries = names;
    start("com.example.app");
    load();
  }
  Components dyeFor(const std::string& color) {
    settings("<key>global_color</key><string>" + color + "</string>");
    Components parts{};
    auto* dye = send<UIColor*>(manager(), "dye"_sel);
    if (dye == nullptr) return {-1, -1, -1, -1};
    send<bool>(dye, "getRed:green:blue:alpha:"_sel, &parts[0], &parts[1], &parts[2], &parts[3]);
    return parts;
  }
  /// The dyes from these strings in a process without those libraries. It is a separate process,
  /// since a library is loaded only once.
  std::vector<Components> dyesIn(const Names& without, const std::vector<std::string>& strings) {
    std::vector<Components> dyes(strings.size());
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
      settings("");
      startWithout(without);
      for (std::size_t i = 0; i < strings.size(); ++i) dyes[i] = dyeFor(strings[i]);
      const std::size_t size = dyes.size() * sizeof(Components);
      _exit(write(ends[1], dyes.data(), size) == static_cast<ssize_t>(size) ? 0 : 1);
    }
    close(ends[1]);
    const std::size_t size = dyes.size() * sizeof(Components);
    const ssize_t got = read(ends[0], dyes.data(), size);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0 || got != static_cast<ssize_t>(size)) throw std::runtime_error("no answer");
    return dyes;
  }
};

TEST_F(MissingLibraries, TheProcessLacksThem) {
  settings("");
  startWithout({"libapplist", "libcolorpicker"});
  EXPECT_EQ(dlsym(RTLD_DEFAULT, "LCPParseColorString"), nullptr);
  EXPECT_EQ(objc_getClass("ALApplicationList"), nullptr);
  EXPECT_EQ(log(), std::vector<std::string>());
  EXPECT_FALSE(installed.empty());
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), "#de3027ff");
}

TEST_F(MissingLibraries, AnyOtherProcessHasThem) {
  settings("");
  startWithout({});
  EXPECT_NE(dlsym(RTLD_DEFAULT, "LCPParseColorString"), nullptr);
  EXPECT_NE(objc_getClass("ALApplicationList"), nullptr);
}

TEST_F(MissingLibraries, EveryFormIsReadWithoutTheParser) {
  settings("");
  startWithout({"libcolorpicker"});
  const auto byte = [](int value) { return static_cast<CGFloat>(value / 255.0); };
  EXPECT_EQ(dyeFor("#112233"), (Components{byte(0x11), byte(0x22), byte(0x33), 1}));
  EXPECT_EQ(dyeFor("aAbBcC"), (Components{byte(0xaa), byte(0xbb), byte(0xcc), 1}));
  EXPECT_EQ(dyeFor("#4fD"), (Components{byte(0x44), byte(0xff), byte(0xdd), 1}));
  EXPECT_EQ(dyeFor("#09aF90:0.25"), (Components{byte(0x09), byte(0xaf), byte(0x90), 0.25}));
  EXPECT_EQ(dyeFor("000001:.5"), (Components{0, 0, byte(1), 0.5}));
  EXPECT_EQ(dyeFor("#abc:1.500000"), (Components{byte(0xaa), byte(0xbb), byte(0xcc), 1}));
  EXPECT_EQ(dyeFor("#abc:0"), (Components{byte(0xaa), byte(0xbb), byte(0xcc), 0}));
}

TEST_F(MissingLibraries, WhatIsNoColorIsTheFallbackWithoutTheParser) {
  settings("");
  startWithout({"libcolorpicker"});
  const Components fallback = dyeFor("#de3027");
  for (const char* bad : {"",
                          "7",
                          "#",
                          ":",
                          ":1",
                          "#:1",
                          "#12345",
                          "zzzzzz",
                          "#1234567",
                          "abc",
                          "@bcdef",
                          "#12g",
                          "#112233:",
                          "#112233:.",
                          "#112233:z",
                          "#112233:1:1",
                          "#112233:1.2.3",
                          "#112233:-1",
                          "#112233:1e3",
                          "  #112233",
                          "##11223",
                          "#11 233",
                          "#1122334455667788",
                          "`abcde"})
    EXPECT_EQ(dyeFor(bad), fallback) << bad;
}

TEST_F(MissingLibraries, TheMeaningIsTheParsers) {
  std::vector<std::string> strings;
  for (const char* alpha :
       {"", ":0", ":1", ":00.1", ":0.333333", ":.000001", ":1.", ":0.7", ":0.123456789012345",
        ":17", ":999999999999999999999999", ":0.0", ":0.999999"}) {
    for (const char* color : {"#000", "#fff", "#18e", "#FEDCBA", "fedcba", "012345"})
      strings.push_back(std::string(color) + alpha);
  }
  const auto with = dyesIn({}, strings);
  const auto without = dyesIn({"libcolorpicker"}, strings);
  for (std::size_t i = 0; i < strings.size(); ++i) EXPECT_EQ(without[i], with[i]) << strings[i];
  EXPECT_NE(with.front(), with.back());
}

TEST_F(MissingLibraries, FallbacksAreReadToo) {
  settings("");
  startWithout({"libcolorpicker"});
  const auto colorOf = [](const char* fallback) {
    return hex(send<UIColor*>(manager(), "_getDyeColorWithKey:fallback:enabledSel:"_sel,
                              string("cc_color"), fallback == nullptr ? nullptr : string(fallback),
                              objc::Selector<"ccEnabled">::get()));
  };
  settings("<key>cc_color_type</key><integer>2</integer>");
  EXPECT_EQ(colorOf("#123456:0.6"), "#12345699");
  EXPECT_EQ(colorOf("no colour"), "nil");
  EXPECT_EQ(colorOf(nullptr), "nil");
}

TEST_F(MissingLibraries, WithoutTheListTheFallbackHolds) {
  icons["com.example.app"] = VARNIX_SAMPLES "/icons/com.example.notes.png";
  settings(
      "<key>global_color_type</key><integer>1</integer>"
      "<key>global_color</key><string>#112233</string>");
  startWithout({"libapplist"});
  EXPECT_EQ(hex(send<UIColor*>(manager(), "dye"_sel)), "#112233ff");
}

TEST_F(MissingLibraries, WithTheListItIsTheIconsColor) {
  icons["com.example.app"] = VARNIX_SAMPLES "/icons/com.example.notes.png";
  settings(
      "<key>global_color_type</key><integer>1</integer>"
      "<key>global_color</key><string>#112233</string>");
  startWithout({});
  EXPECT_NE(hex(send<UIColor*>(manager(), "dye"_sel)), "#112233ff");
}

}  // namespace
