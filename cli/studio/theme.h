// A theme and its file, each of which follows the other.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <utility>

#include "common/json_forward.h"
#include "studio/history.h"
#include "studio/values.h"

namespace varnix::cli {

/// Not for several threads at once.
class Theme {
 public:
  /// Reads the file; one that is missing is made by the first save. Throws Failure if it cannot be
  /// read as settings. Without a file nothing is ever saved.
  explicit Theme(std::optional<std::string> file);

  /// Grows with every change of the values.
  long revision() const { return revision_; }
  /// Grows with every change of anything that the page shows.
  long version() const { return version_; }
  const Values& values() const { return history_.values(); }
  /// {"revision", "file", "isSaved", "values", "history": [LABEL], "position", "conflict",
  /// "problem"}
  Json json() const;
  /// As a settings file holds it. Throws Failure.
  std::string bytes() const;

  struct Change {
    std::string page;   ///< who changes it
    std::string label;  ///< for the history
    std::string group;  ///< of changes that are one entry of the history; may be empty
    long base = 0;      ///< the revision that the page knew
    Values set;
    std::set<std::string> removed;
  };
  /// False, and nothing happens, if somebody else has meanwhile changed one of its keys.
  bool change(const Change& change);
  /// The same for a state of the history; false if there is none of that number.
  bool goTo(std::size_t position);

  /// Its own pictures. Each change of them is an entry of the history.
  void beginWith(PictureNames pictures) { history_.beginWith(std::move(pictures)); }
  void changePictures(const std::string& label, PictureNames pictures);
  /// Of a state of the history; null if there is none of that number.
  const Values* valuesAt(std::size_t position) const;
  /// Those of a state of the history; null if there is none of that number.
  const PictureNames* picturesAt(std::size_t position) const;

  /// Takes what somebody else has written into the file. What both sides changed is a conflict,
  /// which stays until it is settled.
  void look();
  /// Whether there is something to write.
  bool isSaved() const;
  /// Writes the file, unless somebody else's changes must be taken first. A failure becomes the
  /// problem.
  void save();
  /// Ends a conflict: the file gets the theme's values, or the theme the file's.
  void settle(bool keepsTheme);

 private:
  void show(History::Entry entry, const std::string& by);
  void merge(const Values& theirs);
  void noteProblem(const std::string& problem);

  struct Origin {
    long revision;
    std::string by;
  };

  std::optional<std::string> file_;
  History history_;
  long revision_ = 1, version_ = 1;
  std::map<std::string, Origin> origins_;  ///< of each key's last change
  std::optional<Values> stored_;           ///< what the file is known to hold
  std::optional<Values> conflict_;         ///< what somebody else wants it to hold
  bool isUnreadable_ = false;
  std::string problem_;
};

}  // namespace varnix::cli
