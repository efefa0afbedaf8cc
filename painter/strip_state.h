// What the two strips keep between paints. It outlives the window: opening the window again resets nothing
// but PaintOnlyFrame and LockedHeight.
#pragma once

#include <cstdint>
#include <vector>

#include "painter/planes.h"

namespace painter {

inline constexpr std::int32_t kWholeStrip = -1;

/// The picture of a strip: one column and one row more than the strip has pixels, zero-filled when made.
struct StripPlanes {
  StripPlanes() = default;
  explicit StripPlanes(const PlaneShape& new_shape)
      : shape(new_shape), red(shape.Samples()), green(red), blue(red) {}
  Planes View() { return {shape, red.data(), green.data(), blue.data()}; }

  PlaneShape shape;
  std::vector<std::uint8_t> red, green, blue;
};

struct StripState {
  std::int32_t SelectedCell = 0;
  /// The roll frame that the next key stamps.
  std::int32_t FrameForKeys = 0;
  /// Pixels added to every x of a strip, zero or negative.
  std::int32_t CellScrollOffset = 0;
  std::int32_t RollScrollOffset = 0;
  /// The roll frame to redraw alone, or kWholeStrip.
  std::int32_t PaintOnlyFrame = kWholeStrip;
  /// The size in design pixels of the strip that the roll's planes were made for; the planes have the
  /// screen's.
  std::int32_t RollStripWidth = 0;
  std::int32_t RollStripHeight = 0;
  StripPlanes RollPlanes;
  /// The window's height in twips.
  std::int32_t LockedHeight = 0;
};
inline StripState& TheStrips() {
  static StripState strips;
  return strips;
}

}  // namespace painter
