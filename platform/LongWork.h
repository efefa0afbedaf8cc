// What the user sees, and can do, while the program's one thread is busy.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "platform/Application.h"

class QProgressBar;

namespace platform {

class Control;

/// Repaints the windows, at most ten times a second, and does nothing else: timers, routines given to
/// RunLater, mouse and keys wait. For loops that block the event loop.
void KeepPainted();

/// Work that keeps the thread busy while the user watches. The windows are repainted as it goes on. Mouse and
/// key events that arrive meanwhile are dropped at its end, and so is the second half of the double click
/// that began it.
class LongWork {
 public:
  LongWork() : LongWork(nullptr) {}
  /// Work with the busy pointer, and with a progress bar over the control once it has taken half a second.
  /// Work that ends sooner drops no input. Work that begins within other work counts as a part of that: as a
  /// fifth of what is left of it.
  explicit LongWork(const Control* covered);
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

  /// Whether there is work under way at whose end the input is dropped that has come by now.
  static bool DropsInput();
  /// To be called for each step, which is cheap. Ends the process if a signal asks for that.
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
  /// To be called at a sign of life: closes the question if it is shown, and starts the ten seconds anew.
  void Restart();

 private:
  const char *question_, *leave_;
  std::chrono::steady_clock::time_point since_;
  std::unique_ptr<class StandingQuestion> asked_;
};

/// Sets another time than ten seconds, for tests.
void AskAfter(std::chrono::milliseconds patience);

}  // namespace platform
