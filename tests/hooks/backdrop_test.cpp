// The tint of the three backdrops: which colour wins, for every combination of conditions.
#include "support/pictures.h"
#include "support/springboard.h"

namespace {

using test::hex;
using test::writes;

using Lines = std::vector<std::string>;

/// What a rule requires of a condition: yes, no, or either.
enum class Is { no, yes, any };
constexpr auto N = Is::no;
constexpr auto Y = Is::yes;
constexpr auto x = Is::any;

bool holds(Is wanted, bool value) { return wanted == Is::any || (wanted == Is::yes) == value; }

/// Everything that decides the tint.
struct Situation {
  int type;
  bool artOn, controller, classThere, playing, artwork, important, iconWanted, open;
};

/// Whose colour becomes the tint; off means no tint.
enum class Tint { off, album, own, icon };

constexpr int kAnyType = -1;

/// The first matching rule decides. An own colour and the dye both come from the element's colour.
struct Rule {
  int type;
  Is artOn, controller, classThere, playing, artwork, important, iconWanted, open;
  Tint tint;
};

constexpr Rule kRules[] = {
    // type  art ctl cls ply pic imp ico opn
    {1, x, x, x, x, x, x, x, x, Tint::off},
    // Album art is active: it wins over an own colour and over the icon's.
    {kAnyType, Y, Y, Y, Y, Y, Y, x, x, Tint::album},
    {kAnyType, Y, Y, Y, Y, x, x, x, x, Tint::own},
    // It is not active.
    {2, x, x, x, x, x, x, x, x, Tint::own},
    {kAnyType, x, x, x, x, x, x, Y, Y, Tint::icon},
    {kAnyType, x, x, x, x, x, x, Y, N, Tint::own},
    {kAnyType, x, Y, x, Y, Y, Y, N, x, Tint::album},
    {kAnyType, x, x, x, x, x, x, N, x, Tint::own},
};

Tint expectedTint(const Situation& s) {
  for (const Rule& rule : kRules) {
    if ((rule.type == kAnyType || rule.type == s.type) && holds(rule.artOn, s.artOn) &&
        holds(rule.controller, s.controller) && holds(rule.classThere, s.classThere) &&
        holds(rule.playing, s.playing) && holds(rule.artwork, s.artwork) &&
        holds(rule.important, s.important) && holds(rule.iconWanted, s.iconWanted) &&
        holds(rule.open, s.open)) {
      return rule.tint;
    }
  }
  ADD_FAILURE() << "no rule";
  return Tint::off;
}

/// Artwork of medium saturation, so that its important colour is made from a hue.
UIImage* artwork() { return test::plainPicture(0x64, 0x64, 0xc8); }
const std::string kAlbum = "#3030c8ff";
const std::string kGlobal = "#de3027ff";
const std::string kOwn = "#00aa55ff";
const std::string kIcon = "#8000ffff";

struct Surface {
  const char* key;
  const char* alpha;
  bool clears;  ///< whether being off removes the tint
  std::function<void()> tint;
};

Lines expectedWrites(const Surface& surface, const Situation& s) {
  const Tint tint = expectedTint(s);
  if (tint == Tint::off) {
    return surface.clears ? test::cleared() : Lines();
  }
  const std::string element = s.type == 2 ? kOwn : kGlobal;
  const std::string color = tint == Tint::album ? kAlbum : tint == Tint::icon ? kIcon : element;
  return test::tinted(color, surface.alpha);
}

/// What SpringBoard has from the start: album art switched on and the framework available, only the
/// framework's class, or neither.
enum class NowPlaying { controller, classAlone, nothing };

bool noImportantColor = false;
objc::Hook<UIColor::colorWithHue> colorWithHue;
UIColor* perhapsColor(Class self, SEL cmd, CGFloat hue, CGFloat saturation, CGFloat brightness,
                      CGFloat alpha) {
  if (noImportantColor) return nullptr;
  return colorWithHue.original(self, cmd, hue, saturation, brightness, alpha);
}

class Backdrop : public test::SpringBoard, public testing::WithParamInterface<NowPlaying> {};

TEST_P(Backdrop, FollowsTheTable) {
  const NowPlaying has = GetParam();
  if (has != NowPlaying::nothing) installNowPlaying();
  startSpringBoard();
  const std::string cached = cachedIconColor("com.example.open", kIcon);
  settings(test::boolEntry("use_album_art", has == NowPlaying::controller));
  if (has == NowPlaying::classAlone) loadNowPlaying();
  load();
  recordSettings();
  colorWithHue.install<&perhapsColor>(objc_getMetaClass("UIColor"), UIColor::colorWithHue);

  Surface surfaces[] = {
      {"cc", "0.6", true, [this] { send<void>(controlCenter(), "colorBackdrop"_sel); }},
      {"nc", "0.6", true, [this] { send<void>(notificationCenter(), "colorBackdrop"_sel); }},
      {"volume", "0.8", false, [this] { send<void>(hud(), "layoutSubviews"_sel); }},
  };
  int count = 0;
  for (int bits = 0; bits < 64; ++bits) {
    for (int type : {0, 1, 2, 7}) {
      auto bit = [bits](int index) { return (bits >> index & 1) != 0; };
      const bool isThere = has == NowPlaying::controller;
      const Situation s{type,   bit(0), isThere, has != NowPlaying::nothing, bit(1), bit(2),
                        bit(3), bit(4), bit(5)};
      for (const Surface& surface : surfaces) {
        objc::AutoreleasePool pool;
        noImportantColor = false;
        const std::string key = surface.key;
        settingsNow(cached + test::boolEntry("use_album_art", s.artOn) +
                    test::integerEntry("global_color_type", s.iconWanted ? 1 : 0) +
                    test::integerEntry(key + "_color_type", type) +
                    test::stringEntry(key + "_color", "#00aa55"));
        if (has != NowPlaying::nothing) setTrack(s.artwork ? artwork() : nullptr, s.playing);
        open(s.open ? "com.example.open"_ns : nullptr);
        writes().clear();
        noImportantColor = !s.important;
        surface.tint();
        noImportantColor = false;
        ASSERT_EQ(writes(), expectedWrites(surface, s))
            << surface.key << " type " << type << " bits " << bits;
        ++count;
      }
    }
  }
  EXPECT_EQ(count, 768);
}

INSTANTIATE_TEST_SUITE_P(NowPlaying, Backdrop,
                         testing::Values(NowPlaying::controller, NowPlaying::classAlone,
                                         NowPlaying::nothing));

}  // namespace
