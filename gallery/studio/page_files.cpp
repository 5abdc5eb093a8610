#include "gallery/studio/page_files.h"

#include <vector>

namespace {

struct Row {
  const char *name, *type, *begin, *end;
};

}  // namespace

// Defined in page_files.S.
extern "C" {
extern const Row varnixStudioFiles[], varnixStudioFilesEnd[];
}

namespace varnix::cli::studio {

const PageFile* pageFile(std::string_view name) {
  static const std::vector<PageFile> files = [] {
    std::vector<PageFile> made;
    for (const Row* row = varnixStudioFiles; row != varnixStudioFilesEnd; ++row)
      made.push_back({row->name, row->type, {row->begin, row->end}});
    return made;
  }();
  for (const PageFile& file : files) {
    if (name == file.name) return &file;
  }
  return nullptr;
}

}  // namespace varnix::cli::studio
