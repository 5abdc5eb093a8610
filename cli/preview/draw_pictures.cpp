// Drawing a gallery's pictures on all processors.
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

#include "Foundation/property_list.h"
#include "common/errors.h"
#include "common/interruption.h"
#include "gallery/materials/screens_module.h"
#include "preview/sheet.h"

namespace varnix::cli {

namespace fs = std::filesystem;
using varnix::screens::Effort;

namespace {

/// The files with the same contents.
using Drawing = std::vector<const Picture*>;

void link(const fs::path& from, const fs::path& to) {
  const fs::path beside = to.string() + ".new";
  std::error_code error;
  fs::remove(beside, error);
  fs::create_hard_link(from, beside, error);
  if (error) fs::copy_file(from, beside, fs::copy_options::overwrite_existing, error);
  if (!error) fs::rename(beside, to, error);
  if (!error) return;
  const std::string why = error.message();
  fs::remove(beside, error);
  throw Failure("cannot write", to.string() + ": " + why);
}

void draw(const Drawing& drawing, const fs::path& folder, double scale) {
  const Picture& first = *drawing.front();
  const std::string png = screensModule().draw(first.layers, first.scene, scale, Effort::kept);
  const std::string file = folder / first.file;
  if (!host::writeFile(file, png, true)) throw Failure("cannot write", file);
  for (std::size_t i = 1; i < drawing.size(); ++i) link(file, folder / drawing[i]->file);
}

std::vector<Drawing> grouped(const std::vector<Picture>& pictures) {
  std::vector<Drawing> drawings;
  std::map<std::string, std::size_t> known;
  for (const Picture& picture : pictures) {
    const auto [at, isNew] = known.emplace(picture.contents, drawings.size());
    if (isNew) drawings.emplace_back();
    drawings[at->second].push_back(&picture);
  }
  return drawings;
}

}  // namespace

void drawPictures(const std::vector<Picture>& pictures, const fs::path& folder, double scale,
                  const std::function<void(std::size_t, std::size_t)>& progress) {
  for (const Picture& picture : pictures) {
    std::error_code error;
    fs::create_directories((folder / picture.file).parent_path(), error);
    if (error) throw Failure("cannot write", folder.string() + ": " + error.message());
  }
  const auto drawings = grouped(pictures);
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;
  std::size_t done = 0;
  std::exception_ptr failure;
  auto work = [&] {
    for (std::size_t i = next++; i < drawings.size(); i = next++) {
      try {
        throwIfInterrupted();
        draw(drawings[i], folder, scale);
        const std::lock_guard lock(mutex);
        progress(++done, drawings.size());
      } catch (...) {
        const std::lock_guard lock(mutex);
        if (failure == nullptr) failure = std::current_exception();
        next = drawings.size();
      }
    }
  };
  {
    std::vector<std::jthread> workers;
    for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i) workers.emplace_back(work);
    work();
  }
  if (failure != nullptr) std::rethrow_exception(failure);
}

}  // namespace varnix::cli
