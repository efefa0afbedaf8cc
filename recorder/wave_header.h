// The head of a wave file of 16-bit samples in its plainest form: RIFF, WAVE, "fmt ", "data", and nothing
// between.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace recorder {

struct WaveForm {
  int frames_per_second = 0;
  int channels = 0;
  friend bool operator==(const WaveForm&, const WaveForm&) = default;
};

inline constexpr std::size_t kWaveHeaderBytes = 44;
using WaveHeader = std::array<std::uint8_t, kWaveHeaderBytes>;

/// The most bytes of samples in one file: the exposure sheet reads their count as a signed 32-bit number.
/// Even, so that no pad byte is ever needed.
inline constexpr std::uint64_t kMostDataBytes = 0x7FFFFFFE;

/// The 44 bytes in front of `data_bytes` bytes of 16-bit PCM samples (RIFF WAVE, format tag 1).
/// data_bytes: even, at most kMostDataBytes.
WaveHeader MakeWaveHeader(const WaveForm& form, std::uint64_t data_bytes);

/// The form that such a header tells, whatever it says of the length; nothing if it is no such header.
std::optional<WaveForm> ReadWaveHeader(std::span<const std::uint8_t> bytes);

}  // namespace recorder
