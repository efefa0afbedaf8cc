#include "host/bus/call_desk.h"

namespace host {

void CallDesk::AddWork(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
  }
  changed_.notify_all();
}

void CallDesk::Finish(const std::shared_ptr<Ticket>& ticket) {
  {
    const std::lock_guard lock(mutex_);
    ticket->done = true;
  }
  changed_.notify_all();
}

std::function<void()> CallDesk::TakeWork() {
  const std::lock_guard lock(mutex_);
  if (work_.empty()) return {};
  auto work = std::move(work_.front());
  work_.pop_front();
  return work;
}

void CallDesk::WaitFor(const std::shared_ptr<Ticket>& ticket) {
  for (;;) {
    RunWaiting();
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return ticket->done || !work_.empty(); });
    if (work_.empty()) return;
  }
}

void CallDesk::RunWaiting() {
  while (auto work = TakeWork()) work();
}

}  // namespace host
