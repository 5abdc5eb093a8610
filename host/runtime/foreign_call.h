// Calls whose types are known only at run time, through libffi.
#pragma once

#include <ffi.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host::runtime {

/// The types of one kind of call, as a method's encoding gives them.
class HOST_EXPORT CallShape {
 public:
  /// Throws Exception for a type that cannot be passed.
  explicit CallShape(std::string_view encoding);
  CallShape(const CallShape&) = delete;
  CallShape& operator=(const CallShape&) = delete;

  ffi_cif& cif() { return cif_; }
  const std::vector<std::string>& types() const { return types_; }  ///< the result's first
  std::size_t argumentCount() const { return types_.size() - 1; }
  std::size_t argumentSize(std::size_t index) const { return arguments_[index]->size; }
  /// Of the result itself; a call needs room for a whole register.
  std::size_t resultSize() const { return result_ == &ffi_type_void ? 0 : result_->size; }

  /// Copies a result between its own size and the register that libffi reads and writes.
  void toRegister(const void* value, void* wide) const;
  void fromRegister(const void* wide, void* value) const;

 private:
  ffi_type* make(std::string_view type);
  ffi_type* makeComposite(const std::vector<std::string_view>& members);

  std::vector<std::string> types_;
  ffi_type* result_ = nullptr;
  std::vector<ffi_type*> arguments_;
  std::vector<std::unique_ptr<ffi_type>> owned_;
  std::vector<std::vector<ffi_type*>> elements_;
  ffi_cif cif_{};
};

/// The shape of that encoding, made once.
HOST_EXPORT CallShape& shapeOf(std::string_view encoding);

}  // namespace host::runtime
