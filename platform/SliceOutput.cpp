#include "platform/SliceOutput.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <utility>

#include "platform/Application.h"

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;
using Lock = std::unique_lock<std::mutex>;

std::optional<AudioFormat> AudioFormatOf(const WaveFormatEx& format) {
  if (format.wFormatTag != 1 || format.nChannels < 1 || format.nChannels > 2) return std::nullopt;
  if (format.wBitsPerSample != 8 && format.wBitsPerSample != 16) return std::nullopt;
  return AudioFormat{static_cast<int>(format.nSamplesPerSec), format.nChannels,
                     format.wBitsPerSample == 16 ? SampleForm::Signed16 : SampleForm::Unsigned8};
}

std::chrono::milliseconds LengthOf(std::size_t bytes, const AudioFormat& format) {
  const auto bytes_per_second = std::int64_t{format.frames_per_second} * format.BytesPerFrame();
  return std::chrono::milliseconds(static_cast<std::int64_t>(bytes) * 1000 / bytes_per_second);
}

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

void Tell(const Client& client, std::uint32_t message) {
  if (client.callback) client.callback(client.handle, message, client.instance, 0, 0);
}

}  // namespace

/// What the output shares with its two threads: the keeper, which opens and closes the device and watches the
/// time, and the device's own. The keeper owns it too, as long as it runs.
class SliceOutput::Works {
 public:
  Works(AudioDeviceOpener open, Patience patience)
      : patience_(patience),
        device_(std::move(open), [this](std::span<std::uint8_t> buffer) { Fill(buffer); }) {}

  WaveCode Open(WaveHandle& handle, const AudioFormat& format, WaveCallback callback, std::uint32_t instance);
  WaveCode Prepare(WaveHandle handle, const WaveHeader& header);
  WaveCode Write(WaveHandle handle, const WaveHeader& header);
  WaveCode Unprepare(WaveHandle handle, const WaveHeader& header);
  WaveCode Close(WaveHandle handle);

  /// The keeper's thread.
  void Keep();
  /// Ends the keeper; returns when it has ended or can't be waited for any longer.
  void End();

 private:
  WaveCode CheckHandle(WaveHandle handle) const;
  bool TakeDevice(Lock& lock, const AudioFormat& format);
  void OpenWanted(Lock& lock);
  void PassDue(Lock& lock);
  template <typename Work>
  void WithoutLock(Lock& lock, const Work& work);
  void Fill(std::span<std::uint8_t> buffer);
  bool TakeBytes(std::span<std::uint8_t> buffer);
  void EndSlice(Lock& lock);
  void SetDue(std::optional<Clock::time_point> due);

  const Patience patience_;

  /// Opened and closed by the keeper, who says so in keeper_is_busy_; else anybody's who holds the mutex.
  KeptDevice device_;

  /// Guards all that follows. Never held while the device is called, which has a lock of its own.
  std::mutex mutex_;
  std::condition_variable changed_;
  bool ends_ = false, has_ended_ = false;
  /// The keeper is within a call that opens or closes the device.
  bool keeper_is_busy_ = false;
  /// Somebody's patience with that call has run out.
  bool keeper_is_given_up_ = false;
  /// The device that somebody is waiting for, and whether the last one could be had.
  std::optional<AudioFormat> wanted_;
  bool taken_ = false;
  /// With a slice: when its device counts as stalled. Without: when the unused device is closed.
  std::optional<Clock::time_point> due_;
  bool stalled_ = false;
  std::optional<Client> client_;
  std::optional<Slice> slice_;
  WaveHandle last_handle_ = 0;
};

WaveCode SliceOutput::Works::Open(WaveHandle& handle, const AudioFormat& format, WaveCallback callback,
                                  std::uint32_t instance) {
  Lock lock(mutex_);
  if (client_) return kWaveAllocated;
  if (!TakeDevice(lock, format)) return kWaveNoDriver;
  SetDue(std::nullopt);
  handle = ++last_handle_;
  client_ = Client{handle, callback, instance, nullptr};
  Tell(*client_, WOM_OPEN);
  return kWaveOk;
}

bool SliceOutput::Works::TakeDevice(Lock& lock, const AudioFormat& format) {
  if (keeper_is_given_up_) return false;
  if (!keeper_is_busy_ && device_.IsOpen() && device_.Format() == format) return true;
  wanted_ = format;
  changed_.notify_all();
  if (changed_.wait_for(lock, patience_.open, [this] { return !wanted_; })) return taken_;
  wanted_.reset();
  keeper_is_given_up_ = true;
  return false;
}

WaveCode SliceOutput::Works::CheckHandle(WaveHandle handle) const {
  return client_ && client_->handle == handle ? kWaveOk : kWaveInvalidHandle;
}

WaveCode SliceOutput::Works::Prepare(WaveHandle handle, const WaveHeader& header) {
  const Lock lock(mutex_);
  if (const WaveCode code = CheckHandle(handle)) return code;
  if (slice_) return kWaveStillPlaying;
  client_->prepared = &header;
  return kWaveOk;
}

WaveCode SliceOutput::Works::Write(WaveHandle handle, const WaveHeader& header) {
  {
    const Lock lock(mutex_);
    if (const WaveCode code = CheckHandle(handle)) return code;
    if (slice_) return kWaveStillPlaying;
    if (client_->prepared != &header || (!header.lpData && header.dwBufferLength)) return kWaveUnprepared;
    slice_ = Slice{{static_cast<const std::uint8_t*>(header.lpData), header.dwBufferLength},
                   device_->BuffersBehind()};
    SetDue(Clock::now() + LengthOf(header.dwBufferLength, device_.Format()) + patience_.stall);
  }
  // It stays open: the keeper closes no device that has a client.
  device_->Start();
  return kWaveOk;
}

WaveCode SliceOutput::Works::Unprepare(WaveHandle handle, const WaveHeader& header) {
  const Lock lock(mutex_);
  if (const WaveCode code = CheckHandle(handle)) return code;
  if (slice_) return kWaveStillPlaying;
  if (client_->prepared == &header) client_->prepared = nullptr;
  return kWaveOk;
}

WaveCode SliceOutput::Works::Close(WaveHandle handle) {
  const Lock lock(mutex_);
  if (const WaveCode code = CheckHandle(handle)) return code;
  if (slice_) return kWaveStillPlaying;
  const Client client = *client_;
  client_.reset();
  // A device that has stalled once would cost its patience again at each slice.
  const bool keep = !std::exchange(stalled_, false);
  SetDue(keep ? Clock::now() + patience_.linger : Clock::now());
  Tell(client, WOM_CLOSE);
  return kWaveOk;
}

// The device's thread.
void SliceOutput::Works::Fill(std::span<std::uint8_t> buffer) {
  Lock lock(mutex_);
  if (TakeBytes(buffer)) EndSlice(lock);
}

// Fills the buffer from the slice, and the rest of it with silence. True if the slice has been heard to its
// end.
bool SliceOutput::Works::TakeBytes(std::span<std::uint8_t> buffer) {
  const bool all_taken = slice_ && slice_->rest.empty();
  const std::size_t count = slice_ ? std::min(buffer.size(), slice_->rest.size()) : 0;
  if (count) {
    std::copy_n(slice_->rest.begin(), count, buffer.begin());
    slice_->rest = slice_->rest.subspan(count);
  }
  std::fill(buffer.begin() + static_cast<std::ptrdiff_t>(count), buffer.end(), device_.Format().SilentByte());
  return all_taken && slice_->buffers_to_end-- <= 0;
}

// The callback runs outside the lock: whoever waits for it goes on at once and may come back in.
void SliceOutput::Works::EndSlice(Lock& lock) {
  slice_.reset();
  const Client client = *client_;
  SetDue(std::nullopt);
  lock.unlock();
  Tell(client, WOM_DONE);
}

void SliceOutput::Works::SetDue(std::optional<Clock::time_point> due) {
  due_ = due;
  changed_.notify_all();
}

template <typename Work>
void SliceOutput::Works::WithoutLock(Lock& lock, const Work& work) {
  keeper_is_busy_ = true;
  lock.unlock();
  work();
  lock.lock();
  keeper_is_busy_ = keeper_is_given_up_ = false;
}

void SliceOutput::Works::Keep() {
  {
    Lock lock(mutex_);
    while (!ends_) {
      if (wanted_)
        OpenWanted(lock);
      else if (due_ && *due_ <= Clock::now())
        PassDue(lock);
      else if (due_)
        changed_.wait_until(lock, *due_);
      else
        changed_.wait(lock);
    }
    WithoutLock(lock, [this] { device_.Close(); });
  }
  LeaveAudioThread();
  const Lock lock(mutex_);
  has_ended_ = true;
  changed_.notify_all();
}

void SliceOutput::Works::OpenWanted(Lock& lock) {
  const AudioFormat format = *wanted_;
  bool taken = false;
  // What is due for the device before is not for this one.
  due_.reset();
  WithoutLock(lock, [&] { Guarded([&] { taken = device_.Take(format); }); });
  // Whoever wanted it may have left meanwhile.
  if (wanted_ != format) return SetDue(Clock::now() + patience_.linger);
  taken_ = taken;
  wanted_.reset();
  changed_.notify_all();
}

void SliceOutput::Works::PassDue(Lock& lock) {
  due_.reset();
  if (!slice_) return WithoutLock(lock, [this] { device_.Close(); });
  stalled_ = true;
  EndSlice(lock);
  lock.lock();
}

void SliceOutput::Works::End() {
  Lock lock(mutex_);
  ends_ = true;
  changed_.notify_all();
  changed_.wait_for(lock, patience_.open, [this] { return has_ended_; });
}

SliceOutput::SliceOutput(AudioDeviceOpener open, Patience patience)
    : works_(std::make_shared<Works>(std::move(open), patience)) {
  std::thread([works = works_] { works->Keep(); }).detach();
}

SliceOutput::~SliceOutput() { works_->End(); }

WaveCode SliceOutput::Open(WaveHandle& handle, const WaveFormatEx& format, WaveCallback callback,
                           std::uint32_t instance) {
  handle = 0;
  const auto audio_format = AudioFormatOf(format);
  return audio_format ? works_->Open(handle, *audio_format, callback, instance) : kWaveBadFormat;
}
WaveCode SliceOutput::Prepare(WaveHandle handle, const WaveHeader& header) {
  return works_->Prepare(handle, header);
}
WaveCode SliceOutput::Write(WaveHandle handle, const WaveHeader& header) {
  return works_->Write(handle, header);
}
WaveCode SliceOutput::Unprepare(WaveHandle handle, const WaveHeader& header) {
  return works_->Unprepare(handle, header);
}
WaveCode SliceOutput::Close(WaveHandle handle) { return works_->Close(handle); }

}  // namespace platform
