#if defined(__aarch64__)

#include "abi/adapters.h"
#include "abi/implementations.h"
#include "abi/methods.h"
#include "abi/native.h"
#include "abi/variadic.h"

namespace varnix::device {

namespace {

struct Function {
  std::string_view name, encoding;
};

/// The functions whose results or stack arguments are passed differently.
constexpr Function kFunctions[] = {
    {"CGImageCreate", "@QQQQQ@I@^dBi"},
    {"_UIAccessibilityEnhanceBackgroundContrast", "B"},
    {"class_addIvar", "B#*QC*"},
    {"class_addProperty", "B#*^vI"},
    {"class_addProtocol", "B#@"},
    {"class_conformsToProtocol", "B#@"},
    {"class_isMetaClass", "B#"},
    {"class_respondsToSelector", "B#:"},
    {"glIsBuffer", "CI"},
    {"glIsProgram", "CI"},
    {"glIsRenderbuffer", "CI"},
    {"glIsShader", "CI"},
    {"glIsTexture", "CI"},
    {"objc_opt_isKindOfClass", "B@#"},
    {"objc_opt_respondsToSelector", "B@:"},
    {"object_isClass", "B@"},
    {"protocol_conformsToProtocol", "B@@"},
    {"protocol_isEqual", "B@@"},
    {"sel_isEqual", "B::"},
    {"sel_isMapped", "B:"},
};

}  // namespace

void* adapterFor(std::string_view name) {
  for (const Function& each : kFunctions) {
    if (each.name == name)
      return bridge(readNativeSignature(each.encoding), Direction::toLinux, linuxSymbol(name));
  }
  if (void* entry = messenger(name)) return entry;
  if (void* entry = variadicFunction(name)) return entry;
  return methodFunction(name);
}

}  // namespace varnix::device

#endif
