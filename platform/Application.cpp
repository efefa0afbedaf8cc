#include "platform/Application.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>
#include <QPixmap>
#include <QProcess>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QThread>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Dialogs.h"
#include "platform/HeldEvents.h"
#include "platform/Lifetime.h"
#include "platform/UntimelyEnd.h"

namespace platform {
namespace {

bool reporting = false;
int keep_alive_count = 0;
int busy_count = 0;
int refresh_pause_count = 0;
std::vector<std::function<void()>> last_routines;

/// The report's own event loop still runs timers, layouts and paints. What fails there, mostly for the same
/// reason, is passed over: it must neither stack a second report nor take the first one away unread.
void ReportOnce(const std::string& text) {
  if (!reporting) EndWithReport(text);
}

void QuitWhenNothingIsLeft() {
  if (LoadedWindowCount() == 0 && keep_alive_count == 0) Quit();
}

}  // namespace

void PrepareApplication() {
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("exposure-sheet");
  QApplication::setDesktopFileName("exposure-sheet");
  InstallAccessibleRoles();
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QIcon icon;
  // The format is said, so that the toolkit doesn't load all its readers of pictures to find out; and the
  // largest drawing, which takes longer than all others together, comes by the name of the desktop's file.
  for (const int size : {16, 24, 32, 48, 64, 128})
    icon.addPixmap(QPixmap(QString(":/assets/icons/app-%1.png").arg(size), "PNG"));
  QApplication::setWindowIcon(icon);
}

int RunApplication(const std::function<void()>& main_routine) {
  // The program reads no command line, so the toolkit gets none either.
  static int argument_count = 1;
  static char name[] = "exposure-sheet";
  static char* arguments[] = {name, nullptr};
  QApplication application(argument_count, arguments);
  PrepareApplication();
  int status = 0;
  {
    const EndsWatched watched;
    RunEvent(main_routine);
    if (LoadedWindowCount() != 0 || keep_alive_count != 0) status = QApplication::exec();
  }
  DestroyAllWindows();
  for (const auto& routine : last_routines) routine();
  last_routines.clear();
  return status;
}

void WindowCountHasChanged() {
  if (QCoreApplication::instance() != nullptr) RunLater(QuitWhenNothingIsLeft);
}

void RunEvent(const std::function<void()>& routine) {
  try {
    routine();
  } catch (const std::exception& failure) {
    ReportOnce(failure.what());
  } catch (...) {
    ReportOnce("An unknown failure.");
  }
}

void EndWithReport(const std::string& text) {
  reporting = true;
  // Before the box, which may be the last thing that a session's end finds.
  const std::string words = Rescue();
  const std::string report = words.empty() ? text : text + "\n\n" + words;
  std::fprintf(stderr, "exposure-sheet: %s\n", report.c_str());
  try {
    if (QCoreApplication::instance() != nullptr)
      MsgBox(report + "\n\nThe exposure sheet can't go on and ends.", Buttons::Ok, Icon::Warning);
  } catch (...) {
    std::fputs("exposure-sheet: the report can't be shown\n", stderr);
  }
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

// Not the toolkit's quit(), which a window that won't close, such as the host's, can refuse. It would end the
// event loop of a report too, which only its reader may.
void Quit() {
  if (!reporting) QCoreApplication::exit(EXIT_SUCCESS);
}

void BeforeEnd(std::function<void()> routine) { last_routines.push_back(std::move(routine)); }

KeepAlive::KeepAlive() { ++keep_alive_count; }
KeepAlive::~KeepAlive() {
  --keep_alive_count;
  WindowCountHasChanged();
}

void ShowUncovered() {
  constexpr int kMilliseconds = 40;
  // The screen says what was uncovered only some time after the dialog has gone.
  const HeldEvents held(nullptr, false);
  const QDeadlineTimer enough(kMilliseconds);
  while (!enough.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    QThread::msleep(4);
  }
}

BusyPointer::BusyPointer() {
  ++busy_count;
  QApplication::setOverrideCursor(Qt::WaitCursor);
}
BusyPointer::~BusyPointer() {
  --busy_count;
  QApplication::restoreOverrideCursor();
}
bool BusyPointerIsOn() { return busy_count > 0; }

RefreshPause::RefreshPause() { ++refresh_pause_count; }
RefreshPause::~RefreshPause() { --refresh_pause_count; }
bool RefreshIsPaused() { return refresh_pause_count > 0; }

void ChangeDirectory(const std::string& folder) {
  std::error_code failure;
  std::filesystem::current_path(folder, failure);
  if (failure)
    throw std::runtime_error("Can't make \"" + folder + "\" the working folder: " + failure.message());
}

bool StartProgram(const std::string& name) {
  const QString file = QString::fromStdString(name);
  QString path = QStandardPaths::findExecutable(file);
  if (path.isEmpty())
    path =
        QStandardPaths::findExecutable(file, {QDir::currentPath(), QCoreApplication::applicationDirPath()});
  return !path.isEmpty() && QProcess::startDetached(path, {}, QDir::currentPath());
}

std::string DecimalSign() { return QLocale::system().decimalPoint().toStdString(); }

}  // namespace platform
