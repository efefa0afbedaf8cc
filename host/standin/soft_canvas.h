// Drawing smooth-edged shapes straight into three planes.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "host/standin/animation.h"
#include "platform/numbers.h"

namespace host {

/// A position or a length in pixels; the middle of the first pixel is (0.5, 0.5).
struct Spot {
  double x = 0, y = 0;
};

/// Three planes that are being drawn. Shapes are cut at the edges; their rims are blended over one pixel.
class SoftCanvas {
 public:
  explicit SoftCanvas(FrameSize size);

  /// Fills all rows, the colour running from `top` to `bottom`.
  void FillGradient(platform::Color top, platform::Color bottom);
  /// An upright ellipse; `radii` are its half axes, `opacity` is 0 to 1.
  void FillEllipse(Spot center, Spot radii, platform::Color color, double opacity = 1);
  /// A line with round ends.
  void DrawStroke(Spot from, Spot to, double thickness, platform::Color color);

  /// A copy of the planes as they stand.
  Animation::Frame Planes() const;

 private:
  template <typename Distance>
  void FillShape(Spot least, Spot most, platform::Color color, double opacity, Distance&& distance);
  void Blend(int x, int y, platform::Color color, double share);

  FrameSize size_;
  std::array<std::vector<std::uint8_t>, 3> planes_;
};

}  // namespace host
