// The signature as a whole.
#include <algorithm>

#include "rules/signature.h"
#include "rules/subjects.h"
#include "signer/format.h"

namespace varnix::device {

namespace {

/// The kernel copies the signature, and refuses a larger one.
constexpr uint64_t kLargest = 40 << 20;

const std::vector<SignatureBlob>& blobsOf(const Signature& it) { return it.blobs; }

/// Whether the first directory of the index has the first slot.
std::string firstHasFirstSlot(const Signature& it) {
  if (!it.isWhole) return {};
  const auto first = std::ranges::find_if(
      it.blobs, [](const SignatureBlob& blob) { return isDirectorySlot(blob.slot); });
  if (first == it.blobs.end()) return "there is none";
  return unless(first->slot == signature::kCodeDirectorySlot, "it has " + labelOf(*first));
}

/// The kernel prefers the stronger of two, and refuses two of the same kind.
void kindsDiffer(const Signature& it, const Say& say) {
  for (size_t i = 0; i < it.directories.size(); ++i)
    for (size_t j = 0; j < i; ++j)
      if (it.directories[j].hashType == it.directories[i].hashType)
        say(labelOf(it.directories[j]) + " and " + labelOf(it.directories[i]) +
            " have digests of one kind");
}

constexpr SignatureRule kSignature[] = {
    {"signature.present", "There is a signature.",
     whole<[](const Signature& it) { return unless(it.table.has_value(), "none"); }>},
    {"signature.size", "A signature is not empty and has no more than 40 MiB.",
     whole<[](const Signature& it) {
       return unless(!it.table || (it.table->size != 0 && it.table->size <= kLargest),
                     it.table ? std::to_string(it.table->size) + " bytes" : "");
     }>},
    {"signature.inside", "A signature is within its slice.", whole<[](const Signature& it) {
       return unless(!it.table || it.bytes, it.table ? "begins at " + hex(it.table->offset) : "");
     }>},
    {"signature.last", "A signature is the last part of its slice.", whole<[](const Signature& it) {
       return unless(!it.bytes || it.table->offset + it.table->size == it.image->bytes.size(),
                     "something follows it");
     }>},
    {"signature.index", "A signature begins with an index, which is within the signature.",
     whole<[](const Signature& it) { return unless(!it.bytes || it.isWhole, "it does not"); }>},
    {"signature.parts", "Each part of a signature is within it.",
     each<blobsOf,
          [](const Signature&, const SignatureBlob& blob) {
            return unless(blob.bytes.has_value(), "at " + hex(blob.offset));
          }>},
    {"signature.directory", "The first directory of digests has the first slot.",
     whole<firstHasFirstSlot>},
    {"signature.directory-size", "A directory has all its fields.", whole<[](const Signature& it) {
       return unless(it.shortDirectories.empty(),
                     it.shortDirectories.empty() ? "" : "slot " + hex(it.shortDirectories[0]));
     }>},
    {"signature.kinds", "No two directories have the same kind of digest.", kindsDiffer},
    {"signature.one-limit", "All directories cover the same code.", whole<[](const Signature& it) {
       return unless(std::ranges::all_of(it.directories,
                                         [&](const Directory& each) {
                                           return each.codeLimit == it.directories[0].codeLimit;
                                         }),
                     "they do not");
     }>},
    {"signature.wrapper", "The part for a certificate's signature has the right format.",
     whole<[](const Signature& it) {
       const SignatureBlob* cms = it.blob(signature::kCmsSlot);
       return unless(cms == nullptr || !cms->bytes || cms->bytes->big32(0) == signature::kCms,
                     "it is not");
     }>},
};

}  // namespace

std::span<const SignatureRule> signatureRules() { return kSignature; }

}  // namespace varnix::device
