// One output device of the machine, fed with samples by whoever opened it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <utility>

namespace platform {

enum class SampleForm { Unsigned8, Signed16 };

struct AudioFormat {
  int frames_per_second = 0;
  int channels = 0;
  SampleForm form = SampleForm::Signed16;

  int BytesPerFrame() const { return form == SampleForm::Signed16 ? 2 * channels : channels; }
  /// What a byte of silence is: 128 in unsigned samples, 0 in signed ones.
  std::uint8_t SilentByte() const { return form == SampleForm::Signed16 ? 0 : 128; }
  friend bool operator==(const AudioFormat&, const AudioFormat&) = default;
};

/// Fills a whole buffer. Runs on the device's own thread, time and again until the device is closed, and must
/// not wait for anything.
using FillBuffer = std::function<void(std::span<std::uint8_t> buffer)>;

/// An open device. Its end closes it and waits until its FillBuffer no longer runs.
class AudioDevice {
 public:
  virtual ~AudioDevice() = default;
  /// Begins to ask for buffers. Further calls do nothing.
  virtual void Start() = 0;
  /// How many buffers may lie between the one asked for now and the one that is being heard.
  virtual int BuffersBehind() const = 0;
};

/// Null if the machine has no device, or none that takes the format.
using AudioDeviceOpener =
    std::function<std::unique_ptr<AudioDevice>(const AudioFormat& format, FillBuffer fill)>;

/// Opens the machine's default device. Safe from any thread.
std::unique_ptr<AudioDevice> OpenAudioDevice(const AudioFormat& format, FillBuffer fill);

/// A device that stays open between sounds of one format.
class KeptDevice {
 public:
  KeptDevice(AudioDeviceOpener open, FillBuffer fill) : open_(std::move(open)), fill_(std::move(fill)) {}

  /// Opens a device of the format, in place of one of another. False if there is none.
  bool Take(const AudioFormat& format);
  void Close() { device_.reset(); }
  bool IsOpen() const { return device_ != nullptr; }
  /// Only while it is open.
  AudioDevice* operator->() const { return device_.get(); }
  /// The format last asked for. It doesn't change while the device is open, so the device's thread may ask.
  const AudioFormat& Format() const { return format_; }

 private:
  const AudioDeviceOpener open_;
  const FillBuffer fill_;
  AudioFormat format_;
  std::unique_ptr<AudioDevice> device_;
};

/// Looks for the machine's audio driver, which can take tens of milliseconds the first time. False if there
/// is none.
bool FindAudioDriver();

/// For a thread that has opened or closed devices or looked for a driver, at its end: gives back what the
/// library keeps for it, which otherwise nobody does.
void LeaveAudioThread();

/// How long an unused device is kept open. Opening and closing one takes several buffers' time, too long
/// between two slices of a drag.
inline constexpr std::chrono::milliseconds kDeviceLinger{2000};

}  // namespace platform
