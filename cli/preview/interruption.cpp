#include "preview/interruption.h"

#include <csignal>

namespace varnix::cli {

namespace {

volatile std::sig_atomic_t noted = 0;

void note(int number) { noted = number; }

}  // namespace

void noteInterruptions() {
  struct sigaction action = {};
  action.sa_handler = note;
  for (int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

int interruption() { return noted; }

void throwIfInterrupted() {
  if (noted != 0) throw Interrupted(noted);
}

}  // namespace varnix::cli
