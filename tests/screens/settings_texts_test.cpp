// The settings pane's texts fit their rows, in every language.
#include <gtest/gtest.h>

#include "gallery/screens/list_layout.h"
#include "gallery/screens/list_reader.h"
#include "gallery/screens/screen.h"
#include "support/hosted.h"
#include "support/walk.h"

using namespace varnix::screens;
namespace pages = host::settings;

namespace {

class SettingsTexts : public test::Hosted, public testing::WithParamInterface<const char*> {};

TEST_P(SettingsTexts, FitTheirRows) {
  // The longest texts: an own colour with its digits, all rows enabled.
  std::string entries = "<key>com.apple.Music_scope_enabled</key><true/>";
  for (const char* key : {"statusbar", "folder", "cc", "nc", "sms", "keyboard", "volume"})
    entries += std::string("<key>") + key + "_color_type</key><integer>2</integer>";
  settings(entries);
  host::ProcessOptions options;
  options.bundle = "com.apple.Preferences";
  options.root = folder.path();
  options.language = GetParam();
  host::startProcess(options);
  pages::open();
  pages::press(pages::sections().at(0).rows.at(0));
  const Canvas canvas(kWidth, kHeight, 1);
  std::size_t count = 0;
  test::walkPages("Music", [&] {
    const ListPage page = readListPage();
    for (const std::string& text : textsTooLong(canvas, page))
      ADD_FAILURE() << page.title << ": " << text;
    ++count;
  });
  // The first page, its choice, seven elements with theirs, applications, one of them with its
  // choice and elements, presets.
  EXPECT_EQ(count, 2U + 14 + 1 + 2 + 14 + 1);
}

INSTANTIATE_TEST_SUITE_P(, SettingsTexts,
                         testing::Values("en", "de", "fr", "es", "it", "ja", "zh-Hans"),
                         [](const auto& language) {
                           return std::string(language.param).substr(0, 2);
                         });

}  // namespace
