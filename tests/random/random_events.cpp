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
#include <QRegularExpression>
#include <QTimer>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
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
#include "random/what_always_holds.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/ScriptedOutput.h"
#include "support/UserInput.h"
#include "support/desk.h"
#include "timeline/velocity_values.h"

namespace {

std::uint64_t seed = 2, event_number = 0;

}  // namespace

void random_events::Fail(const std::string& what) {
  std::fprintf(stderr, "seed %llu, event %llu: %s\n", static_cast<unsigned long long>(seed),
               static_cast<unsigned long long>(event_number), what.c_str());
  std::_Exit(1);
}

namespace {

using random_events::Fail;

/// Within this time even a machine under load and a sanitizer's build handle an event.
constexpr unsigned kSecondsForAnEvent = 120;

/// Looking at all pictures takes as long as some dozens of events.
constexpr std::uint64_t kEventsBetweenLooks = 25;

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
               support::WriteScratch("long.wav", support::WaveBytes(8, 1000, Letters(9000))),
               support::WriteScratch("short.wav", support::WaveBytes(8, 1000, "abc")),
               support::WriteScratch("deep.wav", support::WaveBytes(24, 1000, Letters(900))),
               support::WriteScratch("cut.wav", support::WaveBytes(8, 1000, Letters(2000)).substr(0, 700)),
               support::WriteScratch("words.wav", "no sound"),
               support::ScratchFolder() + "/missing.wav"};
    sheets_ = {support::ScratchFolder() + "/one.exp", support::ScratchFolder() + "/two.exp",
               support::ScratchFolder() + "/mangled.exp", support::ScratchFolder() + "/no folder/three.exp"};
    platform::AnswerFileDialogsWith([this](const platform::FileQuestion& question) {
      if (file_) return file_;
      const bool sheet = question.save || question.filter.find("exp") != std::string::npos;
      return dice_.OneIn(8) ? std::nullopt : std::optional(dice_.Pick(sheet ? sheets_ : sounds_));
    });
    platform::AnswerMessagesWith([this](const platform::Message& message) { return AnswerTo(message); });
    platform::ReadClockFrom([this] { return now_; });
    // Room for the stand-in's frames, but not for all that a host may claim to have.
    platform::ReadFreeMemoryFrom([] { return 6e7; });
    modal_closer_.callOnTimeout([this] { LeaveModalDialog(); });
    modal_closer_.start(0);
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
    const std::string sound = form1->CommonDialog1.FileName;
    const int what = dice_.Below(100), row = form1->Grid1.Row();
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
    else if (what < 97)
      ResizeWindow();
    else if (what < 98)
      dice_.OneIn(2) ? DrawAndTakeBack() : SaveAndOpen();
    else if (what < 99)
      dice_.OneIn(2) ? OpenFramePainter() : FillCells();
    else
      CloseWindow();
    if (dice_.OneIn(2)) QCoreApplication::processEvents();
    Form1* const form = form1.IfLoaded();
    if (form == nullptr) return;
    if (!sound.empty() && form->CommonDialog1.FileName == sound && form->Grid1.Row() != row)
      random_events::CheckMarks(*form);
    KeepItQuick();
    // With nothing but the header there is little to do.
    if (form->Grid1.Rows() == 1 && dice_.OneIn(8))
      platform::RunEvent([&] { form->OpenDropped(dice_.Pick(sounds_)); });
    CheckWhatAlwaysHolds(*form);
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
    host.wallpaper =
        dice_.Pick(std::array{":/assets/icons/play.png", ":/assets/wallpapers/night.png", "none"});
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

  /// Shapes and comments on some rows, faster than by mouse and keys.
  void FillCells() {
    const auto texts = std::array{
        std::array{"A ", "Closed ", "Th", "Q", ""},
        std::array{"\u00e9", "\"no\", again", "a comment that reaches over a lot of frames", " late", ""}};
    platform::Grid& grid = form1->Grid1;
    form1->Text2_LostFocus();
    for (int cells = grid.Rows() > 1 ? dice_.Below(20) : 0; cells > 0; --cells) {
      const int column = dice_.Below(2);
      grid.SetRow(1 + dice_.Below(grid.Rows() - 1));
      grid.SetCol(1 + column);
      grid.SetText(dice_.Pick(texts[static_cast<std::size_t>(column)]));
      grid.SetCol(0);
    }
  }

  /// A press and moves on the tracks, or keys, which one Undo takes back.
  void DrawAndTakeBack() {
    if (!form1->vl_button10.value()) form1->vl_button10.SetValue(true);
    support::HandleEvents();
    const timeline::VelocityTracks& tracks = timeline::Tracks();
    const timeline::VelocityTable before = tracks.VelocityValues;
    const std::size_t steps = tracks.UndoHistory.size();
    QWidget* const canvas = form1->Picture4.Widget();
    if (dice_.OneIn(2)) {
      support::Press(canvas, PointOn(*canvas));
      for (int moves = dice_.Below(9); moves >= 0; --moves) {
        support::DragTo(canvas, PointOn(*canvas));
        support::HandleEvents();
      }
      support::Release(canvas, PointOn(*canvas));
    } else {
      support::Key(form1->Grid1.Widget(), dice_.OneIn(2) ? Qt::Key_Up : Qt::Key_Down, Qt::ShiftModifier);
    }
    // A rate that leaves no frames, typed meanwhile, leaves nothing to be undone.
    if (sheet::TrackFramesNow() == 0) return;
    if (tracks.UndoHistory.size() > steps) form1->vl_button11_Click();
    if (tracks.UndoHistory.size() != steps || tracks.VelocityValues.DifferenceFrom(before))
      Fail("Undo doesn't take back what was drawn");
  }

  /// A sheet that was saved and opened is what it was, and so is its file, but for blanks at a text's ends.
  void SaveAndOpen() {
    const std::string before = random_events::SheetInWords();
    const auto save = [this] {
      platform::RunEvent([] { form1->MenuSave_Click(); });
      return QString::fromLatin1(support::ReadWhole(*file_)).replace(QRegularExpression(" *\r\n *"), "\n");
    };
    file_ = support::WriteScratch("kept.exp", "");
    const QString saved = save();
    // Empty if the user would rather keep the frames of the tracks that the file has no room for.
    if (!saved.isEmpty()) {
      platform::RunEvent([] { form1->MenuOpen_Click(); });
      const std::string after = random_events::SheetInWords();
      const auto [old_text, text] = std::ranges::mismatch(before, after);
      if (old_text != before.end())
        Fail("a sheet changes as it is saved and opened: " + std::string(text, after.end()).substr(0, 60));
      if (save() != saved && after == before) Fail("a sheet that was opened is saved as another");
      if (const std::string told = form1->RescueSheet();
          RescueMustBeTheSame() && told != "The sheet is saved in " + *file_ + " as it stands.")
        Fail("what is rescued is another sheet: " + told);
    }
    file_.reset();
  }

  /// A rescue keeps frames of the tracks that a typed rate would cut off, and writes the numbers of rows that
  /// a spoilt file has left without.
  bool RescueMustBeTheSame() {
    const platform::Grid& grid = form1->Grid1;
    for (int row = 1; row < grid.Rows(); ++row)
      if (grid.TextMatrix(row, sheet::kFrameColumn).empty()) return false;
    return sheet::TrackFramesNow() == timeline::Tracks().VelocityValues.Frames();
  }

  void OpenFramePainter() {
    platform::RunEvent([] { form1->FramePainterM_Click(); });
    if (auto* const options = painter::fp_options.IfLoaded()) options->Command1_Click();
  }

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

  void CheckWhatAlwaysHolds(Form1& form) {
    // What was retrieved for a new roll is to be seen once that has its length, which may never come.
    auto* const window = painter::frame_painter.IfLoaded();
    if (painter::fp_options.IfLoaded() != nullptr && window != nullptr) window->ShowNewFrames();
    random_events::CheckState();
    if (event_number % kEventsBetweenLooks != 0) return;
    PaintTimeline(form);
    const int frames = desk_.host->frames, last = std::max(frames, INT32_MIN + 1) - 1;
    if (seed % 2 == 0 && form.vl_button18.value() &&
        desk_.host->current_frame != std::min(form.Grid1.Row() - 1, last))
      Fail("the host isn't where the sheet is");
    random_events::CheckPictures();
    support::HandleEvents();
    random_events::CheckScreen();
    // Narrower and back, before anything is drawn: half of each canvas is gone.
    for (platform::PictureBox* canvas : {&form.Picture2, &form.Picture4}) {
      const int width = canvas->Width();
      canvas->SetWidth(width / 2);
      canvas->SetWidth(width);
    }
    PaintTimeline(form);
    random_events::CheckPictures();
    random_events::CheckGrid(form.Grid1);
  }

  /// Not all that a user changes is to be seen at once: a rate as it is typed, a comment before its cell is
  /// left.
  void PaintTimeline(Form1& form) {
    platform::RunEvent([&form] {
      form.PaintWav();
      form.PaintVelocity();
    });
  }

  Dice dice_;
  support::Desk desk_;
  std::vector<std::string> sounded_;
  support::ScriptedOutput output_{sounded_};
  QTimer modal_closer_, hand_;
  /// Answers the file dialogs, if there is one.
  std::optional<std::string> file_;
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
  if (seed % 3 == 0) setenv("QT_SCALE_FACTOR", "1.5", 1);
  std::signal(SIGALRM, [](int) { Fail("it doesn't end"); });
  const auto application = platform::MakeApplication(argument_count, arguments);
  platform::PrepareApplication();
  // A blinking cursor would be another picture at each look.
  QApplication::setCursorFlashTime(0);
  {
    AimlessUser user;
    user.Work(events);
    platform::DestroyAllWindows();
  }
  return 0;
}
