#include "audio/transport.h"

#include "platform/numbers.h"

namespace audio {
namespace {

constexpr float kSecondsPerDay = 86400;

template <typename Sample>
std::span<const std::byte> BytesWithin(const SampleArray<Sample>& samples, ByteSlice slice) {
  const auto all = std::as_bytes(std::span(samples.Data(), static_cast<std::size_t>(samples.Count())));
  const auto first = static_cast<std::size_t>(slice.start) / sizeof(Sample) * sizeof(Sample);
  const auto length = static_cast<std::size_t>(slice.length);
  if (first > all.size() || length > all.size() - first) return {};
  return all.subspan(first, length);
}

}  // namespace

ByteSlice SliceOfFrame(std::int32_t frame, std::int32_t data_bytes, std::int32_t frame_rows) {
  const double frame_bytes = static_cast<double>(data_bytes) / frame_rows;
  return {platform::RoundToLong(frame_bytes * frame), platform::RoundToLong(frame_bytes)};
}

std::span<const std::byte> BytesOfFrame(const SampleStore& sound, std::int32_t frame,
                                        std::int32_t frame_rows) {
  if (sound.WaveDataLength <= 0 || frame_rows <= 0) return {};
  const ByteSlice slice = SliceOfFrame(frame, sound.WaveDataLength, frame_rows);
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
  // Both are rounded to floats: an unrounded reading could lie before the rounded start that was taken at the
  // same moment.
  const float elapsed = static_cast<float>(reading) - start_reading;
  return elapsed < -kSecondsPerDay / 2 ? elapsed + kSecondsPerDay : elapsed;
}

float FractionOfTime(double passed_seconds, double sound_seconds) {
  return static_cast<float>(passed_seconds / sound_seconds);
}

std::int32_t RowOfTime(float fraction, std::int32_t frame_rows) {
  const float rows = static_cast<float>(frame_rows) * fraction;
  return platform::FloorToLong(static_cast<double>(rows));
}

}  // namespace audio
