// The wiggle: each pixel fetched from a nearby place that a smooth noise field names.
#pragma once

#include <cstdint>

#include "painter/planes.h"

namespace painter {

struct WiggleKernel;

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

/// How a frame is worked out. Whatever is chosen, the samples are the same.
struct WiggleWork {
  /// The inner loops; null: the best that the processor has.
  const WiggleKernel* kernel = nullptr;
  /// Threads that share the rows, the caller's among them; 0: as many as the machine has cores, and the frame
  /// is large enough for.
  int threads = 0;
  /// Finds the places and fetches nothing: what that share of the work costs.
  bool displace_only = false;
};

/// The same with the slices given. The call blocks until all rows are done.
void WiggleFrameAt(std::int32_t amount, std::int32_t size, const Slices& slices, const ConstPlanes& source,
                   const Planes& target, const WiggleWork& work = {});

}  // namespace painter
