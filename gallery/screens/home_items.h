// What is on the home screen.
#pragma once

namespace varnix::screens {

using namespace drawing;

enum class ItemKind : unsigned char { application, folder, waiting };

struct HomeItem {
  const char* identifier;
  const char* label;
  int badge = 0;
  ItemKind kind = ItemKind::application;
};

inline constexpr HomeItem kItems[] = {
    {"com.apple.MobileSMS", "Messages", 3},
    {"com.example.calendar", "Calendar"},
    {"com.example.photos", "Photos"},
    {"com.example.camera", "Camera"},
    {"com.example.weather", "Weather"},
    {"com.example.clock", "Clock"},
    {"com.example.maps", "Maps"},
    {"com.example.videos", "Videos"},
    {"com.example.notes", "Notes"},
    {"com.example.reminders", "Reminders"},
    {"com.example.stocks", "Stocks"},
    {"com.example.books", "Books"},
    {"com.example.store", "Store", 12},
    {"com.example.health", "Health"},
    {"com.example.calculator", "Calculator"},
    {"com.example.settings", "Settings", 1},
    {"com.burbn.instagram", "Snapshots"},
    {"com.atebits.Tweetie2", "Chirps"},
    {"", "Extras", 2, ItemKind::folder},
    {"", "Waiting\u2026", 0, ItemKind::waiting},
};

inline constexpr HomeItem kDockItems[] = {
    {"com.example.phone", "Phone", 1},
    {"com.example.mail", "Mail", 28},
    {"com.example.browser", "Browser"},
    {"com.example.music", "Music"},
};

/// Bundle identifiers.
inline constexpr const char* kInFolder[] = {
    "com.example.calculator", "com.example.weather", "com.example.notes",  "com.example.clock",
    "com.example.books",      "com.example.maps",    "com.example.videos",
};

}  // namespace varnix::screens
