// Saving and opening a long sheet with all cells and tracks filled: window visible, lock on, the embedded
// stand-in answering.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/Form1.h"
#include "app/Program.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "sheet/sheet_file.h"
#include "timeline/velocity_values.h"

namespace {

constexpr int kFramesPerSecond = 24;
constexpr std::uint32_t kSamplesPerSecond = 8000;

std::string folder;
std::string chosen_path;

std::string Little(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 255);
  return text;
}

std::string SheetPath(std::int32_t frames) { return folder + "/" + std::to_string(frames) + ".exp"; }

std::string WriteWave(std::int32_t frames) {
  const std::string path = folder + "/" + std::to_string(frames) + ".wav";
  const auto bytes = static_cast<std::uint32_t>(frames) / kFramesPerSecond * kSamplesPerSecond;
  std::string samples(bytes, '\0');
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<char>(128 + (i * i / 700) % 90);
  std::ofstream(path, std::ios::binary)
      << "RIFF" << Little(bytes + 36, 4) << "WAVEfmt " << Little(16, 4) << Little(1, 2) << Little(1, 2)
      << Little(kSamplesPerSecond, 4) << Little(kSamplesPerSecond, 4) << Little(1, 2) << Little(8, 2)
      << "data" << Little(bytes, 4) << samples;
  return path;
}

void WriteFullSheet(std::int32_t frames) {
  sheet::SheetFileContent content;
  content.frame_rate_text = std::to_string(kFramesPerSecond);
  content.wave_file_name = WriteWave(frames);
  content.lock = true;
  content.track_visible = {true, true, true, true};
  const char* const shapes[] = {"A ", "M ", "Closed ", "Th ", "O "};
  for (std::int32_t frame = 0; frame < frames; ++frame) {
    content.rows.push_back(
        {std::to_string(frame), shapes[frame % 5], "comment, frame " + std::to_string(frame)});
    const auto value = static_cast<std::uint8_t>(frame % 64);
    content.track_values.push_back({value, static_cast<std::uint8_t>(63 - value), value, 32});
  }
  std::ofstream(SheetPath(frames), std::ios::binary) << sheet::SheetFileText(content);
}

Form1& MainWindow() {
  static const bool made = [] {
    platform::AnswerFileDialogsWith([](const platform::FileQuestion&) { return std::optional(chosen_path); });
    platform::AnswerMessagesWith([](const platform::Message& message) {
      std::fprintf(stderr, "%s\n", message.text.c_str());
      return platform::Answer::Ok;
    });
    app::Main();
    return true;
  }();
  (void)made;
  return *form1;
}

void OpenSheet(benchmark::State& state) {
  const auto frames = static_cast<std::int32_t>(state.range(0));
  WriteFullSheet(frames);
  Form1& form = MainWindow();
  chosen_path = SheetPath(frames);
  for (auto _ : state) form.MenuOpen_Click();
  if (form.Grid1.Rows() != frames + 1 || timeline::Tracks().VelocityValues.At(frames - 1, 3) != 32) {
    state.SkipWithError("the sheet has not come whole");
  }
}

void SaveSheet(benchmark::State& state) {
  const auto frames = static_cast<std::int32_t>(state.range(0));
  WriteFullSheet(frames);
  Form1& form = MainWindow();
  chosen_path = SheetPath(frames);
  form.MenuOpen_Click();
  chosen_path = folder + "/saved.exp";
  for (auto _ : state) form.MenuSave_Click();
  if (std::filesystem::file_size(chosen_path) < static_cast<std::uintmax_t>(frames) * 40) {
    state.SkipWithError("the sheet was not saved whole");
  }
}

// Ten minutes and ninety minutes at 24 frames a second.
BENCHMARK(OpenSheet)->Arg(14'400)->Arg(129'600)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveSheet)->Arg(14'400)->Arg(129'600)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argument_count, char** arguments) {
  benchmark::Initialize(&argument_count, arguments);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  std::string pattern = (std::filesystem::temp_directory_path() / "sheet-bench-XXXXXX").string();
  folder = mkdtemp(pattern.data());
  const int status = platform::RunApplication([] {
    benchmark::RunSpecifiedBenchmarks();
    platform::RunLater(platform::Quit);
  });
  std::filesystem::remove_all(folder);
  return status;
}
