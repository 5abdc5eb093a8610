#include "inspect/report.h"

#include <mutex>

#include "Foundation/log.h"
#include "common/answer_json.h"
#include "common/death_report.h"
#include "common/icon_check.h"
#include "common/json.h"
#include "common/process_choice.h"
#include "objc/autorelease_pool.h"
#include "platform/Foundation.h"
#include "prefs/elements.h"
#include "probe/surfaces.h"
#include "runtime/runtime.h"
#include "script/script.h"

namespace varnix::cli {

namespace {

using host::runtime::Change;

Json changeJson(const Change& change) {
  if (change.kind == Change::Kind::add) {
    return {{"op", "add"},
            {"class", change.className},
            {"selector", change.selector},
            {"types", change.types}};
  }
  return {{"op", "hook"},
          {"class", change.className},
          {"selector", change.selector},
          {"method", change.classMethod ? "class" : "instance"}};
}

/// Loads the library and returns what it added and replaced during that time, on any thread.
Json loadObserved() {
  std::mutex mutex;
  Json changes = Json::array();
  host::runtime::observeChanges([&](const Change& change) {
    std::lock_guard lock(mutex);
    changes.push_back(changeJson(change));
  });
  loadNamed(host::defaultLibraryPath());
  host::runtime::observeChanges({});
  return changes;
}

/// What the library skipped, and why: pairs of texts from the library's own class.
Json skippedMethods() {
  auto* pairs = send<NSArray*>(objc_getClass("VarnixInstallation"), "skipped"_sel);
  auto text = [pairs](NSUInteger index) {
    auto* string = static_cast<NSString*>(send(pairs, NSArray::objectAtIndex, index));
    return std::string(send(string, NSString::UTF8String));
  };
  Json skipped = Json::array();
  for (NSUInteger i = 0; i < send(pairs, NSArray::count); i += 2)
    skipped.push_back({{"method", text(i)}, {"reason", text(i + 1)}});
  return skipped;
}

Json logSoFar() {
  Json lines = Json::array();
  for (const auto& line : host::logLines()) {
    lines.push_back({{"level", line.level}, {"line", line.line}});
  }
  return lines;
}

Json askColor(NSObject* manager, const std::string& selector) {
  auto* color = objc::sendDynamic<NSObject*>(manager, sel_registerName(selector.c_str()));
  return colorJson(color);
}

Json askElements(NSObject* manager) {
  Json elements = Json::object();
  for (const settings::Element& element : settings::kElements) {
    const std::string operation = element.operation;
    Json type = nullptr;
    if (manager != nullptr) {
      type =
          objc::sendDynamic<NSInteger>(manager, sel_registerName((operation + "Enabled").c_str()));
    }
    elements[element.key] = {{"type", type}, {"color", askColor(manager, operation + "Dye")}};
  }
  return elements;
}

Json runAndCollect(const LineSource& script, Stage& stage) {
  Json printed = Json::array();
  runScript(script, stage, [&printed](const Json& value) { printed.push_back(value); });
  return printed;
}

}  // namespace

Json report(const Question& question) {
  objc::AutoreleasePool pool;
  host::printLog(false);
  host::startProcess(question.process);
  if (question.withLibrary) warnOfMissing();
  if (question.checksIcons) checkIcons(question.process.icons);
  std::optional<Stage> stage;
  if (question.script) stage.emplace();
  Json result;
  result["installed"] = question.withLibrary ? loadObserved() : Json::array();
  result["skipped"] = question.withLibrary ? skippedMethods() : Json::array();
  for (const std::string& file : question.extensions) loadNamed(file);
  if (stage) result["printed"] = runAndCollect(*question.script, *stage);

  // The library's own manager cannot be reached from outside, but another one reads the same. It is
  // kept for ever, since its store keeps listening for changes.
  Class managerClass = question.withLibrary ? objc_getClass("VNXManager") : nullptr;
  static NSObject* manager;
  manager = send<NSObject*>(send<NSObject*>(managerClass, "alloc"_sel), "init"_sel);
  result["dye"] = askColor(manager, "dye");
  // Asking for the dye has filled this.
  result["iconColor"] = askColor(manager, "cachedIconColor");
  result["elements"] = askElements(manager);
  result["surfaces"] = surfaceAnswers(question.classes);
  result["log"] = logSoFar();
  return result;
}

}  // namespace varnix::cli
