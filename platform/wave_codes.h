// What passes between a program and its wave output: the samples' form, the bytes to play, result codes,
// messages.
#pragma once

#include <cstdint>

namespace platform {

/// The form of the samples of an output. Only PCM is taken: tag 1, one or two channels, 8 bits unsigned or 16
/// bits signed. nAvgBytesPerSec and nBlockAlign are not looked at, so they may contradict the rest.
struct WaveFormatEx {
  std::uint16_t wFormatTag = 0;
  std::uint16_t nChannels = 0;
  std::uint32_t nSamplesPerSec = 0;
  std::uint32_t nAvgBytesPerSec = 0;
  std::uint16_t nBlockAlign = 0;
  std::uint16_t wBitsPerSample = 0;
  std::uint16_t cbSize = 0;
};

/// The bytes to play, which stay where they are and must not change until they have been played.
struct WaveHeader {
  const void* lpData = nullptr;
  /// In bytes; may end within a sample.
  std::uint32_t dwBufferLength = 0;
};

/// 0 is no output.
using WaveHandle = std::uint32_t;

/// Result codes: 0 is success.
using WaveCode = std::uint32_t;
inline constexpr WaveCode kWaveOk = 0;
inline constexpr WaveCode kWaveAllocated = 4;
inline constexpr WaveCode kWaveInvalidHandle = 5;
inline constexpr WaveCode kWaveNoDriver = 6;
inline constexpr WaveCode kWaveBadFormat = 32;
inline constexpr WaveCode kWaveStillPlaying = 33;
inline constexpr WaveCode kWaveUnprepared = 34;

/// Messages to a WaveCallback.
inline constexpr std::uint32_t WOM_OPEN = 0x3BB;
inline constexpr std::uint32_t WOM_CLOSE = 0x3BC;
inline constexpr std::uint32_t WOM_DONE = 0x3BD;

/// Called with handle, message, the instance given to Open, and two numbers that are always 0. WOM_DONE comes
/// on a thread of the output's own, WOM_OPEN and WOM_CLOSE within the call.
using WaveCallback = void (*)(std::uint32_t handle, std::uint32_t message, std::uint32_t instance,
                              std::uint32_t parameter1, std::uint32_t parameter2);

}  // namespace platform
