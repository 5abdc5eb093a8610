// varnix pick: the colours that the library finds in images.
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "Foundation/log.h"
#include "commands.h"
#include "common/errors.h"
#include "common/interruption.h"
#include "common/module.h"
#include "common/output_file.h"
#include "common/swatches.h"
#include "common/warning.h"
#include "pick/analysis.h"
#include "pick/ask.h"
#include "pick/output.h"
#include "process/process.h"

namespace varnix::cli {

namespace {

struct PickArguments {
  std::vector<std::string> files;
  bool json = false;
  std::optional<std::string> picture;
  int runnersUp = 5;
  std::string color = "auto";
};

constexpr int kAllOfTheFrame = 256;

constexpr ModuleName<pick::Module> kModule{VARNIX_PICK_FILE, pick::kModuleEntry, "the colour code"};

int pickColors(const PickArguments& arguments) {
  if (arguments.runnersUp < 0 || arguments.runnersUp > kAllOfTheFrame) {
    throw UsageError("unusable number of runners-up", std::to_string(arguments.runnersUp));
  }
  const bool withSwatches = wantsSwatches(arguments.color);
  if (arguments.picture) requireNoInput(*arguments.picture, arguments.files);
  const pick::Answer answer = pick::ask({.files = arguments.files,
                                         .runnersUp = static_cast<std::size_t>(arguments.runnersUp),
                                         .wantsPicture = arguments.picture.has_value()});
  std::cout << (arguments.json ? pickedJson(answer) : pickedText(answer, withSwatches))
            << std::flush;
  int status = 0;
  for (const pick::Analysis& image : answer.images) {
    if (!image.warning.empty()) warn(image.file + ": " + image.warning);
    if (image.error.empty()) continue;
    warn("cannot pick from " + image.file + ": " + image.error);
    status = 1;
  }
  if (arguments.picture && !answer.picture.empty()) {
    // If the command is interrupted, it removes what it began to write.
    noteInterruptions();
    writeOutput(*arguments.picture, answer.picture);
  }
  return status;
}

}  // namespace

namespace pick {

Answer ask(const Request& request) {
  host::ProcessOptions process;
  process.bundle = "com.example.pick";
  host::printLog(false);
  host::startProcess(process);
  try {
    return loadModule(kModule).answer(request);
  } catch (const Failure&) {
    for (const auto& line : host::logLines()) std::cerr << line.line << '\n';
    throw;
  }
}

}  // namespace pick

Command pickCommand() {
  auto arguments = std::make_shared<PickArguments>();
  return {.name = "pick",
          .summary = "Show the colours that the library picks from images",
          .options = {{.name = "FILE",
                       .target = &arguments->files,
                       .meaning = "PNG and JPEG files",
                       .completes = Completes::files},
                      jsonOption(arguments->json),
                      {.name = "--picture",
                       .value = "OUT",
                       .target = &arguments->picture,
                       .meaning = "Draw how they were found, a card an image, as PNG",
                       .completes = Completes::files},
                      {.name = "--runners-up",
                       .value = "N",
                       .target = &arguments->runnersUp,
                       .meaning = "How many more of the frequent colours to show; 5"},
                      colorOption(arguments->color)},
          .run = [arguments] { return pickColors(*arguments); }};
}

}  // namespace varnix::cli
