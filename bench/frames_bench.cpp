// Retrieving and shooting frames with the embedded stand-in, beside copying the same planes into fresh
// memory.
#include <QApplication>
#include <QWidget>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "bench/beside.h"
#include "host/HostSession.h"
#include "host/standin/EmbeddedHost.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"

namespace {

using host::HostSession;

constexpr painter::PlaneShape kFrame{1920, 1080};
constexpr std::int32_t kFrames = 40;

void FillHost() {
  HostSession.Set(host::MakeEmbeddedHost());
  // It shows itself behind the tool's first paint, of which there is none here.
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == "StandIn") window->show();
  std::vector<std::uint8_t> plane(kFrame.Samples());
  for (std::size_t i = 0; i < plane.size(); ++i) plane[i] = static_cast<std::uint8_t>(i * 7 + i / 1000);
  HostSession.Call("vel_CreateAnimAdv", kFrames, std::int16_t{2});
  for (std::int32_t f = 0; f < kFrames; ++f) {
    HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    for (const char* setter : {"vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer"})
      HostSession.Call(setter, host::ByteTable{plane, nullptr});
  }
}

/// Three planes of every frame, each into memory of its own that was never touched before, as shooting needs
/// it.
double CopyPlaneByPlane(const painter::CellStore& cells) {
  return bench::Seconds([&] {
    std::vector<std::unique_ptr<std::uint8_t[]>> copies;
    for (std::int32_t f = 0; f < kFrames; ++f) {
      const painter::ConstPlanes planes = painter::CellPlanes(cells, f);
      for (const std::uint8_t* plane : {planes.red, planes.green, planes.blue}) {
        copies.emplace_back(new std::uint8_t[kFrame.Samples()]);
        std::memcpy(copies.back().get(), plane, kFrame.Samples());
      }
    }
    benchmark::DoNotOptimize(copies.data());
  });
}

/// The same into three arrays for all frames, as retrieving needs it.
double CopyIntoArrays(const painter::CellStore& cells) {
  return bench::Seconds([&] {
    for (const auto* from : {&cells.CellR, &cells.CellG, &cells.CellB}) {
      const std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[kFrame.Samples() * kFrames]);
      std::memcpy(copy.get(), from->get(), kFrame.Samples() * kFrames);
      benchmark::DoNotOptimize(copy.get());
    }
  });
}

void Retrieve(benchmark::State& state) {
  bench::Beside(
      state, {"Retrieve 40 frames, 1920 by 1080, embedded", "copying them", bench::AtMost(1.1)},
      [] { return bench::Seconds([] { painter::RetrieveFrames(); }); },
      [] { return CopyIntoArrays(painter::TheRetrieval().cells); });
}
BENCHMARK(Retrieve)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void Shoot(benchmark::State& state) {
  bench::Beside(
      state, {"Shoot 40 frames, 1920 by 1080, embedded", "copying them", bench::AtMost(1.1)},
      [] { return bench::Seconds([] { painter::frame_painter->vl_button2_Click(); }); },
      [] { return CopyPlaneByPlane(painter::TheRetrieval().cells); });
}
BENCHMARK(Shoot)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void Run() {
  platform::AnswerMessagesWith([](const platform::Message&) { return platform::Answer::Yes; });
  FillHost();
  painter::RetrieveFrames();
  painter::StartRoll(painter::TheRoll(), kFrames);
  for (std::size_t i = 0; i < kFrames; ++i) painter::TheRoll().entries[i] = static_cast<std::int16_t>(i);
  benchmark::RunSpecifiedBenchmarks();
  std::_Exit(0);  // the stand-in's window would keep the application running
}

}  // namespace

int main(int argument_count, char** arguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  benchmark::Initialize(&argument_count, arguments);
  return platform::RunApplication(Run);
}
