// Modules: parts of the command that only some commands load, together with the libraries they
// need.
#pragma once

namespace varnix::cli {

/// Where a module is, and the type of what it offers: a struct of C++ functions, which may throw.
/// Only the function that returns the struct is C.
template <class Offer>
struct ModuleName {
  using Entry = const Offer* (*)();

  const char* file;     ///< in the host library's folder, like everything that was built
  const char* entry;    ///< the C function that returns what is offered; it does not throw
  const char* meaning;  ///< "the colour code", for the message if it is missing
};

/// A function of a module. The module stays loaded. Throws Failure.
void* moduleFunction(const char* file, const char* name, const char* meaning);

/// What the module offers. Throws Failure if it cannot be loaded.
template <class Offer>
const Offer& loadModule(const ModuleName<Offer>& module) {
  void* entry = moduleFunction(module.file, module.entry, module.meaning);
  return *reinterpret_cast<typename ModuleName<Offer>::Entry>(entry)();
}

}  // namespace varnix::cli
