#include "preview/output_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <system_error>
#include <vector>

#include "common/errors.h"

namespace varnix::cli {

namespace fs = std::filesystem;

namespace {

using Holds = OutputFolder::Holds;

std::vector<std::string> filesOf(Holds holds) {
  if (holds == Holds::differences) return {kDifferenceList};
  return {"index.html", "gallery.js", "state.js"};
}

/// Whether everything in the folder may be part of an older one.
bool isOlder(const fs::path& folder, Holds holds) {
  const auto wanted = filesOf(holds);
  for (const std::string& file : wanted) {
    if (!fs::is_regular_file(folder / file)) return false;
  }
  std::ptrdiff_t files = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (!entry.is_directory()) {
      ++files;
      continue;
    }
    for (const auto& picture : fs::directory_iterator(entry)) {
      if (picture.path().extension() != ".png") return false;
    }
  }
  return files == std::ssize(wanted);
}

/// Never replaces a folder that may be something else, whatever the options say.
void requireReplaceable(const fs::path& folder, Holds holds) {
  try {
    const auto type = fs::symlink_status(folder).type();
    if (type == fs::file_type::not_found) return;
    if (type != fs::file_type::directory) throw Failure("not a folder", folder.string());
    if (fs::is_empty(folder) || isOlder(folder, holds)) return;
  } catch (const fs::filesystem_error& error) {
    throw Failure("cannot read the folder", folder.string() + ": " + error.code().message());
  }
  throw Failure(std::string("the folder holds something else than ") +
                    (holds == Holds::gallery ? "a gallery" : "differences"),
                folder.string());
}

fs::path withoutSlash(const std::string& wanted) {
  const fs::path path = fs::absolute(wanted).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

}  // namespace

OutputFolder::OutputFolder(const std::string& wanted, Holds holds) : holds_(holds) {
  if (wanted.empty()) throw UsageError("not a folder", "\"\"");
  wanted_ = withoutSlash(wanted);
  requireReplaceable(wanted_, holds_);
  std::string pattern = (wanted_.parent_path() / ("." + wanted_.filename().string() + "-XXXXXX"));
  if (mkdtemp(pattern.data()) == nullptr)
    throw Failure("cannot write", wanted_.string() + ": " + std::strerror(errno));
  path_ = pattern;
  // With the permissions that the user's mask gives to other new folders.
  const mode_t mask = umask(0);
  umask(mask);
  chmod(path_.c_str(), 0777 & ~mask);
}

OutputFolder::~OutputFolder() {
  std::error_code ignored;
  if (!isInPlace_) fs::remove_all(path_, ignored);
}

void OutputFolder::putInPlace() {
  requireReplaceable(wanted_, holds_);
  if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, wanted_.c_str(), RENAME_NOREPLACE) == 0) {
    isInPlace_ = true;
  } else if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, wanted_.c_str(), RENAME_EXCHANGE) == 0) {
    // The older folder has the temporary name now, and the destructor removes it.
  } else {
    throw Failure("cannot write", wanted_.string() + ": " + std::strerror(errno));
  }
}

}  // namespace varnix::cli
