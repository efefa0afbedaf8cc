#include "platform/UntimelyEnd.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <utility>

namespace platform {
namespace {

constexpr std::array kSignals = {SIGTERM, SIGHUP, SIGINT};
/// Writing to a pipe that nobody reads any more, such as the error output's, and beyond a limit of file
/// sizes.
constexpr std::array kSignalsOfFailedWrites = {SIGPIPE, SIGXFSZ};
constexpr unsigned kMostSecondsToTheEnd = 30;

std::function<std::string()> rescue_routine;
std::atomic<bool> rescue_begun = false;
std::string rescue_words;

std::atomic<int> noted_signal = 0;
/// What the handler writes to wakes the event loop.
std::array<int, 2> wake_pipe = {-1, -1};
std::unique_ptr<QSocketNotifier> waker;
std::array<struct sigaction, kSignals.size()> actions_before{};
std::atomic<bool> watched = false;

void NoteSignal(int number) {
  const int error_before = errno;
  noted_signal = number;
  alarm(kMostSecondsToTheEnd);
  [[maybe_unused]] const ssize_t woken = write(wake_pipe[1], "", 1);
  errno = error_before;
}

void SayRescued(const std::string& cause) {
  const std::string words = Rescue();
  std::fprintf(stderr, "exposure-sheet: %s%s%s\n", cause.c_str(), words.empty() ? "" : "\n", words.c_str());
}

std::string TextOfFailure() {
  try {
    if (const auto failure = std::current_exception()) std::rethrow_exception(failure);
  } catch (const std::exception& failure) {
    return failure.what();
  } catch (...) {
  }
  return "An unknown failure.";
}

[[noreturn]] void EndByTermination() {
  if (watched) SayRescued(TextOfFailure());
  std::abort();
}

/// The toolkit calls exit when the screen's server has gone: nothing of it can be used any more.
void EndByExit() {
  if (!watched) return;
  SayRescued("ended from outside of its event loop");
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

void BeforeUntimelyEnd(std::function<std::string()> rescue) {
  rescue_routine = std::move(rescue);
  [[maybe_unused]] static const bool once = [] {
    std::set_terminate(EndByTermination);
    return std::atexit(EndByExit) == 0;
  }();
}

std::string Rescue() {
  if (rescue_begun.exchange(true) || !rescue_routine) return rescue_words;
  try {
    rescue_words = rescue_routine();
  } catch (const std::exception& failure) {
    rescue_words = std::string("What isn't saved could not be kept: ") + failure.what();
  } catch (...) {
    rescue_words = "What isn't saved could not be kept.";
  }
  return rescue_words;
}

EndsWatched::EndsWatched() {
  watched = true;
  // The write fails then, which is told or passed over where it is called.
  for (const int number : kSignalsOfFailedWrites) signal(number, SIG_IGN);
  if (pipe2(wake_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  waker = std::make_unique<QSocketNotifier>(wake_pipe[0], QSocketNotifier::Read);
  QObject::connect(waker.get(), &QSocketNotifier::activated, EndIfAsked);
  struct sigaction note {};
  note.sa_handler = NoteSignal;
  note.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &actions_before[i]);
    // A program that was started not to mind one goes on not to.
    if (actions_before[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &note, nullptr);
  }
}

EndsWatched::~EndsWatched() {
  watched = false;
  if (!waker) return;
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &actions_before[i], nullptr);
  alarm(0);
  waker.reset();
  for (const int end : wake_pipe) close(end);
}

void EndIfAsked() {
  const int number = noted_signal;
  if (number == 0) return;
  watched = false;
  SayRescued(std::string("ended by a signal: ") + strsignal(number));
  std::fflush(nullptr);
  signal(number, SIG_DFL);
  raise(number);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace platform
