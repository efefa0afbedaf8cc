// What the timeline costs: one row advance in the real window, and the repaints behind it. Offscreen, so that
// no display's speed is in the figures.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QWidget>
#include <cmath>
#include <cstdlib>
#include <fstream>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "host/HostSession.h"
#include "platform/Application.h"
#include "timeline/velocity_values.h"
#include "timeline/waveform.h"
#include "timeline/zoom.h"

namespace {

constexpr int kScreenPixels = 2000;
constexpr int kRate = 24;
constexpr int kSamplesPerSecond = 22050;
constexpr float kWidestZoom = 63.75F;

/// A host that costs nothing: what is measured is the tool.
class QuietHost : public host::HostObject {
 public:
  host::Variant Invoke(std::string_view member, std::span<const host::Variant>) override {
    if (member == "Vel_GetAppDir") return std::string("/");
    if (member == "Vel_GetFrameRate") return std::to_string(kRate);
    if (member == "vel_GetTotalFrames") return std::int32_t{1} << 20;
    if (member == "Vel_WallpaperFilename") return std::string();
    return {};
  }
};

/// A 16-bit tone that swells and fades, of so many frames.
void PutSound(int frames) {
  const auto samples = static_cast<std::int32_t>(static_cast<double>(frames) / kRate * kSamplesPerSecond);
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {1, 1, kSamplesPerSecond, 2 * kSamplesPerSecond, 2, 16};
  sound.WaveDataLength = 2 * samples;
  sound.Samples16 = audio::SampleArray<std::int16_t>::Zeroed(sound.WaveDataLength);
  for (std::int32_t i = 0; i < samples; ++i)
    sound.Samples16.Writable()[i] =
        static_cast<std::int16_t>(12000 * std::sin(i * 0.07) * std::sin(i * 0.0003));
}

/// Shapes on every second row, a comment on each: every advance moves the mark.
void FillSheet(Form1& form) {
  const platform::RefreshPause moves;
  const char* const shapes[] = {"A ", "M ", "Closed ", "Th ", "O "};
  for (int row = 1; row < form.Grid1.Rows(); ++row) {
    form.Grid1.SetRow(row);
    form.Grid1.SetCol(1);
    if (row % 2 == 0) form.Grid1.SetText(shapes[row / 2 % 5]);
    form.Grid1.SetCol(2);
    form.Grid1.SetText("a word or two");
  }
}

void DrawTracks() {
  auto& values = timeline::Tracks().VelocityValues;
  for (int channel = 0; channel < timeline::kChannels; ++channel)
    for (std::int32_t frame = 0; frame < values.Frames(); ++frame)
      values.Set(frame, channel, static_cast<std::uint8_t>(32 + 20 * std::sin(frame * 0.1 + channel)));
}

/// The main window with a sheet of `frames` at the design's size, its canvases at zoom 1 or at their widest.
Form1& WindowWith(int frames, bool widest) {
  static const bool held = [] {
    host::HostSession.Set(std::make_shared<QuietHost>());
    return true;
  }();
  benchmark::DoNotOptimize(held);
  Form1& form = form1.Hold();
  form.Show();
  form.CommonDialog1.FileName = "tone.wav";
  PutSound(frames);
  form.SetupGrid();
  FillSheet(form);
  DrawTracks();
  timeline::ZoomFactor = widest ? kWidestZoom : 1.0F;
  form.Form_Resize();
  return form;
}

/// Puts the window on the screen of single or double density.
void ShowAtScale(Form1& form, int scale) {
  form.TopWidget()->move(scale == 1 ? 10 : kScreenPixels + 10, 40);
  QCoreApplication::processEvents();
  form.PaintWav();
  form.PaintVelocity();
  form.Picture2.Refresh();
}

/// Rows, the widest zoom or none, the screen's scale; "pixels" tells the scale that was really drawn at.
void BM_RowAdvance(benchmark::State& state) {
  Form1& form = WindowWith(static_cast<int>(state.range(0)), state.range(1) != 0);
  ShowAtScale(form, static_cast<int>(state.range(2)));
  const int rows = form.Grid1.Rows();
  int row = rows / 3;
  for (auto _ : state) {
    row = row + 1 < rows ? row + 1 : 1;
    form.Grid1.SetRow(row);
    form.Picture2.Refresh();
  }
  state.counters["canvas"] = form.Picture2.ScaleWidth();
  state.counters["pixels"] = form.Picture2.Scale();
  ShowAtScale(form, 1);
}
BENCHMARK(BM_RowAdvance)->ArgsProduct({{300, 3000, 14400}, {0, 1}, {1, 2}})->Unit(benchmark::kMicrosecond);

void BM_WholeRepaint(benchmark::State& state) {
  Form1& form = WindowWith(static_cast<int>(state.range(0)), state.range(1) != 0);
  bool visible = true;
  for (auto _ : state) {
    // Hiding a track changes the whole velocity canvas, another ground the whole waveform.
    form.vl_button16.SetValue(visible = !visible);
    form.List1.SetBackColor(platform::Rgb(85, 85, visible ? 102 : 103));
    form.PaintWav();
    form.PaintVelocity();
    form.Picture2.Refresh();
  }
}
BENCHMARK(BM_WholeRepaint)->ArgsProduct({{14400}, {0, 1}})->Unit(benchmark::kMicrosecond);

void BM_StrokeEvent(benchmark::State& state) {
  Form1& form = WindowWith(static_cast<int>(state.range(0)), state.range(1) != 0);
  form.vl_button10.SetValue(true);
  int event = 0;
  for (auto _ : state) {
    ++event;
    form.Picture4_MouseMove(1, 0, static_cast<float>(event % 170 * 3), static_cast<float>(event % 47));
  }
  form.vl_button10.SetValue(false);
}
BENCHMARK(BM_StrokeEvent)->ArgsProduct({{14400}, {0, 1}})->Unit(benchmark::kMicrosecond);

/// As opening and saving do: through all rows, drawn once at the end.
void BM_WalkThroughAllRows(benchmark::State& state) {
  Form1& form = WindowWith(static_cast<int>(state.range(0)), true);
  for (auto _ : state) {
    {
      const platform::RefreshPause moves;
      for (int row = 1; row < form.Grid1.Rows(); ++row) form.Grid1.SetRow(row);
    }
    form.Picture2.Refresh();
    form.Picture4.Refresh();
  }
  state.SetItemsProcessed(state.iterations() * (form.Grid1.Rows() - 1));
}
BENCHMARK(BM_WalkThroughAllRows)->Arg(14400)->Arg(144000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argument_count, char** arguments) {
  benchmark::Initialize(&argument_count, arguments);
  // Two screens side by side, the second of double density, so that both are measured in one run.
  std::ofstream("timeline_bench_screens.json")
      << R"({"screens":[{"name":"single","x":0,"y":0,"width":2000,"height":1200,"dpr":1},)"
      << R"({"name":"double","x":2000,"y":0,"width":2000,"height":1200,"dpr":2}]})";
  setenv("QT_QPA_PLATFORM", "offscreen:configfile=timeline_bench_screens.json", 0);
  return platform::RunApplication([] {
    benchmark::RunSpecifiedBenchmarks();
    platform::RunLater(platform::Quit);
  });
}
