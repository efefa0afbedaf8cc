#include "host/HandedWindow.h"
#include "look/ThemeWalk.h"
#include "painter/FramePainter.h"
#include "painter/cell_store.h"
#include "painter/strip_state.h"
#include "platform/numbers.h"

namespace painter {
namespace {

using platform::PixelsFromTwips;
using platform::Rgb;

constexpr const char* kStripTip = "Select the frame you want to apply to the new role of film.";
constexpr const char* kRetrieveTip =
    "Reload frames from the main program.  (Note, if you've rendered frames with \"shoot it\" then you will "
    "have to reload your original animaiton frames before using this feature)";

/// The margin between the window's width and a strip's panel, and between the panel's width and its contents.
constexpr int kPanelMargin = 32;
constexpr int kPanelInset = 4;

/// A panel that can't take so small a width keeps the one that it has.
void TryWidth(platform::PictureBox& panel, int pixels) {
  try {
    panel.SetWidth(pixels);
  } catch (const platform::ControlError&) {
  }
  // A panel that isn't on the screen yet would hear of its new size only later.
  panel.DrawNow();
}

}  // namespace

platform::WindowInstance<FramePainter> frame_painter;

host::FormObject& FramePainterForm() {
  static host::HandedWindow<FramePainter> form("FramePainter", frame_painter);
  return form;
}

FramePainter::FramePainter()
    : Window({.name = "FramePainter",
              .caption = "Frame painter",
              .border = Border::SizableToolWindow,
              .start = Start::CenterScreen,
              .client_width = PixelsFromTwips(13290),
              .client_height = PixelsFromTwips(6360),
              .icons = {":/assets/icons/painter-29.png", ":/assets/icons/painter-29@2x.png"}}),
      Label1(*this, "Label1", "Your cells"),
      vl_button1(*this, "vl_button1"),
      Picture3(*this, "Picture3"),
      Picture1(Picture3, "Picture1"),
      Picture7(Picture3, "Picture7"),
      HGlide1(Picture3, "HGlide1"),
      Label2(*this, "Label2", "New roll of film"),
      Picture5(*this, "Picture5"),
      Picture2(Picture5, "Picture2"),
      Picture4(Picture5, "Picture4"),
      HGlide2(Picture5, "HGlide2"),
      Check1(*this, "Check1"),
      Label5(*this, "Label5", "Wiggle hold"),
      Label3(*this, "Label3", "Amount of wiggle"),
      VL_DropDial1(*this, "VL_DropDial1", "16", "", "32"),
      Label4(*this, "Label4", "Size of wiggle"),
      VL_DropDial2(*this, "VL_DropDial2", "4", "1", "20"),
      Line1(*this, "Line1", PixelsFromTwips(90), PixelsFromTwips(5430), PixelsFromTwips(5940),
            PixelsFromTwips(5430), Rgb(64, 64, 64)),
      Line2(*this, "Line2", PixelsFromTwips(90), PixelsFromTwips(5460), PixelsFromTwips(5940),
            PixelsFromTwips(5460), Rgb(255, 255, 255)),
      Line5(*this, "Line5", 0, 0, 0, PixelsFromTwips(3330), Rgb(0, 0, 0)),
      vl_button2(*this, "vl_button2"),
      vl_button3(*this, "vl_button3"),
      StatusBar1(*this, "StatusBar1"),
      Image1(*this, "Image1") {
  PlaceControls();
  ColorControls();
  BindEvents();
}

void FramePainter::PlaceControls() {
  struct ControlTwips {
    platform::Control& control;
    int left, top, width, height;  // twips
  };
  const ControlTwips places[] = {
      {Label1, 120, 150, 855, 255},         {vl_button1, 1410, 120, 1125, 255},
      {Picture3, 120, 510, 11355, 1845},    {Picture1, 0, 30, 10995, 1150},
      {Picture7, 0, 1230, 10935, 255},      {HGlide1, 0, 1500, 11295, 285},
      {Label2, 120, 2490, 1185, 285},       {Picture5, 120, 2880, 11355, 1845},
      {Picture2, 0, 30, 10935, 1150},       {Picture4, 0, 1230, 10935, 255},
      {HGlide2, 0, 1500, 11295, 285},       {Check1, 180, 4980, 195, 195},
      {Label5, 420, 4980, 975, 255},        {Label3, 1590, 4980, 1275, 225},
      {VL_DropDial1, 2940, 4950, 795, 285}, {Label4, 3960, 4980, 1155, 225},
      {VL_DropDial2, 5070, 4950, 795, 285}, {vl_button2, 120, 5640, 1575, 315},
      {vl_button3, 2130, 5640, 1575, 315},  {StatusBar1, 0, 6105, 13290, 255},
      {Image1, 10500, 0, 555, 435},
  };
  for (const ControlTwips& place : places)
    place.control.MoveTwips(place.left, place.top, place.width, place.height);
}

void FramePainter::ColorControls() {
  for (platform::PictureBox* panel : {&Picture3, &Picture5}) {
    panel->SetBackColor(Rgb(0, 0, 0));
    panel->SetForeColor(Rgb(192, 192, 192));
  }
  Picture1.SetBackColor(Rgb(255, 255, 255));
  Picture2.SetBackColor(Rgb(0, 0, 0));
  for (platform::PictureBox* ruler : {&Picture7, &Picture4}) ruler->SetBackColor(Rgb(255, 224, 192));
  vl_button1.SetCaption("Retrieve...");
  vl_button2.SetCaption("Shoot it");
  vl_button3.SetCaption("Done");
  vl_button1.SetToolTip(kRetrieveTip);
  Picture1.SetToolTip(kStripTip);
  Picture2.SetToolTip(kStripTip);
  Picture1.SetAccessibleName("Your cells");
  Picture2.SetAccessibleName("New roll of film");
  Picture7.SetAccessibleName("Numbers of your cells");
  Picture4.SetAccessibleName("Frames of the new roll");
  for (platform::PictureBox* panel : {&Picture3, &Picture5}) panel->ActAsPanel();
  for (platform::PictureBox* strip : {&Picture1, &Picture2}) strip->TakeKeyboard();
  HGlide1.SetAccessibleName("Scroll your cells");
  HGlide2.SetAccessibleName("Scroll the new roll of film");
  Check1.SetAccessibleName("Wiggle hold");
  VL_DropDial1.SetAccessibleName("Amount of wiggle");
  VL_DropDial2.SetAccessibleName("Size of wiggle");
}

void FramePainter::BindEvents() {
  Picture3.Resize = [this] { Picture3_Resize(); };
  Picture5.Resize = [this] { Picture5_Resize(); };
  Picture2.Resize = [this] { Picture2_Resize(); };
  for (platform::PictureBox* strip : {&Picture1, &Picture2}) strip->Rescaled = [this] { ShowNewFrames(); };
  Picture7.Draw = [this] { Picture7_Paint(); };
  Picture4.Draw = [this] { Picture4_Paint(); };
  Picture1.MouseDown = [this](auto... event) { Picture1_MouseDown(event...); };
  Picture2.MouseDown = [this](auto... event) { Picture2_MouseDown(event...); };
  Picture2.MouseMove = [this](auto... event) { Picture2_MouseMove(event...); };
  Label5.Click = [this] { Check1.SetValue(1 - Check1.Value()); };
  HGlide1.Scroll = [this] { HGlide1_Scroll(); };
  HGlide2.Scroll = [this] { HGlide2_Scroll(); };
  vl_button1.Click = [this] { vl_button1_Click(); };
  vl_button2.Click = [this] { vl_button2_Click(); };
  vl_button3.Click = [this] { vl_button3_Click(); };
}

void FramePainter::Form_Load() {
  LoadWallpaper();
  StripState& strips = TheStrips();
  strips.LockedHeight = platform::TwipsFromPixels(ScaleHeight());
  strips.PaintOnlyFrame = kWholeStrip;
  LimitClient(0, ScaleHeight(), 0, ScaleHeight());
  SetScrollRanges();
  Picture1_Paint();
  Picture2_Paint();
  // The rulers keep no picture of their own: they are drawn when the window first shows them.
  Picture7.DrawLater();
  Picture4.DrawLater();
}

/// Unlike the main window's, this one leaves buttons as they are. Only the host calls it.
void FramePainter::PrefsCallback(platform::Window& form) {
  const look::ThemeColors theme = look::ReadHostTheme();
  form.SetBackColor(look::kBackdrop);
  look::DressControls(form, theme, look::ButtonsAre::LeftAlone);
}

void FramePainter::Draw_Pattern(platform::Window& form) { look::TileWindow(form, Image1); }

void FramePainter::LoadWallpaper() { look::HangWallpaper(Image1); }

void FramePainter::SetScrollRanges() {
  HGlide1.SetRange(TheRetrieval().CellCount);
  HGlide2.SetRange(TheRoll().RollLength());
}

void FramePainter::ShowNewFrames() {
  SetScrollRanges();
  Picture1_Paint();
  TheStrips().PaintOnlyFrame = kWholeStrip;
  Picture2_Paint();
  Picture7.DrawLater();
  Picture4.DrawLater();
}

void FramePainter::Form_Paint() { Draw_Pattern(*this); }

void FramePainter::Form_Resize() {
  const int locked = PixelsFromTwips(TheStrips().LockedHeight);
  if (ScaleHeight() != locked) ResizeClient(ScaleWidth(), locked);
  TryWidth(Picture3, ScaleWidth() - kPanelMargin);
  TryWidth(Picture5, ScaleWidth() - kPanelMargin);
  StatusBar1.SetWidth(ScaleWidth());
}

void FramePainter::Picture3_Resize() {
  const int width = Picture3.Width() - kPanelInset;
  TryWidth(Picture1, width);
  TryWidth(Picture7, width);
  if (width >= 0) HGlide1.SetWidth(width);
  HGlide1.LayOut();
  Picture1_Paint();
  Picture7_Paint();
}

void FramePainter::Picture5_Resize() {
  const int width = Picture5.Width() - kPanelInset;
  TryWidth(Picture2, width);
  TryWidth(Picture4, width);
  if (width >= 0) HGlide2.SetWidth(width);
  HGlide2.LayOut();
  Picture2_Paint();
  Picture4_Paint();
}

void FramePainter::Picture2_Resize() {
  StripState& strips = TheStrips();
  strips.RollStripWidth = Picture2.ScaleWidth();
  strips.RollStripHeight = Picture2.ScaleHeight();
  strips.RollPlanes = StripPlanes(PlanesOfStrip(Picture2));
}

}  // namespace painter
