#include "platform/Clock.h"

#include <chrono>
#include <ctime>
#include <thread>
#include <utility>

namespace platform {
namespace {

std::function<double()>& ScriptedClock() {
  static std::function<double()> clock;
  return clock;
}

double WallClock() {
  using std::chrono::system_clock;
  const auto now = system_clock::now();
  const auto whole_second = std::chrono::floor<std::chrono::seconds>(now);
  const std::time_t seconds = system_clock::to_time_t(whole_second);
  std::tm local{};
  localtime_r(&seconds, &local);
  const std::chrono::duration<double> fraction = now - whole_second;
  return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + fraction.count();
}

}  // namespace

double SecondsSinceMidnight() { return ScriptedClock() ? ScriptedClock()() : WallClock(); }

void ReadClockFrom(std::function<double()> clock) { ScriptedClock() = std::move(clock); }

void Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

}  // namespace platform
