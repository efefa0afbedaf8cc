#include "look/FinePainter.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"

namespace look {
namespace {

using platform::Color;
using platform::ToolkitColor;

constexpr int kCaptionMargin = 4;

}  // namespace

FinePainter::FinePainter(QWidget* widget) : painter_(widget), to_device_(painter_.deviceTransform()) {
  const QRectF device = to_device_.mapRect(QRectF(widget->rect()));
  box_ = QRect(QPoint(qRound(device.left()), qRound(device.top())),
               QPoint(qRound(device.right()) - 1, qRound(device.bottom()) - 1));
  scale_ = widget->devicePixelRatioF();
  hairline_ = std::max(1, static_cast<int>(std::floor(scale_ + 0.25)));
  painter_.setWorldTransform(to_device_.inverted());
}

int FinePainter::Pixels(double design_pixels) const { return qRound(design_pixels * scale_); }

QRect FinePainter::Inset(const QRect& box, int hairlines) const {
  const int by = hairlines * hairline_;
  return box.adjusted(by, by, -by, -by);
}

void FinePainter::Fill(const QRect& box, Color color) { painter_.fillRect(box, ToolkitColor(color)); }

void FinePainter::Fill(const QRect& box, const Shades& shades) {
  QLinearGradient gradient(0, box.top(), 0, box.bottom() + 1);
  gradient.setColorAt(0, ToolkitColor(shades.top));
  gradient.setColorAt(1, ToolkitColor(shades.bottom));
  painter_.fillRect(box, gradient);
}

void FinePainter::Frame(const QRect& box, Color color) {
  const int line = hairline_;
  Fill({box.left(), box.top(), box.width(), line}, color);
  Fill({box.left(), box.bottom() + 1 - line, box.width(), line}, color);
  Fill({box.left(), box.top() + line, line, box.height() - 2 * line}, color);
  Fill({box.right() + 1 - line, box.top() + line, line, box.height() - 2 * line}, color);
}

void FinePainter::Panel(const QRect& box, const Shades& shades, const EdgeColors& edges, Height height) {
  // Rounded by cutting the corners' pixels: an outline this thin needs no smoothing and stays sharp.
  painter_.save();
  QPainterPath outline;
  const int cut = hairline_;
  for (const QRect& part : {box.adjusted(cut, 0, -cut, 0), box.adjusted(0, cut, 0, -cut)}) {
    QPainterPath piece;
    piece.addRect(part);
    outline = outline.united(piece);
  }
  painter_.setClipPath(outline, Qt::IntersectClip);
  Fill(box, Mix(shades.bottom, edges.shadow, 0.75));
  painter_.restore();

  const QRect inner = Inset(box, 1);
  Fill(inner, shades);
  const bool raised = height == Height::Raised;
  const Color lit = Mix(shades.top, edges.highlight, 0.85);
  const Color shaded = Mix(shades.bottom, edges.shadow, raised ? 0.35 : 0.55);
  const Color left_top = raised ? lit : shaded;
  const Color right_bottom = raised ? shaded : Mix(shades.bottom, edges.highlight, 0.4);
  const int line = hairline_;
  Fill({inner.left(), inner.bottom() + 1 - line, inner.width(), line}, right_bottom);
  Fill({inner.right() + 1 - line, inner.top(), line, inner.height()}, right_bottom);
  Fill({inner.left(), inner.top(), inner.width() - line, line}, left_top);
  Fill({inner.left(), inner.top(), line, inner.height() - line}, left_top);
}

void FinePainter::FocusRing(const QRect& box, Color ground) {
  const Color ring = ReadableOn(ground);
  Frame(box, ring);
  Frame(Inset(box, 1), LightnessTurned(ring));
}

void FinePainter::Caption(const QWidget& widget, const QString& text, Color color, int shift_pixels) {
  painter_.save();
  painter_.setWorldTransform(QTransform());
  // Only the width is fitted: the smallest buttons are lower than any line of text, and fitting the height
  // would leave nothing.
  painter_.setFont(platform::FontThatFits(widget.font(), text, widget.width() - 2 * kCaptionMargin,
                                          QFontMetricsF(widget.font()).height()));
  painter_.setPen(ToolkitColor(color));
  const QRect room =
      widget.rect().adjusted(kCaptionMargin, 0, -kCaptionMargin, 0).translated(shift_pixels, shift_pixels);
  const QString shown = painter_.fontMetrics().elidedText(text, Qt::ElideRight, room.width());
  painter_.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, shown);
  painter_.restore();
}

}  // namespace look
