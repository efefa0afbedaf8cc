// Where the tool's one thread waits for the host, and does in the meantime what the host asks of it, and
// nothing else.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace host {

class CallDesk {
 public:
  /// One call that is waited for.
  struct Ticket {
    bool done = false;
  };

  /// Any thread: a piece of work for the tool's thread. It runs while that waits for a call, or in
  /// RunWaiting.
  void AddWork(std::function<void()> work);
  /// Any thread: the call has its answer.
  void Finish(const std::shared_ptr<Ticket>& ticket);

  /// The tool's thread: runs work as it arrives until the ticket is done; work that came first is run first.
  /// Work may wait for calls of its own. A failure of the work leaves the wait.
  void WaitFor(const std::shared_ptr<Ticket>& ticket);
  /// The tool's thread: runs what has arrived outside of any call.
  void RunWaiting();

 private:
  /// The next piece of work, or none.
  std::function<void()> TakeWork();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> work_;
};

}  // namespace host
