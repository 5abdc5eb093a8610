// A user at the hosted Settings application: commands in, rows out.
#pragma once

#include <string>
#include <vector>

#include "pane/events.h"
#include "pane/printing.h"

namespace varnix::cli {

class PaneSession {
 public:
  /// The application shows its list of settings.
  explicit PaneSession(bool withSwatches);

  /// Opens the pages behind these rows, one after the other. Throws Failure.
  void openPath(const std::string& path);

  /// Prints the page on top, and what opening it has brought about.
  void begin();
  /// Prints what others have changed since anything was printed, each line marked.
  void tellChanges();
  /// Runs a line. Throws Failure and UsageError.
  void run(const std::string& line);
  bool isOver() const { return isOver_; }

  /// What the line may become, whole lines.
  std::vector<std::string> completions(const std::string& line) const;
  /// The commands for people.
  static std::string help();

 private:
  struct Form;
  static const Form kForms[];
  static std::vector<const char*> forms();

  /// Prints the page on top.
  void list();
  void open(const std::string& row);
  void openRow(const ShownRow& row);
  void press(const std::string& name);
  void set(const std::string& words);
  void back();
  void find(const std::string& text);
  /// Throws Failure while an alert covers the page.
  void requirePage() const;
  /// Prints what the command has brought about: the whole page if it is another one, else the rows
  /// that changed.
  void tellOutcome();

  bool withSwatches_;
  bool isOver_ = false;
  bool awaitsAnswer_ = false;
  PaneEvents events_;
  std::vector<std::string> path_;  ///< of the page that was printed last
  PrintedPage shown_;
};

}  // namespace varnix::cli
