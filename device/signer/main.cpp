// varnix-sign: signs a library for one architecture in place, or says whether its signature is
// valid.
#include <CLI/CLI.hpp>
#include <cstdio>

#include "macho/error.h"
#include "macho/files.h"
#include "signer/sign.h"

int main(int argc, char** argv) {
  std::string path, identifier;
  bool onlyVerify = false;
  CLI::App app("Signs a library for one architecture, ad hoc and in place.", "varnix-sign");
  app.add_option("library", path, "the library")->required();
  app.add_option("--identifier", identifier, "what the signature calls it")->required();
  app.add_flag("--verify", onlyVerify, "change nothing; fail unless it is signed so");
  CLI11_PARSE(app, argc, argv);
  try {
    using namespace varnix::device;
    const std::vector<uint8_t> file = readFile(path);
    if (onlyVerify) {
      verify(file, identifier);
    } else {
      writeFile(path, sign(file, identifier));
    }
  } catch (const varnix::device::Error& error) {
    std::fprintf(stderr, "varnix-sign: %s: %s\n", path.c_str(), error.what());
    return 1;
  }
  return 0;
}
