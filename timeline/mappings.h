// Between pixels, frames, grid rows, bytes, samples and the time that has passed: six mappings, which are no
// inverses of each other. The exact frame count is rate x seconds as it comes, the rounded one the same to
// the nearest whole frame, the frame rows are the grid's rows less the header. When the exact count isn't
// whole, the mappings drift apart by up to half a frame over the length of the canvas.
#pragma once

#include <cstdint>

namespace timeline {

/// The frame under a position on the waveform, rounded down; negative left of the canvas. canvas_pixels above
/// 0.
std::int32_t FrameAtPixel(float x_pixel, double exact_frames, int canvas_pixels);

/// How wide a frame is on the waveform. rounded_frames above 0.
float PixelsPerFrame(int canvas_pixels, std::int32_t rounded_frames);

/// The left edge of a frame on the waveform; frame -1, the header row's, lies left of the canvas.
double PixelOfFrame(std::int32_t frame, float pixels_per_frame);

/// The part of the sound that has passed: 0 at its start, 1 at its end, more behind it.
float FractionOfTime(double passed_seconds, double sound_seconds);

/// Where the play line stands.
double PixelOfTime(float fraction, int canvas_pixels);

/// The grid row that playback has reached, rounded down. It carries the frame before the one that sounds.
std::int32_t RowOfTime(float fraction, std::int32_t frame_rows);

/// A frame's piece of the sample data, in bytes. The pieces are equal parts of the whole, whatever the rate;
/// start is negative on the header row.
struct ByteSlice {
  std::int32_t start = 0, length = 0;
};
/// frame_rows above 0.
ByteSlice SliceOfFrame(std::int32_t frame, std::int32_t data_bytes, std::int32_t frame_rows);

/// Samples per pixel column. canvas_pixels above 0.
float SampleStride(double sample_count, int canvas_pixels);

/// The sample that a pixel column shows. With a long sound the stride's rounding can take it past the last
/// one.
std::int64_t SampleAtPixel(int column_pixel, float samples_per_pixel);

}  // namespace timeline
