#include "painter/thread_team.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace painter {
namespace {

/// Work of one caller, and who is at it.
class Job {
 public:
  explicit Job(const std::function<void()>& work) : work_(work) {}

  /// Takes part, unless the work is over: then nothing of the caller's may be touched.
  void TakePart() {
    if ((state_.fetch_add(1) & kOver) == 0) work_();
    state_.fetch_sub(1);
    state_.notify_all();
  }
  /// Lets nobody in any more, and returns when all have left.
  void End() {
    for (unsigned now = state_.fetch_or(kOver) | kOver; now != kOver; now = state_.load()) state_.wait(now);
  }

 private:
  static constexpr unsigned kOver = 1u << 31;
  const std::function<void()>& work_;
  std::atomic<unsigned> state_{0};
};

/// The threads that stand by, and what they are to do next.
class Team {
 public:
  void Announce(const std::shared_ptr<Job>& job, int helpers) {
    const std::lock_guard lock(mutex_);
    for (; size_ < helpers; ++size_) {
      try {
        std::thread([this] { StandBy(); }).detach();
      } catch (const std::system_error&) {
        break;  // The operating system gives no more threads, so there are fewer.
      }
    }
    job_ = job;
    places_ = helpers;
    for (int i = 0; i < helpers; ++i) announced_.notify_one();
  }

 private:
  void StandBy() {
    std::unique_lock lock(mutex_);
    for (;;) {
      announced_.wait(lock, [this] { return places_ > 0; });
      --places_;
      const auto job = job_;
      lock.unlock();
      job->TakePart();
      lock.lock();
    }
  }

  std::mutex mutex_;
  std::condition_variable announced_;
  std::shared_ptr<Job> job_;
  int places_ = 0;
  int size_ = 0;
};

/// Never destroyed, as its threads may be standing by until the very end of the process.
Team& TheTeam() {
  static auto* const team = new Team;
  return *team;
}

}  // namespace

void OnThreads(int count, const std::function<void()>& work) {
  if (count <= 1) return work();
  const auto job = std::make_shared<Job>(work);
  TheTeam().Announce(job, count - 1);
  work();
  job->End();
}

}  // namespace painter
