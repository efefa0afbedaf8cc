// A row advance on a dense screen beside one on a plain screen. The scale is fixed before a program's first
// window, so that each is a process of its own, which tells its time.
#include <cstdio>
#include <cstdlib>

#include "app/Form1.h"
#include "app/Program.h"
#include "audio/sample_store.h"
#include "bench/beside.h"
#include "platform/Application.h"
#include "sheet/Form3.h"

namespace {

constexpr std::int32_t kSamples = 22050 * 125;

/// A 16-bit tone that swells and fades.
void PutSound() {
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {1, 1, 22050, 44100, 2, 16};
  sound.WaveDataLength = 2 * kSamples;
  sound.Samples16 = audio::SampleArray<std::int16_t>::Zeroed(sound.WaveDataLength);
  for (std::int32_t i = 0; i < kSamples; ++i)
    sound.Samples16.Writable()[i] = static_cast<std::int16_t>((i * 37 % 24000 - 12000) * (i / 300 % 40) / 40);
}

/// Prints the seconds of a few hundred advances.
void Advance() {
  form1->CommonDialog1.FileName = "tone.wav";
  PutSound();
  form3->Text7.SetText("24");
  form1->SetupGrid();
  const auto advance = [](int from, int to) {
    for (int row = from; row < to; ++row) {
      form1->Grid1.SetRow(row);
      form1->Picture2.Refresh();
    }
  };
  advance(100, 200);
  std::printf("%.9f\n", bench::Seconds([&] { advance(200, 700); }));
  std::fflush(stdout);
  std::_Exit(0);
}

std::string program;

double TimeAt(const char* scale) {
  setenv("QT_SCALE_FACTOR", scale, 1);
  FILE* pipe = popen((program + " advance").c_str(), "r");
  double seconds = 0;
  if (pipe == nullptr || std::fscanf(pipe, "%lf", &seconds) != 1) std::abort();
  pclose(pipe);
  return seconds;
}

void RowAdvanceAtScaleTwo(benchmark::State& state) {
  bench::Beside(
      state, {"Advance 500 rows, screen of scale 2", "the same at scale 1", bench::AtMost(1.5), 9},
      [] { return TimeAt("2"); }, [] { return TimeAt("1"); });
}
BENCHMARK(RowAdvanceAtScaleTwo)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argument_count, char** arguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  program = arguments[0];
  if (argument_count > 1 && std::string(arguments[1]) == "advance")
    return platform::RunApplication([] {
      app::Main();
      // Once the event loop runs: before that the window isn't shown, and refreshing it draws nothing.
      platform::RunLater([] { platform::RunLater(Advance); });
    });
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
