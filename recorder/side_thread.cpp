#include "recorder/side_thread.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace recorder {
namespace {

struct Running {
  std::mutex mutex;
  std::condition_variable changed;
  int count = 0;

  void Add(int by) {
    const std::lock_guard lock(mutex);
    count += by;
    changed.notify_all();
  }
};

// Never destroyed: a thread that hangs may come back at any time.
Running& AllRunning() {
  static auto* const running = new Running;
  return *running;
}

}  // namespace

void RunAside(std::function<void()> work) {
  AllRunning().Add(1);
  std::thread([work = std::move(work)]() mutable {
    work();
    work = nullptr;
    AllRunning().Add(-1);
  }).detach();
}

bool AllAsideEnded(std::chrono::milliseconds patience) {
  std::unique_lock lock(AllRunning().mutex);
  return AllRunning().changed.wait_for(lock, patience, [] { return AllRunning().count == 0; });
}

}  // namespace recorder
