// The one loaded sound: its format, its length, its samples.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace audio {

/// The first 16 bytes of a wave file's "fmt " body, byte for byte (RIFF/WAVE, little-endian).
struct WaveFormatBlock {
  std::int16_t wFormatTag = 0;
  std::int16_t nChannels = 0;
  std::int32_t nSamplesPerSec = 0;
  std::int32_t nAvgBytesPerSec = 0;
  std::int16_t nBlockAlign = 0;
  std::int16_t wBitsPerSample = 0;
};
static_assert(sizeof(WaveFormatBlock) == 16);

/// Memory that reads as zero and costs nothing until it is written; null if the machine refuses it. The first
/// `soon_filled` bytes are about to be written: for these, as far as they fill large pages whole, large pages
/// are asked for, which come with far fewer interruptions.
std::shared_ptr<void> ZeroedMemory(std::size_t bytes, std::size_t soon_filled = 0);

/// Samples with indices 0 to LastIndex(), bounds inclusive. Copies share the samples, so that a drawing may
/// keep the sound that it started with while the next one is loaded.
template <typename Sample>
class SampleArray {
 public:
  SampleArray() = default;

  /// All samples 0. Leaves an unallocated array if the memory can't be had. last_index is 0 or above.
  /// `soon_filled` is how many samples, from index 0 on, are about to be written, as far as that is known.
  static SampleArray Zeroed(std::int32_t last_index, std::int64_t soon_filled = 0) {
    SampleArray array;
    const auto count = static_cast<std::size_t>(last_index) + 1;
    array.samples_ = std::static_pointer_cast<Sample>(
        ZeroedMemory(count * sizeof(Sample), static_cast<std::size_t>(soon_filled) * sizeof(Sample)));
    if (array.samples_) array.last_index_ = last_index;
    return array;
  }

  bool Allocated() const { return samples_ != nullptr; }
  /// -1 while unallocated.
  std::int32_t LastIndex() const { return last_index_; }
  std::int64_t Count() const { return std::int64_t{last_index_} + 1; }

  /// The sample at an index; 0 outside the bounds, which views reach at their right-hand edge.
  Sample At(std::int64_t index) const {
    return index >= 0 && index <= last_index_ ? samples_.get()[index] : Sample{0};
  }

  /// Count() samples in a row; null while unallocated.
  const Sample* Data() const { return samples_.get(); }

  /// For whoever fills a fresh array, before it is shared.
  Sample* Writable() { return samples_.get(); }

 private:
  std::shared_ptr<Sample> samples_;
  std::int32_t last_index_ = -1;
};

/// The sound as a wave file gave it. Zero and empty until the first load; a load that fails changes nothing.
struct SampleStore {
  WaveFormatBlock WaveFormat;
  /// Bytes of sample data as the file declares them; half of that, rounded down, after a two-channel load.
  /// 0 means that no sound has been loaded.
  std::int32_t WaveDataLength = 0;
  /// 8-bit samples, unsigned, silence 128. Indices 0 to WaveDataLength. The sound if wBitsPerSample is 8.
  SampleArray<std::uint8_t> Samples8;
  /// 16-bit samples, signed, silence 0. Indexed by sample, but its bound is the byte count: indices 0 to
  /// WaveDataLength, of which the lower half is the sound if wBitsPerSample is 16.
  SampleArray<std::int16_t> Samples16;
};

/// The process's one sound.
SampleStore& LoadedSound();

/// The seconds of the sound. No value, which counts as 0, without a sound, at a depth other than 8 or 16 bits
/// and at a sample rate that isn't above 0.
std::optional<double> SecondsOfSound(const SampleStore& sound);

/// What to tell the user of a sound at whose depth nothing can be shown; empty for any other.
std::string DepthNotice(const SampleStore& sound);

}  // namespace audio
