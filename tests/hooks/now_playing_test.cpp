// The playing track: its controller, and the announcement of every change.
#include <thread>

#include "objc/define.h"
#include "support/pictures.h"
#include "support/springboard.h"

namespace {

using namespace test;

/// What was posted, and on which thread.
struct Posted {
  std::string name;
  NSObject* object;
  NSObject* userInfo;
  std::thread::id thread;
};
std::vector<Posted> posted;

struct Listener : NSObject {
  void heard(NSObject* notification) {
    posted.push_back({send(send<NSString*>(notification, "name"_sel), NSString::UTF8String),
                      send<NSObject*>(notification, "object"_sel),
                      send<NSObject*>(notification, "userInfo"_sel), std::this_thread::get_id()});
  }
};

}  // namespace

OBJC_CLASS_NAMED(TestTrackListener, NSObject, Listener, NSObject,
                 objc::Method<"heard:", &Listener::heard>)

namespace {

NSObject* startedController = nullptr;
int startedCount = 0;
objc::Hook<MPUNowPlayingController::startUpdating> startUpdating;
void noteStart(MPUNowPlayingController* self, SEL cmd) {
  startedController = self;
  ++startedCount;
  startUpdating.original(self, cmd);
}

class NowPlaying : public test::SpringBoard {
 protected:
  /// Listens to every name, so that no other post is missed.
  static void listen() {
    static auto listener = Strong<NSObject>::retain(make<NSObject>("TestTrackListener"));
    send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::addObserver, listener,
         "heard:"_sel, nullptr, nullptr);
  }
  void springBoardWithTrack(bool albumArt) {
    installNowPlaying();
    settings(boolEntry("use_album_art", albumArt));
    startSpringBoard();
    loadNowPlaying();
    startUpdating.install<&noteStart>(objc_getClass("MPUNowPlayingController"),
                                      MPUNowPlayingController::startUpdating);
    load();
    listen();
  }
};

TEST_F(NowPlaying, EveryChangeIsAnnounced) {
  springBoardWithTrack(true);
  setTrack(plainPicture(1, 2, 3), true);
  ASSERT_EQ(posted.size(), 1U);
  EXPECT_EQ(posted[0].name, "com.quillmarsh.varnix2.track.changed");
  EXPECT_EQ(posted[0].object, nullptr);
  EXPECT_EQ(posted[0].userInfo, nullptr);
  setTrack(plainPicture(1, 2, 3), true);
  setTrack(nullptr, false);
  EXPECT_EQ(posted.size(), 3U);
}

TEST_F(NowPlaying, IsAnnouncedOnTheThreadOfTheChangeBeforeItsReturn) {
  springBoardWithTrack(true);
  std::thread::id other;
  std::thread([&] {
    objc::AutoreleasePool pool;
    other = std::this_thread::get_id();
    setTrack(nullptr, true);
    EXPECT_EQ(posted.size(), 1U);
  }).join();
  ASSERT_EQ(posted.size(), 1U);
  EXPECT_EQ(posted[0].thread, other);
}

TEST_F(NowPlaying, OneControllerIsMadeWithItsDelegate) {
  springBoardWithTrack(true);
  EXPECT_EQ(startedCount, 1);
  ASSERT_NE(startedController, nullptr);
  auto* delegate = send<NSObject*>(startedController, "delegate"_sel);
  ASSERT_NE(delegate, nullptr);
  EXPECT_STREQ(class_getName(object_getClass(delegate)), "VarnixNowPlayingDelegate");
  EXPECT_EQ(class_getSuperclass(object_getClass(delegate)), objc_getClass("NSObject"));
}

TEST_F(NowPlaying, SwitchingAlbumArtOffSilencesItAtOnce) {
  springBoardWithTrack(true);
  settingsNow(boolEntry("use_album_art", false));
  setTrack(nullptr, true);
  EXPECT_EQ(posted.size(), 0U);
  settingsNow(boolEntry("use_album_art", true));
  setTrack(nullptr, true);
  EXPECT_EQ(posted.size(), 1U);
}

TEST_F(NowPlaying, SwitchingAlbumArtOnWaitsForTheNextStart) {
  springBoardWithTrack(false);
  EXPECT_EQ(startedCount, 0);
  settingsNow(boolEntry("use_album_art", true));
  setTrack(nullptr, true);
  EXPECT_EQ(startedCount, 0);
  EXPECT_EQ(posted.size(), 0U);
}

unsigned char playing = 0;

// The answer is a byte, but the platform's own callers test only one bit.
TEST_F(NowPlaying, PlaysWhereTheAnswersLowestBitIsSet) {
  springBoardWithTrack(true);
  setTrack(plainPicture(0, 200, 0), true);
  class_replaceMethod(objc_getClass("MPUNowPlayingController"), sel_registerName("isPlaying"),
                      reinterpret_cast<IMP>(+[](NSObject*, SEL) { return playing; }), "C@:");
  recordSettings();
  const auto tint = [this](unsigned char answer) {
    playing = answer;
    writes().clear();
    send<void>(controlCenter(), "colorBackdrop"_sel);
    return writes().at(2);
  };
  const std::string album = tint(1);
  EXPECT_NE(album, "setColorTint: #de3027ff");
  for (const int odd : {3, 0x81, 0xff}) EXPECT_EQ(tint(static_cast<unsigned char>(odd)), album);
  for (const int even : {0, 2, 0x80, 0xfe})
    EXPECT_EQ(tint(static_cast<unsigned char>(even)), "setColorTint: #de3027ff") << even;
}

// A framework that cannot be bound completely is not loaded: the process would end at the missing
// call.
TEST_F(NowPlaying, AFrameworkThatLacksAFunctionIsNotLoaded) {
  const std::filesystem::path file = folder.path() + kMediaPlayerUI;
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::copy_file(VARNIX_INCOMPLETE, file);
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  load();
  EXPECT_EQ(objc_getClass("MPUNowPlayingController"), nullptr);
  // The file can still be loaded by code that binds calls lazily.
  constexpr int kLazily = 1;
  EXPECT_NE(dlopen(file.c_str(), kLazily), nullptr);
  EXPECT_NE(objc_getClass("MPUNowPlayingController"), nullptr);
}

TEST_F(NowPlaying, TheLibraryLoadsTheFrameworkItself) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  EXPECT_EQ(objc_getClass("MPUNowPlayingController"), nullptr);
  load();
  ASSERT_NE(objc_getClass("MPUNowPlayingController"), nullptr);
  listen();
  setTrack(nullptr, true);
  EXPECT_EQ(posted.size(), 1U);
}

// The surfaces work without it; see also the table of backdrops.
TEST_F(NowPlaying, AMissingFrameworkIsNoError) {
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  load();
  EXPECT_EQ(objc_getClass("MPUNowPlayingController"), nullptr);
  EXPECT_EQ(log(), std::vector<std::string>());
  recordSettings();
  send<void>(controlCenter(), "colorBackdrop"_sel);
  EXPECT_EQ(writes(), tinted("#de3027ff", "0.6"));
}

TEST_F(NowPlaying, AFileThatIsNoFrameworkIsNoError) {
  const std::filesystem::path file = folder.path() + kMediaPlayerUI;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file) << "no library";
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  load();
  EXPECT_EQ(objc_getClass("MPUNowPlayingController"), nullptr);
  EXPECT_EQ(log(), std::vector<std::string>());
}

TEST_F(NowPlaying, AFrameworkWithoutTheClassIsNoError) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard({"MPUNowPlayingController"});
  load();
  EXPECT_EQ(log(), std::vector<std::string>());
  recordSettings();
  send<void>(controlCenter(), "colorBackdrop"_sel);
  EXPECT_EQ(writes(), tinted("#de3027ff", "0.6"));
}

TEST_F(NowPlaying, OutsideSpringBoardADelegatePostsNothing) {
  installNowPlaying();
  application(boolEntry("use_album_art", true));
  EXPECT_EQ(objc_getClass("MPUNowPlayingController"), nullptr);
  loadNowPlaying();
  auto* delegate = make<NSObject>("VarnixNowPlayingDelegate");
  auto* controller = make<NSObject>("MPUNowPlayingController");
  send<void>(controller, "setDelegate:"_sel, delegate);
  send<void>(controller, "startUpdating"_sel);
  listen();
  setTrack(nullptr, true);
  EXPECT_EQ(posted.size(), 0U);
}

// A class that was not found is looked up again; one that was found is remembered.
TEST_F(NowPlaying, TheControllersClassIsLookedUpUntilItIsFound) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard({"MPUNowPlayingController"});
  load();
  auto lookUps = [this] {
    host::runtime::startCounting();
    send<void>(controlCenter(), "colorBackdrop"_sel);
    return host::runtime::stopCounting().lookUps;
  };
  lookUps();  // does the other look-ups that happen only once
  EXPECT_EQ(lookUps(), 1U);
  EXPECT_EQ(lookUps(), 1U);
}

TEST_F(NowPlaying, TheControllersClassIsRemembered) {
  springBoardWithTrack(true);
  auto lookUps = [this] {
    host::runtime::startCounting();
    send<void>(controlCenter(), "colorBackdrop"_sel);
    return host::runtime::stopCounting().lookUps;
  };
  lookUps();
  EXPECT_EQ(lookUps(), 0U);
}

}  // namespace
