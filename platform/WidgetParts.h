// What the plain controls' files share. For toolkit code only.
#pragma once

#include <QFont>
#include <QString>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/Application.h"
#include "platform/Control.h"

namespace platform {

inline QString Utf16(const std::string& text) { return QString::fromStdString(text); }

/// Raises an event of a control, if anybody has bound it.
inline void Raise(const std::function<void()>& event) {
  if (event) RunEvent(event);
}

/// A control's widget as the type that the control made it of.
template <class Wanted>
Wanted* As(const Control& control) {
  return static_cast<Wanted*>(control.Widget());
}

/// Mouse buttons as the numbers that mouse events carry: left 1, right 2, middle 4.
std::int16_t MouseButtonBits(Qt::MouseButtons buttons);

/// Keys held during a mouse event: Shift 1, Control 2, Alt 4.
std::int16_t ShiftKeyBits(Qt::KeyboardModifiers keys);

/// The design gives texts a fixed room, made for small letters; where a text is too big for it at the
/// desktop's text size, the letters give way: they get lower to fit in height, then stand closer to fit in
/// width, then get smaller. Width and height in pixels.
QFont FontThatFits(QFont font, const QString& text, double width, double height);

}  // namespace platform
