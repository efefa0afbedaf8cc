#include "timeline/mappings.h"

#include <algorithm>

#include "platform/numbers.h"

namespace timeline {

std::int32_t FrameAtPixel(float x_pixel, double exact_frames, int canvas_pixels) {
  return platform::FloorToLong(x_pixel * (exact_frames / canvas_pixels));
}

std::int32_t FrameAtPress(float x_pixel, double exact_frames, int canvas_pixels, std::int32_t grid_rows) {
  const std::int32_t frame = FrameAtPixel(x_pixel, exact_frames, canvas_pixels);
  return std::max(0, std::min(frame, grid_rows - 2));
}

float PixelsPerFrame(int canvas_pixels, std::int32_t rounded_frames) {
  return static_cast<float>(static_cast<double>(canvas_pixels) / rounded_frames);
}

double PixelOfFrame(std::int32_t frame, float pixels_per_frame) {
  return static_cast<double>(frame) * static_cast<double>(pixels_per_frame);
}

double PixelOfTime(float fraction, int canvas_pixels) {
  return static_cast<double>(canvas_pixels) * static_cast<double>(fraction);
}

float SampleStride(double sample_count, int canvas_pixels) {
  return static_cast<float>(sample_count / canvas_pixels);
}

std::int64_t SampleAtPixel(int column_pixel, float samples_per_pixel) {
  return platform::RoundToInt64(static_cast<double>(column_pixel) * static_cast<double>(samples_per_pixel));
}

std::string FrameInWords(std::int32_t frame, std::int32_t frames) {
  if (frames == 0) return "No frames";
  return frame < 0 ? "Before the first frame"
                   : "Frame " + std::to_string(frame) + " of " + std::to_string(frames);
}

}  // namespace timeline
