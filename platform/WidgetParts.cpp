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

std::int16_t MouseButtonBits(Qt::MouseButtons buttons) {
  return static_cast<std::int16_t>((buttons.testFlag(Qt::LeftButton) ? 1 : 0) |
                                   (buttons.testFlag(Qt::RightButton) ? 2 : 0) |
                                   (buttons.testFlag(Qt::MiddleButton) ? 4 : 0));
}

std::int16_t ShiftKeyBits(Qt::KeyboardModifiers keys) {
  return static_cast<std::int16_t>((keys.testFlag(Qt::ShiftModifier) ? 1 : 0) |
                                   (keys.testFlag(Qt::ControlModifier) ? 2 : 0) |
                                   (keys.testFlag(Qt::AltModifier) ? 4 : 0));
}

QFont FontThatFits(QFont font, const QString& text, double width, double height) {
  Shrink(font, height / std::max(QFontMetricsF(font).height(), 1.0));
  const double fits = width / std::max(QFontMetricsF(font).horizontalAdvance(text), 1.0);
  if (fits >= 1) return font;
  font.setStretch(std::max(kClosestPercent, static_cast<int>(100 * fits)));
  Shrink(font, 100 * fits / kClosestPercent);
  return font;
}

}  // namespace platform
