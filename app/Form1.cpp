#include "app/Form1.h"

#include "timeline/Canvases.h"
#include "timeline/layout.h"
#include "timeline/velocity_values.h"

using platform::Rgb;

platform::WindowInstance<Form1> form1;

namespace {

/// The cursor reaches past the canvas's bottom, so that no gap shows below it.
constexpr int kCursorLength = 80;

platform::LineControl StripRule(platform::Window& window, const char* name) {
  const timeline::StripLine& rule = timeline::StripLineOf(name);
  const auto color = rule.dark ? Rgb(64, 64, 64) : Rgb(192, 192, 192);
  return {window, name, rule.x, timeline::kStripLineTop, rule.x, timeline::kStripLineBottom, color};
}

}  // namespace

Form1::Form1()
    : Window({.name = "Form1",
              .caption = "Exposure Sheet",
              .client_width = timeline::kDesignWidth,
              .client_height = timeline::kDesignHeight,
              .icons = {}}),
      List1(*this, "List1", sheet::ShapeNames()),
      Line1(Picture2, "Line1", 0, 0, 0, kCursorLength, Rgb(255, 0, 0)),
      Grid1(*this, "Grid1", 1, 3),
      Line2(StripRule(*this, "Line2")),
      Line3(StripRule(*this, "Line3")),
      Line4(StripRule(*this, "Line4")),
      Line5(StripRule(*this, "Line5")),
      Line7(StripRule(*this, "Line7")),
      Line6(StripRule(*this, "Line6")),
      MenuOpen(File, "MenuOpen", "&Open exposure sheet...", "Ctrl+O"),
      MenuSave(File, "MenuSave", "&Save exposure sheet...", "Ctrl+S"),
      OpenWave((File.AddSeparator("Bar"), File), "OpenWave", "Open &Wave file..."),
      Sampleinfo(File, "Sampleinfo", "Show sample &info..."),
      RecordAudio(File, "RecordAudio", "&Record audio..."),
      QuitMouth((File.AddSeparator("Bar2"), File), "QuitMouth", "&Quit"),
      wave_canvas_(std::make_unique<timeline::WaveCanvas>(Picture2)),
      velocity_canvas_(std::make_unique<timeline::VelocityCanvas>(Picture4)) {
  PlaceControls();
  DressButtons();
  BindSheet();
  BindTransport();
  BindTimeline();
  BindMenus();
  TabThrough({&vl_button18, &vl_button5,  &vl_button1,  &vl_button2, &vl_button3, &vl_button4, &vl_button10,
              &vl_button11, &vl_button12, &vl_button6,  &vl_button7, &vl_button8, &vl_button9, &vl_button13,
              &vl_button14, &vl_button15, &vl_button16, &HScroll1,   &List1,      &Grid1});
  // Keys go to the sheet from the start, not to the first button.
  Grid1.SetFocus();
}

Form1::~Form1() = default;

void Form1::PlaceControls() {
  for (platform::Control* control : Controls())
    if (const timeline::ControlPlace* place = timeline::FindPlace(control->Name()))
      control->Move(place->left, place->top, place->width, place->height);
  // Buttons and labels are known to assistive technology by their tips and captions.
  Grid1.SetAccessibleName("Exposure sheet");
  List1.SetAccessibleName("Mouth shapes");
  Text2.SetAccessibleName("Comment");
  Picture1.SetAccessibleName("Mouth: none");
  Picture2.SetAccessibleName("Waveform");
  Picture4.SetAccessibleName("Velocity tracks");
  HScroll1.SetAccessibleName("Timeline position");
  Picture3.SetAccessibleName("Timeline");
  Picture3.ActAsPanel();
  Text2.Move(136, 180, 100, 19);
  Text2.SetVisible(false);
  Line1.SetVisible(false);
  Picture3.SetBackColor(Rgb(64, 64, 64));
  Picture2.SetForeColor(Rgb(0, 192, 0));
  Picture4.SetBackColor(Rgb(192, 192, 192));
  Picture4.SetFont({"Arial", 6});
}

void Form1::DressButtons() {
  const struct {
    look::vl_button& button;
    const char *tip, *key;
    const char* picture;
  } tools[] = {
      {vl_button1, "Play waveform", "Space", "play"},
      {vl_button2, "Play the current frame", ".", "play_frame"},
      {vl_button3, "Zoom in", "+", "zoom_in"},
      {vl_button4, "Zoom out", "-", "zoom_out"},
      {vl_button5, "Stop playback", "Space or Esc", "stop"},
      {vl_button10, "Draw on velocity track", "", "draw"},
      {vl_button11, "Undo", "Ctrl+Z", "undo"},
      {vl_button12, "Clear velocity track", "", "clear"},
      {vl_button18, "Audio/frame lock", "", "lock"},
  };
  for (const auto& tool : tools) {
    tool.button.SetToolTip(tool.tip, tool.key);
    tool.button.SetPicture(std::string(":/assets/icons/") + tool.picture);
  }
  vl_button18.SetValue(true);
  vl_button3.SetRepeats(true);
  vl_button4.SetRepeats(true);

  const struct {
    look::vl_button &chooser, &visibility;
    const char* name;
    platform::Color color;
  } tracks[] = {
      {vl_button6, vl_button13, "yellow", Rgb(255, 255, 192)},
      {vl_button7, vl_button14, "red", Rgb(255, 192, 192)},
      {vl_button8, vl_button15, "green", Rgb(192, 255, 192)},
      {vl_button9, vl_button16, "blue", Rgb(192, 192, 255)},
  };
  for (const auto& track : tracks) {
    track.chooser.SetToolTip(std::string("Velocity ") + track.name);
    track.visibility.SetToolTip("Channel visibility");
    track.visibility.SetAccessibleName(std::string("Channel visibility, ") + track.name);
    track.visibility.SetValue(true);
    for (look::vl_button* button : {&track.chooser, &track.visibility}) {
      button->SetBorderless(true);
      button->SetBackColor(track.color);
    }
  }
  ChooseChannel(timeline::Tracks().ActiveChannel);
}

void Form1::BindSheet() {
  Grid1.Click = [this] { Grid1_Click(); };
  Grid1.EditKey = [this] { Grid1_Click(); };
  Grid1.KeyUp = [this](int key_code, int shift) { Grid1_KeyUp(key_code, shift); };
  Grid1.LeaveCell = [this] { Grid1_LeaveCell(); };
  Grid1.SelChange = [this] { Grid1_SelChange(); };
  // A view that scrolls away under the editor would leave it lying over another row.
  Grid1.Scroll = [this] { CloseCommentEditor(); };
  List1.Click = [this] { List1_Click(); };
  Text2.Change = [this] { Text2_Change(); };
  Text2.LostFocus = [this] { Text2_LostFocus(); };
  Text2.PressedElsewhere = [this] { CloseCommentEditor(); };
  Text2.Entered = [this] { Grid1.SetFocus(); };
  Text2.Escaped = [this] { Grid1.SetFocus(); };
}

void Form1::BindTransport() {
  vl_button1.Click = [this] { vl_button1_Click(); };
  vl_button2.Click = [this] { vl_button2_Click(); };
  vl_button5.Click = [this] { vl_button5_Click(); };
  Timer1.Tick = [this] { Timer1_Timer(); };
  Picture2.MouseDown = [this](auto button, auto shift, float x, float y) {
    Picture2_MouseDown(button, shift, x, y);
  };
  Picture2.MouseMove = [this](auto button, auto shift, float x, float y) {
    Picture2_MouseMove(button, shift, x, y);
  };
}

void Form1::BindTimeline() {
  vl_button3.Click = [this] { vl_button3_Click(); };
  vl_button4.Click = [this] { vl_button4_Click(); };
  // At first the canvas is as wide as its viewport, so there is nothing to scroll.
  HScroll1.SetMax(0);
  HScroll1.Change = [this] { HScroll1_Change(); };
  HScroll1.Scroll = [this] { HScroll1_Scroll(); };
  look::vl_button* choosers[] = {&vl_button6, &vl_button7, &vl_button8, &vl_button9};
  for (int channel = 0; channel < std::ssize(choosers); ++channel)
    choosers[channel]->Click = [this, channel] { ChooseChannel(channel); };
  for (look::vl_button* visibility : VisibilityButtons())
    visibility->MouseUp = [this](auto, auto, float, float) { PaintVelocity(); };
  for (platform::PictureBox* canvas : {&Picture2, &Picture4})
    canvas->Wheel = [this](float notches, auto shift, float x) { TurnWheel(notches, shift, x); };
  Picture3.Wheel = [this](float notches, auto shift, float x) {
    TurnWheel(notches, shift, x + static_cast<float>(HScroll1.Value()));
  };
  vl_button11.Click = [this] { vl_button11_Click(); };
  vl_button12.Click = [this] { vl_button12_Click(); };
  Picture4.MouseDown = [this](auto button, auto shift, float x, float y) {
    Picture4_MouseDown(button, shift, x, y);
  };
  Picture4.MouseMove = [this](auto button, auto shift, float x, float y) {
    Picture4_MouseMove(button, shift, x, y);
  };
}

void Form1::BindMenus() {
  MenuOpen.Click = [this] { MenuOpen_Click(); };
  MenuSave.Click = [this] { MenuSave_Click(); };
  OpenWave.Click = [this] { OpenWave_Click(); };
  Sampleinfo.Click = [this] { Sampleinfo_Click(); };
  RecordAudio.Click = [this] { RecordAudio_Click(); };
  QuitMouth.Click = [this] { QuitMouth_Click(); };
  tenfps.Click = [this] { ChooseRate("10"); };
  twelvefps.Click = [this] { ChooseRate("12"); };
  fifteenfps.Click = [this] { ChooseRate("15"); };
  twentyfourfps.Click = [this] { ChooseRate("24"); };
  twentyfivefps.Click = [this] { ChooseRate("25"); };
  thirtyfps.Click = [this] { ChooseRate("30"); };
  SetFPS.Click = [this] { SetFPS_Click(); };
  MySketch.SetChecked(true);
  MYCartoon.SetChecked(false);
  MySketch.Click = [this] { MySketch_Click(); };
  MYCartoon.Click = [this] { MYCartoon_Click(); };
  FramePainterM.Click = [this] { FramePainterM_Click(); };
  TakeDroppedFiles([this](const std::string& path) { OpenDropped(path); });
}
