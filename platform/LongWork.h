// What the user sees, and can do, while the program's one thread is taken up.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "platform/Application.h"

class QProgressBar;

namespace platform {

class Control;

/// Paints what has to be painted, ten times a second at most, and does nothing else: timers, routines for
/// later and the user's mouse and keys wait. For loops that keep the event loop waiting.
void KeepPainted();

/// A deed that takes the thread up while the user watches. The windows are painted as it goes on. What the
/// user does with mouse and keys meanwhile is dropped at its end, the second half of a double click that
/// began it too.
class LongWork {
 public:
  LongWork() : LongWork(nullptr) {}
  /// One that has the busy pointer, and a bar over the control once it has taken half a second. Before that
  /// nothing is dropped. One that begins while another is under way is a part of it: the first fifth of what
  /// is left.
  explicit LongWork(const Control* covered);
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

  /// So many steps of all are done. Cheap: it may be told of each step. Ends the process if a signal asks.
  void Report(int done, int all);

 private:
  void ShowBar();

  std::optional<BusyPointer> busy_;
  const Control* covered_;
  LongWork* const outer_;
  /// What part of the outermost work this one is: from 0 to 1.
  double start_ = 0, end_ = 1, now_ = 0;
  std::chrono::steady_clock::time_point began_, next_look_;
  std::unique_ptr<QProgressBar> bar_;
};

/// Watches over a wait for something outside of the process.
class Patience {
 public:
  /// `question`: what to ask the user when ten seconds have passed, with the two answers "Keep waiting" and
  /// `leave`.
  Patience(const char* question, const char* leave);
  ~Patience();
  Patience(const Patience&) = delete;
  Patience& operator=(const Patience&) = delete;

  /// To be called ten times a second or so. It keeps the windows painted, asks when it is time (and again ten
  /// seconds after each "Keep waiting"), and ends the process if a signal asks for that. False once the user
  /// has had enough.
  bool Lasts();
  /// There has been a sign of life: a question that stands goes, and the time runs anew.
  void Restart();

 private:
  const char *question_, *leave_;
  std::chrono::steady_clock::time_point since_;
  std::unique_ptr<class StandingQuestion> asked_;
};

/// In place of ten seconds.
void AskAfter(std::chrono::milliseconds patience);

}  // namespace platform
