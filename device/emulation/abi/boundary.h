// Where the device's calling conventions meet those of Linux on the same processor: all that the
// library calls, and all that calls it, passes here.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace varnix::device {

/// What a symbol of the device's means in this process, by its name with the leading underscore;
/// nil where nobody has it.
void* importedSymbol(std::string_view symbol);

/// Makes the methods of an image's classes and categories ones that this process may call, before
/// the run-time sees them. The lists are those of "__objc_classlist" and "__objc_catlist".
void adaptMethods(std::span<uintptr_t> classes, std::span<uintptr_t> categories);

/// Whether an address lies in a library of the device that is loaded; the loader answers it.
bool isOfLibrary(const void* address);

}  // namespace varnix::device
