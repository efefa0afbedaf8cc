#include "platform/Application.h"

#include <dlfcn.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Dialogs.h"
#include "platform/HeldEvents.h"
#include "platform/Lifetime.h"
#include "platform/QuietLook.h"
#include "platform/UntimelyEnd.h"

namespace platform {
namespace {

bool reporting = false, report_is_due = false;
int paint_depth = 0;
int keep_alive_count = 0;
int busy_count = 0;
int refresh_pause_count = 0;
std::vector<std::function<void()>> last_routines;
std::function<bool()> may_end;

/// The words in which the program speaks of itself.
ProgramWords words;

/// As long as a report stands, or is about to, nothing of the program runs but its painting.
bool OnlyPaintingRuns() { return EndsWithReport() && paint_depth == 0; }

/// What fails behind a report, mostly for the same reason, is passed over: it must neither stack a second
/// report nor take the first one away unread. In a paint event no box can be shown: the report comes as soon
/// as the event loop runs again.
void Report(const std::string& text) {
  if (EndsWithReport()) return;
  if (paint_depth == 0) EndWithReport(text);
  report_is_due = true;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [text] { EndWithReport(text); }, Qt::QueuedConnection);
}

template <typename Routine>
void ReportFailureOf(const Routine& routine) {
  try {
    routine();
  } catch (const std::exception& failure) {
    Report(failure.what());
  } catch (...) {
    Report("An unknown failure.");
  }
}

/// Every event of the toolkit's passes here on its way to a widget, a timer or a queued routine. What the
/// receiver's own boundary lets through, or what has none, must not reach the toolkit's loop: that would end
/// the process without a word.
class GuardedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    const bool paints = event->type() == QEvent::Paint;
    bool handled = true;
    if (paints) ++paint_depth;
    ReportFailureOf([&] { handled = QApplication::notify(receiver, event); });
    if (paints) --paint_depth;
    return handled;
  }
};

/// Lets the font library read its hundred files on a thread of its own while the display is being connected
/// to, which halves what the first text costs. The toolkit has the library loaded, and finds it ready.
class FontPreparation {
 public:
  FontPreparation() {
    // The toolkit sets the same locale again, which then changes nothing under the library that reads
    // numbers.
    std::setlocale(LC_ALL, "");
    if (const auto prepare = reinterpret_cast<int (*)()>(dlsym(RTLD_DEFAULT, "FcInit")))
      thread_ = std::thread([prepare] { prepare(); });
  }
  ~FontPreparation() {
    if (thread_.joinable()) thread_.join();
  }
  FontPreparation(const FontPreparation&) = delete;
  FontPreparation& operator=(const FontPreparation&) = delete;

 private:
  std::thread thread_;
};

void QuitWhenNothingIsLeft() {
  if (LoadedWindowCount() > 0 || keep_alive_count > 0) return;
  if (!may_end || may_end()) Quit();
}

}  // namespace

std::unique_ptr<QApplication> MakeApplication(int& argument_count, char** arguments) {
  const FontPreparation fonts;
  return std::make_unique<GuardedApplication>(argument_count, arguments);
}

void SpeakOfProgram(ProgramWords of_program) { words = std::move(of_program); }
const std::string& ProgramTitle() { return words.title; }

void PrepareApplication() {
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("exposure-sheet");
  QApplication::setDesktopFileName("exposure-sheet");
  InstallAccessibleRoles();
  UseProgramStyle();
  QApplication::setWindowIcon(ProgramIcon("app"));
}

int RunApplication(const std::function<void()>& main_routine) {
  // The program reads no command line, so the toolkit gets none either.
  static int argument_count = 1;
  static char name[] = "exposure-sheet";
  static char* arguments[] = {name, nullptr};
  const auto application = MakeApplication(argument_count, arguments);
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
  // Windows go several at a time, and the question whether to end has an event loop of its own: it is asked
  // once.
  static bool looks_soon = false;
  if (QCoreApplication::instance() == nullptr || std::exchange(looks_soon, true)) return;
  RunLater([] {
    QuitWhenNothingIsLeft();
    looks_soon = false;
  });
}

void RunEvent(const std::function<void()>& routine) {
  if (!OnlyPaintingRuns()) ReportFailureOf(routine);
}

bool EndsWithReport() { return reporting || report_is_due; }

void EndWithReport(const std::string& text) {
  reporting = true;
  // Before the box, which may be the last thing that a session's end finds.
  const std::string rescued = Rescue();
  const std::string report = rescued.empty() ? text : text + "\n\n" + rescued;
  std::fprintf(stderr, "%s: %s\n", words.program.c_str(), report.c_str());
  try {
    if (QCoreApplication::instance() != nullptr)
      MsgBox(report + "\n\n" + words.subject + " can't go on and ends.", Buttons::Ok, Icon::Warning);
  } catch (...) {
    std::fprintf(stderr, "%s: the report can't be shown\n", words.program.c_str());
  }
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

// Not the toolkit's quit(), which a window that won't close, such as the host's, can refuse. It would end the
// event loop of a report too, which only its reader may.
void Quit() {
  if (!EndsWithReport()) QCoreApplication::exit(EXIT_SUCCESS);
}

void AskBeforeEnd(std::function<bool()> routine) { may_end = std::move(routine); }

void BeforeEnd(std::function<void()> routine) { last_routines.push_back(std::move(routine)); }

KeepAlive::KeepAlive() { ++keep_alive_count; }
KeepAlive::~KeepAlive() {
  --keep_alive_count;
  WindowCountHasChanged();
}

void ShowUncovered() {
  constexpr int kMilliseconds = 40;
  // The display server reports what was uncovered only some time after the dialog has gone.
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
