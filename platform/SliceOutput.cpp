#include "platform/SliceOutput.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::chrono::hours kNoDue{24};

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

}  // namespace

SliceOutput::SliceOutput(AudioDeviceOpener open, Patience patience)
    : patience_(patience),
      device_(std::move(open), [this](std::span<std::uint8_t> buffer) { Fill(buffer); }),
      watcher_([this](const std::stop_token& stop) { Watch(stop); }) {}

SliceOutput::~SliceOutput() {
  watcher_ = {};
  device_.Close();
}

WaveCode SliceOutput::Open(WaveHandle& handle, const WaveFormatEx& format, WaveCallback callback,
                           std::uint32_t instance) {
  handle = 0;
  const auto audio_format = AudioFormatOf(format);
  if (!audio_format) return kWaveBadFormat;
  const std::lock_guard device_lock(device_mutex_);
  {
    const std::lock_guard lock(mutex_);
    if (client_) return kWaveAllocated;
  }
  if (!device_.Take(*audio_format)) return kWaveNoDriver;
  const std::lock_guard lock(mutex_);
  SetDue(std::nullopt);
  handle = ++last_handle_;
  client_ = Client{handle, callback, instance, nullptr};
  Tell(*client_, WOM_OPEN);
  return kWaveOk;
}

WaveCode SliceOutput::CheckHandle(WaveHandle handle) const {
  return client_ && client_->handle == handle ? kWaveOk : kWaveInvalidHandle;
}

WaveCode SliceOutput::Prepare(WaveHandle handle, const WaveHeader& header) {
  const std::lock_guard lock(mutex_);
  if (const WaveCode code = CheckHandle(handle)) return code;
  if (slice_) return kWaveStillPlaying;
  client_->prepared = &header;
  return kWaveOk;
}

WaveCode SliceOutput::Write(WaveHandle handle, const WaveHeader& header) {
  const std::lock_guard device_lock(device_mutex_);
  {
    const std::lock_guard lock(mutex_);
    if (const WaveCode code = CheckHandle(handle)) return code;
    if (slice_) return kWaveStillPlaying;
    if (client_->prepared != &header || (!header.lpData && header.dwBufferLength)) return kWaveUnprepared;
    slice_ = Slice{{static_cast<const std::uint8_t*>(header.lpData), header.dwBufferLength},
                   device_->BuffersBehind()};
    SetDue(Clock::now() + LengthOf(header.dwBufferLength, device_.Format()) + patience_.stall);
  }
  device_->Start();
  return kWaveOk;
}

WaveCode SliceOutput::Unprepare(WaveHandle handle, const WaveHeader& header) {
  const std::lock_guard lock(mutex_);
  if (const WaveCode code = CheckHandle(handle)) return code;
  if (slice_) return kWaveStillPlaying;
  if (client_->prepared == &header) client_->prepared = nullptr;
  return kWaveOk;
}

WaveCode SliceOutput::Close(WaveHandle handle) {
  const std::lock_guard lock(mutex_);
  if (const WaveCode code = CheckHandle(handle)) return code;
  if (slice_) return kWaveStillPlaying;
  const Client client = *client_;
  client_.reset();
  SetDue(Clock::now() + patience_.linger);
  Tell(client, WOM_CLOSE);
  return kWaveOk;
}

// The device's thread.
void SliceOutput::Fill(std::span<std::uint8_t> buffer) {
  std::unique_lock lock(mutex_);
  if (TakeBytes(buffer)) EndSlice(lock);
}

// Fills the buffer from the slice, and the rest of it with silence. True if the slice has been heard to its
// end.
bool SliceOutput::TakeBytes(std::span<std::uint8_t> buffer) {
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
void SliceOutput::EndSlice(std::unique_lock<std::mutex>& lock) {
  slice_.reset();
  const Client client = *client_;
  SetDue(std::nullopt);
  lock.unlock();
  Tell(client, WOM_DONE);
}

void SliceOutput::Tell(const Client& client, std::uint32_t message) {
  if (client.callback) client.callback(client.handle, message, client.instance, 0, 0);
}

void SliceOutput::SetDue(std::optional<Clock::time_point> due) {
  due_ = due;
  due_is_new_ = true;
  due_changed_.notify_all();
}

// The watcher's thread.
void SliceOutput::Watch(const std::stop_token& stop) {
  while (!stop.stop_requested()) {
    std::unique_lock lock(mutex_);
    const auto until = due_.value_or(Clock::now() + kNoDue);
    due_is_new_ = false;
    const bool woken = due_changed_.wait_until(lock, stop, until, [this] { return due_is_new_; });
    lock.unlock();
    if (!woken && !stop.stop_requested()) PassDue();
  }
  LeaveAudioThread();
}

void SliceOutput::PassDue() {
  const std::lock_guard device_lock(device_mutex_);
  std::unique_lock lock(mutex_);
  if (!due_ || *due_ > Clock::now()) return;
  due_.reset();
  if (slice_) return EndSlice(lock);
  lock.unlock();
  device_.Close();
}

}  // namespace platform
