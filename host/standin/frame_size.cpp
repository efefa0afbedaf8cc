#include "host/standin/frame_size.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace host {
namespace {

/// How far two shapes are apart: 0 for equal proportions, the same for twice as wide and half as wide.
double ShapeDistance(double columns, double rows, FrameSize similar) {
  const double wanted = (similar.width + 1.0) / (similar.height + 1.0);
  return std::abs(std::log(columns / rows / wanted));
}

bool IsUsable(std::size_t columns, std::size_t rows) {
  const auto [shorter, longer] = std::minmax(columns, rows);
  return longer <= kMaximumSide + std::size_t{1} && longer <= 16 * shorter;
}

}  // namespace

std::optional<FrameSize> SizeFromPlaneBytes(std::size_t byte_count, std::span<const FrameSize> known,
                                            FrameSize similar) {
  const auto fits = [&](const FrameSize& size) { return size.PlaneBytes() == byte_count; };
  if (const auto found = std::ranges::find_if(known, fits); found != known.end()) return *found;

  std::optional<FrameSize> best;
  double best_distance = 0;
  const auto consider = [&](std::size_t columns, std::size_t rows) {
    if (!IsUsable(columns, rows)) return;
    const double distance = ShapeDistance(static_cast<double>(columns), static_cast<double>(rows), similar);
    if (best && distance >= best_distance) return;
    best = FrameSize{static_cast<int>(columns) - 1, static_cast<int>(rows) - 1};
    best_distance = distance;
  };
  for (std::size_t side = 2; side <= kMaximumSide + std::size_t{1} && side * side <= byte_count; ++side) {
    if (byte_count % side != 0) continue;
    consider(side, byte_count / side);
    consider(byte_count / side, side);
  }
  return best;
}

}  // namespace host
