#include "abi/word_signature.h"

#include "macho/bytes.h"
#include "macho/error.h"
#include "macho/type.h"

namespace varnix::device {

bool WordSignature::isShifted() const {
  return !places.empty() && places.back() + 1 != places.size();
}

WordSignature readWordSignature(std::string_view text) {
  Encoding encoding(text, kWord);
  WordSignature call;
  uint32_t next = 0;
  const auto add = [&](const Type& type) {
    if (type.alignment > kWord) next = static_cast<uint32_t>(alignUp(next, 2));
    if (type.isStructure) {
      for (const uint32_t word : type.words) call.places.push_back(next + word);
      next += (type.size + kWord - 1) / kWord;
    } else {
      for (uint32_t size = 0; size < type.size; size += kWord) call.places.push_back(next++);
    }
    call.blocks.resize(call.places.size(), type.isBlock);
  };
  // A larger structure is returned in memory, at an address that the caller passes.
  const Type result = encoding.next();
  if (result.isStructure && result.size > kWord) {
    // The callee writes it as it is laid out there.
    if (result.words.size() * kWord < result.size)
      throw Error("a result whose numbers of 64 bits lie elsewhere on the device");
    add({.size = kWord, .alignment = kWord});
  }
  while (!encoding.atEnd()) {
    const Type argument = encoding.next();
    if (argument.size == 0) throw Error("an argument without a size");
    add(argument);
  }
  return call;
}

}  // namespace varnix::device
