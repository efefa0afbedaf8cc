// The recorder as a program of its own. The exposure sheet starts it without arguments; `--version` and
// `--help` are answered, and the toolkit's own options are read.
#include <QApplication>
#include <QCommandLineParser>
#include <QStandardPaths>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/Capture.h"
#include "platform/Lifetime.h"
#include "platform/QuietLook.h"
#include "platform/Translation.h"
#include "platform/version.h"
#include "recorder/RecorderLook.h"
#include "recorder/RecorderWindow.h"
#include "recorder/side_thread.h"

namespace recorder {
namespace {

std::string TakeFolder() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  return (data + "/exposure-sheet/takes").toStdString();
}

int RunWindow() {
  RecorderWindow window({platform::FindSoundDevices, platform::OpenCaptureDevice,
                         [] { return std::chrono::steady_clock::now(); }, TakeFolder()});
  window.show();
  return QApplication::exec();
}

int Run(int argument_count, char** arguments) {
  const auto application = platform::MakeApplication(argument_count, arguments);
  platform::SpeakOfProgram({"exposure-sheet-recorder", "Recorder", "The recorder"});
  QApplication::setApplicationName("exposure-sheet-recorder");
  QApplication::setApplicationVersion(platform::kVersion);
  QApplication::setDesktopFileName("exposure-sheet-recorder");
  QApplication::setWindowIcon(platform::ProgramIcon("recorder"));
  platform::UseProgramStyle();
  application->setStyleSheet(RecorderStyle());
  platform::TranslateToolkit(platform::ToolkitSpeaks::UsersLanguage);
  platform::Translate("recorder");
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QCoreApplication::translate("recorder", "Records a voice as a wave file for the exposure sheet."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.process(*application);

  const int status = RunWindow();
  if (AllAsideEnded(std::chrono::seconds(1))) return status;
  // A sound system that hangs keeps nobody from leaving.
  std::fflush(nullptr);
  std::_Exit(status);
}

}  // namespace
}  // namespace recorder

int main(int argument_count, char** arguments) { return recorder::Run(argument_count, arguments); }
