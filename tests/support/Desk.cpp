#include "support/desk.h"

#include <QCoreApplication>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/Form1.h"
#include "app/Main.h"

namespace support {
namespace {

template <typename Number>
std::string LittleEndian(Number value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i) & 255);
  return out;
}

}  // namespace

std::string ScratchFolder() {
  /// Takes the folder away at the end of the process.
  struct Folder {
    std::string path = (std::filesystem::temp_directory_path() / "exposure-sheet-XXXXXX").string();
    Folder() { path = mkdtemp(path.data()); }
    ~Folder() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
  };
  static const Folder folder;
  return folder.path;
}

std::string WriteScratch(const std::string& name, const std::string& bytes) {
  const std::string path = ScratchFolder() + "/" + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

std::string ReadWhole(const std::string& path) {
  std::ostringstream all;
  all << std::ifstream(path, std::ios::binary).rdbuf();
  return all.str();
}

std::string WaveBytes(int bits_per_sample, int samples_per_second, const std::string& data, int channels) {
  const int block = channels * bits_per_sample / 8;
  const std::string format =
      LittleEndian(1, 2) + LittleEndian(channels, 2) + LittleEndian(samples_per_second, 4) +
      LittleEndian(samples_per_second * block, 4) + LittleEndian(block, 2) + LittleEndian(bits_per_sample, 2);
  return "RIFF" + LittleEndian(36 + data.size(), 4) + "WAVEfmt " + LittleEndian(16, 4) + format + "data" +
         LittleEndian(data.size(), 4) + data;
}

ScriptedMessages::ScriptedMessages() {
  platform::AnswerMessagesWith([this](const platform::Message& message) {
    shown.push_back(message);
    if (answers.empty()) return platform::Answer::Ok;
    const auto answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  });
}
ScriptedMessages::~ScriptedMessages() { platform::AnswerMessagesWith(nullptr); }

std::vector<std::string> ScriptedMessages::Texts() const {
  std::vector<std::string> texts;
  for (const auto& message : shown) texts.push_back(message.text);
  return texts;
}

ScriptedFiles::ScriptedFiles() {
  platform::AnswerFileDialogsWith(
      [this](const platform::FileQuestion& question) -> std::optional<std::string> {
        asked.push_back(question);
        if (paths.empty()) return std::nullopt;
        std::string path = paths.front();
        paths.erase(paths.begin());
        if (path.empty()) return std::nullopt;
        return path;
      });
}
ScriptedFiles::~ScriptedFiles() { platform::AnswerFileDialogsWith(nullptr); }

void HandleEvents() {
  for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
}

Desk::Desk() : host(UseRecordingHost()) { app::AppTitle = "Exposure Sheet 2.3"; }
Desk::~Desk() = default;

Form1& Desk::Main() {
  form1.Hold().Show();
  HandleEvents();
  return *form1.IfLoaded();
}

}  // namespace support
