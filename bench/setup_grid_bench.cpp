// Rebuilding a sheet: every row is walked, with the window visible, a sound named and the embedded stand-in
// answering.
#include <benchmark/benchmark.h>

#include "app/Form1.h"
#include "app/Program.h"
#include "audio/sample_store.h"
#include "platform/Application.h"
#include "sheet/Form3.h"

namespace {

constexpr int kFramesPerSecond = 25;
constexpr std::int32_t kSamplesPerSecond = 100;

/// A silent 8-bit sound that gives just `frames` frames.
void PutSound(std::int32_t frames) {
  auto& sound = audio::LoadedSound();
  const std::int32_t bytes = frames / kFramesPerSecond * kSamplesPerSecond;
  sound.WaveFormat = {1, 1, kSamplesPerSecond, kSamplesPerSecond, 1, 8};
  sound.WaveDataLength = bytes;
  sound.Samples8 = audio::SampleArray<std::uint8_t>::Zeroed(bytes);
  form1->CommonDialog1.FileName = "silence.wav";
  form3->Text7.SetText(std::to_string(kFramesPerSecond));
}

void Rebuild(benchmark::State& state) {
  const auto frames = static_cast<std::int32_t>(state.range(0));
  PutSound(frames);
  for (auto _ : state) form1->SetupGrid();
  if (form1->Grid1.Rows() != frames + 1) state.SkipWithError("the sheet has another length");
  state.SetItemsProcessed(state.iterations() * frames);
}
BENCHMARK(Rebuild)->Arg(3000)->Arg(30000)->Arg(300000)->Unit(benchmark::kMillisecond);

void OneMove(benchmark::State& state) {
  PutSound(300000);
  form1->SetupGrid();
  form1->Grid1.Refresh();
  form1->Picture4.Refresh();
  int row = 1;
  for (auto _ : state) {
    form1->Grid1.SetRow(row = row % 300000 + 1);
    form1->Grid1.Refresh();
  }
}
BENCHMARK(OneMove)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argument_count, char** arguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  benchmark::Initialize(&argument_count, arguments);
  return platform::RunApplication([] {
    app::Main();
    benchmark::RunSpecifiedBenchmarks();
    form1.Unload();
  });
}
