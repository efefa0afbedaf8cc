// The transport on the main window: runs by a scripted clock, slices on a scripted output, presses and drags.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <csignal>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "platform/Clock.h"
#include "platform/UntimelyEnd.h"
#include "support/ScriptedOutput.h"
#include "support/desk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Log = std::vector<std::string>;

/// 8000 samples a second of 8 bits, by length in bytes.
void PutSound(std::int32_t bytes) {
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {1, 1, 8000, 8000, 1, 8};
  sound.WaveDataLength = bytes;
  sound.Samples8 = audio::SampleArray<std::uint8_t>::Zeroed(bytes);
}

/// The main window with a sound in it, on a timeline of 514 pixels; what the output and the host are asked
/// lands in one log.
class TransportWindow : public testing::Test {
 protected:
  TransportWindow() {
    platform::ReadClockFrom([this] { return now; });
    desk.host->before = [this](std::string_view member) {
      Note();
      if (member == host_failure) throw host::HostError(member, "gone");
    };
  }
  ~TransportWindow() override { platform::ReadClockFrom(nullptr); }

  /// 12 frames per second.
  void Load(std::int32_t bytes, const std::string& name = "voice.wav") {
    PutSound(bytes);
    form.CommonDialog1.FileName = name;
    form.SetupGrid();
    form.Picture2.SetWidth(514);
    support::HandleEvents();
    Take();
  }

  /// What was asked of the output and of the host, in order, since the last take.
  Log Take() { return std::exchange(log, {}); }
  /// Of that, what sounds and stops.
  Log TakeSounds() {
    std::erase_if(log, [](const std::string& entry) { return entry[0] == 'c' || entry[0] == 'g'; });
    return Take();
  }

  void Tick(double at) {
    now = at;
    form.Timer1.Tick();
  }
  void Press(float x) { form.Picture2.MouseDown(1, 0, x, 30); }
  bool Running() { return form.Timer1.Enabled() && form.Line1.Visible(); }
  bool Idle() { return !form.Timer1.Enabled() && !form.Line1.Visible(); }

  /// Brings the host's last call into the log.
  void Note() {
    for (const std::string& call : desk.host->Take()) {
      if (call.starts_with("Vel_GotoFrame")) log.push_back("goto " + call.substr(14, call.size() - 15));
      if (call.starts_with("vel_GetTotalFrames")) log.push_back("count");
    }
  }

  double now = 1000;
  std::string host_failure;
  Log log;
  support::ScriptedOutput output{log};
  support::Desk desk;
  Form1& form = desk.Main();
};

TEST_F(TransportWindow, AWholeRunWalksTheRowsAndLeadsTheHost) {
  desk.host->frames = 10;
  Load(16000);  // 2 seconds: 24 frame rows
  form.Grid1.SetRow(5);
  Take();

  form.vl_button1.Click();
  EXPECT_EQ(form.Grid1.Row(), 0);
  EXPECT_EQ(form.Line1.X1(), 0);
  EXPECT_TRUE(Running());
  EXPECT_THAT(Take(), ElementsAre("count", "goto -1", "play voice.wav"));

  struct Step {
    double at;
    int row, cursor;
    Log calls;
  } const steps[] = {
      {1000.03125, 0, 8, {}},
      {1000.125, 1, 32, {"count", "goto 0", "count", "goto 1f"}},
      {1000.25, 3, 64, {"count", "goto 2", "count", "goto 3f"}},
      {1000.28125, 3, 72, {}},
      {1000.75, 9, 193, {"count", "goto 8", "count", "goto 9f"}},
      {1000.84375, 10, 217, {"count", "goto 9", "count"}},  // the host's animation has ended
      {1001.96875, 23, 506, {"count", "goto 9", "count"}},
      {1002.0, 23, 514, {}},  // the last row is never reached
  };
  for (const Step& step : steps) {
    Tick(step.at);
    EXPECT_EQ(form.Grid1.Row(), step.row) << step.at;
    EXPECT_EQ(form.Line1.X1(), step.cursor) << step.at;
    EXPECT_EQ(Take(), step.calls) << step.at;
    EXPECT_TRUE(Running()) << step.at;
  }
  Tick(1002.03125);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(form.Grid1.Row(), 23);
}

TEST_F(TransportWindow, RowsOnlyMoveForwardAndWithTheLockReleasedTheHostStays) {
  Load(16000);
  form.vl_button18.SetValue(false);
  form.List1.SetFocus();
  form.vl_button1.Click();
  Tick(1000.25);
  EXPECT_EQ(form.Grid1.Row(), 3);
  EXPECT_TRUE(form.Grid1.HasFocus());
  EXPECT_THAT(Take(), ElementsAre("play voice.wav", "count", "count"));
  form.Grid1.SetRow(12);
  Tick(1000.5);
  EXPECT_EQ(form.Grid1.Row(), 12);
  form.Grid1.SetRow(2);
  Tick(1000.5);
  EXPECT_EQ(form.Grid1.Row(), 6);
}

TEST_F(TransportWindow, ASecondPressStartsAnewAndStopEndsTheRun) {
  Load(16000);
  form.vl_button1.Click();
  Tick(1001.5);
  form.vl_button1.Click();
  EXPECT_EQ(form.Line1.X1(), 0);
  Tick(1001.75);
  form.vl_button5.Click();
  EXPECT_TRUE(Idle());
  EXPECT_EQ(form.Grid1.Row(), 3);
  form.vl_button5.Click();
  EXPECT_THAT(TakeSounds(), ElementsAre("play voice.wav", "play voice.wav", "stop", "stop"));
}

TEST_F(TransportWindow, AHostThatFailsCostsTheTickButNotTheRun) {
  Load(16000);
  form.vl_button1.Click();
  host_failure = "vel_GetTotalFrames";
  Tick(1000.25);
  host_failure.clear();
  Take();
  Tick(1000.5);
  EXPECT_THAT(Take(), ElementsAre("count", "goto 5", "count", "goto 6f"));
}

TEST_F(TransportWindow, WithoutASoundTheCursorOnlyFlashes) {
  form.vl_button1.Click();
  Tick(now);
  EXPECT_TRUE(Running());
  Tick(1000.03125);
  EXPECT_TRUE(Idle());
  EXPECT_THAT(TakeSounds(), IsEmpty());
}

TEST_F(TransportWindow, AShorterSoundLoadedMeanwhileEndsTheRunAtItsOwnEnd) {
  Load(16000);
  form.vl_button1.Click();
  Tick(1000.25);
  Load(4000, "short.wav");
  Tick(1000.25);
  EXPECT_EQ(form.Grid1.Row(), 3);
  Tick(1000.53125);
  EXPECT_TRUE(Idle());
  EXPECT_THAT(TakeSounds(), IsEmpty()) << "the sound that was started plays on";
}

TEST_F(TransportWindow, TheCurrentFramePlaysAsOneChannelInTheFormOfTheFile) {
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {17, 2, 11025, 44100, 4, 16};
  sound.WaveDataLength = 1000;
  sound.Samples16 = audio::SampleArray<std::int16_t>::Zeroed(1000);
  form.Grid1.SetRows(4);
  form.Grid1.SetRow(2);
  Take();
  for (const bool held : {true, false}) {
    QKeyEvent dot(QEvent::KeyPress, Qt::Key_Period, Qt::NoModifier, ".", held);
    QApplication::sendEvent(form.Grid1.Widget(), &dot);
  }
  EXPECT_THAT(Take(), ElementsAre("slice 332+333", "close 7")) << "a key that is held plays no more";
  const platform::WaveFormatEx& format = output.format;
  EXPECT_THAT((std::vector<std::uint32_t>{format.wFormatTag, format.nChannels, format.nSamplesPerSec,
                                          format.nAvgBytesPerSec, format.nBlockAlign, format.wBitsPerSample}),
              ElementsAre(1, 1, 11025, 44100, 2, 16));
}

TEST_F(TransportWindow, NothingPlaysOnTheHeaderRowWithoutFramesOrWithoutADevice) {
  Load(16000);
  form.vl_button2.Click();
  EXPECT_THAT(Take(), IsEmpty());
  form.Grid1.SetRow(1);
  output.has_device = false;
  Take();
  form.vl_button2.Click();
  EXPECT_THAT(Take(), ElementsAre("close 0"));
  Load(100);  // 0.15 frames
  form.vl_button2.Click();
  EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(TransportWindow, ASignalEndsASliceThatLastsTooLong) {
  Load(20000);
  form.Grid1.SetRow(3);
  form.vl_button2.Click();
  output.signal_instead = SIGTERM;
  const platform::EndsWatched watched;
  EXPECT_EXIT(form.vl_button2.Click(), testing::KilledBySignal(SIGTERM), "ended by a signal");
}

TEST_F(TransportWindow, APressSelectsShowsAndSoundsItsFrameOnce) {
  Load(20000);  // 2.5 seconds: 30 frames of 666.67 bytes
  Press(171);
  EXPECT_EQ(form.Grid1.Row(), 10);
  // The row's move and the press itself both repaint, and both before the sound.
  EXPECT_THAT(Take(), ElementsAre("count", "goto 9", "count", "goto 9", "slice 6000+667", "close 7"));
  EXPECT_EQ(output.format.nBlockAlign, 1);
  Press(171);
  EXPECT_THAT(Take(), ElementsAre("count", "goto 9")) << "it repaints, and plays nothing";
  Load(20000);
  Press(171);
  EXPECT_THAT(TakeSounds(), IsEmpty()) << "nor after a load";
}

/// Notes each time that a widget is painted.
struct PaintNote : QObject {
  PaintNote(QWidget* widget, Log& told) : log(told) { widget->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) log.push_back("painted");
    return false;
  }
  Log& log;
};

TEST_F(TransportWindow, AFrameShowsBeforeItSounds) {
  Load(20000);
  for (QWidget* shown : {static_cast<QAbstractScrollArea*>(form.Grid1.Widget())->viewport(),
                         form.Picture1.Widget(), form.Picture2.Widget()}) {
    const PaintNote note(shown, log);
    Press(shown == form.Picture1.Widget() ? 30 : shown == form.Picture2.Widget() ? 100 : 171);
    const Log told = Take();
    const auto painted = std::ranges::find(told, "painted"),
               slice = std::ranges::find_if(told, [](const auto&call) { return call.starts_with("slice"); });
    ASSERT_NE(slice, told.end());
    EXPECT_LT(painted, slice) << shown->objectName().toStdString();
  }
}

TEST_F(TransportWindow, ADragSoundsEachNewFrameAndStopsAtTheSheetsEnds) {
  Load(20000);
  std::vector<int> rows;
  for (const float x : {0.0F, 100.0F, 101.0F, 9000.0F, 9001.0F, -50.0F}) {
    form.Picture2.MouseMove(1, 0, x, 30);
    rows.push_back(form.Grid1.Row());
  }
  form.Picture2.MouseMove(0, 0, 300, 30);
  form.Picture2.MouseMove(3, 0, 300, 30);
  rows.push_back(form.Grid1.Row());
  EXPECT_THAT(rows, ElementsAre(1, 6, 6, 30, 30, 1, 1));
  // Frame 0 is where the last scrub stands at first, so it is silent then.
  EXPECT_THAT(TakeSounds(), ElementsAre("slice 3333+667", "slice 19333+667", "slice 0+667"));
}

TEST_F(TransportWindow, APressGivesTheGridTheFocusOnlyOverASoundAndAlsoIfItFails) {
  form.List1.SetFocus();
  Press(100);
  EXPECT_TRUE(form.List1.HasFocus()) << "no sound";
  for (const auto& [bytes, button] : {std::pair{20000, 2}, {100, 1}}) {  // the last one without a frame row
    Load(bytes);
    form.List1.SetFocus();
    form.Picture2.MouseDown(static_cast<std::int16_t>(button), 0, 171, 30);
    EXPECT_TRUE(form.Grid1.HasFocus());
    EXPECT_EQ(form.Grid1.Row(), 0) << "nothing else is done";
  }
  Load(20000);
  host_failure = "vel_GetTotalFrames";
  Press(171);
  host_failure.clear();
  Press(171);
  EXPECT_THAT(TakeSounds(), ElementsAre("slice 6000+667")) << "the failed press has not taken the frame";
}

}  // namespace
