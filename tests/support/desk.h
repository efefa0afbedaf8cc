// The desk that a window test works at: scripted answers to dialogs, real windows off the screen, events.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Dialogs.h"
#include "support/recording_host.h"

class Form1;

namespace support {

/// A fresh empty folder, the same one for the whole of a test's process.
std::string ScratchFolder();

/// Writes a file into the scratch folder and returns its path.
std::string WriteScratch(const std::string& name, const std::string& bytes);
std::string ReadWhole(const std::string& path);

/// A RIFF wave file of the given samples, one channel unless said otherwise.
std::string WaveBytes(int bits_per_sample, int samples_per_second, const std::string& data, int channels = 1);

/// The first of what was laid ready, or this.
template <typename Value>
Value Next(std::vector<Value>& ready, Value otherwise) {
  if (ready.empty()) return otherwise;
  Value first = ready.front();
  ready.erase(ready.begin());
  return first;
}

/// Answers every message box with the next of these, then with OK, and keeps what was shown.
struct ScriptedMessages {
  ScriptedMessages() {
    platform::AnswerMessagesWith([this](const platform::Message& message) {
      shown.push_back(message);
      return Next(answers, platform::Answer::Ok);
    });
  }
  ~ScriptedMessages() { platform::AnswerMessagesWith(nullptr); }
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& message : shown) texts.push_back(message.text);
    return texts;
  }
  std::vector<platform::Answer> answers;
  std::vector<platform::Message> shown;
};

/// Answers file dialogs with the next of these paths; an empty one, or none left, is Cancel.
struct ScriptedFiles {
  ScriptedFiles() {
    platform::AnswerFileDialogsWith([this](const platform::FileQuestion& question) {
      asked.push_back(question);
      const std::string path = Next(paths, {});
      return path.empty() ? std::nullopt : std::optional(path);
    });
  }
  ~ScriptedFiles() { platform::AnswerFileDialogsWith(nullptr); }
  std::vector<std::string> paths;
  std::vector<platform::FileQuestion> asked;
};

/// Handles all events that are due, drawings put off included.
void HandleEvents();

/// A recording host, whose folder is the scratch folder, and its script of dialogs.
struct Desk {
  Desk();
  /// The main window, loaded and shown.
  Form1& Main();
  ScriptedMessages messages;
  ScriptedFiles files;
  std::shared_ptr<RecordingHost> host = std::make_shared<RecordingHost>();
};

}  // namespace support
