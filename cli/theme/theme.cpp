// varnix theme: settings as files that are handed on.
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Foundation/text.h"
#include "commands.h"
#include "common/errors.h"
#include "common/interruption.h"
#include "common/output_file.h"
#include "contrast/print.h"
#include "objc/autorelease_pool.h"
#include "settings/check.h"
#include "settings/file.h"
#include "settings/presets.h"
#include "theme/difference.h"
#include "theme/drawn_theme.h"
#include "theme/theme_file.h"

namespace varnix::cli {

namespace {

struct ThemeArguments {
  std::string file, other;
  std::optional<std::string> text, preset, out;
  bool json = false, advises = false;
  std::vector<std::string> to;
};

int checkTheme(const ThemeArguments& arguments) { return printFindings(arguments.file); }

int compareThemes(const ThemeArguments& arguments) {
  NSDictionary* one = themeIn(arguments.file);
  NSDictionary* other = themeIn(arguments.other);
  const auto lines = differences(one, other);
  for (const std::string& line : lines) std::cout << line << '\n';
  return lines.empty() ? 0 : 1;
}

void requireOtherOutput(const ThemeArguments& arguments, const std::string& input) {
  if (arguments.out) requireNoInput(*arguments.out, {input});
}

/// What a file of that name gets.
struct Form {
  std::string_view ending;
  std::string (*contents)(const DrawnTheme& theme);
  bool isDrawn = true;
};

constexpr Form kForms[] = {
    {".html", themePage},
    {".png", themeSheet},
    {".plist", [](const DrawnTheme& theme) { return theme.text; }, false},
};

const Form& formOf(const std::string& file) {
  for (const Form& form : kForms) {
    if (file.ends_with(form.ending)) return form;
  }
  throw UsageError("not a name that ends in .html, .png or .plist", file);
}

int exportTheme(const ThemeArguments& arguments) {
  requireOtherOutput(arguments, arguments.file);
  bool isDrawn = false;
  for (const std::string& file : arguments.to) {
    if (formOf(file).isDrawn) isDrawn = true;
    requireNoInput(file, {arguments.file});
  }
  NSDictionary* settings = settingsOf(themeIn(arguments.file), arguments.file);
  if (arguments.to.empty() || arguments.out) writeTheme(settings, arguments.out);
  DrawnTheme theme{std::filesystem::path(arguments.file).stem().string(),
                   settingLines(settings),
                   arguments.to.empty() ? "" : themeText(settings, arguments.to.front()),
                   {}};
  if (isDrawn) theme.screens = drawnScreensOf(settings);
  for (const std::string& file : arguments.to) writeOutput(file, formOf(file).contents(theme));
  return 0;
}

int importTheme(const ThemeArguments& arguments) {
  const std::string file = arguments.text.value_or("-");
  requireOtherOutput(arguments, file);
  const bool isFile = file != "-";
  NSDictionary* theme = isFile ? themeIn(file) : themeInInput();
  writeTheme(settingsOf(theme, isFile ? file : "standard input"), arguments.out);
  return 0;
}

int writePreset(const ThemeArguments& arguments) {
  if (!arguments.preset) {
    if (arguments.out) throw UsageError("missing argument, which --out needs", "NAME");
    listPresets();
    return 0;
  }
  auto* theme = NSMutableDictionary::dictionary();
  for (const auto& [key, value] : entriesOfPreset(*arguments.preset))
    send(theme, NSMutableDictionary::setObjectForKey, objectFor(value), host::makeString(key));
  writeTheme(theme, arguments.out);
  return 0;
}

int showContrast(const ThemeArguments& arguments) {
  return printLegibility(arguments.file, {arguments.json, arguments.advises});
}

}  // namespace

Command themeCommand() {
  auto arguments = std::make_shared<ThemeArguments>();
  auto command = [&](const char* name, const char* summary, std::vector<Option> options,
                     int (*action)(const ThemeArguments&), const char* notes = "") {
    return Command{.name = name,
                   .summary = summary,
                   .options = std::move(options),
                   .notes = notes,
                   .run = [arguments, action] {
                     const objc::AutoreleasePool pool;
                     noteInterruptions();
                     return action(*arguments);
                   }};
  };
  auto file = [](const char* name, Option::Target target, const char* meaning) {
    return Option{
        .name = name, .target = target, .meaning = meaning, .completes = Completes::files};
  };
  Option text = file("TEXT", &arguments->text, "A file with the text; standard input without one");
  text.isOptional = true;
  const Option out{.name = "--out",
                   .value = "FILE",
                   .target = &arguments->out,
                   .meaning = "Write to this file; standard output",
                   .completes = Completes::files};
  const Option to{.name = "--to",
                  .value = "FILE",
                  .target = &arguments->to,
                  .meaning =
                      "Write a page (.html), a picture of all screens (.png) or the text\n"
                      "(.plist); repeatable",
                  .completes = Completes::files};
  const Option preset{.name = "NAME",
                      .target = &arguments->preset,
                      .meaning = "The preset to write; all are listed without one",
                      .choices = presetNames(),
                      .isOptional = true};
  const Option theme = file("FILE", &arguments->file, "The theme");
  return {
      .name = "theme",
      .summary = "Check, compare and hand on settings files",
      .commands =
          {command("check", "Print what of a theme does not count as it was meant", {theme},
                   checkTheme, "Where there is something the exit status is 1."),
           command("contrast", "Measure on the drawn screens how well the theme can be read",
                   {theme,
                    {.name = "--advise",
                     .target = &arguments->advises,
                     .meaning = "Also look for colours with which it can"},
                    {.name = "--json", .target = &arguments->json, .meaning = "Print JSON"}},
                   showContrast, "Where something is too faint the exit status is 1."),
           command("diff", "Print which settings differ between two themes",
                   {file("A", &arguments->file, "A theme"),
                    file("B", &arguments->other, "The theme to compare it with")},
                   compareThemes,
                   "A line with - is only in A, one with + only in B. Where there is one the exit\n"
                   "status is 1."),
           command("export", "Write the text that the settings pane takes by Paste Settings",
                   {theme, out, to}, exportTheme,
                   "The page has all screens, the settings and the text in one file."),
           command("import", "Make a theme of the text that Copy Settings gives", {text, out},
                   importTheme, "What the pane would not take is left out."),
           command("presets", "Print sets of colours to start from, or write one as a theme",
                   {preset, out}, writePreset)},
      .notes = "A theme is a property list of settings; varnix settings --help lists them."};
}

}  // namespace varnix::cli
