// The timeline on the main window: places, zoom, scroll, what the canvases show, strokes, mouths, and the
// order in which the host hears of it all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "platform/Application.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/desk.h"
#include "timeline/MouthSets.h"
#include "timeline/velocity_values.h"

namespace {

using platform::Color;
using platform::Rgb;
using testing::IsEmpty;

constexpr Color kWave = Rgb(0, 192, 0), kTick = Rgb(32, 64, 128), kBlue = Rgb(192, 192, 255);

/// The main window with a silent 8-bit sound of 1000 samples a second: 2500 of them are 30 frames at 12 a
/// second.
class Timeline : public testing::Test {
 protected:
  void PutSound(std::int32_t samples, const char* rate = "12") {
    auto& sound = audio::LoadedSound();
    sound.WaveFormat = {1, 1, 1000, 1000, 1, 8};
    sound.WaveDataLength = samples;
    sound.Samples8 = audio::SampleArray<std::uint8_t>::Zeroed(samples);
    std::fill_n(sound.Samples8.Writable(), samples + 1, std::uint8_t{128});
    form3->Text7.SetText(rate);
    form.CommonDialog1.FileName = "silence.wav";
    form.SetupGrid();
    support::HandleEvents();
    desk.host->Take();
  }

  void PutShape(int row, const std::string& shape) {
    form.Grid1.SetRow(row);
    form.Grid1.SetCol(1);
    form.Grid1.SetText(shape);
  }

  void Drag(float x, float y) { form.Picture4.MouseMove(1, 0, x, y); }
  int Value(int frame, int channel = 0) { return timeline::Tracks().VelocityValues.At(frame, channel); }

  support::Desk desk;
  Form1& form = desk.Main();
};

/// The calls so far, and then, so many times, the ones by which PaintWav sends the host to a frame.
std::vector<std::string> Moves(int frame, int times = 1, std::vector<std::string> calls = {}) {
  for (int i = 0; i < times; ++i)
    calls.insert(calls.end(), {"vel_GetTotalFrames()", "Vel_GotoFrame(" + std::to_string(frame) + ")"});
  return calls;
}

TEST_F(Timeline, TellsTheHostOnceForEachPaintWav) {
  PutSound(2500);
  form.Grid1.SetRow(5);
  EXPECT_EQ(desk.host->Take(), Moves(4)) << "a row";
  form.Grid1.SetCol(1);
  EXPECT_EQ(desk.host->Take(), Moves(4)) << "a column";
  form.vl_button4.Click();
  EXPECT_THAT(desk.host->Take(), IsEmpty()) << "no zoom below 100";
  form.vl_button3.Click();
  EXPECT_EQ(desk.host->Take(), Moves(4)) << "zoom in";
  form.vl_button4.Click();
  EXPECT_EQ(desk.host->Take(), Moves(4)) << "zoom out";
  form.MYCartoon.Click();
  EXPECT_EQ(desk.host->Take(), Moves(4)) << "mouth set";
  form.Form_Resize();
  EXPECT_EQ(desk.host->Take(), Moves(4, 2)) << "resize: the column goes to 2, then the repaint";
  form.Form_Resize();
  EXPECT_EQ(desk.host->Take(), Moves(4)) << "resize with column 2 current";
  form.HScroll1.Change();
  form.PaintVelocity();
  form.PaintMouth();
  EXPECT_THAT(desk.host->Take(), IsEmpty());
  desk.host->frames = INT32_MIN;
  form.PaintWav();
  EXPECT_EQ(desk.host->Take().back(), "Vel_GotoFrame(-2147483648)");
  form.vl_button18.SetValue(false);
  form.Grid1.SetRow(7);
  EXPECT_EQ(desk.host->Take(), std::vector<std::string>{"vel_GetTotalFrames()"}) << "the lock is released";
}

TEST_F(Timeline, IsLaidOutByTheWindowsSizeUntilItIsTooSmall) {
  const struct {
    int width, height, timeline, grid, list;
  } sizes[] = {{300, 188, 160, 6, 22},
               {800, 500, 660, 318, 334},
               {299, 500, 660, 318, 334},
               {800, 187, 660, 318, 334}};
  PutSound(2500);
  for (const auto& size : sizes) {
    form.ResizeClient(size.width, size.height);
    support::HandleEvents();
    for (const platform::Control* control : std::initializer_list<const platform::Control*>{
             &form.Picture3, &form.Picture2, &form.Picture4, &form.HScroll1, &form.Grid1})
      EXPECT_EQ(control->Width(), size.timeline) << control->Name();
    EXPECT_EQ(form.Grid1.Height(), size.grid);
    EXPECT_EQ(form.List1.Height(), size.list);
    EXPECT_EQ(form.Picture4.Point(size.timeline - 1, 32), kBlue) << "the tracks reach the edge";
  }
  form.SetupGrid();
  EXPECT_EQ(form.Grid1.ColWidth(2), 516 * 15);
}

TEST_F(Timeline, ZoomSetsWidthsReadoutAndRangeAndPullsTheScrollDown) {
  form.ResizeClient(652, 395);  // a viewport of 512
  support::HandleEvents();
  EXPECT_EQ(form.HScroll1.Max(), 0);
  PutSound(2500);
  for (int i = 0; i < 4; ++i) form.vl_button3.Click();
  EXPECT_EQ(form.Picture4.Point(1023, 32), kBlue);
  EXPECT_EQ(form.Label2.Caption(), "200");
  EXPECT_EQ(form.Picture4.Width(), 1024);
  EXPECT_EQ(form.HScroll1.Max(), 512);
  EXPECT_EQ(form.HScroll1.LargeChange(), 1024);
  form.HScroll1.SetValue(500);
  EXPECT_EQ(form.Picture4.Left(), -500);
  auto* bar = static_cast<QScrollBar*>(form.HScroll1.Widget());
  for (const bool held : {true, false}) {
    bar->setSliderDown(held);
    bar->setValue(held ? 300 : 500);
    EXPECT_EQ(form.Picture2.Left(), -bar->value()) << "while its handle is dragged too";
  }
  EXPECT_EQ(form.vl_button13.Left(), 0);
  form.vl_button4.Click();
  EXPECT_EQ(form.HScroll1.Max(), 384);
  EXPECT_EQ(form.Picture2.Left(), -384);
  form.ResizeClient(700, 395);
  support::HandleEvents();
  EXPECT_EQ(form.Picture2.Width(), 980);
  EXPECT_EQ(form.HScroll1.Max(), 384) << "the range waits for the next zoom";
}

TEST_F(Timeline, TheWaveformShowsTheCurrentFrameOnAGroundOfTheListsColour) {
  EXPECT_EQ(form.Picture2.Point(0, 32), kWave) << "the point is there before any sound";
  EXPECT_NE(form.Picture2.Point(1, 32), kWave);
  PutSound(2450, "10");  // 24.5 frames: 25 in the grid, 24 on the canvas
  EXPECT_EQ(form.Picture2.Point(257, 60), kTick);
  const auto boxed = [&](int x) { return form.Picture2.Point(x, 32) == Rgb(255, 63, 255); };
  form.Grid1.SetRow(4);  // frame 3 of 24: 64.25 to 85.67
  EXPECT_TRUE(boxed(75) && !boxed(96));
  form.Grid1.SetRow(5);
  EXPECT_TRUE(boxed(96) && !boxed(75));
  form.Grid1.SetRow(0);
  EXPECT_TRUE(!boxed(96) && !boxed(0));
  form.List1.SetBackColor(Rgb(200, 100, 50));
  EXPECT_EQ(form.Picture2.Point(310, 0), Rgb(42, 42, 51)) << "not before the next repaint";
  form.PaintWav();
  form.List1.SetBackColor(Rgb(20, 20, 20));
  EXPECT_EQ(form.Picture2.Point(310, 0), Rgb(100, 50, 25));
}

TEST_F(Timeline, ADrawingPutOffShowsWhatStoodAtTheCall) {
  PutSound(2500);
  const platform::RefreshPause drawings_wait;
  form.Grid1.SetRow(4);
  form.PaintWav();
  timeline::Tracks().VelocityValues.Set(29, 3, 60);
  EXPECT_NE(form.Picture4.Point(513, 59), kBlue);
  form.PaintVelocity();
  EXPECT_EQ(form.Picture4.Point(513, 59), kBlue);
}

TEST_F(Timeline, AStrokeWritesOneFrameForEachEventOfTheMouse) {
  PutSound(2500);
  Drag(257, 50);
  form.Picture4.MouseDown(1, 0, 257, 50);
  EXPECT_EQ(Value(15), 32) << "the draw toggle is off";
  EXPECT_THAT(timeline::Tracks().UndoHistory, IsEmpty());
  form.vl_button10.SetValue(true);
  form.vl_button9.Click();
  EXPECT_EQ(form.Label3.Caption(), "(Blue)");
  EXPECT_EQ(form.vl_button8.Widget()->accessibleDescription(), "") << "one is chosen";
  form.Picture4.MouseDown(2, 0, 257, 50);
  EXPECT_EQ(Value(15, 3), 32) << "a press only keeps the values";
  EXPECT_EQ(timeline::Tracks().UndoHistory.size(), 1U);
  Drag(257, 50);
  EXPECT_EQ(Value(15, 3), 50);
  EXPECT_EQ(form.Picture4.Point(266, 50), kBlue) << "drawn at 265.9, right of the pointer";
  Drag(4000, 9000);
  EXPECT_EQ(Value(29, 3), 255);
  form.Picture4.MouseMove(0, 0, 100, 5);
  EXPECT_EQ(Value(6, 3), 32) << "no button is held";
  EXPECT_EQ(Value(15, 0), 32);
  for (const char* rate : {"0", "24"}) {
    form3->Text7.SetText(rate);
    Drag(500, 60);
  }
  EXPECT_EQ(Value(29, 3), 60) << "rates that were only typed give no frames, or more than there are";
}

TEST_F(Timeline, UndoGoesStrokeByStrokeAndClearIsNoStroke) {
  PutSound(2500);
  form.vl_button10.SetValue(true);
  for (look::vl_button* chooser : {&form.vl_button6, &form.vl_button7}) {
    chooser->Click();
    form.Picture4.MouseDown(1, 0, 257, 10);
    Drag(257, 10);
    Drag(4000, 10);
  }
  form.vl_button12.Click();
  EXPECT_EQ(Value(15, 0), 32);
  EXPECT_EQ(Value(29, 1), 32);
  EXPECT_NE(form.Picture4.Point(266, 10), Rgb(255, 192, 192)) << "the stroke is off the canvas too";
  form.vl_button11.Click();
  EXPECT_EQ(Value(15, 0), 10);
  EXPECT_EQ(Value(15, 1), 32);
  EXPECT_EQ(form.Picture4.Point(266, 10), Rgb(255, 255, 192));
  form.vl_button11.Click();
  EXPECT_EQ(Value(15, 0), 32);
  form.vl_button11.Click();
  form.Picture4.MouseDown(1, 0, 257, 10);
  PutSound(2500, "24");
  EXPECT_THAT(timeline::Tracks().UndoHistory, IsEmpty()) << "a rebuild takes the history with it";
  PutSound(100, "10");
  EXPECT_EQ(timeline::Tracks().VelocityValues.Frames(), 1);
}

TEST_F(Timeline, ATrackIsDrawnByKeysWhileTheToggleIsOn) {
  PutSound(2450, "10");  // 25 frames in the grid, 24 in the tracks
  form.Grid1.SetRow(6);
  const auto key = [this](int code, bool held = false) {
    QKeyEvent press(QEvent::KeyPress, code, Qt::ShiftModifier, QString(), held);
    QApplication::sendEvent(form.Grid1.Widget(), &press);
  };
  key(Qt::Key_Up);
  EXPECT_EQ(form.Grid1.Row(), 6);
  EXPECT_EQ(Value(5), 32) << "the draw toggle is off";
  form.vl_button10.SetValue(true);
  form.vl_button8.Click();
  key(Qt::Key_Up);
  key(Qt::Key_Up, true);
  EXPECT_EQ(Value(5, 2), 28);
  key(Qt::Key_Down);
  EXPECT_EQ(Value(5, 2), 30);
  EXPECT_EQ(Value(5, 0), 32);
  EXPECT_EQ(Value(6, 2), 32);
  form.vl_button11.Click();
  form.vl_button11.Click();
  EXPECT_EQ(Value(5, 2), 32) << "a held key is one stroke";
  for (const int row : {0, 25}) {
    form.Grid1.SetRow(row);
    key(Qt::Key_Up);
    EXPECT_THAT(timeline::Tracks().UndoHistory, IsEmpty()) << "a row without a frame of the tracks";
  }
}

TEST_F(Timeline, AHiddenTrackShowsTheOneBelowIt) {
  PutSound(2500);
  form.vl_button16.SetValue(false);
  EXPECT_EQ(form.Picture4.Point(100, 32), kBlue) << "not before the repaint";
  const std::pair<look::vl_button*, Color> below[] = {
      {&form.vl_button16, Rgb(192, 255, 192)},
      {&form.vl_button15, Rgb(255, 192, 192)},
      {&form.vl_button14, Rgb(255, 255, 192)},
      {&form.vl_button13, Rgb(146, 146, 146)}};  // the bare ground
  for (const auto& [button, shown] : below) {
    button->SetValue(false);
    button->MouseUp(1, 0, 3, 3);
    EXPECT_EQ(form.Picture4.Point(100, 32), shown) << button->Name();
  }
}

class Mouths : public Timeline {
 protected:
  void SetUp() override { PutSound(2500); }
  /// What the preview shows: "sketch 2", "cartoon 9", "nothing", or a puzzle.
  std::string Shown() {
    const auto& shown = form.Picture1.ShownPicture();
    if (!shown) return "nothing";
    for (int number = 1; number <= 11; ++number) {
      if (shown == form5->MouthPicture(number)) return "sketch " + std::to_string(number);
      if (shown == form4->MouthPicture(number)) return "cartoon " + std::to_string(number);
    }
    return "?";
  }
};

TEST_F(Mouths, AreHeldOverRowsWithoutAShape) {
  EXPECT_EQ(Shown(), "nothing");
  PutShape(2, "M");
  PutShape(8, "O ");
  PutShape(9, "q");
  form.CommonDialog1.FileName.clear();  // a sheet without a sound
  desk.host->Take();
  for (const auto& [row, shown] : {std::pair{1, "nothing"},
                                   {2, "sketch 2"},
                                   {3, "sketch 2"},
                                   {8, "sketch 9"},
                                   {9, "sketch 9"},
                                   {0, "sketch 9"},
                                   {2, "sketch 2"}}) {
    form.Grid1.SetRow(row);
    EXPECT_EQ(Shown(), shown) << "row " << row;
  }
  EXPECT_THAT(desk.host->Take(), IsEmpty());
  form.List1.SetListIndex(0);
  form.List1.Click();
  EXPECT_EQ(Shown(), "sketch 2") << "the shape is taken away";
}

TEST_F(Mouths, ChangeTheirSetAtOnceOrGoBlank) {
  PutShape(2, "F ");
  form.Grid1.SetRow(1);
  form.Grid1.SetRow(2);
  EXPECT_EQ(Shown(), "sketch 7");
  form.MYCartoon.Click();
  EXPECT_EQ(Shown(), "cartoon 7");
  EXPECT_TRUE(form.MYCartoon.Checked());
  EXPECT_FALSE(form.MySketch.Checked());
  form.MYCartoon.Click();
  EXPECT_TRUE(form.MYCartoon.Checked());
  form.Picture1.SetBackColor(Rgb(1, 2, 3));
  EXPECT_EQ(form.Picture1.Point(127, 127), Rgb(255, 255, 255)) << "the mouth stays on show";
  form.Grid1.SetRow(3);
  form.MySketch.Click();
  EXPECT_EQ(Shown(), "nothing") << "the row is empty";
  EXPECT_EQ(form.Picture1.Point(60, 60), form.Picture1.BackColor());
}

}  // namespace
