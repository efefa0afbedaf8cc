// The arithmetic that ties the sound, the clock, the sheet's rows and the waveform's pixels together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "audio/sample_store.h"

namespace audio {

/// One frame's piece of the sound, in bytes of the sample data.
struct FrameSlice {
  std::int32_t start_byte = 0;
  std::int32_t length_bytes = 0;
  friend bool operator==(const FrameSlice&, const FrameSlice&) = default;
};

/// The sound is cut into as many equal pieces as the sheet has frame rows, whatever the frame rate; start and
/// length are rounded apart from each other, so neighbours may leave out or share a byte. Nothing without a
/// sound, without frame rows, and for frame -1, the header row's.
std::optional<FrameSlice> SliceOfFrame(std::int32_t data_bytes, std::int32_t frame_rows, std::int32_t frame);

/// The slice within the array of the sound's depth, in place. At 16 bits it begins at the sample that holds
/// its first byte, so an odd start loses its last bit, while the length stays and may end within a sample.
/// Empty if the sound has no samples of its depth, or not as many.
std::span<const std::byte> BytesOfSlice(const SampleStore& sound, FrameSlice slice);

/// Seconds from one clock reading to another, both since midnight, in 32-bit floats. A clock that has fallen
/// by more than half a day has passed midnight.
float ElapsedSeconds(float start_reading, double reading);

/// The part of the sound that has passed, 1 at its end. Nothing if the sound has no length.
std::optional<float> FractionPlayed(float elapsed_seconds, double sound_seconds);

/// The grid row that playback has reached, the fraction of the frame rows rounded down. It is the row's
/// number, and so one less than the row of the frame that sounds.
std::int32_t RowAtFraction(std::int32_t frame_rows, float fraction);

/// The pixel column of the playback cursor on a canvas of some width.
std::int32_t CursorColumn(std::int32_t canvas_width, float fraction);

/// The frame under a pixel column of the canvas, held within the sheet's frames, 0 to grid_rows - 2.
/// `exact_frames` is rate x seconds, unrounded. 0 for a sheet without frames.
std::int32_t FrameAtColumn(float x, double exact_frames, std::int32_t canvas_width, std::int32_t grid_rows);

}  // namespace audio
