#include "platform/WaveOut.h"

#include "platform/AudioDevice.h"
#include "platform/SliceOutput.h"
#include "platform/SoundPlayer.h"

namespace platform {
namespace {

class MachineOutput : public WaveOutput {
 public:
  void PlaySoundFile(const std::string& path) override { player_.Play(path); }
  void StopSound() override { player_.Stop(); }

  WaveCode Open(WaveHandle& handle, const WaveFormatEx& format, WaveCallback callback,
                std::uint32_t instance) override {
    return slices_.Open(handle, format, callback, instance);
  }
  WaveCode PrepareHeader(WaveHandle handle, const WaveHeader& header) override {
    return slices_.Prepare(handle, header);
  }
  WaveCode Write(WaveHandle handle, const WaveHeader& header) override {
    return slices_.Write(handle, header);
  }
  WaveCode UnprepareHeader(WaveHandle handle, const WaveHeader& header) override {
    return slices_.Unprepare(handle, header);
  }
  WaveCode Close(WaveHandle handle) override { return slices_.Close(handle); }

 private:
  SoundPlayer player_{OpenAudioDevice};
  SliceOutput slices_{OpenAudioDevice, SliceOutput::Patience()};
};

WaveOutput*& ReplacedOutput() {
  static WaveOutput* output = nullptr;
  return output;
}

}  // namespace

std::unique_ptr<WaveOutput> MakeWaveOutput() { return std::make_unique<MachineOutput>(); }

WaveOutput& WaveOut() {
  if (ReplacedOutput()) return *ReplacedOutput();
  // Never destroyed: its threads may hang in the sound server, and the end of the process waits for nothing
  // of the sound.
  static auto* const machine = new MachineOutput;
  return *machine;
}

void SetWaveOut(WaveOutput* output) { ReplacedOutput() = output; }

}  // namespace platform
