#include "timeline/highlight_box.h"

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"

namespace timeline {
namespace {

/// Radians per degree, to just these digits: the colours of the canvases' ground depend on them.
constexpr double kRadians = 0.01745;

int Shaded(int part, float brightness) {
  const double dark = static_cast<double>(1.0f - brightness), light = static_cast<double>(brightness);
  return platform::RoundToLong(dark * (part / 2.0) + light * part);
}

}  // namespace

void HighlightBox(const platform::PixelView& target, int x1, int y1, int x2, int y2, int red, int green,
                  int blue, int degrees) {
  if (y2 <= y1) return;
  const int pen = target.Pen();
  const int last = std::min(target.At(y2) + pen - 1, target.clip.bottom - 1);
  for (int y = std::max(target.At(y1), target.clip.top); y <= last; ++y) {
    const double angle = (y / target.scale - y1) * (1.0 / (y2 - y1)) * degrees * kRadians;
    const auto brightness = static_cast<float>(std::fabs(std::sin(angle)));
    const platform::Color color =
        platform::Rgb(Shaded(red, brightness), Shaded(green, brightness), Shaded(blue, brightness));
    platform::FillBox(target, {target.At(std::min(x1, x2)), y, target.At(std::max(x1, x2)) + pen, y + 1},
                      color);
  }
}

void LayGround(const platform::PixelView& target, int width, int height, platform::Color color, int degrees) {
  HighlightBox(target, 0, 0, width, height, platform::RedOf(color), platform::GreenOf(color),
               platform::BlueOf(color), degrees);
}

}  // namespace timeline
