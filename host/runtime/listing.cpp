// Lists every method of every class in this process.
#include "internal.h"
#include "runtime.h"

namespace host::runtime {

namespace {

void add(std::vector<ListedMethod>& all, Class cls, const ListedMethod& common) {
  for (const auto& [selector, method] : rw(cls)->methods) {
    ListedMethod one = common;
    one.selector = sel_getName(selector);
    one.types = method->types == nullptr ? "" : method->types;
    one.classMethod = class_isMetaClass(cls);
    all.push_back(std::move(one));
  }
}

}  // namespace

std::vector<ListedMethod> allMethods() {
  std::scoped_lock guard(lock());
  std::vector<ListedMethod> all;
  for (Class cls : allClasses()) {
    ListedMethod common;
    common.className = class_getName(cls);
    common.binary = binaryOf(cls);
    for (Class above = cls->superclass; above != nullptr; above = above->superclass)
      common.superclasses.emplace_back(class_getName(above));
    add(all, cls, common);
    add(all, cls->isa, common);
  }
  return all;
}

}  // namespace host::runtime
