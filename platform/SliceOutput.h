// Slices of memory played in place, one at a time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <span>
#include <thread>

#include "platform/AudioDevice.h"
#include "platform/wave_codes.h"

namespace platform {

/// The slices' half of WaveOutput. Opening and closing is a matter of handles: the device behind them stays
/// open for a while after Close and is taken up again by the next Open of the same format.
class SliceOutput {
 public:
  struct Patience {
    /// How long the device stays open after Close.
    std::chrono::milliseconds linger = kDeviceLinger;
    /// A device that hasn't played a slice this long after the slice's time counts as stalled: the slice is
    /// given up.
    std::chrono::milliseconds stall{2000};
  };

  SliceOutput(AudioDeviceOpener open, Patience patience);
  SliceOutput(const SliceOutput&) = delete;
  SliceOutput& operator=(const SliceOutput&) = delete;
  ~SliceOutput();

  WaveCode Open(WaveHandle& handle, const WaveFormatEx& format, WaveCallback callback,
                std::uint32_t instance);
  WaveCode Prepare(WaveHandle handle, const WaveHeader& header);
  WaveCode Write(WaveHandle handle, const WaveHeader& header);
  WaveCode Unprepare(WaveHandle handle, const WaveHeader& header);
  WaveCode Close(WaveHandle handle);

 private:
  using Clock = std::chrono::steady_clock;

  struct Slice {
    std::span<const std::uint8_t> rest;
    /// Buffers still to be asked for, after the slice's last, until that one has been heard.
    int buffers_to_end = 0;
  };
  struct Client {
    WaveHandle handle = 0;
    WaveCallback callback = nullptr;
    std::uint32_t instance = 0;
    const WaveHeader* prepared = nullptr;
  };

  WaveCode CheckHandle(WaveHandle handle) const;
  void Fill(std::span<std::uint8_t> buffer);
  bool TakeBytes(std::span<std::uint8_t> buffer);
  void SetDue(std::optional<Clock::time_point> due);
  void Watch(const std::stop_token& stop);
  void PassDue();
  void EndSlice(std::unique_lock<std::mutex>& lock);
  static void Tell(const Client& client, std::uint32_t message);

  const Patience patience_;

  /// Held while the device is opened or closed; taken before mutex_, never within it.
  std::mutex device_mutex_;
  KeptDevice device_;

  /// Guards all that follows.
  std::mutex mutex_;
  std::condition_variable_any due_changed_;
  bool due_is_new_ = false;
  /// With a slice: when its device counts as stalled. Without: when the unused device is closed.
  std::optional<Clock::time_point> due_;
  std::optional<Client> client_;
  std::optional<Slice> slice_;
  WaveHandle last_handle_ = 0;

  std::jthread watcher_;
};

}  // namespace platform
