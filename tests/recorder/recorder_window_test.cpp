#include "recorder/RecorderWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QApplication>
#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <mutex>
#include <thread>

#include "platform/Translation.h"
#include "recorder/LevelMeter.h"
#include "recorder/side_thread.h"
#include "support/desk.h"

namespace recorder {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;

/// The machine's sound as the test wants it. A device delivers when the test says so.
struct Machine {
  std::mutex mutex;
  platform::SoundDevices devices{{"Microphone", "Line"}, true};
  std::atomic<bool> refuses = false;
  std::string opened;
  platform::TakeSamples take;
  std::atomic<bool> lost = false;
  /// Held by a test, it makes the opening hang.
  std::mutex opening;
  std::atomic<std::chrono::milliseconds> now{1h};
};

struct FakeCapture : platform::CaptureDevice {
  explicit FakeCapture(std::shared_ptr<Machine> on) : machine(std::move(on)) {}
  void Start() override {}
  bool IsLost() const override { return machine->lost; }
  std::shared_ptr<Machine> machine;
};

class Recorder : public testing::Test {
 protected:
  Recorder() {
    // A home without a folder for documents.
    setenv("HOME", support::ScratchFolder().c_str(), 1);
    std::filesystem::remove_all(TakeFolder());
    MakeWindow();
  }
  ~Recorder() override {
    window_.reset();
    EXPECT_TRUE(AllAsideEnded(10s));
  }

  static std::string TakeFolder() { return support::ScratchFolder() + "/takes"; }

  void MakeWindow(bool finds_devices = true) {
    window_.reset();
    window_ = std::make_unique<RecorderWindow>(Surroundings{
        [machine = machine_] {
          const std::lock_guard lock(machine->mutex);
          return machine->devices;
        },
        [machine = machine_](const std::string& name, int,
                             platform::TakeSamples take) -> std::unique_ptr<platform::CaptureDevice> {
          const std::lock_guard wait(machine->opening);
          const std::lock_guard lock(machine->mutex);
          machine->opened = name;
          machine->take = std::move(take);
          if (machine->refuses) return nullptr;
          return std::make_unique<FakeCapture>(machine);
        },
        [machine = machine_] { return std::chrono::steady_clock::time_point(machine->now.load()); },
        TakeFolder()});
    asks_ = window_->AskKeep;
    asks_path_ = window_->AskPath;
    window_->AskKeep = [this] { return support::Next(keeps_, Keep::Cancel); };
    window_->AskPath = [this](const QString& proposal) {
      proposed_ = proposal.toStdString();
      return QString::fromStdString(support::Next(paths_, std::string()));
    };
    window_->Tell = [this](const QString& text) { told_.push_back(text.toStdString()); };
    // Its own timer takes what was found.
    if (finds_devices) Until([this] { return !Status().starts_with("Looking for"); }, false);
  }

  /// Lets the window work until that is so. A device's side has a thread of its own, hence the loop.
  void Until(const std::function<bool()>& so, bool ticking = true) {
    for (int i = 0; i < 10'000 && !so(); ++i) {
      ticking ? window_->Tick() : QCoreApplication::processEvents();
      std::this_thread::sleep_for(1ms);
    }
    EXPECT_TRUE(so()) << Status();
  }

  /// With a mark in front of what is told in the colour of warnings.
  std::string Status() {
    const auto& status = *window_->findChild<QLabel*>("Status");
    return (status.styleSheet().isEmpty() ? "" : "! ") + status.text().toStdString();
  }
  std::string Time() { return window_->findChild<QLabel*>("Time")->text().toStdString(); }
  QAction& Action(const char* name) { return *window_->findChild<QAction*>(name); }
  std::vector<bool> Enabled() {
    return {Action("Record").isEnabled(), Action("Stop").isEnabled(), Action("Listen").isEnabled(),
            Action("Save").isEnabled(), Devices().isEnabled()};
  }
  QComboBox& Devices() { return *window_->findChild<QComboBox*>("Devices"); }
  void Press(const char* name) { window_->findChild<QToolButton*>(name)->click(); }

  void BeginToRecord() {
    Press("RecordButton");
    Until([this] { return Status().starts_with("Recording from"); });
  }
  void SetDevices(platform::SoundDevices devices) {
    const std::lock_guard lock(machine_->mutex);
    machine_->devices = std::move(devices);
  }
  void Deliver(std::vector<std::int16_t> samples) {
    const std::lock_guard lock(machine_->mutex);
    machine_->take(samples);
  }
  void Pass(std::chrono::milliseconds time) { machine_->now = machine_->now.load() + time; }

  std::shared_ptr<Machine> machine_ = std::make_shared<Machine>();
  std::function<Keep()> asks_;
  std::function<QString(const QString&)> asks_path_;
  std::vector<Keep> keeps_;
  std::vector<std::string> paths_, told_;
  std::string proposed_;
  std::unique_ptr<RecorderWindow> window_;
};

TEST_F(Recorder, RecordsFromTheChosenDeviceAndSaves) {
  Devices().setCurrentText("Line");
  EXPECT_THAT(Enabled(), ElementsAre(true, false, false, false, true));
  {
    // A later search that hangs is passed over, and what it finds in the end waits for the recording's.
    const std::lock_guard hanging(machine_->mutex);
    for (int i = 0; i < 4; ++i) Pass(5001ms), window_->Tick();
    EXPECT_THAT(Status(), StartsWith("Press \"Record\""));
    machine_->devices.inputs = {"Line"};
    Press("RecordButton");
  }
  Until([this] { return Status() == "Recording from \"Line\"."; });
  EXPECT_EQ(machine_->opened, "Line");
  EXPECT_THAT(Enabled(), ElementsAre(false, true, false, false, false));
  EXPECT_TRUE(window_->isWindowModified());
  Deliver(std::vector<std::int16_t>(44100, 0x1234));
  Until([this] { return Time() == "0:01.0"; });
  // 0x1234 of 0x8000.
  EXPECT_EQ(window_->findChild<QWidget*>("LevelMeter")->accessibleDescription(),
            "The loudest is at -17 decibels");
  EXPECT_EQ(Devices().count(), 2);
  Deliver({0x5678});
  Press("StopButton");
  EXPECT_THAT(Enabled(), ElementsAre(true, false, true, true, true));
  const std::filesystem::path heard = *std::filesystem::directory_iterator(TakeFolder());
  EXPECT_EQ(support::ReadWhole(heard.string()).substr(40, 4), std::string("\x8a\x58\1\0", 4))
      << "88202 bytes";
  const std::string sound = support::ScratchFolder() + "/device.raw";
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", sound.c_str(), 1);
  Press("ListenButton");
  Until([&] { return support::ReadWhole(sound).find("\x34\x12") != std::string::npos; });
  Pass(500ms);
  window_->Tick();
  EXPECT_EQ(Time(), "0:00.5") << "the place that is heard";
  for (const auto& [time, enabled] : {std::pair{500ms, ElementsAre(false, true, false, true, true)},
                                      {1ms, ElementsAre(true, false, true, true, true)}}) {
    Pass(time);
    window_->Tick();
    EXPECT_THAT(Enabled(), enabled);
  }
  const std::string folder = support::ScratchFolder() + "/voices";
  std::filesystem::create_directories(folder);
  paths_ = {support::ScratchFolder() + "/missing/voice.wav", folder + "/voice.wav"};
  Press("SaveButton");
  EXPECT_THAT(told_, ElementsAre(HasSubstr("missing/voice.wav\" can't be saved: ")));
  EXPECT_TRUE(window_->isWindowModified());
  Press("SaveButton");
  EXPECT_EQ(Status(), "Saved as \"" + folder +
                          "/voice.wav\". Open it in the exposure sheet with \"Open Wave file...\".");
  EXPECT_FALSE(window_->isWindowModified());
  const std::string saved = support::ReadWhole(folder + "/voice.wav");
  ASSERT_EQ(saved.size(), 44 + 2 * 44101U);
  EXPECT_EQ(saved.substr(44 + 2 * 44099), "\x34\x12\x78\x56");
  EXPECT_EQ(proposed_, support::ScratchFolder() + "/recording.wav") << "there is no folder for documents";
  std::filesystem::copy(folder + "/voice.wav", folder + "/recording.wav");
  Press("SaveButton");
  EXPECT_EQ(proposed_, folder + "/recording 2.wav");
  QTimer::singleShot(0, window_.get(), [] {
    auto& dialog = *qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    EXPECT_TRUE(dialog.selectedFiles()[0].endsWith("/recording 2.wav"));
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    dialog.selectFile("take");
    static_cast<QDialog&>(dialog).accept();
  });
  EXPECT_EQ(asks_path_(QString::fromStdString(proposed_)).toStdString(), folder + "/take.wav");
  window_->AskPath = [](auto&) -> QString { throw std::runtime_error("ink"); };
  Press("SaveButton");
  EXPECT_EQ(told_.back(), "Something has gone wrong: ink");
}

TEST_F(Recorder, ADeviceThatFailsIsToldAndKeepsWhatWasRecorded) {
  const auto fill_disk = [this] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit full{44 + 2 * 22050, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &full);
    Deliver({1});
  };
  const std::pair<std::function<void()>, std::string> ways[] = {
      {[this] { machine_->lost = true; }, "\"Microphone\" has gone."},
      {[this] { Pass(2001ms); }, "\"Microphone\" delivers no sound any more."},
      {fill_disk, "The recording can't be written: File too large."},
      {[&] { fill_disk(), Press("StopButton"); }, "The recording can't be written: File too large."}};
  BeginToRecord();
  // A minute waits while the window is kept from writing; what comes on top is lost, and all behind it.
  for (const std::size_t count : {60U * 44100U, 2U, 0U}) Deliver(std::vector<std::int16_t>(count));
  window_->Tick();
  EXPECT_EQ(Status(),
            "! The disk is too slow for the recording. What was recorded until then is kept: 1:00.0.");
  keeps_ = {Keep::Discard};
  for (const auto& [fail, words] : ways) {
    BeginToRecord();
    Deliver(std::vector<std::int16_t>(22050));
    Until([this] { return Time() == "0:00.5"; });
    fail();
    Until([this] { return !Status().starts_with("Recording from"); });
    EXPECT_EQ(Status(), "! " + words + " What was recorded until then is kept: 0:00.5.");
    EXPECT_THAT(Enabled(), ElementsAre(true, false, true, true, true));
    machine_->lost = false;
    keeps_ = {Keep::Discard};
  }
}

TEST_F(Recorder, ADeviceThatCantBeOpenedIsTold) {
  machine_->refuses = true;
  Press("RecordButton");
  Until([this] { return Status().starts_with("! \"Microphone\" can't be opened."); });
  machine_->opening.lock();
  Press("RecordButton");
  Pass(5000ms);
  window_->Tick();
  EXPECT_EQ(Status(), "Opening \"Microphone\"...");
  Pass(1ms);
  window_->Tick();
  EXPECT_EQ(Status(), "! \"Microphone\" doesn't answer. Nothing was recorded.");
  machine_->opening.unlock();
  EXPECT_THAT(Enabled(), ElementsAre(true, false, false, false, true));
  // The two seconds in which sound has to come begin when the device is open.
  machine_->refuses = false;
  machine_->opening.lock();
  Press("RecordButton");
  Pass(4000ms);
  machine_->opening.unlock();
  Until([this] { return Status().starts_with("Recording from"); });
  Pass(2000ms);
  window_->Tick();
  EXPECT_THAT(Status(), StartsWith("Recording from"));
}

TEST_F(Recorder, WithoutDevicesItSaysSoUntilOneIsConnected) {
  {
    const std::lock_guard hanging(machine_->mutex);
    MakeWindow(false);
    for (const auto& [time, status] : {std::pair{5000ms, "Looking for recording devices..."},
                                       {1ms, "! The sound system doesn't answer."}}) {
      Pass(time);
      window_->Tick();
      EXPECT_EQ(Status(), status);
    }
  }
  Until([this] { return Devices().count() == 2; });
  Devices().setCurrentText("Line");
  SetDevices({{"Headset", "Microphone", "Line"}, true});
  Until([this] { return Devices().count() == 3; });
  EXPECT_EQ(Devices().currentText(), "Line") << "the chosen one stays";
  SetDevices({});
  Until([this] { return Devices().count() == 0; });
  EXPECT_THAT(Status(), StartsWith("! No recording device was found."));
  EXPECT_THAT(Enabled(), ElementsAre(false, false, false, false, false));
  SetDevices({{"Microphone"}, false});
  Until([this] { return bool{Enabled()[0]}; });
  EXPECT_THAT(Status(), StartsWith("Press \"Record\" and speak."));
  BeginToRecord();
  Deliver({1, 32767, 1});
  Press("StopButton");
  EXPECT_THAT(Status(), StartsWith("Recorded, but too loud in places"));
  Press("ListenButton");
  EXPECT_EQ(Status(), "! There is no device to listen with.");
  keeps_ = {Keep::Discard};
  BeginToRecord();
  Deliver({1});
  Press("StopButton");
  EXPECT_EQ(Status(), "Recorded. Listen to it, or save it.") << "this one isn't too loud";
}

TEST_F(Recorder, NothingUnsavedGoesWithoutAWord) {
  BeginToRecord();
  Deliver(std::vector<std::int16_t>(4410));
  keeps_ = {Keep::Cancel, Keep::Save, Keep::Cancel};
  EXPECT_FALSE(window_->close());
  EXPECT_THAT(Status(), StartsWith("Recorded. Listen to it, or save it."));
  for (const auto& [button, keep] : {std::pair{QMessageBox::Save, Keep::Save},
                                     {QMessageBox::Discard, Keep::Discard},
                                     {QMessageBox::Cancel, Keep::Cancel}}) {
    QTimer::singleShot(0, window_.get(), [button = button] {
      auto& box = *qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      EXPECT_EQ(box.text() + " " + box.informativeText(),
                "The recording of 0:00.1 isn't saved. Without saving it is lost.");
      EXPECT_EQ(box.standardButton(box.defaultButton()), QMessageBox::Save);
      box.button(button)->click();
    });
    EXPECT_EQ(asks_(), keep);
  }
  // The user quits by the menu, chooses to save, and then cancels the file dialog.
  window_->menuBar()->actions()[0]->menu()->actions().back()->trigger();
  EXPECT_EQ(keeps_.size(), 1U);
  Press("RecordButton");
  EXPECT_EQ(Time(), "0:00.1");
  keeps_ = {Keep::Save};
  paths_ = {support::ScratchFolder() + "/kept.wav"};
  EXPECT_TRUE(window_->close());
  EXPECT_EQ(support::ReadWhole(support::ScratchFolder() + "/kept.wav").size(), 44 + 8820U);
  EXPECT_TRUE(std::filesystem::is_empty(TakeFolder())) << "nothing is offered again";
}

TEST_F(Recorder, WhatWasntSavedIsOfferedAtTheNextStart) {
  std::string failure;
  const auto take = Take::Begin(TakeFolder(), kForm, failure);
  take->Append(std::vector<std::int16_t>(44100));
  std::filesystem::copy(take->Path(), TakeFolder() + "/take-1-1.wav");
  MakeWindow(false);
  Until([this] { return bool{Enabled()[0]}; });
  // The devices that were found meanwhile don't cover it.
  EXPECT_EQ(
      Status(),
      "A recording of 0:01.0 wasn't saved when the recorder ended. Here it is: listen to it, or save it.");
  EXPECT_THAT(Enabled(), ElementsAre(true, false, true, true, true));
  EXPECT_TRUE(window_->isWindowModified());
  EXPECT_EQ(Time(), "0:01.0");
  keeps_ = {Keep::Discard};
  std::filesystem::remove_all(TakeFolder());
  support::WriteScratch("takes", "");
  Press("RecordButton");
  EXPECT_THAT(told_, ElementsAre("A recording can't be kept in \"" + TakeFolder() + "\": Not a directory"));
  EXPECT_THAT(Enabled(), ElementsAre(true, false, false, false, true));
  EXPECT_TRUE(window_->close()) << "nothing is left to ask about";
}

TEST_F(Recorder, NamesItsControls) {
  QString all = window_->windowTitle() + "; ";
  for (const QAction* head : window_->menuBar()->actions())
    for (const QAction* action : head->menu()->actions())
      all += action->text() + " " + QKeySequence::listToString(action->shortcuts()) + "; ";
  for (const auto* control : window_->centralWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
    all += control->accessibleName() + control->toolTip() + "; ";
  EXPECT_EQ(window_->findChild<QLabel*>()->buddy(), &Devices());
  EXPECT_EQ(all.toStdString(),
            "Recorder[*]; &Record Ctrl+R; S&top Ctrl+T; Esc; &Listen Ctrl+L;  ; &Save as... Ctrl+S;  ; &Quit "
            "Ctrl+Q; &About the recorder ; ; Recording device; Length; Recording level"
            "The loudest places belong between -18 and -6 decibels.; Begin a new recording (Ctrl+R); "
            "Stop recording or listening (Ctrl+T); Hear what was recorded (Ctrl+L); "
            "Save the recording as a wave file (Ctrl+S); What the recorder is doing; ");
}

/// The bar decibel by decibel, and the lamp: dark and light green, amber and red; a dot is the ground.
std::string Shown(const QImage& image) {
  std::string shown;
  for (int decibel = -60; decibel <= 0; ++decibel) {
    const QColor color = image.pixelColor(decibel < 0 ? 576 + (2 * decibel + 1) * 566 / 120 : 590, 13);
    const char green = color.value() < 160 ? 'd' : 'g';
    shown += color.saturation() < 60 ? '.' : color.hue() < 20 ? 'r' : color.hue() < 60 ? 'a' : green;
  }
  return shown;
}

TEST(LevelMeter, ShowsTheLevelTheMarkAndTheLampOfOverload) {
  LevelMeter meter(nullptr);
  meter.resize(600, 60);
  Meter level(44100);
  level.Take(std::vector<std::int16_t>{1036});      // 30.0 decibels below the loudest
  level.Take(std::vector<std::int16_t>(11025, 0));  // and a quarter of a second without
  meter.Show(level, true);
  EXPECT_EQ(meter.accessibleDescription(), "The loudest is at -30 decibels");
  const QImage image = meter.grab().toImage();
  EXPECT_EQ(Shown(image), std::string(24, 'd') + std::string(37, '.'));
  EXPECT_EQ(image.pixelColor(292, 13), QColor(243, 244, 246)) << "the mark";
  level.Take(std::vector<std::int16_t>{32767});
  meter.Show(level, true);
  EXPECT_EQ(Shown(meter.grab().toImage()), std::string(42, 'd') + std::string(12, 'g') + "aaaaarr");
  meter.Show(level, false);
  EXPECT_EQ(Shown(meter.grab().toImage()), std::string(60, '.') + "r") << "nothing is heard";
  meter.Show(Meter(44100), false);
  EXPECT_EQ(Shown(meter.grab().toImage()), std::string(61, '.'))
      << "the next take begins without the last one's";
}

TEST(TimeText, CountsTenthsMinutesAndHours) {
  EXPECT_EQ(TimeText(9.99) + " " + TimeText(3599.96) + " " + TimeText(3662.5), "0:09.9 59:59.9 1:01:02.5");
}

TEST_F(Recorder, SpeaksGermanWhereTheUserDoes) {
  ASSERT_TRUE(platform::Translate("recorder", {"de-AT", "de"}));
  MakeWindow();
  Until([this] { return Status().starts_with("Drücken Sie „Aufnehmen“ und sprechen Sie."); });
  EXPECT_EQ(Action("Save").text(), "&Speichern unter …");
}

}  // namespace
}  // namespace recorder
