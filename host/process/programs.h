// The programs that a hosted process can start.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host {

/// The machine's file for a program of the device: one in the container root, or the machine's
/// shell if the root has no "/bin/sh". Empty for everything else, also for a link that leaves the
/// root, so that no other program of this machine ever runs under a device's name.
std::string programFile(std::string_view devicePath);

/// A program that the library has asked for.
struct StartedProgram {
  std::string words;  ///< its own name first
  bool hasStarted;    ///< false if there is no such program
};

/// In order; safe on any thread.
HOST_EXPORT std::vector<StartedProgram> startedPrograms();

/// The environment of a child, NAME=VALUE: ours, but with a PATH of the container's program
/// folders, then a folder with the few programs of this machine that a shell may use.
std::vector<std::string> childEnvironment();

/// Such a list in the form of a system call: pointers into the strings, then a null.
std::vector<char*> pointersTo(std::vector<std::string>& strings);

}  // namespace host
