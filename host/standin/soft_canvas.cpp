#include "host/standin/soft_canvas.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

std::array<int, 3> Parts(platform::Color color) {
  return {platform::RedOf(color), platform::GreenOf(color), platform::BlueOf(color)};
}

/// Colour parts are never negative: half a step more and cut off is the nearest.
std::uint8_t Mix(double from, double to, double share) {
  return static_cast<std::uint8_t>(from + (to - from) * share + 0.5);
}

/// Coordinates of pixels are far from where the library's slower way would be needed.
double Length(double x, double y) { return std::sqrt(x * x + y * y); }

/// Distance to the rim of an ellipse around the origin, negative inside; exact enough near the rim.
double EllipseDistance(Spot at, Spot radii) {
  const double scaled = Length(at.x / radii.x, at.y / radii.y);
  const double slope = Length(at.x / (radii.x * radii.x), at.y / (radii.y * radii.y));
  return slope > 0 ? scaled * (scaled - 1) / slope : -std::min(radii.x, radii.y);
}

double SegmentDistance(Spot at, Spot from, Spot to) {
  const Spot along{to.x - from.x, to.y - from.y};
  const double length = along.x * along.x + along.y * along.y;
  const double part =
      length > 0 ? std::clamp(((at.x - from.x) * along.x + (at.y - from.y) * along.y) / length, 0.0, 1.0) : 0;
  return Length(at.x - from.x - along.x * part, at.y - from.y - along.y * part);
}

}  // namespace

SoftCanvas::SoftCanvas(FrameSize size) : size_(size) {
  for (auto& plane : planes_) plane.assign(size.PlaneBytes(), 255);
}

void SoftCanvas::FillGradient(platform::Color top, platform::Color bottom) {
  const auto from = Parts(top), to = Parts(bottom);
  const std::ptrdiff_t columns = size_.width + 1;
  for (int y = 0; y <= size_.height; ++y)
    for (std::size_t part = 0; part < 3; ++part)
      std::fill_n(planes_[part].begin() + y * columns, columns,
                  Mix(from[part], to[part], static_cast<double>(y) / size_.height));
}

void SoftCanvas::Blend(int x, int y, platform::Color color, double share) {
  const auto at =
      static_cast<std::size_t>(y) * (static_cast<std::size_t>(size_.width) + 1) + static_cast<std::size_t>(x);
  const auto parts = Parts(color);
  for (std::size_t part = 0; part < 3; ++part) planes_[part][at] = Mix(planes_[part][at], parts[part], share);
}

template <typename Distance>
void SoftCanvas::FillShape(Spot least, Spot most, platform::Color color, double opacity,
                           Distance&& distance) {
  const auto held = [](double value, int top) { return static_cast<int>(std::clamp<double>(value, 0, top)); };
  const int right = held(most.x + 1, size_.width), bottom = held(most.y + 1, size_.height);
  for (int y = held(least.y - 1, size_.height); y <= bottom; ++y)
    for (int x = held(least.x - 1, size_.width); x <= right; ++x) {
      const double cover = std::clamp(0.5 - distance(Spot{x + 0.5, y + 0.5}), 0.0, 1.0);
      if (cover > 0) Blend(x, y, color, cover * opacity);
    }
}

void SoftCanvas::FillEllipse(Spot center, Spot radii, platform::Color color, double opacity) {
  if (radii.x <= 0 || radii.y <= 0) return;
  FillShape({center.x - radii.x, center.y - radii.y}, {center.x + radii.x, center.y + radii.y}, color,
            opacity, [&](Spot at) {
              return EllipseDistance({at.x - center.x, at.y - center.y}, radii);
            });
}

void SoftCanvas::DrawStroke(Spot from, Spot to, double thickness, platform::Color color) {
  const double half = thickness / 2;
  FillShape({std::min(from.x, to.x) - half, std::min(from.y, to.y) - half},
            {std::max(from.x, to.x) + half, std::max(from.y, to.y) + half}, color, 1,
            [&](Spot at) { return SegmentDistance(at, from, to) - half; });
}

Animation::Frame SoftCanvas::Planes() const {
  return {CopyTable(planes_[0]), CopyTable(planes_[1]), CopyTable(planes_[2])};
}

}  // namespace host
