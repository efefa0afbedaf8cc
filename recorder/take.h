// What has been recorded, in a file of its own until it is saved or thrown away.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "recorder/wave_header.h"

namespace recorder {

/// One recording, kept on disk as a wave file from the first sample on: neither its length nor a crash costs
/// more than what the device hadn't delivered yet. A take that is destroyed takes its file with it; one whose
/// process ends without that leaves it for TakeLeftBehind.
///
/// Failures are told as the system's reason, without the file's name.
class Take {
 public:
  ~Take();
  Take(const Take&) = delete;
  Take& operator=(const Take&) = delete;

  /// Begins a take in the folder, which is made if it is missing. Null, and the reason, if that can't be.
  static std::unique_ptr<Take> Begin(const std::string& folder, const WaveForm& form, std::string& failure);

  /// A take with at least one sample that no running process owns, or null. Each one is given once.
  static std::unique_ptr<Take> LeftBehind(const std::string& folder);

  /// Adds samples, channels in turn. False if not all could be written; `Failure` then tells why, and what
  /// was written before stands. A full file takes nothing more.
  bool Append(std::span<const std::int16_t> samples);
  const std::string& Failure() const { return failure_; }
  bool IsFull() const { return data_bytes_ >= kMostDataBytes; }

  /// Makes the file one that a player can open. More may be appended afterwards.
  bool Finish();

  /// Writes the take to a file of the user's, safely. Result: the reason if that failed, or an empty text.
  std::string SaveAs(const std::string& path);

  const std::string& Path() const { return path_; }
  const WaveForm& Form() const { return form_; }
  std::uint64_t DataBytes() const { return data_bytes_; }
  double Seconds() const;

 private:
  Take(std::string path, int file, const WaveForm& form, std::uint64_t data_bytes);
  static std::unique_ptr<Take> Open(const std::string& path);
  bool WriteAt(std::span<const std::uint8_t> bytes, std::uint64_t at);
  bool Failed();

  std::string path_;
  int file_;
  WaveForm form_;
  std::uint64_t data_bytes_;
  std::string failure_;
};

}  // namespace recorder
