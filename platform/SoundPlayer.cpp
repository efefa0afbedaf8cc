#include "platform/SoundPlayer.h"

#include <sndfile.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/numbers.h"

namespace platform {
namespace {

constexpr std::chrono::hours kNoDevice{24};
constexpr int kBlocksPerSecond = 20;
constexpr std::size_t kBlocksAhead = 8;
constexpr int kMostChannels = 2;

// A sound file open for reading. Samples come as 16 bits whatever the file holds; of more than two channels
// the first two.
class SoundFile {
 public:
  explicit SoundFile(const std::string& path) {
    std::error_code error;
    // Opening a pipe would wait for its other end.
    if (!std::filesystem::is_regular_file(path, error)) return;
    file_ = sf_open(path.c_str(), SFM_READ, &info_);
  }
  SoundFile(const SoundFile&) = delete;
  SoundFile& operator=(const SoundFile&) = delete;
  ~SoundFile() {
    if (file_) sf_close(file_);
  }

  bool IsOpen() const { return file_ != nullptr; }
  AudioFormat Format() const {
    return {info_.samplerate, std::min(info_.channels, kMostChannels), SampleForm::Signed16};
  }

  // The next bytes, a twentieth of a second of them; empty at the end.
  std::span<const std::uint8_t> NextBlock() {
    const auto channels = static_cast<std::size_t>(info_.channels);
    const int frames_per_block = info_.samplerate / kBlocksPerSecond + 1;
    const auto frames = static_cast<std::size_t>(frames_per_block);
    // As floats, whose scale is the same for every form of file; the library's own way from floats to
    // integers looks through the whole file first.
    read_.resize(frames * channels);
    const sf_count_t count = sf_readf_float(file_, read_.data(), static_cast<sf_count_t>(frames));
    samples_.clear();
    for (std::size_t frame = 0; std::cmp_less(frame, count); ++frame)
      for (std::size_t channel = 0; channel < std::min<std::size_t>(channels, kMostChannels); ++channel)
        samples_.push_back(RoundToShort(read_[frame * channels + channel] * 32768.0));
    return {reinterpret_cast<const std::uint8_t*>(samples_.data()), samples_.size() * sizeof(std::int16_t)};
  }

 private:
  SF_INFO info_{};
  SNDFILE* file_ = nullptr;
  std::vector<float> read_;
  std::vector<std::int16_t> samples_;
};

}  // namespace

SoundPlayer::SoundPlayer(AudioDeviceOpener open)
    : device_(std::move(open), [this](std::span<std::uint8_t> buffer) { Fill(buffer); }),
      thread_([this](const std::stop_token& stop) { Run(stop); }) {}

SoundPlayer::~SoundPlayer() {
  thread_ = {};
  device_.Close();
}

void SoundPlayer::Play(std::string path) { Order(std::move(path)); }
void SoundPlayer::Stop() { Order({}); }

void SoundPlayer::Order(std::string path) {
  const std::lock_guard lock(mutex_);
  ahead_.clear();
  order_ = std::move(path);
  changed_.notify_all();
}

// The player's thread.
void SoundPlayer::Run(const std::stop_token& stop) {
  FindAudioDriver();
  while (!stop.stop_requested()) {
    std::unique_lock lock(mutex_);
    const std::chrono::milliseconds patience = device_.IsOpen() ? kDeviceLinger : kNoDevice;
    const bool ordered = changed_.wait_for(lock, stop, patience, [this] { return order_.has_value(); });
    const std::string path = std::exchange(order_, std::nullopt).value_or(std::string());
    lock.unlock();
    if (!ordered)
      device_.Close();
    else if (!path.empty())
      Stream(path, stop);
  }
  LeaveAudioThread();
}

void SoundPlayer::Stream(const std::string& path, const std::stop_token& stop) {
  SoundFile file(path);
  if (!file.IsOpen()) return;
  auto block = file.NextBlock();
  if (block.empty() || !device_.Take(file.Format())) return;
  // By the first block, which is a whole one: a short last one must not wait until all before it has gone.
  const std::size_t most_before = block.size() * (kBlocksAhead - 1);
  for (; !block.empty() && Append(block, most_before, stop); block = file.NextBlock()) device_->Start();
}

// Waits until no more than so many bytes lie before. False if something else has been ordered meanwhile.
bool SoundPlayer::Append(std::span<const std::uint8_t> bytes, std::size_t most_before,
                         const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, stop, [&] { return order_ || ahead_.size() <= most_before; });
  if (order_ || stop.stop_requested()) return false;
  ahead_.insert(ahead_.end(), bytes.begin(), bytes.end());
  return true;
}

// The device's thread.
void SoundPlayer::Fill(std::span<std::uint8_t> buffer) {
  const std::lock_guard lock(mutex_);
  const auto count = static_cast<std::ptrdiff_t>(std::min(buffer.size(), ahead_.size()));
  std::copy_n(ahead_.begin(), count, buffer.begin());
  ahead_.erase(ahead_.begin(), ahead_.begin() + count);
  std::fill(buffer.begin() + count, buffer.end(), device_.Format().SilentByte());
  changed_.notify_all();
}

}  // namespace platform
