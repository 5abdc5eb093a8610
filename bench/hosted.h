// The one hosted process that the benchmarks share.
#pragma once

#include <string>

#include "platform/UIKit.h"
#include "runtime/send.h"
#include "table.h"
#include "timing.h"

namespace bench {

/// The process's container root and settings file on this machine.
const std::string& root();
const std::string& settingsFile();

/// A view of the hosted application, with the library loaded and one question asked already.
UIView* dyedView();

/// Nanoseconds of a cached send, and of a view's question for its tint colour.
double cachedSend();
double tintColorQuestion();

/// Loads a library in a hosted process that has not loaded any, and prints the milliseconds and the
/// private kilobytes that it took. The exit status.
int loadOnce(const char* library);

/// The benchmarks of each file. Loading runs first, while the library is not loaded yet.
void registerLoading();
void registerMessages();
void registerReload();
void registerIconColor();

}  // namespace bench
