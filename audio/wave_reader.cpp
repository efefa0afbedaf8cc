#include "audio/wave_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace audio {
namespace {

static_assert(std::endian::native == std::endian::little,
              "Fields and samples are taken as the file holds them");

constexpr int kMostChunksBeforeData = 9;
constexpr std::int64_t kFormatPosition = 20;
constexpr const char* kNoData = "Can't find data chunk";

/// What is read at a time where samples are dropped: it stays in the processor's second cache from the
/// system's copy to ours.
constexpr std::size_t kPieceBytes = std::size_t{128} << 10;

WaveResult Refused(std::string reason) { return {std::nullopt, std::move(reason)}; }

/// What the file doesn't hold reads as zeros.
template <typename Field>
bool ReadField(platform::ByteSource& source, Field& field) {
  field = {};
  return source.Read(&field, sizeof field) == sizeof field;
}

bool IsStereo(const SampleStore& sound) { return sound.WaveFormat.nChannels == 2; }

bool NextIs(platform::ByteSource& source, std::string_view identifier) {
  std::array<char, 4> found;
  return ReadField(source, found) && std::string_view(found.data(), found.size()) == identifier;
}

/// A fresh array for what the source has from its position on, of which one sample in `step` is kept.
template <typename Sample>
SampleArray<Sample> FreshArray(const platform::ByteSource& source, std::int32_t last_index,
                               std::int64_t step) {
  const std::int64_t bytes_held = std::max<std::int64_t>(source.Size() - source.Position(), 0);
  const std::int64_t held = bytes_held / (static_cast<std::int64_t>(sizeof(Sample)) * step);
  return SampleArray<Sample>::Zeroed(last_index, std::min(held, std::int64_t{last_index} + 1));
}

/// How many samples so many bytes are. Half a sample at the end of the file keeps the half that is there.
template <typename Sample>
std::size_t SamplesIn(std::size_t bytes) {
  return (bytes + sizeof(Sample) - 1) / sizeof(Sample);
}

/// Samples 0 to last_index as the file has them. False if the memory can't be had.
template <typename Sample>
bool ReadSamples(platform::ByteSource& source, std::int32_t last_index, SampleArray<Sample>& samples) {
  auto fresh = FreshArray<Sample>(source, last_index, 1);
  if (!fresh.Allocated()) return false;
  const auto wanted_bytes = static_cast<std::size_t>(fresh.Count()) * sizeof(Sample);
  source.Read(fresh.Writable(), wanted_bytes);
  samples = std::move(fresh);
  return true;
}

/// The same samples, of which those at even places are kept: place 2 x i goes to index i.
template <typename Sample>
bool ReadFirstOfPairs(platform::ByteSource& source, std::int32_t last_index, SampleArray<Sample>& samples) {
  auto fresh = FreshArray<Sample>(source, last_index / 2, 2);
  if (!fresh.Allocated()) return false;
  std::array<Sample, kPieceBytes / sizeof(Sample)> piece;
  std::int64_t filled = 0;
  std::size_t left = (static_cast<std::size_t>(last_index) + 1) * sizeof(Sample);
  for (bool more = true; more && left > 0;) {
    const std::size_t wanted_bytes = std::min(left, kPieceBytes);
    const std::size_t read_bytes = source.Read(piece.data(), wanted_bytes);
    const std::size_t count = SamplesIn<Sample>(read_bytes);
    std::memset(reinterpret_cast<char*>(piece.data()) + read_bytes, 0, count * sizeof(Sample) - read_bytes);
    const std::size_t kept = (count + 1) / 2;
    Sample* to = fresh.Writable() + filled;
    for (std::size_t i = 0; i < kept; ++i) to[i] = piece[2 * i];
    filled += static_cast<std::int64_t>(kept);
    left -= wanted_bytes;
    more = read_bytes == wanted_bytes;
  }
  samples = std::move(fresh);
  return true;
}

/// The array of the sound's depth; at any other depth nothing is read.
bool ReadSamplesOfDepth(platform::ByteSource& source, SampleStore& sound) {
  const auto read = [&](auto& samples) {
    return IsStereo(sound) ? ReadFirstOfPairs(source, sound.WaveDataLength, samples)
                           : ReadSamples(source, sound.WaveDataLength, samples);
  };
  switch (sound.WaveFormat.wBitsPerSample) {
    case 8:
      return read(sound.Samples8);
    case 16:
      return read(sound.Samples16);
    default:
      return true;
  }
}

/// The data chunk's size and samples, from the position behind its identifier.
WaveResult ReadDataChunk(platform::ByteSource& source, SampleStore sound,
                         const std::function<void()>& before_reducing) {
  // A file that ends within the size is cut like one that ends before it.
  if (!ReadField(source, sound.WaveDataLength)) return Refused(kNoData);
  if (sound.WaveDataLength < 0) return Refused("The size of the data chunk is negative");
  if (IsStereo(sound) && before_reducing) before_reducing();
  if (!ReadSamplesOfDepth(source, sound)) {
    return Refused("Not enough memory for " + std::to_string(sound.WaveDataLength) + " bytes of sound");
  }
  if (IsStereo(sound)) sound.WaveDataLength /= 2;
  return {std::move(sound), {}};
}

WaveResult ReadChunks(platform::ByteSource& source, const SampleStore& earlier,
                      const std::function<void()>& before_reducing) {
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
  return ReadDataChunk(source, std::move(sound), before_reducing);
}

}  // namespace

std::int32_t FindDataChunk(platform::ByteSource& source) {
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

WaveResult ReadWave(platform::ByteSource& source, const SampleStore& earlier,
                    const std::function<void()>& before_reducing) {
  WaveResult result = ReadChunks(source, earlier, before_reducing);
  // To the reader, what a failing drive doesn't deliver is missing from the file.
  if (!source.Failure().empty()) return Refused("Can't read the samples: " + source.Failure());
  return result;
}

WaveResult ReadWaveFile(const std::string& path, const SampleStore& earlier,
                        const std::function<void()>& before_reducing) {
  const platform::OpenedFile file = platform::OpenFileSource(path);
  if (!file.source) return Refused("Can't open wave file " + path + ": " + file.reason);
  return ReadWave(*file.source, earlier, before_reducing);
}

}  // namespace audio
