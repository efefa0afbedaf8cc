// The wiggle at 1920 by 1080 beside the same loop over somebody else's noise, its shares, and its cores.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#define STB_PERLIN_IMPLEMENTATION
#include <stb/stb_perlin.h>
#pragma GCC diagnostic pop

#include <array>
#include <cmath>
#include <thread>

#include "bench/beside.h"
#include "painter/wiggle.h"
#include "painter/wiggle_kernel.h"

namespace {

using namespace painter;

constexpr int kWidth = 1920, kHeight = 1080;
constexpr PlaneShape kFrame{kWidth, kHeight};
constexpr int kRollLength = 12;
constexpr int kAmount = 16, kSize = 4;
constexpr Slices kSlices{0.3f, 0.7f};

struct Picture {
  std::vector<std::uint8_t> red = std::vector<std::uint8_t>(kFrame.Samples()), green = red, blue = red;
  Planes View() { return {kFrame, red.data(), green.data(), blue.data()}; }
};

Picture Speckled() {
  Picture picture;
  unsigned state = 1;
  for (auto* plane : {&picture.red, &picture.green, &picture.blue})
    for (auto& sample : *plane)
      sample = static_cast<std::uint8_t>((state = state * 1664525 + 1013904223) >> 24);
  return picture;
}

Picture source = Speckled(), target, their_target;

double Ours(const WiggleWork& work) {
  return bench::Seconds(
      [&] { WiggleFrameAt(kAmount, kSize, kSlices, ReadOnly(source.View()), target.View(), work); });
}

double Stb() {
  return bench::Seconds([] {
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        const float across = static_cast<float>(x / 50.0 / kSize),
                    down = static_cast<float>(y / 50.0 / kSize);
        const double move_x = kAmount * double{stb_perlin_noise3(across, down, 0.3f, 0, 0, 0)} + x;
        const double move_y = kAmount * double{stb_perlin_noise3(across, down, 0.7f, 0, 0, 0)} + y;
        const int from_x = std::clamp(static_cast<int>(std::nearbyint(move_x)), 0, kWidth - 1);
        const int from_y = std::clamp(static_cast<int>(std::nearbyint(move_y)), 0, kHeight - 1);
        const auto from = static_cast<std::size_t>(from_y * (kWidth + 1) + from_x);
        const auto to = static_cast<std::size_t>(y * (kWidth + 1) + x);
        their_target.red[to] = source.red[from];
        their_target.green[to] = source.green[from];
        their_target.blue[to] = source.blue[from];
      }
  });
}

struct Family {
  const char* name;
  double goal;
};
constexpr std::array<Family, 3> kFamilies = {{{"SSE2", 16}, {"AVX2", 26}, {"AVX-512", 32}}};

void OneCore(benchmark::State& state) {
  const WiggleKernel* kernels[3];
  const auto family = static_cast<std::size_t>(state.range(0));
  if (family >= KernelsThatRun(kernels, 3)) return state.SkipWithError("this processor has no such steps");
  bench::Beside(
      state,
      {"Wiggle, 1920 by 1080, one core, " + std::string(kFamilies[family].name), "the loop over stb_perlin",
       bench::TimesFaster(kFamilies[family].goal)},
      [&] {
        return Ours({kernels[family], 1});
      },
      Stb);
}
BENCHMARK(OneCore)->DenseRange(0, 2)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

/// As many frames one after the other as a short roll has. A single one would be measured with cores that
/// were still asleep.
double RollOf(const WiggleWork& work) {
  double seconds = 0;
  for (int frame = 0; frame < kRollLength; ++frame) seconds += Ours(work);
  return seconds;
}

void AllCores(benchmark::State& state) {
  bench::Beside(
      state,
      {"Wiggle, 12 frames, all " + std::to_string(std::thread::hardware_concurrency()) + " cores", "one core",
       bench::TimesFaster(1.7), 41},
      [] { return RollOf({}); },
      [] {
        return RollOf({nullptr, 1});
      });
}
BENCHMARK(AllCores)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

/// What remains of the whole time is spent on fetching the pixels.
void DisplacementAlone(benchmark::State& state) {
  bench::Beside(
      state, {"Wiggle, displacement alone", "displacement and gathering", {}, 41},
      [] {
        return Ours({nullptr, 1, true});
      },
      [] {
        return Ours({nullptr, 1});
      });
}
BENCHMARK(DisplacementAlone)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
