// A hosted process: its identity, its frameworks, and where its files are.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "export.h"
#include "runtime/runtime.h"

namespace host {

/// What kind of process: it decides which frameworks are loaded.
enum class ProcessKind {
  application,  ///< Foundation, UIKit, libapplist, libcolorpicker
  springboard,  ///< Foundation, UIKit, SpringBoard, libapplist, libcolorpicker
  daemon,       ///< only Foundation
};

struct ProcessOptions {
  std::optional<std::string> bundle;  ///< the main bundle's identifier; absent for none
  ProcessKind kind = ProcessKind::application;
  std::optional<std::string> open;   ///< SpringBoard: identifier of the frontmost application
  std::vector<std::string> without;  ///< what to leave out of the platform, as Absence is written
  /// Libraries that are not installed: "libapplist", "libcolorpicker".
  std::vector<std::string> withoutLibraries = {};
  std::map<std::string, std::string> icons;  ///< an application's icon: identifier, PNG file
  std::string root;                          ///< container root, an existing folder
  /// Libraries of the device that dlopen() finds outside the container: the device's path, this
  /// machine's file.
  std::map<std::string, std::filesystem::path> files = {};
  std::optional<runtime::Hooking> hooking = {};  ///< absent for $VARNIX_HOOKING, else dynamic
  std::string language = "en";                   ///< the user's: "de", "zh-Hans"
  /// What packages have installed on the phone, below a folder that stands for "/" where the root
  /// lacks a file; absent for the build's own, empty for nothing.
  std::optional<std::string> installed = {};
};

/// Turns this process into a hosted one, once, before any library is loaded. Throws
/// std::runtime_error if a framework cannot be loaded.
HOST_EXPORT void startProcess(const ProcessOptions& options);

/// The options this process was started with.
HOST_EXPORT const ProcessOptions& processOptions();

/// Loads a library as the injection framework does: its initialiser has run on return. Throws
/// std::runtime_error with the loader's message.
HOST_EXPORT void loadLibrary(const std::string& path);

/// The file that the code or data at the address was loaded from; empty if it is in none.
HOST_EXPORT std::string fileOfAddress(const void* address);

/// A symbol that a loaded library exports; nil if there is no such library or symbol.
HOST_EXPORT void* librarySymbol(const std::string& path, const char* name);

/// The folder that holds the host library, and with it the rest of the build.
HOST_EXPORT std::filesystem::path ownFolder();

/// The build's own library, beside the host library; the device's if its loader is present.
HOST_EXPORT std::string defaultLibraryPath();

}  // namespace host
