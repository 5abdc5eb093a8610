// The varnix command at a terminal.
#pragma once

#include <pty.h>

#include "cli/command.h"

namespace test {

/// Runs the command with a terminal for all its streams, and returns what it showed there.
inline std::string shownAtTerminal(Words words) {
  const std::string file = commandFile();
  words.insert(words.begin(), file);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  int terminal = -1;
  const pid_t process = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (process == 0) {
    execv(file.c_str(), arguments.data());
    _exit(127);
  }
  std::string shown;
  char block[4096];
  // When the last process closes the other end, read() fails.
  for (ssize_t length = 0; (length = read(terminal, block, sizeof block)) > 0;)
    shown.append(block, static_cast<std::size_t>(length));
  close(terminal);
  int status = 0;
  waitpid(process, &status, 0);
  EXPECT_EQ(status, 0) << shown;
  return shown;
}

}  // namespace test
