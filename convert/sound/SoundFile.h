// A sound of any format that the sound library reads, mixed to one channel piece by piece.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "convert/message.h"

namespace convert {

class SoundFile {
 public:
  struct Opened;
  /// Opens a sound by name, "-" being the standard input; a pipe is first put aside on the disk.
  static Opened Open(const std::string& name);
  ~SoundFile();
  SoundFile(const SoundFile&) = delete;
  SoundFile& operator=(const SoundFile&) = delete;

  int Channels() const;
  std::int32_t SamplesPerSecond() const;
  /// The samples of each channel that the file says it has; none where it doesn't say.
  std::optional<std::int64_t> FramesTold() const;
  /// Whether the tool itself can open it: a wave file of 8 or 16 bits and one or two channels.
  bool IsPlainWave() const;
  /// Whether 16 bits of one channel hold every sample exactly.
  bool FitsSixteenBits() const;

  /// The whole sound from its start, in pieces of samples mixed to one channel: the mean of the channels, so
  /// that no mix is louder than its loudest channel. What is no number counts as silence. The taker returns
  /// false to stop.
  void Play(const std::function<bool(std::span<const double>)>& take);

  /// What one run through the sound shows.
  struct Scan {
    std::int64_t frames = 0;
    double peak = 0;
  };
  Scan ScanAll();

 private:
  struct State;
  explicit SoundFile(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

struct SoundFile::Opened {
  std::unique_ptr<SoundFile> sound;
  std::string reason;
};

/// Writes the sound as a wave file of 16 bits and one channel, for the tool. Result: a failure, or none; the
/// notes tell what has changed in the sound.
Message WriteWave(SoundFile& sound, const std::string& output, Messages& notes);

}  // namespace convert
