// Wave output: a sound file played by name, and slices of memory played in place.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

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

/// Both faces of the machine's sound. They may sound at the same time. Called from one thread.
class WaveOutput {
 public:
  virtual ~WaveOutput() = default;

  /// Starts a sound file and returns at once. A sound still playing from an earlier call ends. A file that is
  /// gone or that can't be read as sound is silence.
  virtual void PlaySoundFile(const std::string& path) = 0;
  /// Ends the sound that PlaySoundFile started.
  virtual void StopSound() = 0;

  /// Opens an output for slices; one at a time. The handle is 0 if there is no device or the format isn't
  /// taken.
  virtual WaveCode Open(WaveHandle& handle, const WaveFormatEx& format, WaveCallback callback,
                        std::uint32_t instance) = 0;
  virtual WaveCode PrepareHeader(WaveHandle handle, const WaveHeader& header) = 0;
  /// Starts a prepared slice. After kWaveOk, WOM_DONE comes once the slice has been heard to its end, or when
  /// a device that has stalled is given up; the bytes are not read after that. With any other result it never
  /// comes.
  virtual WaveCode Write(WaveHandle handle, const WaveHeader& header) = 0;
  virtual WaveCode UnprepareHeader(WaveHandle handle, const WaveHeader& header) = 0;
  /// Refused while a slice is playing.
  virtual WaveCode Close(WaveHandle handle) = 0;
};

/// The machine's own output, by the environment's audio driver.
std::unique_ptr<WaveOutput> MakeWaveOutput();

/// The output that the program uses: the machine's, unless another was set. The first touch of the machine's
/// output looks for a device in the background, so that the first sound doesn't wait for that.
WaveOutput& WaveOut();

/// In place of the machine's output; null brings that back. Not owned.
void SetWaveOut(WaveOutput* output);

}  // namespace platform
