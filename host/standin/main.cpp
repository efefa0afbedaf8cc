// The stand-in for a host as a program of its own: it shows its window, takes the host's name on the session
// bus and serves it until the window is closed. Without a bus the window says so and works alone.
#include <QApplication>
#include <QCommandLineParser>
#include <memory>
#include <optional>

#include "host/standin/BusService.h"
#include "host/standin/DemoAnimation.h"
#include "host/standin/StandInWindow.h"
#include "host/standin/stand_in.h"
#include "platform/Accessible.h"
#include "platform/Lifetime.h"
#include "platform/QuietLook.h"
#include "platform/Translation.h"
#include "platform/version.h"

namespace host {
namespace {

int Run(int argument_count, char** arguments) {
  const auto application = platform::MakeApplication(argument_count, arguments);
  platform::SpeakOfProgram({"vellumark-standin", "Vellumark (stand-in)", "The stand-in"});
  QApplication::setApplicationName("vellumark-standin");
  QApplication::setApplicationVersion(platform::kVersion);
  QApplication::setDesktopFileName("vellumark-standin");
  platform::TranslateToolkit(platform::ToolkitSpeaks::UsersLanguage);
  platform::Translate("standin");
  QCommandLineParser parser;
  parser.setApplicationDescription(QCoreApplication::translate(
      "standin", "Stands in for the drawing program that the exposure sheet works beside."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.process(*application);
  platform::InstallAccessibleRoles();
  platform::UseProgramStyle();

  const auto stand_in = std::make_shared<StandIn>(DrawDemoAnimation());
  stand_in->SetAppDir(QCoreApplication::applicationDirPath().toStdString());
  StandInWindow window(stand_in, RunsAs::Program);
  std::optional<QString> problem;
  const auto service = ServeOnBus(stand_in, problem);
  if (problem) window.TellProblem(*problem);
  window.show();
  return QApplication::exec();
}

}  // namespace
}  // namespace host

int main(int argument_count, char** arguments) { return host::Run(argument_count, arguments); }
