#include "rules/check.h"

#include "rules/signature.h"
#include "rules/slice.h"
#include "rules/subjects.h"
#include "rules/universal.h"

namespace varnix::device {

namespace {

void checkSlice(Image& image, Findings findings) {
  if (!checkCode(image, findings)) return;
  const Signature signature = readSignature(image);
  findings.apply(signatureRules(), signature);
  findings.apply(directoryRules(), signature);
}

/// The name of a slice, whatever its header claims.
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

std::vector<Broken> checkLibrary(std::span<const uint8_t> bytes, const Offers& offers,
                                 Asked asked) {
  std::vector<Broken> broken;
  Findings findings("file", asked, broken);
  UniversalFile file;
  if (!findings.survives("slices", [&] { file = readUniversalFile(Reader(bytes)); })) return broken;
  findings.apply(fileRules(), file);
  for (const FileSlice& slice : file.slices) {
    if (!slice.bytes) continue;
    Image image;
    image.bytes = *slice.bytes;
    image.offset = slice.entry.offset;
    image.offers = &offers;
    checkSlice(image, Findings(nameOf(file, slice), asked, broken));
  }
  return broken;
}

}  // namespace varnix::device
