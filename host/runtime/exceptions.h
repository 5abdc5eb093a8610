// Objective-C exceptions over the C++ ABI's: compiled code catches what the stand-in's C++ code
// throws, and the other way round.
#pragma once

#include <typeinfo>

#include "export.h"
#include "objc/object.h"
#include "objc/own_class.h"

namespace host::runtime {

/// How the unwinder compares what was thrown with what a handler catches. Compilers write these, as
/// OBJC_EHTYPE_$_NAME, with the table of this class.
class ExceptionType : public std::type_info {
 public:
  /// The star keeps the C++ library from comparing by name: a class may be called like one of its.
  ExceptionType(const char* name, Class cls) : std::type_info(name), cls_(cls) {}
  ~ExceptionType() override;

  bool __is_pointer_p() const override;
  bool __do_catch(const std::type_info* thrown, void** object, unsigned outer) const override;
  bool __do_upcast(const __cxxabiv1::__class_type_info* target, void** object) const override;

 private:
  Class cls_;  ///< nil catches all objects
};

}  // namespace host::runtime
