// Which bytes of the loaded sound a frame plays, how long a run has lasted, which frame a press selects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "audio/sample_store.h"

namespace audio {

/// A frame's piece of the sound (timeline::SliceOfFrame), in place in the array of the sound's depth. At 16
/// bits it begins at the sample that holds its first byte, so an odd start loses its last bit, while the
/// length stays and may end within a sample. A null pointer if there is nothing to play: no sound, no frame
/// rows, the header row's frame -1, or no samples of the sound's depth that reach so far. A very short piece
/// has a length of 0 bytes.
std::span<const std::byte> BytesOfFrame(const SampleStore& sound, std::int32_t frame,
                                        std::int32_t frame_rows);

/// Seconds from one clock reading to another, both since midnight, in 32-bit floats. A clock that has fallen
/// by more than half a day has passed midnight.
float ElapsedSeconds(float start_reading, double reading);

/// The frame that a press at a column of the canvas selects, held within 0 to grid_rows - 2. `exact_frames`
/// is rate x seconds, unrounded. 0 also for a sheet without frames, whose row the grid then refuses.
std::int32_t FrameAtPress(float x_pixel, double exact_frames, int canvas_pixels, std::int32_t grid_rows);

}  // namespace audio
