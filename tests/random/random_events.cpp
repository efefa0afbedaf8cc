// A user without a plan: random events on the real windows, in this process, off the screen.
//
//   random-events [SEED [EVENTS]]
//
// A seed gives the same choices each time; what depends on the moment at which a timer fires can differ. An
// even seed works beside a recording host, an odd one beside the embedded stand-in. Ends with 0 if nothing
// was found; otherwise it says at which event. An event that doesn't end is a finding too.
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <utility>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "host/HandedWindow.h"
#include "host/HostSession.h"
#include "host/standin/EmbeddedHost.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/Lifetime.h"
#include "platform/memory.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/ScriptedOutput.h"
#include "support/UserInput.h"
#include "support/desk.h"
#include "timeline/velocity_values.h"

namespace {

std::uint64_t seed = 2, event_number = 0;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "seed %llu, event %llu: %s\n", static_cast<unsigned long long>(seed),
               static_cast<unsigned long long>(event_number), what.c_str());
  std::_Exit(1);
}

/// Within this time even a machine under load and a sanitizer's build handle an event.
constexpr unsigned kSecondsForAnEvent = 120;

/// Aborts, so that a debugger or a core file shows what didn't end.
void EndStuckEvent(int) {
  char words[120];
  const int length =
      std::snprintf(words, sizeof words, "seed %llu, event %llu: it doesn't end\n",
                    static_cast<unsigned long long>(seed), static_cast<unsigned long long>(event_number));
  if (write(STDERR_FILENO, words, static_cast<std::size_t>(length)) < 0) std::_Exit(1);
  std::abort();
}

class Dice {
 public:
  /// 0 to count - 1.
  int Below(int count) {
    return static_cast<int>(generator_() % static_cast<std::uint64_t>(std::max(count, 1)));
  }
  bool OneIn(int count) { return Below(count) == 0; }
  template <typename List>
  auto Pick(const List& list) {
    return *std::next(std::begin(list), Below(static_cast<int>(std::size(list))));
  }

 private:
  std::mt19937_64 generator_{seed};
};

class AimlessUser {
 public:
  AimlessUser() {
    sounds_ = {support::WriteScratch("mono.wav", support::WaveBytes(8, 1000, Letters(2000))),
               support::WriteScratch("stereo.wav", support::WaveBytes(16, 1000, Letters(6001), 2)),
               support::WriteScratch("short.wav", support::WaveBytes(8, 1000, "abc")),
               support::WriteScratch("deep.wav", support::WaveBytes(24, 1000, Letters(900))),
               support::WriteScratch("cut.wav", support::WaveBytes(8, 1000, Letters(2000)).substr(0, 700)),
               support::WriteScratch("words.wav", "no sound"),
               support::ScratchFolder() + "/missing.wav"};
    sheets_ = {support::ScratchFolder() + "/one.exp", support::ScratchFolder() + "/two.exp",
               support::ScratchFolder() + "/mangled.exp", support::ScratchFolder() + "/no folder/three.exp"};
    platform::AnswerFileDialogsWith([this](const platform::FileQuestion& question) {
      const bool sheet = question.save || question.filter.find("exp") != std::string::npos;
      return dice_.OneIn(8) ? std::nullopt : std::optional(dice_.Pick(sheet ? sheets_ : sounds_));
    });
    platform::AnswerMessagesWith([this](const platform::Message& message) { return AnswerTo(message); });
    platform::ReadClockFrom([this] { return now_; });
    // Room for the stand-in's frames, but not for all that a host may claim to have.
    platform::ReadFreeMemoryFrom([] { return 6e7; });
    modal_closer_.callOnTimeout([this] { LeaveModalDialog(); });
    modal_closer_.start(0);
    desk_.host->wallpaper = ":/assets/icons/play.png";
    // What was shot in another size can't be given any more.
    desk_.host->before = [this](std::string_view member) {
      if (member == "vel_BufferWidth") desk_.host->planes.clear();
    };
    hand_.callOnTimeout([this] { DoNextThing(); });
  }
  ~AimlessUser() {
    platform::AnswerFileDialogsWith(nullptr);
    platform::AnswerMessagesWith(nullptr);
    platform::ReadClockFrom(nullptr);
    platform::ReadFreeMemoryFrom(nullptr);
    host::HostSession.Set(nullptr);
  }

  /// Starts the program again whenever it has ended. Within its event loop, as dialogs that are opened when
  /// there is none, or when one has ended, don't stay.
  void Work(std::uint64_t events) {
    events_ = events;
    hand_.start(0);
    while (event_number < events_) {
      if (seed % 2 == 1) {
        host::HostSession.Set(nullptr);
        host::HostSession.Set(host::MakeEmbeddedHost());
      }
      QCoreApplication::exec();
    }
    hand_.stop();
    alarm(0);
  }

 private:
  void DoNextThing() {
    if (event_number == events_) return QCoreApplication::exit();
    alarm(kSecondsForAnEvent);
    DoSomething();
    if (++event_number % 10000 == 0)
      std::fprintf(stderr, "%llu events\n", static_cast<unsigned long long>(event_number));
  }

  void DoSomething() {
    if (form1.IfLoaded() == nullptr || !form1->Visible()) form1.Hold().Show();
    const int what = dice_.Below(100);
    if (what < 38)
      UseMouse();
    else if (what < 68)
      UseKeys();
    else if (what < 76)
      TurnWheel();
    else if (what < 84)
      ChooseFromMenu();
    else if (what < 88)
      LetTimePass();
    else if (what < 92)
      HaveTheHostDoSomething();
    else if (what < 94)
      DropFile();
    else if (what < 96)
      MangleSheet();
    else if (what < 98)
      ResizeWindow();
    else
      CloseWindow();
    if (dice_.OneIn(2)) QCoreApplication::processEvents();
    KeepItQuick();
    CheckWhatAlwaysHolds();
  }

  std::string Letters(int count) {
    std::string letters;
    for (int i = 0; i < count; ++i) letters += static_cast<char>(dice_.Below(256));
    return letters;
  }

  platform::Answer AnswerTo(const platform::Message& message) {
    using platform::Answer;
    if (message.text.find("can't go on") != std::string::npos) Fail(message.text);
    if (message.buttons == platform::Buttons::YesNo) return dice_.OneIn(2) ? Answer::Yes : Answer::No;
    if (message.buttons == platform::Buttons::OkCancel) return dice_.OneIn(2) ? Answer::Ok : Answer::Cancel;
    return Answer::Ok;
  }

  /// The windows on the screen, in an order that doesn't depend on their addresses.
  std::vector<QWidget*> Windows() {
    std::vector<QWidget*> windows;
    const auto add = [&](platform::Window* window) {
      if (window != nullptr && window->Visible()) windows.push_back(window->TopWidget());
    };
    add(form1.IfLoaded());
    add(form2.IfLoaded());
    add(form3.IfLoaded());
    add(painter::fp_options.IfLoaded());
    add(painter::frame_painter.IfLoaded());
    for (QWidget* top : QApplication::topLevelWidgets())
      if (top->objectName() == "StandIn" && top->isVisible()) windows.push_back(top);
    // What stands open hides the rest from the mouse.
    if (QWidget* popup = QApplication::activePopupWidget()) return {popup};
    return windows;
  }

  QWidget* SomeWidget() {
    QWidget* const window = dice_.Pick(Windows());
    std::vector<QWidget*> widgets = {window};
    for (QWidget* widget : window->findChildren<QWidget*>())
      if (widget->isVisible() && widget->isEnabled()) widgets.push_back(widget);
    return dice_.Pick(widgets);
  }

  QPointF PointOn(const QWidget& widget) {
    // Now and then beside it, as a drag is.
    const int margin = dice_.OneIn(6) ? 60 : 0;
    return {dice_.Below(widget.width() + 2 * margin) - margin + 0.25 * dice_.Below(4),
            static_cast<double>(dice_.Below(widget.height() + 2 * margin) - margin)};
  }

  void UseMouse() {
    const QPointer<QWidget> widget = SomeWidget();
    const auto button = dice_.Pick(std::array{Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::LeftButton,
                                              Qt::RightButton, Qt::MiddleButton});
    const auto keys = dice_.Pick(std::array<Qt::KeyboardModifiers, 4>{
        Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier});
    const auto down = dice_.OneIn(8) ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress;
    support::Mouse(widget, down, PointOn(*widget), button, keys);
    for (int moves = dice_.Below(4); widget && moves > 0; --moves) {
      support::Mouse(widget, QEvent::MouseMove, PointOn(*widget), button, keys);
      if (dice_.OneIn(2)) QCoreApplication::processEvents();
    }
    if (widget && !dice_.OneIn(10)) support::Release(widget, PointOn(*widget), button, keys);
  }

  void UseKeys() {
    QWidget* widget = QApplication::focusWidget();
    if (widget == nullptr || dice_.OneIn(10)) widget = SomeWidget();
    // Keys go to what can have the focus.
    if (widget->focusPolicy() == Qt::NoFocus) widget = widget->window();
    const auto keys = dice_.Pick(std::array<Qt::KeyboardModifiers, 5>{
        Qt::NoModifier, Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier});
    if (dice_.OneIn(2)) {
      const QChar letter = dice_.Pick(QString("abcdefgiklmnoprstuvw0123456789.,+-\" \u00e9"));
      return support::Key(widget, letter.toUpper().unicode(), keys, QString(letter));
    }
    support::Key(widget,
                 dice_.Pick(std::array{Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,
                                       Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Return,
                                       Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Tab,
                                       Qt::Key_Backtab, Qt::Key_F2, Qt::Key_Z}),
                 keys, {});
  }

  void TurnWheel() { support::Wheel(SomeWidget(), 30 * (dice_.Below(17) - 8)); }

  void ChooseFromMenu() {
    std::vector<QAction*> items;
    for (QAction* item : dice_.Pick(Windows())->findChildren<QAction*>()) {
      const bool starts_program = item->objectName() == "RecordAudio";
      if (item->isEnabled() && item->menu() == nullptr && !item->isSeparator() && !starts_program)
        items.push_back(item);
    }
    if (!items.empty()) dice_.Pick(items)->trigger();
  }

  void LetTimePass() {
    now_ += dice_.OneIn(50) ? 86000 : 0.02 * dice_.Below(100);
    if (now_ >= 86400) now_ -= 86400;
    QCoreApplication::processEvents();
  }

  void HaveTheHostDoSomething() {
    support::RecordingHost& host = *desk_.host;
    host.frames = dice_.Pick(std::array{0, 1, 2, 3, 12, 48, 500, -1, INT32_MIN, INT32_MAX});
    host.width = dice_.Pick(std::array{4, 4, 4, 1, 0, -1, 70});
    host.height = dice_.Pick(std::array{3, 3, 3, 1, 0, -1, 50});
    host.frame_rate = dice_.Pick(std::array{"12", "24", "29.97", "", "no rate", "0"});
    host.planes.clear();
    host.calls.clear();
    static host::HandedWindow<Form1> handed_main("Form1", form1);
    if (dice_.OneIn(3)) platform::RunEvent([] { handed_main.RunPrefsCallback(); });
  }

  void DropFile() {
    platform::RunEvent([this] { form1->OpenDropped(dice_.Pick(dice_.OneIn(2) ? sheets_ : sounds_)); });
  }

  /// A sheet with a byte changed, cut off or put in twice.
  void MangleSheet() {
    std::string bytes = support::ReadWhole(sheets_[0]);
    if (bytes.empty()) return;
    const auto at = static_cast<std::size_t>(dice_.Below(static_cast<int>(bytes.size())));
    switch (dice_.Below(3)) {
      case 0:
        bytes[at] = static_cast<char>(dice_.Below(256));
        break;
      case 1:
        bytes.resize(at);
        break;
      default:
        bytes.insert(at, 1, bytes[at]);
    }
    support::WriteScratch("mangled.exp", bytes);
  }

  void ResizeWindow() { dice_.Pick(Windows())->resize(200 + dice_.Below(1200), 150 + dice_.Below(800)); }

  void CloseWindow() { dice_.Pick(Windows())->close(); }

  /// Dialogs that aren't scripted, such as the stand-in's, have an event loop of their own. So have a few
  /// menus.
  void LeaveModalDialog() {
    looks_ = std::exchange(looked_at_, event_number) == event_number ? looks_ + 1 : 0;
    QWidget* const popup = QApplication::activePopupWidget();
    if (popup != nullptr && looks_ > 100) popup->close();
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    const auto buttons = dialog->findChildren<QPushButton*>();
    const bool file_dialog = dialog->inherits("QFileDialog");
    if (buttons.isEmpty() || file_dialog) return dialog->reject();
    dice_.Pick(buttons)->click();
  }

  /// A rate that was typed at random gives a sheet of a million rows, and a length a roll of as many frames.
  void KeepItQuick() {
    auto* const options = painter::fp_options.IfLoaded();
    if (options != nullptr && options->Text1.Text().size() > 1)
      options->Text1.SetText(std::to_string(1 + dice_.Below(6)));
    const std::string text = form3->Text7.Text();
    if (sheet::FrameRate() > 60 || text.size() > 20) form3->Text7.SetText(dice_.OneIn(2) ? "12" : "-7 fps");
    if (desk_.host->calls.size() > 10000) desk_.host->calls.clear();
    sounded_.clear();
    if (timeline::Tracks().UndoHistory.size() > 1000) timeline::Tracks().UndoHistory.clear();
  }

  void CheckWhatAlwaysHolds() {
    const Form1* form = form1.IfLoaded();
    if (form == nullptr) return;
    const platform::Grid& grid = form->Grid1;
    if (grid.Row() < 0 || grid.Row() >= grid.Rows()) Fail("the current row isn't there");
    if (grid.Col() < 0 || grid.Col() > 2) Fail("the current column isn't there");
    if (sheet::SheetCells.LastFrame() < grid.Rows() - 2) Fail("a row has no entry in SheetCells");
    if (form->Timer1.Enabled() != form->Line1.Visible() && form->Visible()) Fail("a run and its cursor part");
  }

  Dice dice_;
  support::Desk desk_;
  std::vector<std::string> sounded_;
  support::ScriptedOutput output_{sounded_};
  QTimer modal_closer_, hand_;
  std::uint64_t events_ = 0, looked_at_ = 0;
  int looks_ = 0;
  double now_ = 100;
  std::vector<std::string> sounds_, sheets_;
};

}  // namespace

int main(int argument_count, char** arguments) {
  if (argument_count > 1) seed = std::strtoull(arguments[1], nullptr, 10);
  const std::uint64_t events = argument_count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 2000;
  // Empty folders for settings and data, so that no user's are read.
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "HOME"})
    setenv(name, support::ScratchFolder().c_str(), 1);
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  std::signal(SIGALRM, EndStuckEvent);
  const auto application = platform::MakeApplication(argument_count, arguments);
  platform::PrepareApplication();
  {
    AimlessUser user;
    user.Work(events);
    platform::DestroyAllWindows();
  }
  return 0;
}
