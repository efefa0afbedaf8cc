// The process as the desktop sees it: its event loop, its end, its mouse pointer, what it can start.
#pragma once

#include <exception>
#include <functional>
#include <string>

namespace platform {

/// Runs the program: makes the application, calls `main_routine`, handles events until the last loaded window
/// is gone. Returns the process's status. A failure that nothing catches shows the error report and ends the
/// process with status 1. The command line is not read.
int RunApplication(const std::function<void()>& main_routine);

/// The edge between the toolkit's events and the program's routines: a failure that a routine doesn't catch
/// is reported and ends the process; from within a paint event, as soon as the event loop runs again. Behind
/// a report only painting runs, all else is dropped.
void RunEvent(const std::function<void()>& routine);

/// Whether a report stands, or is about to, so that RunEvent drops what it is given.
bool EndsWithReport();

/// Runs a routine whose failure does no harm: a failure anywhere in it skips the rest of it, and the program
/// goes on without a word. Only for the few places where that is the rule. False if it failed.
template <typename Routine>
bool Guarded(const Routine& routine) {
  try {
    routine();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

/// Brings what isn't saved to safety (see BeforeUntimelyEnd), shows the error report and ends the process at
/// once with status 1.
[[noreturn]] void EndWithReport(const std::string& text);

/// Ends the event loop; the process then ends with status 0.
void Quit();

/// Before the event loop ends because no window is loaded any more, asks a routine whether it may; null asks
/// nobody. Whoever says no ends it with Quit later.
void AskBeforeEnd(std::function<bool()> may_end);

/// Runs a routine when the event loop has ended and all windows are gone, while the toolkit still stands: for
/// what holds widgets and would outlive it.
void BeforeEnd(std::function<void()> routine);

/// Keeps the process alive while no window of its own is loaded: for a program that waits for another.
class KeepAlive {
 public:
  KeepAlive();
  KeepAlive(const KeepAlive&) = delete;
  KeepAlive& operator=(const KeepAlive&) = delete;
  ~KeepAlive();
};

/// Repaints what a closed dialog has uncovered, handling no input of the user's meanwhile: what comes next
/// may block the event loop.
void ShowUncovered();

/// Runs a routine once, from the event loop, after the routine that is running now. While a HeldEvents lives
/// it waits.
void RunLater(std::function<void()> routine);

/// Shows the busy pointer as long as this object lives; then the pointer is what it was before.
class BusyPointer {
 public:
  BusyPointer();
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
  ~BusyPointer();
};
bool BusyPointerIsOn();

/// Whole-sheet operations move through thousands of rows. As long as one of these lives, a canvas's Refresh
/// only notes that the canvas is to be shown, so that it is drawn once, afterwards.
class RefreshPause {
 public:
  RefreshPause();
  RefreshPause(const RefreshPause&) = delete;
  RefreshPause& operator=(const RefreshPause&) = delete;
  ~RefreshPause();
};
bool RefreshIsPaused();

/// Makes a folder the working directory. Throws std::runtime_error naming the folder and the reason.
void ChangeDirectory(const std::string& folder);

/// Starts a program by name, found by the search path, in the working directory or beside this program, in
/// that order, and leaves it to itself. False if it can't be started.
bool StartProgram(const std::string& name);

/// The decimal sign of the machine's locale, whatever it is: a comma, a point, U+066B in some languages.
std::string DecimalSign();

}  // namespace platform
