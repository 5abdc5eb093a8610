// The tables of rules, by subject.
#pragma once

#include <span>

#include "rules/image.h"
#include "rules/rule.h"

namespace varnix::device {

struct Fixups;
struct ClassData;
struct Signature;
struct UniversalFile;

using FileRule = RuleOf<UniversalFile>;
using ImageRule = RuleOf<Image>;
using FixupRule = RuleOf<Fixups>;
using ClassRule = RuleOf<ClassData>;
using SignatureRule = RuleOf<Signature>;

inline constexpr std::string_view kSystemLibrary = "/usr/lib/libSystem.B.dylib";

std::span<const FileRule> fileRules();
/// Of the bytes only; the rest needs a header.
std::span<const ImageRule> firstRules();
std::span<const ImageRule> headerRules();
/// Whether all load commands can be read, which the rest needs.
std::span<const ImageRule> commandShapeRules();
std::span<const ImageRule> commandRules();
std::span<const ImageRule> segmentRules();
std::span<const ImageRule> sectionRules();
std::span<const ImageRule> linkEditRules();
std::span<const FixupRule> rebaseRules();
std::span<const FixupRule> bindRules();
std::span<const FixupRule> lazyRules();
std::span<const FixupRule> stubRules();
std::span<const FixupRule> exportRules();
std::span<const FixupRule> initialiserRules();
std::span<const ClassRule> classRules();
std::span<const ClassRule> classShapeRules();
std::span<const ClassRule> methodRules();
std::span<const ClassRule> variableRules();
std::span<const ClassRule> categoryRules();
std::span<const ClassRule> constantRules();
std::span<const SignatureRule> signatureRules();
std::span<const SignatureRule> directoryRules();

}  // namespace varnix::device
