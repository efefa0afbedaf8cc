#include "platform/Capture.h"

#include <mutex>
#include <utility>

#include "platform/AudioLibrary.h"

namespace platform {
namespace {

// About a fortieth of a second at common rates: a meter moves smoothly, and little is lost at a stop.
constexpr Uint16 kBufferFrames = 1024;
constexpr int kOutput = 0, kInput = 1;

class SdlCapture : public CaptureDevice {
 public:
  explicit SdlCapture(TakeSamples take) : take_(std::move(take)) {}

  ~SdlCapture() override {
    const std::lock_guard lock(AudioLibraryMutex());
    if (id_) AudioLibrary().CloseAudioDevice(id_);
  }

  bool Open(const std::string& name, int samples_per_second) {
    SDL_AudioSpec wanted{};
    wanted.freq = samples_per_second;
    wanted.channels = 1;
    wanted.format = AUDIO_S16SYS;
    wanted.samples = kBufferFrames;
    wanted.callback = &SdlCapture::Callback;
    wanted.userdata = this;
    id_ = AudioLibrary().OpenAudioDevice(name.c_str(), kInput, &wanted, nullptr, 0);
    return id_ != 0;
  }

  void Start() override { AudioLibrary().PauseAudioDevice(id_, 0); }
  bool IsLost() const override { return AudioLibrary().GetAudioDeviceStatus(id_) == SDL_AUDIO_STOPPED; }

 private:
  static void SDLCALL Callback(void* self, Uint8* buffer, int bytes) {
    const auto& capture = *static_cast<SdlCapture*>(self);
    // For a device that has gone the library goes on to deliver silence.
    if (capture.IsLost()) return;
    capture.take_({reinterpret_cast<const std::int16_t*>(buffer),
                   static_cast<std::size_t>(bytes) / sizeof(std::int16_t)});
  }

  TakeSamples take_;
  SDL_AudioDeviceID id_ = 0;
};

}  // namespace

SoundDevices FindSoundDevices() {
  const std::lock_guard lock(AudioLibraryMutex());
  SoundDevices devices;
  if (!AudioLibraryReady()) return devices;
  const int inputs = AudioLibrary().GetNumAudioDevices(kInput);
  for (int i = 0; i < inputs; ++i)
    if (const char* name = AudioLibrary().GetAudioDeviceName(i, kInput)) devices.inputs.emplace_back(name);
  devices.has_output = AudioLibrary().GetNumAudioDevices(kOutput) != 0;
  return devices;
}

std::unique_ptr<CaptureDevice> OpenCaptureDevice(const std::string& name, int samples_per_second,
                                                 TakeSamples take) {
  // A device that wasn't opened ends after the lock, which its end takes too.
  auto device = std::make_unique<SdlCapture>(std::move(take));
  const std::lock_guard lock(AudioLibraryMutex());
  return AudioLibraryReady() && device->Open(name, samples_per_second) ? std::move(device) : nullptr;
}

}  // namespace platform
