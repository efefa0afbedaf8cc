// What the frame painter's heavy work costs, each beside the plain work that it is measured against.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "host/HostSession.h"
#include "host/standin/EmbeddedHost.h"
#include "painter/DibRelated.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/strip_state.h"
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
  host::HostSession.Set(host::MakeEmbeddedHost());
  StripPlanes planes = Speckled(kFrame);
  host::HostSession.Call("vel_CreateAnimAdv", std::int32_t{kRetrievedFrames}, std::int16_t{2});
  for (std::int32_t f = 0; f < kRetrievedFrames; ++f) {
    host::HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    host::HostSession.Call("vel_SetRbuffer", host::ByteTable{planes.red, nullptr});
    host::HostSession.Call("vel_SetGBuffer", host::ByteTable{planes.green, nullptr});
    host::HostSession.Call("vel_SetBBuffer", host::ByteTable{planes.blue, nullptr});
  }
}

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
