// A libcolorpicker with the traps of the real one: the library must pass only what it can read.
#include <regex>
#include <stdexcept>

#include "platform/ColorPicker.h"
#include "support/hosted.h"

namespace {
std::vector<std::string> handedOver;
}

// The library finds this executable's function before the host's.
extern "C" [[gnu::visibility("default")]] UIColor* LCPParseColorString(NSString* value,
                                                                       NSString* fallback);
UIColor* LCPParseColorString(NSString* value, NSString* fallback) {
  handedOver.push_back(value == nullptr ? "nil" : std::string(host::text(value)));
  if (fallback == nullptr) throw std::runtime_error("a random colour: no fallback");
  if (value != nullptr) {
    const std::string words(host::text(value));
    if (words.size() == 1) throw std::runtime_error("one digit");
    static const std::regex accepted("(#?[0-9a-fA-F]{6}|#[0-9a-fA-F]{3})(:[0-9.]+)?");
    if (!std::regex_match(words, accepted)) throw std::runtime_error("misread: " + words);
    return UIColor::colorWithRed(1, 0, 0, 1);
  }
  return UIColor::colorWithRed(0, 1, 0, 1);
}

namespace {

using namespace test;

class HostileParser : public Hosted {};

TEST_F(HostileParser, NeverGetsWhatItChokesOn) {
  settings("");
  start("com.example.app");
  load();
  for (const char* bad :
       {"", "7", "#", "#1", ":", ":1", "#:1", "#12345", "zzzzzz", "#zzzzzz", "#1234567", "abc",
        "#112233:", "#112233:z", "#112233:1:1", "  #112233", "rgb(1,2,3)", "#11 233"}) {
    settings(std::string("<key>global_color</key><string>") + bad + "</string>");
    handedOver.clear();
    EXPECT_EQ(hex(send<UIColor*>(manager(), "dye"_sel)), "#00ff00ff") << bad;
    EXPECT_EQ(handedOver, std::vector<std::string>{"nil"}) << bad;
  }
  for (const char* bad : {"<integer>5</integer>", "<true/>", "<array/>", "<dict/>",
                          "<data>AA==</data>", "<real>1.5</real>"}) {
    settings(std::string("<key>global_color</key>") + bad);
    EXPECT_EQ(hex(send<UIColor*>(manager(), "dye"_sel)), "#00ff00ff") << bad;
  }
}

TEST_F(HostileParser, GetsEveryAcceptedForm) {
  settings("");
  start("com.example.app");
  load();
  for (const char* good : {"#112233", "aAbBcC", "#abc", "#112233:0.5", "112233:1", "#abc:.5"}) {
    settings(std::string("<key>global_color</key><string>") + good + "</string>");
    handedOver.clear();
    EXPECT_EQ(hex(send<UIColor*>(manager(), "dye"_sel)), "#ff0000ff") << good;
    EXPECT_EQ(handedOver, std::vector<std::string>{good}) << good;
  }
}

}  // namespace
