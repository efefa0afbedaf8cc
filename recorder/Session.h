// One recording session: the device on a thread of its own, what it delivers on its way into a take.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Capture.h"
#include "recorder/level.h"
#include "recorder/take.h"
#include "recorder/wave_header.h"

namespace recorder {

/// Good for any take: the exposure sheet uses one channel only, and a voice has nothing above this rate's
/// reach.
inline constexpr WaveForm kForm{44100, 1};

enum class Ending {
  Asked,        // by Stop
  Refused,      // the device couldn't be opened
  NoAnswer,     // it wasn't open after kOpeningPatience
  Gone,         // it was taken away
  Silent,       // it delivered nothing for kSamplesPatience
  Overrun,      // samples came in faster than they could be written, and the first of them was lost
  WriteFailed,  // the take's file takes nothing more: TakeFailure tells why
  Full,         // the take has the greatest length that a file can have
};

/// The device's side runs on a thread that nobody waits for: if the sound server hangs, that thread is lost,
/// but the window goes on answering. Everything else runs on the window's thread.
class Session {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;
  static constexpr std::chrono::seconds kOpeningPatience{5};
  static constexpr std::chrono::seconds kSamplesPatience{2};

  Session(platform::CaptureOpener open, Clock clock);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Begins to open the device; recording begins when it is open. Not while one is running.
  void Start(const std::string& device, std::unique_ptr<Take> take);
  /// Writes the samples that have come in so far to the take and checks the device. To be called several
  /// times a second while running. Result: how it ended, when that happens.
  std::optional<Ending> Poll();
  /// Ends the recording; what has come in is in the take.
  void Stop();

  bool IsRunning() const { return line_ != nullptr; }
  bool IsHearing() const { return hearing_; }
  const Meter& Level() const { return meter_; }
  /// While running, or the last one until it is taken away. Null before the first.
  const Take* Current() const { return take_.get(); }
  std::unique_ptr<Take> TakeAway();

 private:
  struct Line;
  static void Run(const std::shared_ptr<Line>& line, const platform::CaptureOpener& open,
                  const std::string& device);
  std::optional<Ending> WhyItEnds();
  bool WriteAway(const std::vector<std::int16_t>& samples);

  platform::CaptureOpener open_;
  Clock clock_;
  Meter meter_{kForm.frames_per_second};
  std::unique_ptr<Take> take_;
  std::shared_ptr<Line> line_;
  bool hearing_ = false;
  std::chrono::steady_clock::time_point last_sign_;
};

}  // namespace recorder
