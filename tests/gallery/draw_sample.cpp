// draw_sample_gallery FOLDER [RRGGBB]: draws the sample gallery there, with a stroke of that
// colour.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "common/json.h"
#include "gallery/page/gallery.h"
#include "sample.h"

int main(int count, char** arguments) try {
  if (count < 2) return 2;
  const std::filesystem::path folder = arguments[1];
  const unsigned stroke =
      count > 2 ? static_cast<unsigned>(std::stoul(arguments[2], nullptr, 16)) : 0xffffff;
  std::filesystem::create_directories(folder);
  varnix::cli::writeGallery(folder, drawSampleGallery(folder, stroke));
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
