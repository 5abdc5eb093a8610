// The file manager: only the questions about programs.
#include <unistd.h>

#include "Foundation/text.h"
#include "objc/define.h"
#include "process/programs.h"

namespace {

struct FileManager : NSFileManager {
  static FileManager* shared();
  bool isExecutable(NSString* path) {
    const std::string file = host::programFile(host::text(path));
    return !file.empty() && access(file.c_str(), X_OK) == 0;
  }
};

}  // namespace

OBJC_CLASS_NAMED(NSFileManager, NSObject, FileManager, NSObject,
                 objc::ClassMethod<"defaultManager", &FileManager::shared>,
                 objc::Method<"isExecutableFileAtPath:", &FileManager::isExecutable>)

FileManager* FileManager::shared() {
  static auto* manager =
      static_cast<FileManager*>(class_createInstance(&objc_class_NSFileManager, 0));
  return manager;
}
