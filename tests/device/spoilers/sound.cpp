#include <map>
#include <stdexcept>

#include "device/spoilers/spoiled.h"
#include "macho/files.h"
#include "rules/rule.h"
#include "signer/sign.h"

namespace device_test {

namespace {

struct Stub {
  const char* name;
  const char* path;
  std::vector<const char*> symbols;
};

const std::vector<Stub> kStubs = {
    {"libSystem",
     "/usr/lib/libSystem.B.dylib",
     {"_use", "_callLater", "__NSConcreteStackBlock", "__NSConcreteGlobalBlock",
      "__Block_object_assign", "__Block_object_dispose", "dyld_stub_binder", "dyld_stub_bindex"}},
    {"libobjc",
     "/usr/lib/libobjc.A.dylib",
     {"_OBJC_CLASS_$_NSObject", "_OBJC_METACLASS_$_NSObject", "__objc_empty_cache",
      "__objc_empty_cachf"}},
    {"CoreFoundation",
     "/System/Library/Frameworks/CoreFoundation.framework/CoreFoundation",
     {"___CFConstantStringClassReference"}},
    {"UIKit",
     "/System/Library/Frameworks/UIKit.framework/UIKit",
     {"_OBJC_CLASS_$_UIColor", "_OBJC_CLASS_$_UIBarButtonItem",
      "_OBJC_METACLASS_$_UIBarButtonItem"}},
};

/// The objects, the stubs and the list of exports.
class Workshop {
 public:
  Workshop() {
    for (const Stub& stub : kStubs) {
      std::string text = std::string("--- !tapi-tbd\ntbd-version: 4\n") +
                         "targets: [ armv7-ios, arm64-ios ]\ninstall-name: " + stub.path +
                         "\nexports:\n  - targets: [ armv7-ios, arm64-ios ]\n    symbols:\n";
      for (const char* symbol : stub.symbols) text += std::string("      - ") + symbol + "\n";
      writeText(folder_ / (std::string(stub.name) + ".tbd"), text + "...\n");
      options_ += " --stub " + (folder_ / (std::string(stub.name) + ".tbd"));
    }
    writeText(folder_ / "exports", "_ruledBegin\n_ruledNumber\n");
    for (const std::string target : {"arm64", "armv7"})
      printed("clang-19 --target=" + target + "-apple-ios9.3 -Os -fblocks -fvisibility=hidden -c " +
              VARNIX_DEVICE_RULED + (target == "armv7" ? " -mthumb" : "") + " -o " +
              (folder_ / (target + ".o")));
  }

  Bytes library(const std::string& architecture) const {
    return architecture == "arm64"
               ? linked64("-dylib -install_name /Library/it.dylib")
               : linked32("--install-name /Library/it.dylib --current-version 1.0");
  }

  Bytes bundle(const std::string& architecture) const {
    return architecture == "arm64" ? linked64("-bundle") : linked32("--bundle");
  }

  Bytes universal(const Bytes& first, const Bytes& second) const {
    device::writeFile(folder_ / "first", first);
    device::writeFile(folder_ / "second", second);
    printed("llvm-lipo-19 -create " + (folder_ / "first") + " " + (folder_ / "second") +
            " -output " + (folder_ / "both"));
    return device::readFile(folder_ / "both");
  }

  const std::string& options() const { return options_; }

 private:
  Bytes linked32(const std::string& kind) const {
    printed(VARNIX_DEVICE_TOOLS "/varnix-link-armv7 " + (folder_ / "armv7.o") + stubs() + " -o " +
            (folder_ / "it") + " " + kind + " --exports " + (folder_ / "exports"));
    return signedFile();
  }

  Bytes linked64(const std::string& kind) const {
    printed("ld64.lld-19 " + kind + " -arch arm64 -platform_version ios 9.3 9.3 -fatal_warnings " +
            "-no_fixup_chains -no_adhoc_codesign -x -exported_symbols_list " +
            (folder_ / "exports") + " -o " + (folder_ / "it") + " " + (folder_ / "arm64.o") +
            stubs());
    return signedFile();
  }

  std::string stubs() const {
    std::string paths;
    for (const Stub& stub : kStubs) paths += " " + (folder_ / (std::string(stub.name) + ".tbd"));
    return paths;
  }

  Bytes signedFile() const {
    return device::sign(device::readFile(folder_ / "it"), "com.example.ruled");
  }

  Folder folder_;
  std::string options_;
};

const Workshop& workshop() {
  static const Workshop it;
  return it;
}

template <class Found>
const Found& there(const Found* found, std::string_view name) {
  if (found == nullptr) throw std::runtime_error("the sample has no " + std::string(name));
  return *found;
}

}  // namespace

const device::ClassHalf& Sound::classNamed(std::string_view name) const {
  const device::ClassHalf* found = nullptr;
  for (const auto& each : classes.classes)
    if (each.half && each.half->name.text == name) found = &*each.half;
  return there(found, name);
}

const device::ClassHalf& Sound::metaclassNamed(std::string_view name) const {
  const device::ClassHalf* found = nullptr;
  for (const auto& each : classes.classes)
    if (each.meta && each.meta->name.text == name) found = &*each.meta;
  return there(found, name);
}

const device::CategoryEntry& Sound::categoryNamed(std::string_view name) const {
  const device::CategoryEntry* found = nullptr;
  for (const auto& each : classes.categories)
    if (each.name.text == name) found = &each;
  return there(found, name);
}

const Sound& soundLibrary(const std::string& architecture) {
  static std::map<std::string, std::unique_ptr<Sound>> built;
  auto& it = built[architecture];
  if (it != nullptr) return *it;
  it = std::make_unique<Sound>();
  it->bytes = workshop().library(architecture);
  it->image.bytes = device::Reader(it->bytes);
  device::readHeader(it->image);
  device::readCommands(it->image);
  it->fixups = device::readFixups(it->image);
  it->classes = device::readClassData(it->fixups);
  it->signature = device::readSignature(it->image);
  return *it;
}

Bytes soundBundle(const std::string& architecture) { return workshop().bundle(architecture); }

Bytes soundUniversalFile() {
  return workshop().universal(soundLibrary("armv7").bytes, soundLibrary("arm64").bytes);
}

const std::string& stubOptions() { return workshop().options(); }

}  // namespace device_test
