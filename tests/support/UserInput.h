// What a user does to a widget, as events.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
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

}  // namespace support
