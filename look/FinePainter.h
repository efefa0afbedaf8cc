// Drawing of the in-house controls in the screen's own pixels. For toolkit code only.
#pragma once

#include <QPainter>
#include <QRect>

#include "look/shading.h"
#include "platform/numbers.h"

class QWidget;

namespace look {

struct EdgeColors {
  platform::Color highlight = platform::Rgb(224, 224, 224);
  platform::Color shadow = platform::Rgb(32, 32, 32);
};

/// Paints a widget, within its paint event, in whole pixels of the screen: at a scale of 1.5 a design pixel
/// isn't a whole number of them, and what is drawn in design pixels comes out with smeared or uneven edges.
/// All rectangles here are in the screen's pixels.
class FinePainter {
 public:
  explicit FinePainter(QWidget* widget);

  QPainter& Painter() { return painter_; }
  const QRect& Box() const { return box_; }
  /// A length in design pixels, rounded.
  int Pixels(double design_pixels) const;
  /// The thinnest line that is still seen.
  int Hairline() const { return hairline_; }
  QRect Inset(const QRect& box, int hairlines) const;

  void Fill(const QRect& box, platform::Color color);
  void Fill(const QRect& box, const Shades& shades);
  /// An outline, one hairline wide, within the box.
  void Frame(const QRect& box, platform::Color color);
  /// A shaded fill with an outline in the shadow's colour and edges lit from the left top.
  void Panel(const QRect& box, const Shades& shades, const EdgeColors& edges, Height height);
  /// Two hairlines, dark and bright, so that one of them shows on any ground.
  void FocusRing(const QRect& box, platform::Color ground);
  /// In design pixels, as texts are laid out: smaller letters if it's too wide for the widget less its
  /// margins, and shortened if even they don't do.
  void Caption(const QWidget& widget, const QString& text, platform::Color color, int shift_pixels);

 private:
  QPainter painter_;
  QTransform to_device_;
  QRect box_;
  double scale_ = 1;
  int hairline_ = 1;
};

}  // namespace look
