// The program's colours and fonts in the toolkit's own types. For toolkit code only.
#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

#include "platform/numbers.h"

namespace platform {

inline QColor ToolkitColor(Color color) { return QColor(RedOf(color), GreenOf(color), BlueOf(color)); }

inline Color FromToolkit(const QColor& color) { return Rgb(color.red(), color.green(), color.blue()); }

/// Sets one role of a widget's palette.
inline void SetPaletteColor(QWidget* widget, QPalette::ColorRole role, Color color) {
  QPalette palette = widget->palette();
  palette.setColor(role, ToolkitColor(color));
  widget->setPalette(palette);
}

}  // namespace platform
