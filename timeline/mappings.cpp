#include "timeline/mappings.h"

#include "platform/numbers.h"

namespace timeline {

std::int32_t FrameAtPixel(float x_pixel, double exact_frames, int canvas_pixels) {
  return platform::FloorToLong(x_pixel * (exact_frames / canvas_pixels));
}

float PixelsPerFrame(int canvas_pixels, std::int32_t rounded_frames) {
  return static_cast<float>(static_cast<double>(canvas_pixels) / rounded_frames);
}

double PixelOfFrame(std::int32_t frame, float pixels_per_frame) {
  return static_cast<double>(frame) * static_cast<double>(pixels_per_frame);
}

float FractionOfTime(double passed_seconds, double sound_seconds) {
  return static_cast<float>(passed_seconds / sound_seconds);
}

double PixelOfTime(float fraction, int canvas_pixels) {
  return static_cast<double>(canvas_pixels) * static_cast<double>(fraction);
}

std::int32_t RowOfTime(float fraction, std::int32_t frame_rows) {
  const float rows = static_cast<float>(frame_rows) * fraction;
  return platform::FloorToLong(static_cast<double>(rows));
}

ByteSlice SliceOfFrame(std::int32_t frame, std::int32_t data_bytes, std::int32_t frame_rows) {
  const double frame_bytes = static_cast<double>(data_bytes) / frame_rows;
  return {platform::RoundToLong(frame_bytes * frame), platform::RoundToLong(frame_bytes)};
}

float SampleStride(double sample_count, int canvas_pixels) {
  return static_cast<float>(sample_count / canvas_pixels);
}

std::int64_t SampleAtPixel(int column_pixel, float samples_per_pixel) {
  return platform::RoundToInt64(static_cast<double>(column_pixel) * static_cast<double>(samples_per_pixel));
}

}  // namespace timeline
