// The commands, each in a folder of its name.
#pragma once

#include "common/command.h"

namespace varnix::cli {

Command settingsCommand();
Command runCommand();
Command inspectCommand();
Command pickCommand();
Command paneCommand();
Command previewCommand();

/// These print what is made of the whole program's declaration.
Command completionCommand(Command (*program)());
Command manCommand(Command (*program)());

}  // namespace varnix::cli
