#include "foreign_call.h"

#include <charconv>
#include <cstring>
#include <mutex>
#include <unordered_map>

#include "runtime.h"
#include "type_encoding.h"

namespace host::runtime {

namespace {

ffi_type* scalar(char letter) {
  switch (letter) {
    case 'v':
      return &ffi_type_void;
    case 'c':
      return &ffi_type_sint8;
    case 'C':
    case 'B':
      return &ffi_type_uint8;
    case 's':
      return &ffi_type_sint16;
    case 'S':
      return &ffi_type_uint16;
    case 'i':
    case 'l':
      return &ffi_type_sint32;
    case 'I':
    case 'L':
      return &ffi_type_uint32;
    case 'q':
      return &ffi_type_sint64;
    case 'Q':
      return &ffi_type_uint64;
    case 'f':
      return &ffi_type_float;
    case 'd':
      return &ffi_type_double;
    case 'D':
      return &ffi_type_longdouble;
    case '@':
    case '#':
    case ':':
    case '*':
    case '^':
    case '?':
      return &ffi_type_pointer;
    default:
      return nullptr;
  }
}

bool isIntegral(const ffi_type* type) {
  switch (type->type) {
    case FFI_TYPE_SINT8:
    case FFI_TYPE_UINT8:
    case FFI_TYPE_SINT16:
    case FFI_TYPE_UINT16:
    case FFI_TYPE_SINT32:
    case FFI_TYPE_UINT32:
      return true;
    default:
      return false;
  }
}

/// The members of an array inside a structure: its element, so many times.
void addArray(std::string_view type, std::vector<std::string_view>& members) {
  type = type.substr(1, type.size() - 2);
  std::size_t count = 0;
  const char* end = std::from_chars(type.data(), type.data() + type.size(), count).ptr;
  type.remove_prefix(static_cast<std::size_t>(end - type.data()));
  members.insert(members.end(), count, type);
}

}  // namespace

CallShape::CallShape(std::string_view encoding) {
  for (const std::string_view type : typesOf(encoding)) types_.emplace_back(type);
  if (types_.empty()) throw Exception("NSInvalidArgumentException", "empty method types");
  result_ = make(types_[0]);
  for (std::size_t i = 1; i < types_.size(); ++i) arguments_.push_back(make(types_[i]));
  if (ffi_prep_cif(&cif_, FFI_DEFAULT_ABI, static_cast<unsigned>(arguments_.size()), result_,
                   arguments_.data()) != FFI_OK)
    throw Exception("NSInvalidArgumentException", "method types: " + std::string(encoding));
}

ffi_type* CallShape::make(std::string_view type) {
  const std::string_view plain = withoutQualifiers(type);
  if (!plain.empty()) {
    if (ffi_type* simple = scalar(plain.front())) return simple;
    if (plain.front() == '{') {
      std::vector<std::string_view> members;
      for (const std::string_view member : membersOf(plain)) {
        if (member.front() == '[') addArray(member, members);
        else members.push_back(member);
      }
      if (!members.empty()) return makeComposite(members);
    }
  }
  throw Exception("NSInvalidArgumentException",
                  "unsupported type in a method: " + std::string(type));
}

ffi_type* CallShape::makeComposite(const std::vector<std::string_view>& members) {
  std::vector<ffi_type*> elements;
  elements.reserve(members.size() + 1);
  for (const std::string_view member : members) elements.push_back(make(member));
  elements.push_back(nullptr);
  elements_.push_back(std::move(elements));
  auto type = std::make_unique<ffi_type>();
  type->type = FFI_TYPE_STRUCT;
  type->elements = elements_.back().data();
  owned_.push_back(std::move(type));
  ffi_type* made = owned_.back().get();
  // Fills in size and alignment.
  if (ffi_get_struct_offsets(FFI_DEFAULT_ABI, made, nullptr) != FFI_OK)
    throw Exception("NSInvalidArgumentException", "unsupported structure in a method");
  return made;
}

void CallShape::toRegister(const void* value, void* wide) const {
  if (!isIntegral(result_)) {
    std::memcpy(wide, value, resultSize());
    return;
  }
  ffi_arg filled = 0;
  std::memcpy(&filled, value, resultSize());
  const std::size_t spare = (sizeof filled - resultSize()) * 8;
  const bool isSigned = result_->type == FFI_TYPE_SINT8 || result_->type == FFI_TYPE_SINT16 ||
                        result_->type == FFI_TYPE_SINT32;
  if (isSigned) filled = static_cast<ffi_arg>(static_cast<ffi_sarg>(filled << spare) >> spare);
  std::memcpy(wide, &filled, sizeof filled);
}

/// The lowest bytes come first.
void CallShape::fromRegister(const void* wide, void* value) const {
  std::memcpy(value, wide, resultSize());
}

CallShape& shapeOf(std::string_view encoding) {
  static auto* mutex = new std::mutex;
  static auto* shapes = new std::unordered_map<std::string, std::unique_ptr<CallShape>>;
  const std::scoped_lock guard(*mutex);
  auto& shape = (*shapes)[std::string(encoding)];
  if (shape == nullptr) shape = std::make_unique<CallShape>(encoding);
  return *shape;
}

}  // namespace host::runtime
