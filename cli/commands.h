// The commands. Each is in a folder of its name.
#pragma once

#include "common/command.h"

namespace varnix::cli {

Command settingsCommand();
Command runCommand();
Command inspectCommand();
Command pickCommand();
Command paneCommand();
Command previewCommand();
Command studioCommand();
Command themeCommand();

/// These two print what they make of the declaration of the whole program.
Command completionCommand(Command (*program)());
Command manCommand(Command (*program)());

}  // namespace varnix::cli
