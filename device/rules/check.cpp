#include "rules/check.h"

#include "macho/error.h"
#include "rules/class_data.h"
#include "rules/fixups.h"
#include "rules/signature.h"
#include "rules/subjects.h"
#include "rules/universal.h"

namespace varnix::device {

namespace {

constexpr RuleName kWhole = {"file.whole",
                             "Whatever the file points to is there, and can be read to its end."};

/// Collects what is broken in one slice.
class Findings {
 public:
  Findings(std::string slice, std::vector<Broken>& broken)
      : slice_(std::move(slice)), broken_(broken) {}

  template <class Of>
  void apply(std::span<const RuleOf<Of>> rules, const Of& of) {
    for (const RuleOf<Of>& rule : rules) {
      std::string first;
      size_t count = 0;
      const bool isWhole = survives(rule.name, [&] {
        rule.check(of, [&](const std::string& wrong) {
          if (count++ == 0) first = wrong;
        });
      });
      if (count > 1) first += " (and " + std::to_string(count - 1) + " more)";
      if (count > 0) add(rule.name, first);
      if (!isWhole) return;
    }
  }

  /// False, and said, where `work` runs into something that is not there.
  template <class Work>
  bool survives(std::string_view what, const Work& work) {
    try {
      work();
      return true;
    } catch (const Error& error) {
      add(kWhole.name, std::string(what) + ": " + error.what());
      return false;
    }
  }

 private:
  void add(std::string_view rule, const std::string& what) {
    // What cannot be read is said once.
    for (const Broken& each : broken_)
      if (each.slice == slice_ && each.rule == rule) return;
    broken_.push_back({slice_, rule, printable(what)});
  }

  std::string slice_;
  std::vector<Broken>& broken_;
};

void checkFixups(const Image& image, Findings& findings) {
  Fixups fixups;
  if (!findings.survives("symbols", [&] { fixups = readFixups(image); })) return;
  for (const auto rules :
       {rebaseRules(), bindRules(), lazyRules(), stubRules(), exportRules(), initialiserRules()})
    findings.apply(rules, fixups);
  ClassData classes;
  if (!findings.survives("classes", [&] { classes = readClassData(fixups); })) return;
  for (const auto rules :
       {classRules(), methodRules(), variableRules(), categoryRules(), constantRules()})
    findings.apply(rules, classes);
}

void checkSlice(Image& image, std::vector<Broken>& broken, std::string name) {
  const size_t before = broken.size();
  Findings findings(std::move(name), broken);
  findings.apply(firstRules(), image);
  if (broken.size() != before) return;
  readHeader(image);
  findings.apply(headerRules(), image);
  if (!findings.survives("load commands", [&] { readCommands(image); })) return;
  findings.apply(commandRules(), image);
  if (image.commandFault) return;
  findings.apply(segmentRules(), image);
  findings.apply(sectionRules(), image);
  if (image.loaderInfo && image.symbolTable && image.indirectSymbols) {
    findings.apply(linkEditRules(), image);
    checkFixups(image, findings);
  }
  const Signature signature = readSignature(image);
  findings.apply(signatureRules(), signature);
  findings.apply(directoryRules(), signature);
}

/// The name of a slice that may say anything of itself.
std::string nameOf(const UniversalFile& file, const FileSlice& slice) {
  if (file.isUniversal) return labelOf(slice);
  return slice.bytes->size() < 12 ? "file"
                                  : processorName(slice.bytes->u32(4), slice.bytes->u32(8));
}

template <class Of>
void append(std::vector<RuleName>& names, std::span<const RuleOf<Of>> rules) {
  for (const RuleOf<Of>& rule : rules) names.push_back({rule.name, rule.sentence});
}

}  // namespace

std::vector<RuleName> allRules() {
  std::vector<RuleName> names = {kWhole};
  append(names, fileRules());
  for (const auto rules : {firstRules(), headerRules(), commandRules(), segmentRules(),
                           sectionRules(), linkEditRules()})
    append(names, rules);
  for (const auto rules :
       {rebaseRules(), bindRules(), lazyRules(), stubRules(), exportRules(), initialiserRules()})
    append(names, rules);
  for (const auto rules :
       {classRules(), methodRules(), variableRules(), categoryRules(), constantRules()})
    append(names, rules);
  append(names, signatureRules());
  append(names, directoryRules());
  return names;
}

std::vector<Broken> checkLibrary(std::span<const uint8_t> bytes, const Offers& offers) {
  std::vector<Broken> broken;
  Findings findings("file", broken);
  UniversalFile file;
  if (!findings.survives("slices", [&] { file = readUniversalFile(Reader(bytes)); })) return broken;
  findings.apply(fileRules(), file);
  for (const FileSlice& slice : file.slices) {
    if (!slice.bytes) continue;
    Image image;
    image.bytes = *slice.bytes;
    image.offset = slice.entry.offset;
    image.offers = &offers;
    checkSlice(image, broken, nameOf(file, slice));
  }
  return broken;
}

}  // namespace varnix::device
