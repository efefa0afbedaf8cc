#include "audio/transport.h"

#include <algorithm>

#include "platform/numbers.h"

namespace audio {
namespace {

constexpr float kSecondsPerDay = 86400;

template <typename Sample>
std::span<const std::byte> BytesWithin(const SampleArray<Sample>& samples, FrameSlice slice) {
  const auto all = std::as_bytes(std::span(samples.Data(), static_cast<std::size_t>(samples.Count())));
  const auto first = static_cast<std::size_t>(slice.start_byte) / sizeof(Sample) * sizeof(Sample);
  const auto length = static_cast<std::size_t>(slice.length_bytes);
  if (first > all.size() || length > all.size() - first) return {};
  return all.subspan(first, length);
}

}  // namespace

std::optional<FrameSlice> SliceOfFrame(std::int32_t data_bytes, std::int32_t frame_rows, std::int32_t frame) {
  if (data_bytes <= 0 || frame_rows <= 0) return std::nullopt;
  const double bytes_per_frame = static_cast<double>(data_bytes) / frame_rows;
  const FrameSlice slice{platform::RoundToLong(bytes_per_frame * frame),
                         platform::RoundToLong(bytes_per_frame)};
  if (slice.start_byte < 0) return std::nullopt;
  return slice;
}

std::span<const std::byte> BytesOfSlice(const SampleStore& sound, FrameSlice slice) {
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
  // Both as floats: a finer reading would lie before the start that was taken at the same moment.
  const float elapsed = static_cast<float>(reading) - start_reading;
  return elapsed < -kSecondsPerDay / 2 ? elapsed + kSecondsPerDay : elapsed;
}

std::optional<float> FractionPlayed(float elapsed_seconds, double sound_seconds) {
  if (sound_seconds <= 0) return std::nullopt;
  return elapsed_seconds / static_cast<float>(sound_seconds);
}

std::int32_t RowAtFraction(std::int32_t frame_rows, float fraction) {
  const float row = static_cast<float>(frame_rows) * fraction;
  return platform::FloorToLong(row);
}

std::int32_t CursorColumn(std::int32_t canvas_width, float fraction) {
  return platform::RoundToLong(static_cast<float>(canvas_width) * fraction);
}

std::int32_t FrameAtColumn(float x, double exact_frames, std::int32_t canvas_width, std::int32_t grid_rows) {
  const std::int32_t frame = platform::FloorToLong(x * (exact_frames / canvas_width));
  return std::max(0, std::min(frame, grid_rows - 2));
}

}  // namespace audio
