#include "common/root_choice.h"

#include <filesystem>
#include <system_error>

#include "common/errors.h"
#include "process/container.h"

namespace varnix::cli {

std::string chosenRoot(const std::optional<std::string>& option, RootUse use) {
  if (option && option->empty()) throw UsageError("not a folder", "--root \"\"");
  std::error_code ignored;
  if (option && use == RootUse::reads && !std::filesystem::is_directory(*option, ignored))
    throw Failure("no such container root", *option);
  return host::resolveContainerRoot(option.value_or(""));
}

}  // namespace varnix::cli
