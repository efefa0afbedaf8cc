// The machine's recording devices.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace platform {

struct SoundDevices {
  /// Names of the recording devices, as the sound server or the driver has them.
  std::vector<std::string> inputs;
  bool has_output = false;
};

/// Lists the devices that are there now; none on a machine without an audio driver. Safe from any thread.
/// Blocks until the sound server answers, for ever if that hangs.
SoundDevices FindSoundDevices();

/// Takes samples of one channel. Runs on the device's own thread and must not wait for anything.
using TakeSamples = std::function<void(std::span<const std::int16_t> samples)>;

/// An open recording device. Its end closes it and waits until its TakeSamples no longer runs.
class CaptureDevice {
 public:
  virtual ~CaptureDevice() = default;
  /// Begins to deliver samples. Further calls do nothing.
  virtual void Start() = 0;
  /// Whether the device has gone since it was opened. It then delivers nothing any more.
  virtual bool IsLost() const = 0;
};

/// Null if there is no device of that name, or it refuses.
using CaptureOpener = std::function<std::unique_ptr<CaptureDevice>(const std::string& name,
                                                                   int samples_per_second, TakeSamples take)>;

/// Opens a device by name, for one channel of 16-bit samples at that rate; what the device itself delivers is
/// converted. Safe from any thread. Blocks until the sound server answers.
std::unique_ptr<CaptureDevice> OpenCaptureDevice(const std::string& name, int samples_per_second,
                                                 TakeSamples take);

}  // namespace platform
