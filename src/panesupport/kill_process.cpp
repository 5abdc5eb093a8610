// Ends or restarts a process by its name.
#include "platform/Foundation.h"
#include "platform/spawn.h"
#include "varnix/pane.h"

int QKKillProcess(NSString* signal, NSString* name) {
  NSString* option = NSString::stringWithFormat("-%@"_ns, signal == nullptr ? "9"_ns : signal);
  // The child gets copies of the arguments.
  char* const arguments[] = {const_cast<char*>("killall"),
                             const_cast<char*>(send(option, NSString::UTF8String)),
                             const_cast<char*>(send(name, NSString::UTF8String)), nullptr};
  int child = 0;
  return posix_spawn(&child, "/usr/bin/killall", nullptr, nullptr, arguments, nullptr);
}
