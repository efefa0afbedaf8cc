// The program's colours and fonts in the toolkit's own types. For toolkit code only.
#pragma once

#include <QColor>
#include <QPainter>
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

/// Shows the focus of a widget whose style shows none; within or right after its paint event.
inline void PaintFocusFrame(QWidget* widget) {
  QPainter painter(widget);
  painter.setPen(widget->palette().color(QPalette::Highlight));
  painter.drawRect(QRectF(0.5, 0.5, widget->width() - 1, widget->height() - 1));
}

}  // namespace platform
