#include "gallery/page/gallery.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>

#include "common/errors.h"
#include "common/json.h"
#include "gallery/page/page_data.h"
#include "gallery/page/page_files.h"
#include "gallery/page/plain_page.h"

namespace varnix::cli {

namespace {

/// JSON text in which nothing ends a script element.
std::string scriptText(const Json& value) {
  std::string result;
  for (const char c : dump(value)) {
    if (c == '<') {
      result += "\\u003c";
    } else {
      result += c;
    }
  }
  return result;
}

void replaceLine(std::string& page, std::string_view line, std::string_view with) {
  page.replace(page.find(line), line.size(), with);
}

std::string pageWith(const std::string& data, const std::string& plain) {
  std::string page(gallery::pageHtml());
  // From the end, so that inserted text is never searched.
  replaceLine(page, "<!-- script -->", gallery::pageScript());
  replaceLine(page, "<!-- data -->", data);
  replaceLine(page, "<!-- plain -->", plain);
  replaceLine(page, "<!-- style -->", gallery::pageStyle());
  return page;
}

/// An open page reads either the complete old file or the complete new one.
void replaceFile(const std::filesystem::path& path, std::string_view text) {
  const std::filesystem::path unfinished = path.string() + ".new";
  errno = 0;
  std::ofstream out(unfinished, std::ios::binary);
  out << text;
  out.close();
  if (!out || std::rename(unfinished.c_str(), path.c_str()) != 0) {
    const std::string why = errno != 0 ? std::strerror(errno) : "it was not written";
    std::remove(unfinished.c_str());
    throw Failure("cannot write " + path.string(), why);
  }
}

}  // namespace

void writeGallery(const std::filesystem::path& folder, const Json& gallery) {
  const Json data = gallery::pageData(folder, gallery);
  const std::string text = scriptText(data);
  replaceFile(folder / "index.html", pageWith(text, gallery::plainPage(data)));
  replaceFile(folder / "gallery.js", "varnixGallery(" + text + ");\n");
  replaceFile(folder / "state.js", "varnixState(" + scriptText(data.at("revision")) + ");\n");
}

}  // namespace varnix::cli
