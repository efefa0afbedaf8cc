// What a slice costs beyond its own length, and how soon a file's first sample leaves.
// Run with SDL_AUDIODRIVER=dummy: that driver keeps time and plays nothing.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <vector>

#include "platform/Clock.h"
#include "platform/SoundPlayer.h"
#include "platform/WaveOut.h"

namespace {

using Clock = std::chrono::steady_clock;

std::atomic<bool> slice_done{false};
void NoteDone(std::uint32_t, std::uint32_t message, std::uint32_t, std::uint32_t, std::uint32_t) {
  if (message == platform::WOM_DONE) slice_done = true;
}

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Opens, plays, waits and closes as the playing of one frame does. False without a device.
bool PlaySlice(platform::WaveOutput& output, const platform::WaveFormatEx& format,
               std::vector<std::uint8_t>& bytes) {
  const platform::WaveHeader header{bytes.data(), static_cast<std::uint32_t>(bytes.size())};
  platform::WaveHandle handle = 0;
  output.Open(handle, format, &NoteDone, 0);
  output.PrepareHeader(handle, header);
  slice_done = false;
  const bool written = output.Write(handle, header) == platform::kWaveOk;
  while (written && !slice_done) platform::Sleep(2);
  output.UnprepareHeader(handle, header);
  output.Close(handle);
  return written;
}

/// Counters: milliseconds beyond the slice's own length, mean and worst. Argument: samples per second, 16
/// bits; a slice is a frame at 24 frames per second.
void SliceBeyondItsLength(benchmark::State& state) {
  const auto rate = static_cast<std::uint32_t>(state.range(0));
  const auto output = platform::MakeWaveOutput();
  const platform::WaveFormatEx format{1, 1, rate, rate * 2, 2, 16, 0};
  std::vector<std::uint8_t> bytes(rate / 24 * 2);
  const double length = static_cast<double>(bytes.size()) / 2 * 1000 / rate;
  std::vector<double> beyond;
  for (auto _ : state) {
    const auto start = Clock::now();
    if (!PlaySlice(*output, format, bytes)) return state.SkipWithError("no device");
    beyond.push_back(MillisecondsSince(start) - length);
  }
  state.counters["mean_ms"] =
      std::accumulate(beyond.begin(), beyond.end(), 0.0) / static_cast<double>(beyond.size());
  state.counters["worst_ms"] = *std::max_element(beyond.begin(), beyond.end());
}
BENCHMARK(SliceBeyondItsLength)
    ->Arg(8000)
    ->Arg(16000)
    ->Arg(32000)
    ->Iterations(60)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// A wave file of 44100 pairs of 16 bits a second, without silence in its first megabyte.
std::string LongWave(std::uint32_t seconds) {
  const std::string path = (std::filesystem::temp_directory_path() / "wave-out-bench.wav").string();
  const std::uint32_t data_bytes = seconds * 44100 * 4;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  const auto put = [&file](std::uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) file.put(static_cast<char>(number >> (8 * i)));
  };
  file << "RIFF";
  put(36 + data_bytes, 4);
  file << "WAVEfmt ";
  for (const auto& [number, bytes] :
       {std::pair{16U, 4}, {1U, 2}, {2U, 2}, {44100U, 4}, {176400U, 4}, {4U, 2}, {16U, 2}})
    put(number, bytes);
  file << "data";
  put(data_bytes, 4);
  file << std::string(std::min(data_bytes, 1'000'000U), '\x11');
  file.close();
  std::filesystem::resize_file(path, 44 + std::uintmax_t{data_bytes});
  return path;
}

/// Notes when the first sound is handed to the device.
class FirstSound {
 public:
  platform::AudioDeviceOpener Opener() {
    return [this](const platform::AudioFormat& format, platform::FillBuffer fill) {
      return platform::OpenAudioDevice(format, [this, fill](std::span<std::uint8_t> buffer) {
        fill(buffer);
        if (std::find(buffer.begin(), buffer.end(), 0x11) != buffer.end() && !heard.exchange(true))
          at = Clock::now();
      });
    };
  }
  std::atomic<bool> heard{false};
  std::atomic<Clock::time_point> at;
};

/// Plays a file and tells the state how long its first sample took. Returns that in milliseconds.
double TimeFirstSample(benchmark::State& state, platform::SoundPlayer& player, const FirstSound& first,
                       const std::string& path) {
  const auto pressed = Clock::now();
  player.Play(path);
  while (!first.heard) platform::Sleep(1);
  const double took = std::chrono::duration<double>(first.at.load() - pressed).count();
  state.SetIterationTime(took);
  return took * 1000;
}

/// Time from the order to the first sample, the device closed before. Argument: the file's seconds.
void FirstSampleOfAFile(benchmark::State& state) {
  const std::string path = LongWave(static_cast<std::uint32_t>(state.range(0)));
  double worst = 0;
  for (auto _ : state) {
    FirstSound first;
    platform::SoundPlayer player(first.Opener());
    platform::Sleep(20);
    worst = std::max(worst, TimeFirstSample(state, player, first, path));
  }
  state.counters["worst_ms"] = worst;
  std::filesystem::remove(path);
}
BENCHMARK(FirstSampleOfAFile)
    ->Arg(1)
    ->Arg(60)
    ->Arg(3600)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// The same for a file that replaces another of the same form while that one plays.
void FirstSampleOfAReplacement(benchmark::State& state) {
  const std::string path = LongWave(3600);
  FirstSound first;
  platform::SoundPlayer player(first.Opener());
  double worst = 0;
  for (auto _ : state) {
    player.Play("");
    platform::Sleep(30);
    first.heard = false;
    worst = std::max(worst, TimeFirstSample(state, player, first, path));
  }
  state.counters["worst_ms"] = worst;
  std::filesystem::remove(path);
}
BENCHMARK(FirstSampleOfAReplacement)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argument_count, char** arguments) {
  setenv("SDL_AUDIODRIVER", "dummy", 0);
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
