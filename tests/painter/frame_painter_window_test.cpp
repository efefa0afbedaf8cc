// The frame painter's window: what the strips show, what mouse and scrolling do, what reaches the host.
#include "painter/FramePainter.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QWidget>
#include <array>
#include <csignal>

#include "painter/FPOptions.h"
#include "painter/Retrieve.h"
#include "painter/noise.h"
#include "painter/strip_state.h"
#include "painter/wiggle.h"
#include "platform/Application.h"
#include "platform/ToolkitColor.h"
#include "platform/UntimelyEnd.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace painter {
namespace {

using platform::Answer;
using platform::Rgb;
using support::DragTo;
using support::Press;
using support::Release;
using Calls = std::vector<std::string>;

/// Frames of 30 by 20, so thumbnails of 114 by 76: frame i has red 10 i, green 10 i + 1, blue 10 i + 2.
class Painter : public testing::Test {
 protected:
  void Open(int cells, int roll_length) {
    desk.host->width = 30;
    desk.host->height = 20;
    desk.host->frames = cells;
    RetrieveFrames();
    StartRoll(TheRoll(), roll_length);
    frame_painter.Hold().Show();
    support::HandleEvents();
    desk.host->Take();
  }
  void TearDown() override {
    EXPECT_EQ(TheStrips().PaintOnlyFrame, kWholeStrip) << "what is drawn next is drawn whole";
  }
  FramePainter& Window() { return *frame_painter.IfLoaded(); }
  platform::Color CellsAt(int x, int y = 40) { return Window().Picture1.Point(x, y); }
  platform::Color RollAt(int x, int y = 40) { return Window().Picture2.Point(x, y); }
  static void Click(platform::PictureBox& strip, double x) {
    Press(strip.Widget(), {x, 40});
    Release(strip.Widget(), {x, 40});
  }
  void PressCell(double x) { Click(Window().Picture1, x); }
  void PressRoll(double x) { Click(Window().Picture2, x); }
  /// A plane whose samples are told from their neighbours, the last column and row too.
  static std::vector<std::uint8_t> Spelled() {
    std::vector<std::uint8_t> plane(31 * 21);
    for (std::size_t i = 0; i < plane.size(); ++i) plane[i] = static_cast<std::uint8_t>(i * 7);
    return plane;
  }
  static std::string Told(platform::PictureBox& strip) {
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(strip.Widget());
    return list->childCount() == 1 ? list->child(0)->text(QAccessible::Name).toStdString() : "";
  }
  /// First and last column in which the screen shows a strip otherwise than it is painted.
  static std::pair<int, int> Framed(platform::PictureBox& strip) {
    const QImage screen = strip.Widget()->grab().toImage();
    std::pair<int, int> seen(-1, -1);
    for (int x = 0; x < screen.width(); ++x)
      if (const QColor at = screen.pixelColor(x, 40);
          at != platform::ToolkitColor(strip.Point(x, 40)) && at != QColor(208, 208, 208))
        seen = {seen.first < 0 ? x : seen.first, x};
    return seen;
  }
  static platform::Color Cell(int i) { return Rgb(10 * i, 10 * i + 1, 10 * i + 2); }
  static platform::Color Negative(int i) { return Rgb(255 - 10 * i, 254 - 10 * i, 253 - 10 * i); }

  support::Desk desk;
};

constexpr platform::Color kWhite = Rgb(255, 255, 255);
constexpr platform::Color kBlack = 0;

/// Whether a ruler has a number at the left edge of a thumbnail.
bool HasInk(platform::PictureBox& ruler, int left) {
  for (int x = left; x < left + 12; ++x)
    for (int y = 2; y < 16; ++y)
      if (ruler.Point(x, y) != Rgb(255, 224, 192)) return true;
  return false;
}

TEST_F(Painter, OpensWithTheFirstCellChosenABlankRollAndNumberedFrames) {
  TheStrips().PaintOnlyFrame = 3;  // what was drawn last doesn't matter
  Open(3, 5);
  EXPECT_EQ(CellsAt(113, 75), Negative(0));
  EXPECT_EQ(CellsAt(114), Cell(1));
  EXPECT_EQ(CellsAt(341), Cell(2));
  EXPECT_EQ(CellsAt(342), kBlack);
  EXPECT_EQ(RollAt(569, 75), kWhite);
  EXPECT_EQ(RollAt(570), kBlack);
  EXPECT_EQ(Window().TopWidget()->minimumHeight(), Window().TopWidget()->maximumHeight()) << "wider only";
  PressRoll(300);
  EXPECT_EQ(TheRoll().entries, (std::vector<std::int16_t>{-1, -1, 0, -1, -1}));
  EXPECT_EQ(RollAt(228), Cell(0));
  EXPECT_EQ(RollAt(227), kWhite);
  EXPECT_EQ(Told(Window().Picture2), "Frame 2 of 5, cell 0");
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(HasInk(Window().Picture7, i * 114), i < 3) << i;
    EXPECT_EQ(HasInk(Window().Picture4, i * 114), i < 5) << i;
  }
  for (const int offset : {0, -50}) {
    TheStrips().RollScrollOffset = offset;
    PressRoll(300 + offset);
    const QImage roll = Window().Picture2.Widget()->grab().toImage();
    for (const int edge : {114, 228, 342, 456})
      EXPECT_EQ(roll.pixelColor(edge + offset, 60) == QColor(208, 208, 208), edge == 114 || edge == 456)
          << "between two blank frames";
  }
}

/// Name, place and accessible name of each control of a window.
std::string ControlsOf(platform::Window& window) {
  std::string lines;
  for (const platform::Control* control : window.Controls()) {
    if (control->Kind() == platform::ControlKind::StatusBar) continue;  // as high as its theme has it
    QString line = QString::fromStdString(control->Name());
    for (const int number : {control->Left(), control->Top(), control->Width(), control->Height()})
      line += " " + QString::number(number);
    line += " " + QAccessible::queryAccessibleInterface(control->Widget())->text(QAccessible::Name);
    lines += line.toStdString() + "; ";
  }
  return lines;
}

TEST_F(Painter, StandsInItsPlacesUnderItsNames) {
  Open(3, 5);
  EXPECT_EQ(ControlsOf(Window()),
            "Label1 8 10 57 17 Your cells; vl_button1 94 8 75 17 Retrieve...; Picture3 8 34 854 123 ; "
            "Picture1 0 2 850 76 Your cells; Picture7 0 82 850 17 Numbers of your cells; "
            "HGlide1 0 100 850 19 Scroll your cells; Label2 8 166 79 19 New roll of film; "
            "Picture5 8 192 854 123 ; Picture2 0 2 850 76 New roll of film; "
            "Picture4 0 82 850 17 Frames of the new roll; "
            "HGlide2 0 100 850 19 Scroll the new roll of film; Check1 12 332 13 13 Wiggle hold; "
            "Label5 28 332 65 17 Wiggle hold; Label3 106 332 85 15 Amount of wiggle; "
            "VL_DropDial1 196 330 53 19 Amount of wiggle; Label4 264 332 77 15 Size of wiggle; "
            "VL_DropDial2 338 330 53 19 Size of wiggle; Line1 6 362 391 1 ; Line2 6 364 391 1 ; "
            "Line5 0 0 1 223 ; vl_button2 8 376 105 21 Shoot it; vl_button3 142 376 105 21 Done; "
            "Image1 700 0 37 29 ; ");
  FramePainter& window = Window();
  EXPECT_EQ(window.Caption(), "Frame painter");
  for (auto* strip : {&window.Picture1, &window.Picture2})
    EXPECT_EQ(strip->Widget()->toolTip(), "Select the frame you want to apply to the new role of film.");
  EXPECT_EQ(
      window.vl_button1.Widget()->toolTip(),
      "Reload frames from the main program.  (Note, if you've rendered frames with \"shoot it\" then you "
      "will have to reload your original animaiton frames before using this feature)");
  const auto dial = [](const look::VL_DropDial& of) { return std::vector{of.value(), of.Min(), of.Max()}; };
  EXPECT_EQ(dial(window.VL_DropDial1), (std::vector{16, 0, 32}));
  EXPECT_EQ(dial(window.VL_DropDial2), (std::vector{4, 1, 20}));
  EXPECT_EQ(ControlsOf(fp_options.Hold()),
            "Label1 30 44 156 17 Number of frames of new anim; "
            "Text1 188 42 83 19 Number of frames of new anim; "
            "Command1 122 104 101 19 Ok; ");
}

TEST_F(Painter, ChoosesACellWithAnyButtonAndNothingBesideTheCells) {
  Open(3, 5);
  PressCell(230);
  EXPECT_EQ(TheStrips().SelectedCell, 2);
  EXPECT_EQ(CellsAt(0), Cell(0));
  EXPECT_EQ(CellsAt(230), Negative(2));
  PressCell(342);
  EXPECT_EQ(TheStrips().SelectedCell, 2);
  PressCell(113);
  EXPECT_EQ(TheStrips().SelectedCell, 0);
  Press(Window().Picture1.Widget(), {120, 3}, Qt::RightButton);
  EXPECT_EQ(TheStrips().SelectedCell, 1);
  // More cells than an entry of the roll can tell apart.
  TheRetrieval().CellCount = kLastUsableCell + 3;
  for (const auto& [cell, selected] :
       {std::pair(kLastUsableCell + 1, 1), {kLastUsableCell, kLastUsableCell}}) {
    TheStrips().CellScrollOffset = -114 * cell;
    PressCell(50);
    EXPECT_EQ(TheStrips().SelectedCell, selected);
  }
  Window().Picture1.SetFocus();
  support::Key(Window().Picture1.Widget(), Qt::Key_End);
  EXPECT_EQ(TheStrips().SelectedCell, kLastUsableCell);
}

TEST_F(Painter, StampsEveryFrameThatADragCrosses) {
  Open(3, 5);
  PressCell(230);
  QWidget* strip = Window().Picture2.Widget();
  const auto drag = [strip](QPointF to, Qt::MouseButton button) {
    DragTo(strip, to, button);
    support::HandleEvents();  // moves in a row become one
  };
  Press(strip, {120, 40});
  drag({240, 40}, Qt::LeftButton);
  Release(strip, {240, 40});
  EXPECT_EQ(TheRoll().entries, (std::vector<std::int16_t>{-1, 2, 2, -1, -1}));
  Press(strip, {400, 40}, Qt::RightButton);
  drag({-113, 40}, Qt::RightButton);  // less than a thumbnail to the left: still frame 0
  drag({571, 40}, Qt::RightButton);
  EXPECT_EQ(Told(Window().Picture2), "Frame 0 of 5, cell 2");
  EXPECT_EQ(TheRoll().entries, (std::vector<std::int16_t>{2, 2, 2, 2, -1}));
  PressCell(120);
  drag({-114, 40}, Qt::LeftButton);
  EXPECT_EQ(TheRoll().entries[0], 2);
  Window().Picture2_MouseMove(0, 0, 5, 5);
  EXPECT_EQ(TheRoll().entries[0], 2);
  EXPECT_EQ(RollAt(455), Cell(2));
  EXPECT_EQ(RollAt(456), kWhite);
}

TEST_F(Painter, ScrollsByThumbnails) {
  Open(20, 30);
  Window().HGlide1.SetPosition(15);
  Window().HGlide1.Scroll();
  EXPECT_EQ(CellsAt(114), Cell(16));
  PressCell(1);
  EXPECT_EQ(TheStrips().SelectedCell, 15);
  Window().HGlide2.SetPosition(28);
  Window().HGlide2.Scroll();
  PressRoll(115);
  EXPECT_EQ(TheRoll().entries[29], 15);
  EXPECT_EQ(RollAt(0), kWhite);
  EXPECT_EQ(RollAt(114), Cell(15));
  EXPECT_EQ(RollAt(228), kBlack);
  EXPECT_FALSE(HasInk(Window().Picture7, 5 * 114) || HasInk(Window().Picture4, 2 * 114));
}

TEST_F(Painter, ChoosesAndStampsByKeyAndKeepsTheFrameInSight) {
  Open(20, 30);
  const auto keys = [](platform::PictureBox& strip, std::initializer_list<int> names) {
    strip.SetFocus();
    for (const int key : names) support::Key(strip.Widget(), key);
  };
  FramePainter& window = Window();
  keys(window.Picture1, {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right});
  EXPECT_EQ(CellsAt(228), Negative(2));
  for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier})
    support::Key(window.Picture1.Widget(), Qt::Key_Right, modifier);
  EXPECT_FALSE(window.Form_KeyDown(platform::KeyPress{}));
  EXPECT_EQ(Told(window.Picture1), "Cell 2 of 20");
  keys(window.Picture2, {Qt::Key_Right, Qt::Key_Space, Qt::Key_Space});
  EXPECT_EQ(TheRoll().entries[0], -1);
  EXPECT_EQ(RollAt(114), Cell(2));
  EXPECT_EQ(RollAt(228), Cell(2));
  EXPECT_EQ(Told(window.Picture2), "Frame 3 of 30, blank");
  const auto focused = [](platform::PictureBox& strip) {
    return bool(QAccessible::queryAccessibleInterface(strip.Widget())->child(0)->state().focused);
  };
  EXPECT_TRUE(focused(window.Picture2) && !focused(window.Picture1));
  EXPECT_EQ(Framed(window.Picture2), std::pair(342, 455));
  EXPECT_FALSE(window.Form_KeyDown(platform::KeyPress{}));
  // Seven thumbnails stand whole in a strip of 850 pixels.
  keys(window.Picture1, {Qt::Key_End, Qt::Key_Right});
  EXPECT_EQ(CellsAt(6 * 114), Negative(19));
  for (int i = 0; i < 6; ++i) keys(window.Picture1, {Qt::Key_Left});
  EXPECT_EQ(window.HGlide1.Position(), 13);
  keys(window.Picture1, {Qt::Key_Left});
  EXPECT_EQ(window.HGlide1.Position(), 12);
  keys(window.Picture2, {Qt::Key_End, Qt::Key_Space});
  EXPECT_EQ(Told(window.Picture2), "Frame 29 of 30, cell 12");
  keys(window.Picture2, {Qt::Key_Home, Qt::Key_Right});
  EXPECT_EQ(Told(window.Picture2), "Frame 1 of 30, cell 2");
  TheStrips().RollScrollOffset = -150;
  window.Picture2_Paint();
  EXPECT_EQ(Framed(window.Picture2).second, 77) << "half of it is scrolled out";
  TheStrips().RollScrollOffset = 0;
  // A press moves the place where the next key stamps.
  PressRoll(4 * 114 + 5);
  keys(window.Picture2, {Qt::Key_Right});
  EXPECT_EQ(Told(window.Picture2), "Frame 5 of 30, blank");
  PressRoll(5);
  keys(window.Picture2, {Qt::Key_Right, Qt::Key_Left});
  window.vl_button2.SetFocus();
  support::Key(window.vl_button2.Widget(), Qt::Key_Right);
  EXPECT_EQ(Told(window.Picture2), "Frame 0 of 30, cell 12");
  // In a long roll: thumbnails of 2280 pixels; and of 101, of which a position counts a third more.
  for (const auto& [width, position] : {std::pair(900, 2999), {40, 2982}}) {
    desk.host->width = width;
    desk.host->height = 30;
    desk.host->planes.clear();
    RetrieveFrames();
    StartRoll(TheRoll(), 3000);
    window.ShowNewFrames();
    keys(window.Picture2, {Qt::Key_Home, Qt::Key_End});
    EXPECT_EQ(window.HGlide2.Position(), position);
  }
  keys(window.Picture2, {Qt::Key_Left});
}

TEST_F(Painter, KeepsItsHeightAndShowsMoreWhenWidened) {
  Open(20, 30);
  Window().HGlide1.SetPosition(5);
  Window().HGlide1.Scroll();
  for (const int width : {34, 20, 1286}) {
    Window().TopWidget()->resize(width, 700);
    support::HandleEvents();
  }
  EXPECT_EQ(Window().ScaleHeight(), 424);
  FramePainter& window = Window();
  for (const platform::Control* wide :
       std::initializer_list<platform::Control*>{&window.Picture1, &window.Picture7, &window.HGlide1,
                                                 &window.Picture2, &window.Picture4, &window.HGlide2})
    EXPECT_EQ(wide->Width(), 1250) << wide->Name();
  EXPECT_EQ(window.Picture3.Width() + window.Picture5.Width(), 2 * 1254);
  EXPECT_EQ(window.StatusBar1.Width(), 1286);
  EXPECT_EQ(TheStrips().RollStripWidth, 1250);
  EXPECT_EQ(CellsAt(0), Cell(5));
  EXPECT_EQ(CellsAt(1249), Cell(15));  // 1249 div 114 is 10
  EXPECT_EQ(RollAt(1249), kWhite);
  EXPECT_TRUE(HasInk(Window().Picture4, 1140));
}

TEST_F(Painter, RetrievesAgainOnlyAfterTheWarning) {
  Open(3, 5);
  PressCell(230);
  PressRoll(10);
  desk.host->frames = 2;
  desk.host->planes[{0, 0}].assign(31 * 21, 200);
  desk.messages.answers = {Answer::Cancel};
  Window().vl_button1.Click();
  EXPECT_TRUE(desk.host->calls.empty());
  EXPECT_EQ(CellsAt(0), Cell(0));
  ASSERT_EQ(desk.messages.shown.size(), 1u);
  EXPECT_EQ(desk.messages.shown[0].buttons, platform::Buttons::OkCancel);
  EXPECT_EQ(desk.messages.shown[0].text,
            "Warning, retrieving can change your frame list if the order of the original has changed.\n"
            "Add frames to the end of the original, for best results");

  Window().vl_button1.Click();
  EXPECT_EQ(CellsAt(0), Rgb(200, 1, 2));
  EXPECT_EQ(CellsAt(228), kBlack);
  EXPECT_EQ(Window().HGlide1.Range(), 2);
  EXPECT_EQ(TheRoll().entries[0], 2);
  for (auto* strip : {&Window().Picture1, &Window().Picture2}) {
    StartRoll(TheRoll(), Window().HGlide2.Range() - 1);
    strip->Rescaled();
    EXPECT_FALSE(HasInk(Window().Picture4, TheRoll().RollLength() * 114));
  }
  EXPECT_FALSE(HasInk(Window().Picture7, 2 * 114));
}

TEST_F(Painter, ShowsAndShootsWhatItCanWhenTheHostsSizeChanges) {
  Open(3, 5);
  PressRoll(10);
  desk.host->width = 1;
  desk.host->height = 1000;  // too tall for a thumbnail
  desk.host->planes.clear();
  Window().vl_button1.Click();
  PressCell(10);
  PressRoll(130);
  Window().HGlide1.Scroll();
  EXPECT_EQ(CellsAt(0), kBlack);
  EXPECT_EQ(TheRoll().entries, (std::vector<std::int16_t>{0, -1, -1, -1, -1}));
  desk.host->frames = 1;  // what is kept no longer fits
  desk.host->width = 3000;
  desk.host->height = 2000;
  Window().vl_button1.Click();
  EXPECT_EQ(desk.messages.Texts().back(), "No animation");
  EXPECT_EQ(CellsAt(57, 10), kWhite);
  EXPECT_EQ(RollAt(0, 0), kBlack);
  desk.host->width = desk.host->height = 2000000000;
  Window().vl_button1.Click();
  desk.host->Take();
  Window().vl_button2.Click();
  EXPECT_EQ(desk.messages.Texts().back(), "There is not enough memory for a frame of the host's size.");
  EXPECT_TRUE(desk.host->calls.empty());
}

TEST_F(Painter, ShootsTheRollFrameByFrame) {
  Open(2, 3);
  const auto red = Spelled();
  desk.host->planes[{1, 0}] = red;
  RetrieveFrames();
  TheRoll().entries = {1, kBlankFrame, 5};  // cell 5 doesn't exist
  desk.host->planes.clear();
  desk.host->Take();
  bool busy = false;
  desk.host->before = [&](std::string_view member) {
    if (member == "vel_SetRbuffer") busy = platform::BusyPointerIsOn();
  };
  Window().vl_button2.Click();
  Calls expected{"vel_StatusOpen(\"Saving...\")", "vel_CreateAnimAdv(3, 2s)",
                 "vel_StatusOpen(\"Developing...\")"};
  for (int f = 0; const char* percent : {"0d", "33.33333333333333d", "66.66666666666666d"})
    expected.insert(expected.end(),
                    {"Vel_GotoFrameAdv(" + std::to_string(f++) + ", 3s)", "vel_SetRbuffer([651 bytes])",
                     "vel_SetGBuffer([651 bytes])", "vel_SetBBuffer([651 bytes])",
                     "vel_Status(" + std::string(percent) + ")"});
  expected.insert(expected.end(), {"Vel_GotoFrame(0s)", "vel_StatusClose()"});
  EXPECT_EQ(desk.host->calls, expected);
  EXPECT_TRUE(busy);
  EXPECT_FALSE(platform::BusyPointerIsOn());
  EXPECT_EQ((desk.host->planes[{0, 0}]), red);
  EXPECT_EQ((desk.host->planes[{0, 1}]), std::vector<std::uint8_t>(651, 11));
  EXPECT_EQ((desk.host->planes[{0, 2}]), std::vector<std::uint8_t>(651, 12));
  for (int channel = 0; channel < 3; ++channel)
    for (int f = 1; f < 3; ++f)
      EXPECT_EQ((desk.host->planes[{f, channel}]), std::vector<std::uint8_t>(651, 255));
}

TEST_F(Painter, WigglesEachFrameWithDrawsOfItsOwn) {
  Open(2, 3);
  using Frame = std::array<std::vector<std::uint8_t>, 3>;
  const auto spelled = Spelled();
  const Frame cell{spelled, {spelled.rbegin(), spelled.rend()}, std::vector<std::uint8_t>(651, 1)};
  for (int channel = 0; const auto& plane : cell) desk.host->planes[{0, channel++}] = plane;
  RetrieveFrames();
  TheRoll().entries = {kBlankFrame, 0, kBlankFrame};
  for (const int on : {1, 0, 1}) {
    Window().Label5.Click();
    EXPECT_EQ(Window().Check1.Value(), on);
  }
  Window().VL_DropDial1.SetValue(32);
  Window().VL_DropDial2.SetValue(1);
  UniformSequence draws;
  for (int shooting = 0; shooting < 2; ++shooting) {
    Window().vl_button2.Click();
    for (int f = 0; f < 3; ++f) {  // a blank frame takes its draws too
      Frame from = cell;
      if (f != 1) from.fill(std::vector<std::uint8_t>(651, 255));
      Frame to = from;
      WiggleFrameAt(32, 1, {draws.Next(), draws.Next()},
                    {{30, 20}, from[0].data(), from[1].data(), from[2].data()},
                    {{30, 20}, to[0].data(), to[1].data(), to[2].data()});
      for (int channel = 0; const auto& plane : to) EXPECT_EQ((desk.host->planes[{f, channel++}]), plane);
    }
  }
}

TEST_F(Painter, ASignalEndsARetrievalAndAShooting) {
  Open(2, 2);
  const platform::EndsWatched watched;
  desk.host->before = [](std::string_view member) {
    if (member == "Vel_GotoFrameAdv") std::raise(SIGTERM);
  };
  for (const look::vl_button* button : {&Window().vl_button1, &Window().vl_button2})
    EXPECT_EXIT(button->Click(), testing::KilledBySignal(SIGTERM), "ended by a signal");
}

TEST_F(Painter, ClosesOnlyOnYesAndKeepsItsState) {
  Open(3, 5);
  PressCell(230);
  PressRoll(10);
  desk.messages.answers = {Answer::No, Answer::No, Answer::Yes};
  Window().vl_button3.Click();
  ASSERT_TRUE(frame_painter.IfLoaded());
  Window().TopWidget()->close();
  ASSERT_TRUE(frame_painter.IfLoaded());
  EXPECT_EQ(RollAt(0), Cell(2));
  Window().vl_button3.Click();
  EXPECT_EQ(frame_painter.IfLoaded(), nullptr);
  EXPECT_EQ(desk.messages.Texts(), Calls(3, "Exit Frame Painter"));
  EXPECT_EQ(desk.messages.shown[0].buttons, platform::Buttons::YesNo);
  support::HandleEvents();
  frame_painter.Hold().Show();
  support::HandleEvents();
  EXPECT_EQ(TheStrips().SelectedCell, 2);
  EXPECT_EQ(CellsAt(230), Negative(2));
}

}  // namespace
}  // namespace painter
