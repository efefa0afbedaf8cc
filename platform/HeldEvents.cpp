#include "platform/HeldEvents.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>
#include <deque>
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

/// What comes to a widget or a shortcut when the user works mouse or keys. The toolkit's own windows, which
/// keep account of what is held down, still get it.
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

class DoubleClickFilter : public QObject {
 public:
  DoubleClickFilter() : QObject(qApp) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (!IsInput(receiver, event)) return false;
    if (event->type() == QEvent::MouseButtonDblClick) return dropped_ = true;
    if (event->type() == QEvent::MouseButtonRelease && dropped_) {
      deleteLater();
      return true;
    }
    if (event->type() == QEvent::MouseButtonPress) deleteLater();
    return false;
  }

 private:
  bool dropped_ = false;
};

}  // namespace

HeldEvents::HeldEvents(QWidget* free, bool drops_input) : free_(free), drops_input_(drops_input) {
  ++held_count;
  qApp->installEventFilter(this);
}

HeldEvents::~HeldEvents() {
  // What was posted meanwhile has come and gone without running.
  if (--held_count == 0)
    for (std::size_t i = 0; i < waiting_routines.size(); ++i) PostNextRoutine();
}

bool HeldEvents::eventFilter(QObject* receiver, QEvent* event) {
  if (free_ != nullptr && IsWithin(receiver, free_)) return false;
  // Both come again by themselves. A window's own timer is what paints it.
  if (event->type() == QEvent::Timer || event->type() == QEvent::SockAct) return !receiver->isWindowType();
  if (!drops_input_) return false;
  if (event->type() == QEvent::Close && receiver->isWindowType()) {
    // Not lost: it must only not run in the middle of what is under way.
    event->ignore();
    RunLater([window = QPointer(static_cast<QWindow*>(receiver))] {
      if (window) window->close();
    });
    return true;
  }
  return IsInput(receiver, event);
}

void DropRestOfDoubleClick() {
  static QPointer<DoubleClickFilter> filter;
  delete filter;
  filter = new DoubleClickFilter;
}

bool EventsAreHeld() { return held_count > 0; }

void RunLater(std::function<void()> routine) {
  waiting_routines.push_back(std::move(routine));
  PostNextRoutine();
}

}  // namespace platform
