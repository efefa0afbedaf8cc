// The wiggle: each pixel fetched from a nearby place that a smooth noise field names.
#pragma once

#include <cstdint>

#include "painter/planes.h"

namespace painter {

/// Where the two fields of one frame are cut: the third coordinate of the noise for each.
struct Slices {
  float x = 0;
  float y = 0;
};

/// Fills target with the displaced samples of source; both of the same shape, not overlapping. `amount` is
/// the displacement in pixels per unit of noise, `size` (1 and up) the scale of the field: one unit of noise
/// spans 50 x size pixels. Places beyond an edge repeat the edge. The last column and row of target stay.
/// Takes two draws from the random sequence, so that no two frames are displaced alike.
void WiggleFrame(std::int32_t amount, std::int32_t size, const ConstPlanes& source, const Planes& target);

/// The same with the slices given.
void WiggleFrameAt(std::int32_t amount, std::int32_t size, const Slices& slices, const ConstPlanes& source,
                   const Planes& target);

}  // namespace painter
