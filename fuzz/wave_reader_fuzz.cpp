// Any bytes as a wave file: it loads or tells why not and keeps the store's bounds.
#include <cstdlib>
#include <string_view>

#include "audio/wave_reader.h"
#include "sheet/timing.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

template <typename Sample>
void CheckArray(const audio::SampleStore& sound, const audio::SampleArray<Sample>& samples) {
  Check(samples.LastIndex() == sound.WaveDataLength);
  Check(samples.FilledCount() <= samples.Count());
  for (std::int64_t i = -1; i <= samples.FilledCount(); ++i) Check(std::abs(int{samples.At(i)}) <= 32768);
  Check(samples.At(-1) == 0 && samples.At(samples.Count()) == 0);
  if (samples.FilledCount() < samples.Count()) Check(samples.At(samples.LastIndex()) == 0);
  // The element at the sample count, which the wave's right-hand edge reads, is inside.
  Check(audio::SampleCount(sound) <= samples.LastIndex());
}

void CheckSound(const audio::SampleStore& sound) {
  Check(sound.WaveDataLength >= 0);
  if (sound.WaveFormat.wBitsPerSample == 8) CheckArray(sound, sound.Samples8);
  if (sound.WaveFormat.wBitsPerSample == 16) CheckArray(sound, sound.Samples16);
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
  CheckSound(*result.sound);
  return 0;
}
