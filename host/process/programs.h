// The programs that a hosted process can start.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host {

/// The machine's file for a program of the device: one that lies in the container root, or the
/// machine's shell where the root has no "/bin/sh". Empty for everything else, so that no other
/// program of this machine is ever run under a device's name; so is a link that leaves the root.
std::string programFile(std::string_view devicePath);

/// The environment of a child, NAME=VALUE: ours, but its PATH is the container's folders of
/// programs and then a folder with the few of the machine's that a shell may use.
std::vector<std::string> childEnvironment();

/// A list of that form for a call: pointers into the strings, then a null.
std::vector<char*> pointersTo(std::vector<std::string>& strings);

}  // namespace host
