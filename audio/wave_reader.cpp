#include "audio/wave_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <string_view>

namespace audio {
namespace {

static_assert(std::endian::native == std::endian::little,
              "Fields and samples are taken as the file holds them");

constexpr int kMostChunksBeforeData = 9;
constexpr std::int64_t kFormatPosition = 20;
constexpr const char* kNoData = "Can't find data chunk";

WaveResult Refused(std::string reason) { return {std::nullopt, std::move(reason)}; }

/// What the file doesn't hold reads as zeros.
template <typename Field>
bool ReadField(ByteSource& source, Field& field) {
  field = {};
  return source.Read(&field, sizeof field) == sizeof field;
}

bool NextIs(ByteSource& source, std::string_view identifier) {
  std::array<char, 4> found;
  return ReadField(source, found) && std::string_view(found.data(), found.size()) == identifier;
}

/// False if the memory can't be had.
template <typename Sample>
bool ReadSamples(ByteSource& source, std::int32_t last_index, SampleArray<Sample>& samples) {
  auto fresh = SampleArray<Sample>::Zeroed(last_index);
  if (!fresh.Allocated()) return false;
  const auto wanted_bytes = static_cast<std::size_t>(fresh.Count()) * sizeof(Sample);
  const std::size_t read_bytes = source.Read(fresh.Writable(), wanted_bytes);
  // Half a sample at the end of the file keeps the half that is there.
  fresh.SetFilledCount(static_cast<std::int64_t>((read_bytes + sizeof(Sample) - 1) / sizeof(Sample)));
  samples = std::move(fresh);
  return true;
}

bool ReadSamplesOfDepth(ByteSource& source, SampleStore& sound) {
  switch (sound.WaveFormat.wBitsPerSample) {
    case 8:
      return ReadSamples(source, sound.WaveDataLength, sound.Samples8);
    case 16:
      return ReadSamples(source, sound.WaveDataLength, sound.Samples16);
    default:
      return true;
  }
}

template <typename Sample>
void KeepEvenSamples(SampleArray<Sample>& samples, std::int32_t last_index) {
  const std::int64_t filled = samples.FilledCount();
  Sample* sample = samples.Writable();
  const std::int64_t end = std::min(filled, std::int64_t{last_index} + 1);
  for (std::int64_t i = 0; i < end; ++i) sample[i] = 2 * i < filled ? sample[2 * i] : Sample{0};
  samples.ShrinkTo(last_index);
}

/// The data chunk's size and samples, from the position behind its identifier.
WaveResult ReadDataChunk(ByteSource& source, SampleStore sound) {
  // A file that ends within the size is cut like one that ends before it.
  if (!ReadField(source, sound.WaveDataLength)) return Refused(kNoData);
  if (sound.WaveDataLength < 0) return Refused("The size of the data chunk is negative");
  if (!ReadSamplesOfDepth(source, sound)) {
    return Refused("Not enough memory for " + std::to_string(sound.WaveDataLength) + " bytes of sound");
  }
  if (!source.Failure().empty()) return Refused("Can't read the samples: " + source.Failure());
  return {std::move(sound), {}};
}

}  // namespace

std::int32_t FindDataChunk(ByteSource& source) {
  int skipped = 0;
  while (!NextIs(source, "data")) {
    std::uint32_t size = 0;
    if (!ReadField(source, size)) return -1;
    source.MoveTo(source.Position() + size);
    ++skipped;
    if (source.Position() >= source.Size() || skipped > kMostChunksBeforeData) return -1;
  }
  return 0;
}

WaveResult ReadWave(ByteSource& source, const SampleStore& earlier) {
  source.MoveTo(0);
  if (!NextIs(source, "RIFF")) return Refused("Not a riff file");
  std::uint32_t size = 0;
  ReadField(source, size);
  if (!NextIs(source, "WAVE")) return Refused("Not a Wave file");
  if (!NextIs(source, "fmt ")) return Refused("Can't find FMT chunk");
  ReadField(source, size);
  // The format goes into a copy: it must never stand beside the samples of another sound.
  SampleStore sound = earlier;
  ReadField(source, sound.WaveFormat);
  if (kFormatPosition + size > std::numeric_limits<std::int32_t>::max()) {
    return Refused("The size of the fmt chunk leads out of the file");
  }
  source.MoveTo(kFormatPosition + size);
  if (FindDataChunk(source) != 0) return Refused(kNoData);
  return ReadDataChunk(source, std::move(sound));
}

WaveResult ReadWaveFile(const std::string& path, const SampleStore& earlier) {
  const OpenedFile file = OpenFileSource(path);
  if (!file.source) return Refused("Can't open wave file " + path + ": " + file.reason);
  return ReadWave(*file.source, earlier);
}

void ReduceToFirstChannel(SampleStore& sound) {
  const std::int32_t half = sound.WaveDataLength / 2;
  if (sound.WaveFormat.wBitsPerSample == 8) KeepEvenSamples(sound.Samples8, half);
  if (sound.WaveFormat.wBitsPerSample == 16) KeepEvenSamples(sound.Samples16, half);
  sound.WaveDataLength = half;
}

}  // namespace audio
