#include "recorder/Session.h"

#include <condition_variable>
#include <mutex>
#include <span>
#include <utility>

#include "platform/AudioDevice.h"
#include "recorder/side_thread.h"

namespace recorder {
namespace {

// How many samples may queue up while the window's thread is blocked, by a slow disk perhaps.
constexpr std::size_t kMostWaitingSamples = std::size_t{kForm.frames_per_second} * 60;

}  // namespace

/// What the window's thread and the device's side share.
struct Session::Line {
  enum class State { Opening, Refused, Open, Gone };

  std::mutex mutex;
  std::condition_variable changed;
  State state = State::Opening;
  bool ended = false;
  bool overrun = false;
  std::vector<std::int16_t> waiting;

  void Add(std::span<const std::int16_t> samples) {
    const std::lock_guard lock(mutex);
    overrun = overrun || waiting.size() + samples.size() > kMostWaitingSamples;
    if (!ended && !overrun) waiting.insert(waiting.end(), samples.begin(), samples.end());
  }
};

Session::Session(platform::CaptureOpener open, Clock clock)
    : open_(std::move(open)), clock_(std::move(clock)) {}

Session::~Session() { Stop(); }

void Session::Start(const std::string& device, std::unique_ptr<Take> take) {
  take_ = std::move(take);
  meter_ = Meter(kForm.frames_per_second);
  last_sign_ = clock_();
  line_ = std::make_shared<Line>();
  RunAside([line = line_, open = open_, device] {
    Run(line, open, device);
    platform::LeaveAudioThread();
  });
}

void Session::Run(const std::shared_ptr<Line>& line, const platform::CaptureOpener& open,
                  const std::string& device) {
  constexpr std::chrono::milliseconds kBetweenLooks{100};
  const auto capture = open(device, kForm.frames_per_second,
                            [line](std::span<const std::int16_t> samples) { line->Add(samples); });
  std::unique_lock lock(line->mutex);
  line->state = capture ? Line::State::Open : Line::State::Refused;
  if (!capture || line->ended) return;
  lock.unlock();
  capture->Start();
  lock.lock();
  while (!line->changed.wait_for(lock, kBetweenLooks, [&line] { return line->ended; })) {
    lock.unlock();
    const bool lost = capture->IsLost();
    lock.lock();
    if (lost) line->state = Line::State::Gone;
    if (lost) break;
  }
  // Closing waits for the device's own thread, which may be waiting for the mutex.
  lock.unlock();
}

std::optional<Ending> Session::Poll() {
  if (!line_) return std::nullopt;
  const auto why = WhyItEnds();
  if (why) Stop();
  return why;
}

std::optional<Ending> Session::WhyItEnds() {
  std::unique_lock lock(line_->mutex);
  const auto samples = std::exchange(line_->waiting, {});
  const auto state = line_->state;
  const bool overrun = line_->overrun;
  lock.unlock();

  const auto now = clock_();
  const bool opened_now = !hearing_ && state != Line::State::Opening;
  if (opened_now || !samples.empty()) last_sign_ = now;
  hearing_ = state == Line::State::Open;
  if (!WriteAway(samples)) return take_->IsFull() ? Ending::Full : Ending::WriteFailed;
  if (overrun) return Ending::Overrun;
  if (state == Line::State::Refused) return Ending::Refused;
  if (state == Line::State::Gone) return Ending::Gone;
  const auto quiet = now - last_sign_;
  if (state == Line::State::Opening && quiet > kOpeningPatience) return Ending::NoAnswer;
  if (state == Line::State::Open && quiet > kSamplesPatience) return Ending::Silent;
  return std::nullopt;
}

bool Session::WriteAway(const std::vector<std::int16_t>& samples) {
  meter_.Take(samples);
  return take_->Append(samples);
}

void Session::Stop() {
  if (!line_) return;
  std::unique_lock lock(line_->mutex);
  line_->ended = true;
  const auto samples = std::exchange(line_->waiting, {});
  line_->changed.notify_all();
  lock.unlock();
  WriteAway(samples);
  take_->Finish();
  line_.reset();
  hearing_ = false;
}

std::unique_ptr<Take> Session::TakeAway() { return std::move(take_); }

}  // namespace recorder
