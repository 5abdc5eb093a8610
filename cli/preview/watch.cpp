#include "preview/watch.h"

#include <poll.h>

#include <algorithm>

#include "common/errors.h"
#include "common/interruption.h"
#include "process/container.h"
#include "settings/file.h"

namespace varnix::cli {

SettingsWatch::SettingsWatch(const std::string& root) {
  host::setContainerRoot(root);
  if (!folder_.start()) throw Failure("cannot watch the container", root);
}

bool SettingsWatch::wasChanged() {
  const auto written = folder_.read();
  const std::string wanted = host::notificationFileName(kChangedNotification);
  return written.anything ||
         std::find(written.files.begin(), written.files.end(), wanted) != written.files.end();
}

void SettingsWatch::follow(const std::function<void()>& changed) {
  while (true) {
    pollfd ready[] = {{folder_.descriptor(), POLLIN, 0}, {interruptionDescriptor(), POLLIN, 0}};
    poll(ready, std::size(ready), -1);
    throwIfInterrupted();
    if (ready[0].revents != 0 && wasChanged()) changed();
  }
}

}  // namespace varnix::cli
