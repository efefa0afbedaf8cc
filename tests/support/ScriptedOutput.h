// A sound output for tests, without a device.
#pragma once

#include <csignal>
#include <string>
#include <vector>

#include "audio/sample_store.h"
#include "platform/WaveOut.h"

namespace support {

/// Writes down what is asked of it and plays a slice in no time.
struct ScriptedOutput : platform::WaveOutput {
  using Code = platform::WaveCode;
  using Handle = platform::WaveHandle;
  using Header = platform::WaveHeader;

  explicit ScriptedOutput(std::vector<std::string>& told) : log(told) { platform::SetWaveOut(this); }
  ~ScriptedOutput() override { platform::SetWaveOut(nullptr); }

  void PlaySoundFile(const std::string& path) override { log.push_back("play " + path); }
  void StopSound() override { log.push_back("stop"); }
  Code Open(Handle& handle, const platform::WaveFormatEx& asked, platform::WaveCallback to_call,
            std::uint32_t) override {
    format = asked;
    callback = to_call;
    handle = has_device ? 7 : 0;
    return has_device ? platform::kWaveOk : platform::kWaveNoDriver;
  }
  Code PrepareHeader(Handle, const Header&) override { return prepared = true, 0; }
  Code Write(Handle handle, const Header& header) override {
    if (handle == 0 || !prepared) return platform::kWaveInvalidHandle;
    const auto& sound = audio::LoadedSound();
    const void* start = sound.WaveFormat.wBitsPerSample == 8 ? static_cast<const void*>(sound.Samples8.Data())
                                                             : sound.Samples16.Data();
    const auto* const bytes = static_cast<const char*>(header.lpData);
    const auto offset = bytes - static_cast<const char*>(start);
    // Every byte of the slice must be there.
    const std::string played(bytes, header.dwBufferLength);
    log.push_back("slice " + std::to_string(offset) + "+" + std::to_string(played.size()));
    if (signal_instead) return std::raise(signal_instead), platform::kWaveOk;
    callback(handle, platform::WOM_DONE, 0, 0, 0);
    return platform::kWaveOk;
  }
  Code UnprepareHeader(Handle, const Header&) override { return prepared = false, 0; }
  Code Close(Handle handle) override {
    log.push_back((prepared ? "too early: close " : "close ") + std::to_string(handle));
    return 0;
  }

  std::vector<std::string>& log;
  bool has_device = true, prepared = false;
  /// Sent while the slice is under way, which then never ends.
  int signal_instead = 0;
  platform::WaveFormatEx format;
  platform::WaveCallback callback = nullptr;
};

}  // namespace support
