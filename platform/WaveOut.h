// Wave output: a sound file played by name, and slices of memory played in place.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/wave_codes.h"

namespace platform {

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
