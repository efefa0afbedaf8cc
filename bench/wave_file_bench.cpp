// Opening a wave file that lies in the system's cache, up to the samples in their place.
#include <fcntl.h>
#include <sndfile.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "audio/wave_reader.h"
#include "bench/beside.h"

namespace {

constexpr std::size_t kDataBytes = 106'000'000;

std::string Little(std::size_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 255);
  return text;
}

/// A file of 16-bit samples that is gone again at the end.
class WaveFile {
 public:
  explicit WaveFile(std::size_t channels)
      : path_((std::filesystem::temp_directory_path() / "wave-file-bench.wav").string()) {
    std::string samples(kDataBytes, '\0');
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<char>(i * 7 + i / 1000);
    std::ofstream(path_, std::ios::binary)
        << "RIFF" << Little(36 + kDataBytes, 4) << "WAVEfmt " << Little(16, 4) << Little(1, 2)
        << Little(channels, 2) << Little(44'100, 4) << Little(88'200 * channels, 4) << Little(2 * channels, 2)
        << Little(16, 2) << "data" << Little(kDataBytes, 4) << samples;
  }
  WaveFile(const WaveFile&) = delete;
  WaveFile& operator=(const WaveFile&) = delete;
  ~WaveFile() { std::filesystem::remove(path_); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

double OpenByUs(const std::string& path) {
  return bench::Seconds([&] {
    const audio::WaveResult result = audio::ReadWaveFile(path, {});
    if (!result.sound) std::abort();
    benchmark::DoNotOptimize(result.sound->Samples16.Data());
  });
}

double OpenBySndfile(const std::string& path) {
  return bench::Seconds([&] {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    const auto count = static_cast<std::size_t>(info.frames * info.channels);
    const auto samples = std::make_unique_for_overwrite<short[]>(count);
    if (sf_readf_short(file, samples.get(), info.frames) != info.frames) std::abort();
    benchmark::DoNotOptimize(samples.get());
    sf_close(file);
  });
}

double ReadPlainly(const std::string& path) {
  return bench::Seconds([&] {
    const auto bytes = std::make_unique_for_overwrite<char[]>(kDataBytes);
    const int file = open(path.c_str(), O_RDONLY);
    if (read(file, bytes.get(), kDataBytes) != static_cast<ssize_t>(kDataBytes)) std::abort();
    benchmark::DoNotOptimize(bytes.get());
    close(file);
  });
}

void OpenStereo(benchmark::State& state) {
  const WaveFile file(2);
  bench::Beside(
      state, {"Open a wave file, stereo, 106 MB", "libsndfile", bench::AtMost(0.45)},
      [&] { return OpenByUs(file.Path()); }, [&] { return OpenBySndfile(file.Path()); });
}
BENCHMARK(OpenStereo)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void OpenMono(benchmark::State& state) {
  const WaveFile file(1);
  bench::Beside(
      state, {"Open a wave file, mono, 106 MB", "a plain read", bench::AtMost(0.8)},
      [&] { return OpenByUs(file.Path()); }, [&] { return ReadPlainly(file.Path()); });
}
BENCHMARK(OpenMono)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
