// Modules: parts of the command that only some commands load, with the libraries behind them.
#pragma once

namespace varnix::cli {

/// Where a module is, and what type of thing it offers: a struct of functions, which are C++ and
/// may throw. Only the function that hands the struct over is C.
template <class Offer>
struct ModuleName {
  using Entry = const Offer* (*)();

  const char* file;     ///< beside the host library, as everything that was built
  const char* entry;    ///< the C function that gives what is offered; it does not throw
  const char* meaning;  ///< "the colour code", for a person who is without it
};

/// A function of a module, which stays loaded. Throws Failure.
void* moduleFunction(const char* file, const char* name, const char* meaning);

/// What the module offers. Throws Failure if it cannot be loaded.
template <class Offer>
const Offer& loadModule(const ModuleName<Offer>& module) {
  void* entry = moduleFunction(module.file, module.entry, module.meaning);
  return *reinterpret_cast<typename ModuleName<Offer>::Entry>(entry)();
}

}  // namespace varnix::cli
