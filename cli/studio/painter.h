// The pictures of the studio: asks processes, keeps what they answered, and draws.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>
#include <vector>

#include "contrast/legibility.h"
#include "gallery/materials/materials.h"
#include "studio/asker.h"

namespace varnix::cli {

/// What a picture is of.
struct View {
  std::string screen, wallpaper;
  bool isBefore = false;   ///< without the library
  bool plays = false;      ///< a track plays
  bool isInFront = false;  ///< an application is in front, else the home screen
  bool isOther = false;    ///< of the theme that is compared with
  int scale = 2;           ///< pixels a point, 1 or 2
};

/// The settings that are shown.
struct Shown {
  long revision = 0;
  std::string bytes;  ///< of a settings file
};

/// Pictures that replace the samples: files on this machine, empty or absent for none.
struct OwnMaterials {
  std::map<std::string, std::string> wallpapers;  ///< "light", "dark"
  std::map<std::string, std::string> icons;       ///< by identifier
  std::string cover;
};

class Painter {
 public:
  /// `newest` gives the settings of the theme, or of the one that it is compared with. This process
  /// must have a single thread. Throws Failure.
  explicit Painter(std::function<Shown(bool isOther)> newest);

  /// A PNG file and its tag, which is the same for the same picture.
  struct Painted {
    std::string tag, png;
  };
  /// Shows that revision or a newer one. No file if the tag would be the known one. Throws
  /// std::runtime_error, and UsageError if there is no such view.
  Painted paint(const View& view, long revision, const std::string& knownTag,
                varnix::screens::Effort effort = varnix::screens::Effort::shown);

  /// Of these settings, which are those of the revision, in the view's situation. Throws
  /// std::runtime_error.
  std::unique_ptr<Legibility> legibility(const View& view, long revision, NSDictionary* settings);

  /// The analysis of a picture, as in Asker.
  Json pick(const std::string& file);

  /// From now on pictures show these; to be called before anything is painted. Throws Failure for a
  /// file that is no picture.
  void use(const OwnMaterials& own);

 private:
  using Answered = std::shared_ptr<const ProcessAnswer>;
  /// Bundle, whether with the library, whether a track plays, whether an application is in front,
  /// whether it is of the other theme.
  using Key = std::tuple<std::string, bool, bool, bool, bool>;
  struct Slot {
    bool isAsking = false;
    long revision = -1, materials = -1;
    Answered answer;
    std::string failure;  ///< why there is none
  };
  struct Dressed {
    long revision = 0;
    std::map<int, Materials> byScale;
    std::string cover;
  };

  /// Waits for one that is free. The lock is the mutex's.
  Asker& takeAsker(std::unique_lock<std::mutex>& lock);
  void giveBack(Asker& asker);

  /// An asker for one question. It waits for a free one, and gives it back at its end. The mutex is
  /// not held.
  class Loan {
   public:
    explicit Loan(Painter& painter);
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;
    ~Loan();
    Asker* operator->() const { return &asker_; }

   private:
    Painter& painter_;
    Asker& asker_;
  };

  /// What the process answers with other settings than those that are shown.
  ProcessAnswer askedWith(const varnix::screens::Screen& screen, const View& view,
                          const Dressed& dressed, const std::string& settings);
  Answered answersOf(const varnix::screens::Screen& screen, const View& view, long revision,
                     const Dressed& dressed);
  ProcessQuestion question(const varnix::screens::Screen& screen, const View& view,
                           const Dressed& dressed) const;

  std::function<Shown(bool isOther)> newest_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::shared_ptr<const Dressed> dressed_;
  std::deque<Asker> askers_;
  std::vector<Asker*> free_;
  std::map<Key, Slot> slots_;
};

}  // namespace varnix::cli
