// Which bytes of the loaded sound a frame plays, how long a run has lasted, and which row it has reached.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "audio/sample_store.h"

namespace audio {

/// A frame's piece of the sample data, in bytes. The pieces are equal parts of the whole, whatever the rate;
/// start is negative on the header row.
struct ByteSlice {
  std::int32_t start = 0, length = 0;
};
/// frame_rows above 0.
ByteSlice SliceOfFrame(std::int32_t frame, std::int32_t data_bytes, std::int32_t frame_rows);

/// A frame's piece of the sound (SliceOfFrame), in place in the array of the sound's depth. At 16
/// bits it begins at the sample that holds its first byte, so an odd start loses its last bit, while the
/// length stays and may end within a sample. A null pointer if there is nothing to play: no sound, no frame
/// rows, the header row's frame -1, or no samples of the sound's depth that reach so far. A very short piece
/// has a length of 0 bytes.
std::span<const std::byte> BytesOfFrame(const SampleStore& sound, std::int32_t frame,
                                        std::int32_t frame_rows);

/// Seconds from one clock reading to another, both since midnight, in 32-bit floats. A clock that has fallen
/// by more than half a day has passed midnight.
float ElapsedSeconds(float start_reading, double reading);

/// The part of the sound that has passed: 0 at its start, 1 at its end, more behind it.
float FractionOfTime(double passed_seconds, double sound_seconds);

/// The grid row that playback has reached, rounded down. It carries the frame before the one that sounds.
std::int32_t RowOfTime(float fraction, std::int32_t frame_rows);

}  // namespace audio
