#include "abi/word_signature.h"

#include "macho/bytes.h"
#include "macho/error.h"
#include "macho/type.h"

namespace varnix::device {

namespace {

Type nextType(Encoding& encoding) {
  const Type type = encoding.next();
  if (type.isStructure && type.alignment > kWord)
    throw Error("a structure with numbers of 64 bits");
  return type;
}

}  // namespace

bool WordSignature::isShifted() const {
  return !places.empty() && places.back() + 1 != places.size();
}

WordSignature readWordSignature(std::string_view text) {
  Encoding encoding(text, kWord);
  WordSignature call;
  uint32_t next = 0;
  const auto add = [&](const Type& type) {
    if (type.alignment > kWord) next = static_cast<uint32_t>(alignUp(next, 2));
    for (uint32_t size = 0; size < type.size; size += kWord) {
      call.places.push_back(next++);
      call.blocks.push_back(type.isBlock);
    }
  };
  // A larger structure is returned in memory, at an address that the caller passes.
  const Type result = nextType(encoding);
  if (result.isStructure && result.size > kWord) add({kWord, kWord, Small::none, 'i', 1});
  while (!encoding.atEnd()) {
    const Type argument = nextType(encoding);
    if (argument.size == 0) throw Error("an argument without a size");
    add(argument);
  }
  return call;
}

}  // namespace varnix::device
