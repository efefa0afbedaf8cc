// Holding events back while the program's one thread is busy. For the platform layer.
#pragma once

#include <QEventLoop>
#include <QObject>

class QWidget;

namespace platform {

/// While one of these lives, only painting and layout events are handled. Timers and sockets are ignored, and
/// routines given to RunLater wait.
class HeldEvents : public QObject {
 public:
  /// `free`: a window that goes on handling all its events, or null. With `drops_input` mouse and key events
  /// are dropped as they arrive; without it the caller leaves them in the queue.
  HeldEvents(QWidget* free, bool drops_input);
  ~HeldEvents() override;

  /// Handles the pending events of the given kinds, for about 20 milliseconds at most.
  void Handle(QEventLoop::ProcessEventsFlags which);

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool HoldsBack(QObject* receiver, QEvent* event) const;

  QWidget* free_;
  bool drops_input_;
  /// Whether an event has been let through since this was last cleared.
  bool let_through_ = false;
};

/// Drops all mouse and key events up to now, and the later ones that belong to them: the release of what was
/// pressed, and the second half of a double click.
void DropAllInput();

/// Whether a HeldEvents lives.
bool EventsAreHeld();

}  // namespace platform
