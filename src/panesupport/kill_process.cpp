// Ends or restarts a process by its name.
#include "platform/Foundation.h"
#include "platform/spawn.h"
#include "varnix/pane.h"

int QKKillProcess(NSString* signal, NSString* name) {
  NSString* option = NSString::stringWithFormat("-%@"_ns, signal == nullptr ? "9"_ns : signal);
  // The child gets copies.
  char* const arguments[] = {const_cast<char*>("killall"),
                             const_cast<char*>(send<const char*>(option, "UTF8String"_sel)),
                             const_cast<char*>(send<const char*>(name, "UTF8String"_sel)), nullptr};
  int child = 0;
  return posix_spawn(&child, "/usr/bin/killall", nullptr, nullptr, arguments, nullptr);
}
