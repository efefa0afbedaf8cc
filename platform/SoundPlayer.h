// A sound file played from disk, on a thread of its own.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <thread>

#include "platform/AudioDevice.h"

namespace platform {

/// Plays one file at a time. It reads ahead by a fraction of a second only, so that the first sample leaves
/// as soon for a long file as for a short one.
class SoundPlayer {
 public:
  explicit SoundPlayer(AudioDeviceOpener open);
  SoundPlayer(const SoundPlayer&) = delete;
  SoundPlayer& operator=(const SoundPlayer&) = delete;
  ~SoundPlayer();

  /// Returns at once. What is still playing ends.
  void Play(std::string path);
  void Stop();

 private:
  void Order(std::string path);
  void Run(const std::stop_token& stop);
  void Stream(const std::string& path, const std::stop_token& stop);
  bool Append(std::span<const std::uint8_t> bytes, std::size_t most_before, const std::stop_token& stop);
  void Fill(std::span<std::uint8_t> buffer);

  /// The player's thread alone.
  KeptDevice device_;

  /// Guards all that follows.
  std::mutex mutex_;
  std::condition_variable_any changed_;
  /// The file to play next; an empty name for none.
  std::optional<std::string> order_;
  /// Read, but not yet asked for by the device.
  std::deque<std::uint8_t> ahead_;

  std::jthread thread_;
};

}  // namespace platform
