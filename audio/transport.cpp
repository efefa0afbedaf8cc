#include "audio/transport.h"

#include <algorithm>

#include "timeline/mappings.h"

namespace audio {
namespace {

constexpr float kSecondsPerDay = 86400;

template <typename Sample>
std::span<const std::byte> BytesWithin(const SampleArray<Sample>& samples, timeline::ByteSlice slice) {
  const auto all = std::as_bytes(std::span(samples.Data(), static_cast<std::size_t>(samples.Count())));
  const auto first = static_cast<std::size_t>(slice.start) / sizeof(Sample) * sizeof(Sample);
  const auto length = static_cast<std::size_t>(slice.length);
  if (first > all.size() || length > all.size() - first) return {};
  return all.subspan(first, length);
}

}  // namespace

std::span<const std::byte> BytesOfFrame(const SampleStore& sound, std::int32_t frame,
                                        std::int32_t frame_rows) {
  if (sound.WaveDataLength <= 0 || frame_rows <= 0) return {};
  const timeline::ByteSlice slice = timeline::SliceOfFrame(frame, sound.WaveDataLength, frame_rows);
  if (slice.start < 0) return {};
  switch (sound.WaveFormat.wBitsPerSample) {
    case 8:
      return BytesWithin(sound.Samples8, slice);
    case 16:
      return BytesWithin(sound.Samples16, slice);
    default:
      return {};
  }
}

float ElapsedSeconds(float start_reading, double reading) {
  // Both as floats: a finer reading can lie before the start that was taken at the same moment.
  const float elapsed = static_cast<float>(reading) - start_reading;
  return elapsed < -kSecondsPerDay / 2 ? elapsed + kSecondsPerDay : elapsed;
}

std::int32_t FrameAtPress(float x_pixel, double exact_frames, int canvas_pixels, std::int32_t grid_rows) {
  const std::int32_t frame = timeline::FrameAtPixel(x_pixel, exact_frames, canvas_pixels);
  return std::max(0, std::min(frame, grid_rows - 2));
}

}  // namespace audio
