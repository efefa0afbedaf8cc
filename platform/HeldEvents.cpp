#include "platform/HeldEvents.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QSet>
#include <QWidget>
#include <QWindow>
#include <deque>
#include <functional>
#include <utility>

#include "platform/Application.h"

namespace platform {
namespace {

int held_count = 0;
std::deque<std::function<void()>> waiting_routines;

void RunNextRoutine() {
  if (held_count > 0 || waiting_routines.empty()) return;
  const auto routine = std::move(waiting_routines.front());
  waiting_routines.pop_front();
  RunEvent(routine);
}

void PostNextRoutine() {
  QMetaObject::invokeMethod(QCoreApplication::instance(), RunNextRoutine, Qt::QueuedConnection);
}

bool IsWithin(const QObject* object, const QObject* ancestor) {
  while (object != nullptr && object != ancestor) object = object->parent();
  return object != nullptr;
}

/// Whether the event is the user's mouse or keyboard input to a widget or a shortcut. Input to the toolkit's
/// window objects is not counted: they keep track of which keys and buttons are down.
bool IsInput(const QObject* receiver, const QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::TouchBegin:
    case QEvent::Drop:
      return !receiver->isWindowType();
    default:
      return false;
  }
}

/// Drops the later events of input whose first event was dropped: the releases of buttons and keys, and the
/// second half of a double click. A release alone can do something, such as empty a cell.
class LeftOvers : public QObject {
 public:
  static LeftOvers& Get() {
    static QPointer<LeftOvers> left_overs;
    if (!left_overs) left_overs = new LeftOvers;
    return *left_overs;
  }

  void ExpectDoubleClick() { expects_double_click_ = true; }

  /// Remembers which key or button a dropped event pressed, and forgets it at the release.
  void NoteDropped(const QEvent* event) {
    if (event->type() == QEvent::KeyPress) keys_.insert(static_cast<const QKeyEvent*>(event)->key());
    if (event->type() == QEvent::KeyRelease) keys_.remove(static_cast<const QKeyEvent*>(event)->key());
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (press || event->type() == QEvent::MouseButtonRelease)
      buttons_.setFlag(static_cast<const QMouseEvent*>(event)->button(), press);
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (!IsInput(receiver, event) || !BelongsToDropped(event)) return false;
    NoteDropped(event);
    return true;
  }

 private:
  LeftOvers() : QObject(qApp) { qApp->installEventFilter(this); }

  bool BelongsToDropped(const QEvent* event) {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
        return expects_double_click_ = false;
      case QEvent::MouseButtonDblClick:
        return std::exchange(expects_double_click_, false);
      case QEvent::MouseButtonRelease:
        return buttons_.testFlag(static_cast<const QMouseEvent*>(event)->button());
      case QEvent::KeyRelease:
        return keys_.contains(static_cast<const QKeyEvent*>(event)->key());
      default:
        return false;
    }
  }

  bool expects_double_click_ = false;
  Qt::MouseButtons buttons_;
  QSet<int> keys_;
};

}  // namespace

HeldEvents::HeldEvents(QWidget* free, bool drops_input) : free_(free), drops_input_(drops_input) {
  ++held_count;
  qApp->installEventFilter(this);
}

HeldEvents::~HeldEvents() {
  // Events that were posted for these routines meanwhile have been handled without running them.
  if (--held_count == 0)
    for (std::size_t i = 0; i < waiting_routines.size(); ++i) PostNextRoutine();
}

bool HeldEvents::eventFilter(QObject* receiver, QEvent* event) {
  const bool holds_back = HoldsBack(receiver, event);
  let_through_ |= !holds_back;
  return holds_back;
}

bool HeldEvents::HoldsBack(QObject* receiver, QEvent* event) const {
  if (free_ != nullptr && IsWithin(receiver, free_)) return false;
  // Timers and sockets report again later. A window object's timer is let through, since it is what paints
  // the window.
  if (event->type() == QEvent::Timer || event->type() == QEvent::SockAct) return !receiver->isWindowType();
  if (!drops_input_) return false;
  if (event->type() == QEvent::Close && receiver->isWindowType()) {
    // The request is not lost: it is repeated when the current work is over.
    event->ignore();
    RunLater([window = QPointer(static_cast<QWindow*>(receiver))] {
      if (window) window->close();
    });
    return true;
  }
  if (!IsInput(receiver, event)) return false;
  LeftOvers::Get().NoteDropped(event);
  return true;
}

void HeldEvents::Handle(QEventLoop::ProcessEventsFlags which) {
  // The toolkit handles only a part of the pending events in one call. A timer that is due and held back
  // stays due, and would be all that the next looks find.
  const QDeadlineTimer end(20);
  do {
    let_through_ = false;
    QCoreApplication::processEvents(which);
  } while (let_through_ && !end.hasExpired());
}

void DropAllInput() {
  HeldEvents held(nullptr, true);
  held.Handle(QEventLoop::AllEvents);
  LeftOvers::Get().ExpectDoubleClick();
}

bool EventsAreHeld() { return held_count > 0; }

void RunLater(std::function<void()> routine) {
  waiting_routines.push_back(std::move(routine));
  PostNextRoutine();
}

}  // namespace platform
