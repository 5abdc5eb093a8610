// A theme's file: a property list of settings.
#pragma once

#include <optional>
#include <string>

#include "platform/Foundation.h"

namespace varnix::cli {

/// Everything in the file, which may be a pipe that ends within 5 s; autoreleased. Throws Failure
/// if it holds no dictionary.
NSDictionary* themeIn(const std::string& file);
/// The same for standard input, for whose end it waits.
NSDictionary* themeInInput();

/// What the settings pane takes of that: known keys with values of their kind. Warns of keys that
/// it leaves out. Throws Failure if nothing is left; the name says where it came from.
NSDictionary* settingsOf(NSDictionary* theme, const std::string& name);

/// The XML form, which the settings pane takes as text. Throws Failure if XML would change a value;
/// the name says where the text should go.
std::string themeText(NSDictionary* theme, const std::string& name);

/// Writes the XML form to the file, else to standard output. Throws Failure.
void writeTheme(NSDictionary* theme, const std::optional<std::string>& file);

}  // namespace varnix::cli
