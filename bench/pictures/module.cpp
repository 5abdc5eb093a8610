// The function that the executable calls.
#include <cstdio>
#include <fstream>
#include <span>
#include <string>

#include "Foundation/log.h"
#include "measures.h"
#include "table.h"

/// Options: --json FILE (the table as JSON), --pickers FOLDER (with the installed packages),
/// --pictures FOLDER (with photographs).
extern "C" [[gnu::visibility("default")]] int measurePictures(int count, char** arguments) {
  std::string json;
  std::string pickers;
  std::string pictures;
  const std::span words(arguments, static_cast<std::size_t>(count));
  for (std::size_t i = 1; i < words.size(); i += 2) {
    const std::string option = words[i];
    std::string* value = option == "--json"       ? &json
                         : option == "--pickers"  ? &pickers
                         : option == "--pictures" ? &pictures
                                                  : nullptr;
    if (value == nullptr || i + 1 == words.size()) {
      std::fprintf(stderr, "usage: %s [--json FILE] [--pickers FOLDER] [--pictures FOLDER]\n",
                   words[0]);
      return 2;
    }
    *value = words[i + 1];
  }
  host::printLog(true);
  if (!bench::measurePass()) {
    std::fprintf(stderr, "%s: no OpenGL ES, or another frame without the picker\n", words[0]);
    return 1;
  }
  bench::measureImportantColor();
  bench::measureLargeImages();
  bench::measureRecolor();
  bench::measurePickers(pickers, pictures);
  bench::printTable();
  if (!json.empty()) std::ofstream(json) << bench::tableAsJson();
  return 0;
}
