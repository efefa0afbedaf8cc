// Any bytes as a wave file: it loads or tells why not and keeps the store's bounds.
#include <algorithm>
#include <cstdlib>

#include "audio/wave_reader.h"
#include "sheet/timing.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

template <typename Sample>
void CheckArray(const audio::SampleArray<Sample>& samples, std::int32_t data_bytes, std::size_t file_bytes) {
  Check(samples.LastIndex() == data_bytes);
  const auto held = static_cast<std::int64_t>(file_bytes);
  for (std::int64_t i = -1; i <= std::min(held, samples.Count()); ++i)
    Check(std::abs(int{samples.At(i)}) <= 32768);
  Check(samples.At(-1) == 0 && samples.At(samples.Count()) == 0);
  if (held < samples.Count()) Check(samples.At(samples.LastIndex()) == 0);
}

void CheckSound(const audio::SampleStore& sound, std::size_t file_bytes) {
  Check(sound.WaveDataLength >= 0);
  if (sound.WaveFormat.wBitsPerSample == 8) CheckArray(sound.Samples8, sound.WaveDataLength, file_bytes);
  if (sound.WaveFormat.wBitsPerSample == 16) CheckArray(sound.Samples16, sound.WaveDataLength, file_bytes);
  const double seconds = audio::SecondsOfSound(sound).value_or(0);
  const sheet::RowCount rows = sheet::GridRows(24, seconds);
  Check(rows.rows ? *rows.rows >= 1 : !rows.reason.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  platform::MemorySource source({reinterpret_cast<const char*>(data), size});
  audio::WaveResult result = audio::ReadWave(source, {});
  Check(result.sound.has_value() == result.reason.empty());
  if (!result.sound) return 0;
  CheckSound(*result.sound, size);
  return 0;
}
