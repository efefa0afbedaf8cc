#include "platform/WidgetParts.h"

#include <QFontMetricsF>
#include <algorithm>

namespace platform {
namespace {

constexpr double kLeastPoints = 5.0;
constexpr int kClosestPercent = 84;

void Shrink(QFont& font, double factor) {
  if (factor < 1) font.setPointSizeF(std::max(kLeastPoints, font.pointSizeF() * factor));
}

}  // namespace

QFont FontThatFits(QFont font, const QString& text, double width, double height) {
  Shrink(font, height / std::max(QFontMetricsF(font).height(), 1.0));
  const double fits = width / std::max(QFontMetricsF(font).horizontalAdvance(text), 1.0);
  if (fits >= 1) return font;
  font.setStretch(std::max(kClosestPercent, static_cast<int>(100 * fits)));
  Shrink(font, 100 * fits / kClosestPercent);
  return font;
}

}  // namespace platform
