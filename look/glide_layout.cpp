#include "look/glide_layout.h"

#include <algorithm>

#include "platform/numbers.h"

namespace look {
namespace {

int BarWidth(int trough_width, int trough_height, int range) {
  if (range <= 0) return std::max(trough_width, 0);
  const int one_position = static_cast<int>(trough_width / (static_cast<double>(range) + 1));
  return std::min(std::max(one_position, 3 * trough_height), std::max(trough_width / 2, 1));
}

}  // namespace

BarPlace PlaceBar(int trough_width, int trough_height, int range, int position) {
  const int width = BarWidth(trough_width, trough_height, range);
  if (range <= 0) return {0, width};
  return {platform::RoundToLong((trough_width - width) * static_cast<double>(position) / range), width};
}

int PositionAtBarLeft(int left, int trough_width, int trough_height, int range) {
  const int path = trough_width - BarWidth(trough_width, trough_height, range);
  if (path <= 0) return 0;
  return std::clamp(platform::RoundToLong(static_cast<double>(left) * range / path), 0, std::max(range, 0));
}

int PageOf(int trough_width, int trough_height, int range) {
  const int width = BarWidth(trough_width, trough_height, range);
  const int path = trough_width - width;
  return path <= 0 ? 1 : std::max(1, platform::RoundToLong(static_cast<double>(width) * range / path));
}

}  // namespace look
