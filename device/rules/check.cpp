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

  /// Whether all of them hold.
  template <class Of>
  bool apply(std::span<const RuleOf<Of>> rules, const Of& of) {
    const size_t before = broken_.size();
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
      if (!isWhole) break;
    }
    return broken_.size() == before;
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

void checkClasses(const Fixups& fixups, Findings& findings) {
  ClassData classes;
  if (!findings.survives("classes", [&] { classes = readClassData(fixups); })) return;
  for (const auto rules : {classRules(), classShapeRules(), methodRules(), variableRules(),
                           categoryRules(), constantRules()})
    findings.apply(rules, classes);
}

void checkFixups(const Image& image, Findings& findings) {
  Fixups fixups;
  if (!findings.survives("symbols", [&] { fixups = readFixups(image); })) return;
  findings.apply(exportRules(), fixups);
  // The rest is found by way of words that are rebased or bound.
  bool isFixed = findings.apply(rebaseRules(), fixups);
  isFixed &= findings.apply(bindRules(), fixups);
  if (!isFixed) return;
  for (const auto rules : {lazyRules(), stubRules(), initialiserRules()})
    findings.apply(rules, fixups);
  checkClasses(fixups, findings);
}

void checkSlice(Image& image, Findings findings) {
  if (!findings.apply(firstRules(), image)) return;
  readHeader(image);
  findings.apply(headerRules(), image);
  if (!findings.survives("load commands", [&] { readCommands(image); })) return;
  // What is missing may stand behind the command that is none.
  if (!findings.apply(commandShapeRules(), image)) return;
  findings.apply(commandRules(), image);
  // The rest is found by way of segments.
  bool isMapped = findings.apply(segmentRules(), image);
  isMapped &= findings.apply(sectionRules(), image);
  if (isMapped && image.loaderInfo && image.symbolTable && image.indirectSymbols) {
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
  for (const auto rules : {firstRules(), headerRules(), commandShapeRules(), commandRules(),
                           segmentRules(), sectionRules(), linkEditRules()})
    append(names, rules);
  for (const auto rules :
       {rebaseRules(), bindRules(), lazyRules(), stubRules(), exportRules(), initialiserRules()})
    append(names, rules);
  for (const auto rules : {classRules(), classShapeRules(), methodRules(), variableRules(),
                           categoryRules(), constantRules()})
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
    checkSlice(image, Findings(nameOf(file, slice), broken));
  }
  return broken;
}

}  // namespace varnix::device
