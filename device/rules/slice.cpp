#include "rules/slice.h"

#include "rules/class_data.h"
#include "rules/fixups.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

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
  // Everything after this is found through words that are rebased or bound.
  bool isFixed = findings.apply(rebaseRules(), fixups);
  isFixed &= findings.apply(bindRules(), fixups);
  if (!isFixed) return;
  for (const auto rules : {lazyRules(), stubRules(), initialiserRules()})
    findings.apply(rules, fixups);
  checkClasses(fixups, findings);
}

}  // namespace

bool checkCode(Image& image, Findings& findings) {
  if (!findings.apply(firstRules(), image)) return false;
  readHeader(image);
  findings.apply(headerRules(), image);
  if (!findings.survives("load commands", [&] { readCommands(image); })) return false;
  // A command that seems to be missing may follow the malformed one.
  if (!findings.apply(commandShapeRules(), image)) return false;
  findings.apply(commandRules(), image);
  // Everything after this is found through segments.
  bool isMapped = findings.apply(segmentRules(), image);
  isMapped &= findings.apply(sectionRules(), image);
  if (isMapped && image.loaderInfo && image.symbolTable && image.indirectSymbols) {
    findings.apply(linkEditRules(), image);
    checkFixups(image, findings);
  }
  return true;
}

std::optional<Broken> firstBroken(Reader slice, uint64_t offset) {
  // The loader knows better which other libraries there are.
  static const Offers unknown;
  Image image;
  image.bytes = slice;
  image.offset = offset;
  image.offers = &unknown;
  std::vector<Broken> broken;
  Findings findings("", Asked::platformAlone, broken);
  checkCode(image, findings);
  if (broken.empty()) return {};
  return broken.front();
}

}  // namespace varnix::device
