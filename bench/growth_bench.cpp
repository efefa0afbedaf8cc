// Long work: what opening, saving, zooming, moving, drawing and retrieving take as sheets and animations
// grow. There is one process for each size, which is the first argument: how many rows the sheet has. The
// animation has one frame for every thirty rows.
#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/Form1.h"
#include "app/Program.h"
#include "bench/beside.h"
#include "host/HostSession.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "sheet/sheet_file.h"
#include "timeline/velocity_values.h"

namespace {

constexpr int kFramesPerSecond = 10;
constexpr int kSamplesPerSecond = 8000;
constexpr std::int32_t kRowsPerCell = 30;
constexpr int kStrokes = 1000;

std::int32_t rows = 0;
std::string folder, chosen_path;

/// Megabytes of memory that this process has in use.
double Megabytes() {
  malloc_trim(0);
  std::ifstream table("/proc/self/statm");
  double all = 0, resident = 0;
  table >> all >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void Tell(benchmark::State& state, const char* operation, const char* unit, double size, int runs,
          const std::function<void()>& work) {
  bench::Grows(state, operation, unit, size, runs, [&] { return bench::Seconds(work); });
  state.counters["megabytes"] = Megabytes();
}

std::string Little(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 255);
  return text;
}

std::string WriteWave() {
  std::string path = folder + "/voice.wav";
  const auto bytes = static_cast<std::uint32_t>(rows / kFramesPerSecond * kSamplesPerSecond);
  std::string samples(bytes, '\0');
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<char>(128 + (i * i / 700) % 90);
  std::ofstream(path, std::ios::binary)
      << "RIFF" << Little(bytes + 36, 4) << "WAVEfmt " << Little(16, 4) << Little(1, 2) << Little(1, 2)
      << Little(kSamplesPerSecond, 4) << Little(kSamplesPerSecond, 4) << Little(1, 2) << Little(8, 2)
      << "data" << Little(bytes, 4) << samples;
  return path;
}

/// A sheet with every cell filled.
void WriteSheet(const std::string& path) {
  sheet::SheetFileContent content;
  content.frame_rate_text = std::to_string(kFramesPerSecond);
  content.wave_file_name = WriteWave();
  content.lock = true;
  content.track_visible = {true, true, true, true};
  const char* const shapes[] = {"A ", "M ", "Closed ", "Th ", "O "};
  for (std::int32_t frame = 0; frame < rows; ++frame) {
    content.rows.push_back(
        {std::to_string(frame), shapes[frame % 5], "comment, frame " + std::to_string(frame)});
    const auto value = static_cast<std::uint8_t>(frame % 64);
    content.track_values.push_back({value, static_cast<std::uint8_t>(63 - value), value, 32});
  }
  std::ofstream(path, std::ios::binary) << sheet::SheetFileText(content);
}

void OpenSheet(benchmark::State& state) {
  chosen_path = folder + "/long.exp";
  WriteSheet(chosen_path);
  Tell(state, "Open the sheet", "rows", rows, 3, [] { form1->MenuOpen_Click(); });
  if (form1->Grid1.Rows() != rows + 1) state.SkipWithError("the sheet has not come whole");
}

void SaveSheet(benchmark::State& state) {
  chosen_path = folder + "/saved.exp";
  Tell(state, "Save the sheet", "rows", rows, 3, [] { form1->MenuSave_Click(); });
}

void Zoom(benchmark::State& state) {
  Tell(state, "Zoom in and out", "rows", rows, 11, [] {
    form1->vl_button3_Click();
    form1->vl_button4_Click();
  });
}

/// A hundred at a time, since a single one is too short to be measured.
void AdvanceRows(benchmark::State& state) {
  int row = rows / 3;
  Tell(state, "Advance 100 rows", "rows", rows, 11, [&] {
    for (int i = 0; i < 100; ++i) {
      form1->Grid1.SetRow(++row);
      form1->Picture2.Refresh();
    }
  });
}

/// Ten strokes of ten moves at a time; a thousand are kept to be taken back.
void Stroke(benchmark::State& state) {
  form1->vl_button10.SetValue(true);
  int moves = 0;
  Tell(state, "Draw 10 strokes, 1,000 kept", "rows", rows, kStrokes / 10 - 1, [&] {
    for (int stroke = 0; stroke < 10; ++stroke) {
      form1->Picture4_MouseDown(1, 0, 1, 1);
      for (int i = 0; i < 10; ++i, ++moves)
        form1->Picture4_MouseMove(1, 0, static_cast<float>(moves % 500), static_cast<float>(moves % 47));
    }
  });
}

void Undo(benchmark::State& state) {
  Tell(state, "Undo 10 strokes", "rows", rows, kStrokes / 10 - 1, [] {
    for (int i = 0; i < 10; ++i) form1->vl_button11_Click();
  });
  if (!timeline::Tracks().UndoHistory.empty()) state.SkipWithError("strokes are left");
}

std::int32_t Cells() { return rows / kRowsPerCell; }

void RetrieveCells(benchmark::State& state) {
  host::HostSession.Call("vel_CreateAnimAdv", Cells(), std::int16_t{2});
  Tell(state, "Retrieve cells, 320 by 240", "cells", Cells(), 3, [] { painter::RetrieveFrames(); });
}

void ScrollCells(benchmark::State& state) {
  painter::StartRoll(painter::TheRoll(), rows);
  painter::FramePainter& window = painter::frame_painter.Hold();
  window.Show();
  int position = 0;
  Tell(state, "Scroll through 20 cells", "cells", Cells(), 11, [&] {
    for (int i = 0; i < 20; ++i) {
      window.HGlide1.SetPosition(position = (position + 1) % Cells());
      window.HGlide1_Scroll();
    }
  });
}

// They run in this order, each on what the one before has left.
BENCHMARK(OpenSheet)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AdvanceRows)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Zoom)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Stroke)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Undo)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SaveSheet)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(RetrieveCells)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollCells)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void RunAll() {
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(folder);
  std::_Exit(0);  // the stand-in's window would keep the application running
}

void Run() {
  platform::AnswerFileDialogsWith([](const platform::FileQuestion&) { return std::optional(chosen_path); });
  platform::AnswerMessagesWith([](const platform::Message& message) {
    std::fprintf(stderr, "%s\n", message.text.c_str());
    return platform::Answer::Yes;
  });
  app::Main();
  // Once the event loop runs: before that the window isn't shown, and refreshing it draws nothing.
  platform::RunLater([] { platform::RunLater(RunAll); });
}

}  // namespace

int main(int argument_count, char** arguments) {
  benchmark::Initialize(&argument_count, arguments);
  rows = argument_count > 1 ? std::atoi(arguments[1]) : 9'000;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  std::string pattern = (std::filesystem::temp_directory_path() / "growth-bench-XXXXXX").string();
  folder = mkdtemp(pattern.data());
  return platform::RunApplication(Run);
}
