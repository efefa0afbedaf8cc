// Slices of memory played in place, one at a time.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

#include "platform/AudioDevice.h"
#include "platform/wave_codes.h"

namespace platform {

/// The slices' half of WaveOutput. Opening and closing is a matter of handles: the device behind them stays
/// open for a while after Close and is taken up again by the next Open of the same format.
///
/// A device is opened and closed on a thread of its own, which may hang in a sound server for good: nobody
/// waits for it longer than their patience, its object's end included.
class SliceOutput {
 public:
  struct Patience {
    /// How long the device stays open after Close.
    std::chrono::milliseconds linger = kDeviceLinger;
    /// A device that hasn't played a slice this long after the slice's time counts as stalled: the slice is
    /// given up.
    std::chrono::milliseconds stall{2000};
    /// A device that hasn't opened by then isn't waited for. As long as it hangs, nothing opens at all.
    std::chrono::milliseconds open{2000};
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
  class Works;
  const std::shared_ptr<Works> works_;
};

}  // namespace platform
