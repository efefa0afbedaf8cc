// What a user does to a widget, as events, and what he sees then.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QWheelEvent>
#include <QWidget>

namespace support {

inline void Mouse(QWidget* widget, QEvent::Type type, QPointF at, Qt::MouseButton button,
                  Qt::KeyboardModifiers keys = Qt::NoModifier) {
  const bool held = type != QEvent::MouseButtonRelease;
  const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : button;
  QMouseEvent event(type, at, widget->mapToGlobal(at), changed, held ? button : Qt::NoButton, keys);
  QApplication::sendEvent(widget, &event);
}

inline void Press(QWidget* widget, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
  Mouse(widget, QEvent::MouseButtonPress, at, button);
}
inline void DragTo(QWidget* widget, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
  Mouse(widget, QEvent::MouseMove, at, button);
}
inline void Release(QWidget* widget, QPointF at, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers keys = Qt::NoModifier) {
  Mouse(widget, QEvent::MouseButtonRelease, at, button, keys);
}

/// The widget may go with the press.
inline void Key(const QPointer<QWidget>& widget, int key, Qt::KeyboardModifiers keys = Qt::NoModifier,
                const QString& text = {}) {
  QKeyEvent down(QEvent::KeyPress, key, keys, text), up(QEvent::KeyRelease, key, keys, text);
  QApplication::sendEvent(widget, &down);
  if (widget) QApplication::sendEvent(widget, &up);
}

/// 120 is one notch away from the user.
inline void Wheel(QWidget* widget, int turn) {
  const QPointF at = widget->rect().center();
  QWheelEvent event(at, widget->mapToGlobal(at), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget, &event);
}

/// A window as the screen has it, painted piece by piece.
inline QImage OnScreen(QWidget* window) {
  for (int i = 0; i < 30; ++i) QApplication::processEvents();
  return window->screen()->grabWindow(window->winId()).toImage();
}
/// The same with all of it painted anew: what differs stood there before, or should stand there.
inline QImage PaintedAnew(QWidget* window) {
  for (QWidget* widget : window->findChildren<QWidget*>()) widget->update();
  return OnScreen(window);
}

}  // namespace support
