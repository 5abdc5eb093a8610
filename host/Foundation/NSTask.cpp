// Child processes, which are real ones of this machine.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "Foundation/NSFileHandle.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "process/programs.h"
#include "runtime/runtime.h"

namespace {
[[noreturn]] void raise(const char* reason) {
  throw host::runtime::Exception("NSInvalidArgumentException", reason);
}

/// A child that was started. A thread of its own waits for it, so that none is left unreaped.
class Child {
 public:
  static std::shared_ptr<Child> watch(pid_t id) {
    auto child = std::make_shared<Child>(id);
    std::thread([child] { child->reap(); }).detach();
    return child;
  }
  explicit Child(pid_t id) : id_(id) {}

  pid_t id() const { return id_; }
  bool isRunning() {
    const std::scoped_lock guard(lock_);
    return !ended_;
  }
  /// Waits for its end: its exit status, or the signal that ended it.
  int status() {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return ended_; });
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : WTERMSIG(status_);
  }

 private:
  void reap() {
    int status = 0;
    while (waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    const std::scoped_lock guard(lock_);
    status_ = status;
    ended_ = true;
    changed_.notify_all();
  }

  std::mutex lock_;
  std::condition_variable changed_;
  pid_t id_;
  int status_ = 0;
  bool ended_ = false;
};

/// What happens to a child's descriptors.
class FileActions {
 public:
  /// What a program complains of goes into the phone's log, which nobody reads here.
  FileActions() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

  void setStandardOutput(int descriptor) {
    posix_spawn_file_actions_adddup2(&actions_, descriptor, STDOUT_FILENO);
  }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

struct Task : NSTask {
  void storePath(NSString* value) { path = Strong<NSString>::retain(value); }
  void storeOutput(NSObject* value);
  void start();
  bool isRunning() { return child != nullptr && child->isRunning(); }
  int processIdentifier() { return child == nullptr ? 0 : child->id(); }
  void waitForEnd() {
    if (child != nullptr) child->status();
  }
  int status() {
    if (child == nullptr) raise("the task was never launched");
    if (child->isRunning()) raise("the task is still running");
    return child->status();
  }

  Strong<NSString> path;
  Strong<NSArray> arguments;
  Strong<NSObject> standardOutput;
  std::shared_ptr<Child> child;
};

}  // namespace

OBJC_CLASS_NAMED(NSTask, NSObject, Task, NSObject, objc::Readable<"launchPath", &Task::path>,
                 objc::Property<"arguments", &Task::arguments>,
                 objc::Readable<"standardOutput", &Task::standardOutput>,
                 objc::Ivar<"_child", &Task::child>,
                 objc::Method<"setLaunchPath:", &Task::storePath>,
                 objc::Method<"setStandardOutput:", &Task::storeOutput>,
                 objc::Method<"launch", &Task::start>, objc::Method<"isRunning", &Task::isRunning>,
                 objc::Method<"processIdentifier", &Task::processIdentifier>,
                 objc::Method<"waitUntilExit", &Task::waitForEnd>,
                 objc::Method<"terminationStatus", &Task::status>)

void Task::storeOutput(NSObject* value) {
  if (value != nullptr && objc::as<NSPipe>(value) == nullptr &&
      objc::as<NSFileHandle>(value) == nullptr)
    raise("a standard output is a pipe or a file handle");
  standardOutput = Strong<NSObject>::retain(value);
}

void Task::start() {
  if (child != nullptr) raise("the task was launched already");
  const std::string file = host::programFile(host::text(path));
  if (file.empty() || access(file.c_str(), X_OK) != 0) raise("the launch path is not accessible");
  std::vector<std::string> words{std::string(host::text(path))};
  const NSUInteger count = send<NSUInteger>(arguments, "count"_sel);
  for (NSUInteger i = 0; i < count; ++i) {
    auto* word = objc::as<NSString>(send(arguments, NSArray::objectAtIndex, i));
    if (word == nullptr) raise("an argument is no string");
    words.emplace_back(host::text(word));
  }
  auto* pipe = static_cast<host::Pipe*>(objc::as<NSPipe>(standardOutput));
  auto* handle = pipe != nullptr
                     ? pipe->forWriting()
                     : static_cast<host::FileHandle*>(objc::as<NSFileHandle>(standardOutput));
  FileActions actions;
  if (handle != nullptr) {
    if (handle->fileDescriptor() < 0) raise("the standard output is closed");
    actions.setStandardOutput(handle->fileDescriptor());
  }
  std::vector<std::string> environment = host::childEnvironment();
  pid_t started = 0;
  if (posix_spawn(&started, file.c_str(), actions.get(), nullptr, host::pointersTo(words).data(),
                  host::pointersTo(environment).data()) != 0)
    raise("the program cannot be run");
  child = Child::watch(started);
  // Otherwise a reader would never reach the pipe's end.
  if (pipe != nullptr) pipe->forWriting()->close();
}
