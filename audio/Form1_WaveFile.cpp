// The wave file's menu items: opening one, showing its format, starting the recorder.
#include <optional>
#include <string>
#include <utility>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "audio/sample_store.h"
#include "audio/wave_reader.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "sheet/SheetDocument.h"

namespace {

constexpr const char* kRecorderProgram = "Wavecatcher_pm.exe";

}  // namespace

bool Form1::OpenWaveFile(const std::string& path) {
  std::optional<platform::BusyPointer> busy;
  audio::WaveResult read = audio::ReadWaveFile(path, audio::LoadedSound(), [&busy] { busy.emplace(); });
  busy.reset();
  if (read.sound) {
    // Asked before the sound is taken over, so that a refusal finds the old sheet with its sound.
    if (const auto seconds = audio::SecondsOfSound(*read.sound))
      read.reason = RefusalOfRows(sheet::FrameRate(), *seconds);
  }
  if (!read.reason.empty()) {
    platform::MsgBox(read.reason);
    return false;
  }
  audio::LoadedSound() = *std::move(read.sound);
  PaintWav();
  InitVelocity();
  Grid1.Clear();
  SetupGrid();
  return true;
}

void Form1::OpenWave_Click() {
  if (CommonDialog1.ShowOpen()) OpenSound(CommonDialog1.FileName);
}

void Form1::OpenSound(const std::string& path) {
  CommonDialog1.FileName = path;
  if (!OpenWaveFile(path)) return;
  sheet_file_.clear();
  // Also for three channels and more, which were not reduced.
  if (audio::LoadedSound().WaveFormat.nChannels > 1) platform::MsgBox("Stereo sample converted to mono.");
  TellIfSoundGivesNoRows();
}

void Form1::TellIfSoundGivesNoRows() {
  const std::string notice = audio::DepthNotice(audio::LoadedSound());
  if (Grid1.Rows() == 1 && !notice.empty()) platform::MsgBox(notice);
}

void Form1::Sampleinfo_Click() { form2->ShowOwnedBy(*this); }

/// A recorder that can't be started is passed over.
void Form1::RecordAudio_Click() { platform::StartProgram(kRecorderProgram); }
