// The one hosted process that the benchmarks share.
#pragma once

#include <string>

#include "platform/UIKit.h"
#include "runtime/send.h"
#include "table.h"
#include "timing.h"

namespace bench {

/// The process's container root and settings file, as paths of this machine.
const std::string& root();
const std::string& settingsFile();

/// A view of the hosted application. The library is loaded and has answered one question.
UIView* dyedView();

/// Nanoseconds for a cached send, and for asking a view its tint colour.
double cachedSend();
double tintColorQuestion();

/// Loads a library in a hosted process that has none, and prints the time in milliseconds and the
/// private memory in kilobytes. Returns the exit status.
int loadOnce(const char* library);

/// The benchmarks of each file. Loading runs first, before the library is loaded.
void registerLoading();
void registerMessages();
void registerReload();
void registerIconColor();

}  // namespace bench
