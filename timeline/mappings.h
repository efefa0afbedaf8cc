// Between the waveform's pixels, frames, samples and the time that has passed. The mappings are no inverses
// of each other: the exact frame count is rate x seconds, unrounded; the rounded one is the same to the
// nearest whole frame. When the exact count isn't whole, they drift apart by up to half a frame over the
// length of the canvas.
#pragma once

#include <cstdint>
#include <string>

namespace timeline {

/// The frame under a position on the waveform, rounded down; negative left of the canvas. canvas_pixels above
/// 0.
std::int32_t FrameAtPixel(float x_pixel, double exact_frames, int canvas_pixels);

/// The frame that a press at a column of the canvas selects, held within 0 to grid_rows - 2. `exact_frames`
/// is rate x seconds, unrounded. 0 also for a sheet without frames, whose row the grid then refuses.
std::int32_t FrameAtPress(float x_pixel, double exact_frames, int canvas_pixels, std::int32_t grid_rows);

/// How wide a frame is on the waveform. rounded_frames above 0.
float PixelsPerFrame(int canvas_pixels, std::int32_t rounded_frames);

/// The left edge of a frame on the waveform; frame -1, the header row's, lies left of the canvas.
double PixelOfFrame(std::int32_t frame, float pixels_per_frame);

/// The place of the playback cursor.
double PixelOfTime(float fraction, int canvas_pixels);

/// Samples per pixel column. canvas_pixels above 0.
float SampleStride(double sample_count, int canvas_pixels);

/// The sample that a pixel column shows. With a long sound the stride's rounding can take it past the last
/// one.
std::int64_t SampleAtPixel(int column_pixel, float samples_per_pixel);

/// Where the sheet stands, for who can't see it: "Frame 7 of 71", the last one being 70.
std::string FrameInWords(std::int32_t frame, std::int32_t frames);

}  // namespace timeline
