#include "linker/stub_library.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <sstream>

#include "macho/error.h"
#include "macho/version.h"

namespace varnix::device {
namespace {

bool isFor(const YAML::Node& targets, std::string_view wanted) {
  return std::any_of(targets.begin(), targets.end(), [wanted](const YAML::Node& target) {
    return wanted.empty() || target.as<std::string>() == wanted;
  });
}

void readExports(const YAML::Node& exports, std::string_view target, StubLibrary& library) {
  for (const YAML::Node& group : exports) {
    for (const auto& entry : group) {
      const auto key = entry.first.as<std::string>();
      if (key != "targets" && key != "symbols") throw Error("exports: " + key + " is not handled");
    }
    if (!isFor(group["targets"], target)) continue;
    for (const YAML::Node& symbol : group["symbols"])
      library.symbols.insert(symbol.as<std::string>());
  }
}

StubLibrary readRoot(const YAML::Node& root, std::string_view target) {
  if (root.Tag() != "!tapi-tbd") throw Error("not a text stub of version 4");
  StubLibrary library;
  bool isOurs = false;
  for (const auto& entry : root) {
    const auto key = entry.first.as<std::string>();
    const YAML::Node& value = entry.second;
    if (key == "tbd-version") {
      if (value.as<int>() != 4) throw Error("not a text stub of version 4");
    } else if (key == "targets") {
      isOurs = isFor(value, target);
    } else if (key == "install-name") {
      library.installName = value.as<std::string>();
    } else if (key == "current-version") {
      library.currentVersion = parseVersion(value.as<std::string>());
    } else if (key == "compatibility-version") {
      library.compatibilityVersion = parseVersion(value.as<std::string>());
    } else if (key == "exports") {
      readExports(value, target, library);
    } else {
      throw Error(key + " is not handled");
    }
  }
  if (!isOurs) throw Error("not for " + std::string(target));
  if (library.installName.empty()) throw Error("no install-name");
  return library;
}

/// Ignores everything in a document.
class Ignoring : public YAML::EventHandler {
  using Mark = YAML::Mark;
  using Text = std::string;
  using Anchor = YAML::anchor_t;
  using Style = YAML::EmitterStyle::value;

  void OnDocumentStart(const Mark&) override {}
  void OnDocumentEnd() override {}
  void OnNull(const Mark&, Anchor) override {}
  void OnAlias(const Mark&, Anchor) override {}
  void OnScalar(const Mark&, const Text&, Anchor, const Text&) override {}
  void OnSequenceStart(const Mark&, const Text&, Anchor, Style) override {}
  void OnSequenceEnd() override {}
  void OnMapStart(const Mark&, const Text&, Anchor, Style) override {}
  void OnMapEnd() override {}
};

/// Reads at most two: the YAML library takes an unopened closing bracket for endless documents.
bool isOneDocument(const std::string& text) {
  std::istringstream stream(text);
  YAML::Parser parser(stream);
  Ignoring ignoring;
  return parser.HandleNextDocument(ignoring) && !parser.HandleNextDocument(ignoring);
}

}  // namespace

StubLibrary readStubLibrary(const std::string& text, std::string_view target) {
  try {
    if (!isOneDocument(text)) throw Error("not one document");
    return readRoot(YAML::Load(text), target);
  } catch (const YAML::Exception& error) {
    throw Error(error.what());
  }
}

}  // namespace varnix::device
