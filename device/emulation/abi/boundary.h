// The boundary between the device's calling conventions and those of Linux on the same processor.
// All calls out of the library and into it pass through here.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace varnix::device {

/// The address of one of the device's symbols in this process, by its name with the leading
/// underscore; nil if there is none.
void* importedSymbol(std::string_view symbol);

/// Makes the methods of an image's classes and categories callable by this process, before the
/// run-time sees them. The lists are those of "__objc_classlist" and "__objc_catlist".
void adaptMethods(std::span<uintptr_t> classes, std::span<uintptr_t> categories);

/// Whether an address is in a loaded library of the device. The loader defines this.
bool isOfLibrary(const void* address);

}  // namespace varnix::device
