// Holding events back while the program's one thread is taken up. For the platform layer.
#pragma once

#include <QEventLoop>
#include <QObject>

class QWidget;

namespace platform {

/// While one of these lives, events may be handled that only show what is there. Timers and sockets aren't
/// heard, and routines for later wait.
class HeldEvents : public QObject {
 public:
  /// `free`: a window that works as ever, or null. With `drops_input` the user's mouse and keys are dropped
  /// as they come in; without it the caller leaves them to the event loop.
  HeldEvents(QWidget* free, bool drops_input);
  ~HeldEvents() override;

  /// Handles what has come of these kinds, for 20 milliseconds or so at most.
  void Handle(QEventLoop::ProcessEventsFlags which);

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool HoldsBack(QObject* receiver, QEvent* event) const;

  QWidget* free_;
  bool drops_input_;
  /// Whether an event has been let through since this was last cleared.
  bool let_through_ = false;
};

/// Drops what the user has done with mouse and keys up to now, and what of it comes only later: the release
/// of what was pressed, and the second half of a double click.
void DropAllInput();

/// Whether a HeldEvents lives.
bool EventsAreHeld();

}  // namespace platform
