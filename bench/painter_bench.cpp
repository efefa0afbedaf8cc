// What the frame painter's heavy work costs, each beside the plain work that it is measured against.
#include <benchmark/benchmark.h>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#define STB_PERLIN_IMPLEMENTATION
#include <stb/stb_perlin.h>
#pragma GCC diagnostic pop

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>

#include "host/HostSession.h"
#include "host/standin/EmbeddedHost.h"
#include "painter/DibRelated.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/strip_state.h"
#include "painter/wiggle.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"

namespace {

using namespace painter;

constexpr int kWidth = 1920, kHeight = 1080;
constexpr PlaneShape kFrame{kWidth, kHeight};

/// The thread's own time, which other work on the machine doesn't lengthen.
double ThreadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// The least time of a few runs.
double Seconds(int runs, const std::function<void()>& work) {
  double least = 1e9;
  for (int i = 0; i < runs; ++i) {
    const double start = ThreadSeconds();
    work();
    least = std::min(least, ThreadSeconds() - start);
  }
  return least;
}

/// Runs the benchmark's work and reports its least time against a baseline's.
void Against(benchmark::State& state, const char* name, double baseline, const std::function<void()>& work) {
  double least = 1e9;
  for (auto _ : state) least = std::min(least, Seconds(1, work));
  state.counters[name] = baseline >= least ? baseline / least : least / baseline;
}

StripPlanes Speckled(PlaneShape shape) {
  StripPlanes planes(shape);
  unsigned state = 1;
  for (auto* plane : {&planes.red, &planes.green, &planes.blue})
    for (auto& sample : *plane)
      sample = static_cast<std::uint8_t>((state = state * 1664525 + 1013904223) >> 24);
  return planes;
}

/// The wiggle's loop with somebody else's noise, twice a pixel.
void StbWiggle(int amount, int size, const StripPlanes& source, StripPlanes& target) {
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      const float across = static_cast<float>(x / 50.0 / size), down = static_cast<float>(y / 50.0 / size);
      const double move_x = amount * double{stb_perlin_noise3(across, down, 0.3f, 0, 0, 0)} + x;
      const double move_y = amount * double{stb_perlin_noise3(across, down, 0.7f, 0, 0, 0)} + y;
      const int from_x = std::clamp(static_cast<int>(std::nearbyint(move_x)), 0, kWidth - 1);
      const int from_y = std::clamp(static_cast<int>(std::nearbyint(move_y)), 0, kHeight - 1);
      const auto from = static_cast<std::size_t>(from_y * (kWidth + 1) + from_x);
      const auto to = static_cast<std::size_t>(y * (kWidth + 1) + x);
      target.red[to] = source.red[from];
      target.green[to] = source.green[from];
      target.blue[to] = source.blue[from];
    }
}

void WiggleAgainstStb(benchmark::State& state) {
  StripPlanes source = Speckled(kFrame), target(kFrame);
  const double stb = Seconds(5, [&] { StbWiggle(16, 4, source, target); });
  Against(state, "times_faster", stb, [&] {
    WiggleFrameAt(16, 4, {0.3f, 0.7f}, ReadOnly(source.View()), target.View());
  });
}
BENCHMARK(WiggleAgainstStb)->Unit(benchmark::kMillisecond);

void CopyOfThreePlanesAgainstStb(benchmark::State& state) {
  StripPlanes source = Speckled(kFrame), target(kFrame);
  const double stb = Seconds(5, [&] { StbWiggle(16, 4, source, target); });
  Against(state, "times_faster", stb, [&] {
    std::memcpy(target.red.data(), source.red.data(), kFrame.Samples());
    std::memcpy(target.green.data(), source.green.data(), kFrame.Samples());
    std::memcpy(target.blue.data(), source.blue.data(), kFrame.Samples());
  });
}
BENCHMARK(CopyOfThreePlanesAgainstStb)->Unit(benchmark::kMillisecond);

constexpr int kStripWidth = 1900, kStripHeight = 76;

class Canvas : public platform::Window {
 public:
  Canvas()
      : Window({.name = "Canvas", .caption = "", .client_width = 1900, .client_height = 76, .icons = {}}) {
    strip.Move(0, 0, kStripWidth, kStripHeight);
  }
  platform::PictureBox strip{*this, "strip"};
};

void BlitAgainstMemset(benchmark::State& state) {
  Canvas canvas;
  StripPlanes planes = Speckled({kStripWidth, kStripHeight});
  const platform::PixelView pixels = canvas.strip.Pixels();
  const double set = Seconds(200, [&] {
    std::memset(pixels.pixels, static_cast<int>(planes.red[5]), std::size_t{kStripWidth} * kStripHeight * 4);
    benchmark::ClobberMemory();
  });
  Against(state, "times_memset", set, [&] {
    BlitPlanes(canvas.strip, kStripWidth, kStripHeight, planes.red.data(), planes.green.data(),
               planes.blue.data());
  });
}
BENCHMARK(BlitAgainstMemset)->Unit(benchmark::kMicrosecond);

constexpr int kRetrievedFrames = 40;

/// An animation of that many written 1080p frames in the embedded stand-in.
void FillHost() {
  static bool filled = false;
  if (std::exchange(filled, true)) return;
  host::HostSession.Hold(host::MakeEmbeddedHost());
  StripPlanes planes = Speckled(kFrame);
  host::HostSession.Call("vel_CreateAnimAdv", std::int32_t{kRetrievedFrames}, std::int16_t{2});
  for (std::int32_t f = 0; f < kRetrievedFrames; ++f) {
    host::HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    host::HostSession.Call("vel_SetRbuffer", host::ByteTable{planes.red, nullptr});
    host::HostSession.Call("vel_SetGBuffer", host::ByteTable{planes.green, nullptr});
    host::HostSession.Call("vel_SetBBuffer", host::ByteTable{planes.blue, nullptr});
  }
}

/// The host's planes, for a copy without any host.
std::vector<host::ByteTable> HostPlanes() {
  std::vector<host::ByteTable> planes;
  for (std::int32_t f = 0; f < kRetrievedFrames; ++f) {
    host::HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    for (const char* member : {"vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer"})
      planes.push_back(std::get<host::ByteTable>(host::HostSession.Call(member)));
  }
  return planes;
}

void RetrievalAgainstMemcpy(benchmark::State& state) {
  FillHost();
  const auto planes = HostPlanes();
  const double copy = Seconds(5, [&] {
    const auto store = MakeCellStore(kFrame, kRetrievedFrames);
    std::uint8_t* to[3] = {store->CellR.get(), store->CellG.get(), store->CellB.get()};
    for (std::size_t i = 0; i < planes.size(); ++i)
      std::memcpy(to[i % 3] + i / 3 * kFrame.Samples(), planes[i].bytes.data(), kFrame.Samples());
  });
  Against(state, "times_memcpy", copy, [] { RetrieveFrames(); });
}
BENCHMARK(RetrievalAgainstMemcpy)->Unit(benchmark::kMillisecond);

FramePainter& OpenPainter() {
  FillHost();
  if (frame_painter.IfLoaded() == nullptr) {
    RetrieveFrames();
    StartRoll(TheRoll(), 200);
    frame_painter.Hold().Show();
    frame_painter->ResizeClient(kStripWidth + 36, frame_painter->ScaleHeight());
  }
  return *frame_painter;
}

void StampOneFrame(benchmark::State& state) {
  FramePainter& window = OpenPainter();
  if (TheStrips().RollStripWidth != kStripWidth) return state.SkipWithError("the strip has another width");
  float x = 0;
  for (auto _ : state) {
    window.Picture2_MouseDown(1, 0, x, 20);
    x = x < 1700 ? x + 135 : 0;
  }
}
BENCHMARK(StampOneFrame)->Unit(benchmark::kMicrosecond);

void ScrollCells(benchmark::State& state) {
  FramePainter& window = OpenPainter();
  int position = 0;
  for (auto _ : state) {
    window.HGlide1.SetPosition(position = (position + 1) % 30);
    window.HGlide1_Scroll();
  }
}
BENCHMARK(ScrollCells)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int count, char** arguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  benchmark::Initialize(&count, arguments);
  return platform::RunApplication([] {
    platform::AnswerMessagesWith([](const platform::Message&) { return platform::Answer::Yes; });
    benchmark::RunSpecifiedBenchmarks();
    frame_painter.Unload();
    std::_Exit(0);  // the stand-in's window would keep the application running
  });
}
