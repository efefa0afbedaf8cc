#include "platform/AudioDevice.h"

#include <algorithm>
#include <bit>
#include <mutex>
#include <string_view>

#include "platform/AudioLibrary.h"

namespace platform {
namespace {

// Short buffers, since a slice ends on a whole one.
constexpr int kMostBufferMilliseconds = 6;
constexpr int kMostFramesPerSecond = 1'000'000;

// A power of two: the library turns any other size into one behind the caller's back, at the cost of a
// further buffer.
int BufferFrames(int frames_per_second) {
  const auto most = static_cast<unsigned>(frames_per_second * kMostBufferMilliseconds / 1000);
  return static_cast<int>(std::max(std::bit_floor(most), 1U));
}

// Drivers that play nothing have no hardware queue: a buffer is over when the next is asked for. Elsewhere
// two periods lie in the hardware's or the sound server's queue.
int BuffersBehindDriver() {
  const char* name = AudioLibrary().GetCurrentAudioDriver();
  const std::string_view driver = name ? name : "";
  return driver == "dummy" || driver == "disk" ? 0 : 2;
}

class SdlDevice : public AudioDevice {
 public:
  explicit SdlDevice(FillBuffer fill) : fill_(std::move(fill)) {}

  ~SdlDevice() override {
    const std::lock_guard lock(AudioLibraryMutex());
    if (id_) AudioLibrary().CloseAudioDevice(id_);
  }

  bool Open(const AudioFormat& format) {
    SDL_AudioSpec wanted{};
    wanted.freq = format.frames_per_second;
    wanted.channels = static_cast<Uint8>(format.channels);
    wanted.format = format.form == SampleForm::Signed16 ? AUDIO_S16SYS : AUDIO_U8;
    wanted.samples = static_cast<Uint16>(BufferFrames(format.frames_per_second));
    wanted.callback = &SdlDevice::Callback;
    wanted.userdata = this;
    id_ = AudioLibrary().OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    buffers_behind_ = BuffersBehindDriver();
    return id_ != 0;
  }

  void Start() override { AudioLibrary().PauseAudioDevice(id_, 0); }
  int BuffersBehind() const override { return buffers_behind_; }

 private:
  static void SDLCALL Callback(void* self, Uint8* buffer, int bytes) {
    static_cast<SdlDevice*>(self)->fill_({buffer, static_cast<std::size_t>(bytes)});
  }

  FillBuffer fill_;
  SDL_AudioDeviceID id_ = 0;
  int buffers_behind_ = 0;
};

}  // namespace

std::unique_ptr<AudioDevice> OpenAudioDevice(const AudioFormat& format, FillBuffer fill) {
  if (format.frames_per_second < 1 || format.frames_per_second > kMostFramesPerSecond) return nullptr;
  // A device that wasn't opened ends after the lock, which its end takes too.
  auto device = std::make_unique<SdlDevice>(std::move(fill));
  const std::lock_guard lock(AudioLibraryMutex());
  return AudioLibraryReady() && device->Open(format) ? std::move(device) : nullptr;
}

bool KeptDevice::Take(const AudioFormat& format) {
  if (device_ && format_ == format) return true;
  device_.reset();
  format_ = format;
  device_ = open_(format, fill_);
  return device_ != nullptr;
}

bool FindAudioDriver() {
  const std::lock_guard lock(AudioLibraryMutex());
  return AudioLibraryReady();
}

void LeaveAudioThread() {
  if (const auto clean_up = AudioLibrary().TLSCleanup) clean_up();
}

}  // namespace platform
