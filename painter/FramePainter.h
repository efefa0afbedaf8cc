// The frame painter: cells above, the new roll of film below.
#pragma once

#include <cstdint>
#include <optional>

#include "host/variant.h"
#include "look/HGlide.h"
#include "look/VlButton.h"
#include "look/VlDropDial.h"
#include "painter/planes.h"
#include "painter/thumbnails.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "platform/numbers.h"

namespace painter {

class FramePainter : public platform::Window {
 public:
  FramePainter();

  // The cells.
  platform::Label Label1;         // "Your cells"
  look::vl_button vl_button1;     // "Retrieve..."
  platform::PictureBox Picture3;  // panel of the cells strip
  platform::PictureBox Picture1;  // the cells strip
  platform::PictureBox Picture7;  // its ruler
  look::HGlide HGlide1;           // its scroll control

  // The roll.
  platform::Label Label2;         // "New roll of film"
  platform::PictureBox Picture5;  // panel of the roll strip
  platform::PictureBox Picture2;  // the roll strip
  platform::PictureBox Picture4;  // its ruler
  look::HGlide HGlide2;           // its scroll control

  // The wiggle and the shooting.
  platform::CheckBox Check1;       // wiggle on or off
  platform::Label Label5;          // "Wiggle hold"
  platform::Label Label3;          // "Amount of wiggle"
  look::VL_DropDial VL_DropDial1;  // amount
  platform::Label Label4;          // "Size of wiggle"
  look::VL_DropDial VL_DropDial2;  // size
  platform::LineControl Line1;     // dark rule
  platform::LineControl Line2;     // light rule below it
  platform::LineControl Line5;     // along the left edge
  look::vl_button vl_button2;      // "Shoot it"
  look::vl_button vl_button3;      // "Done"

  platform::StatusBar StatusBar1;
  platform::ImageHolder Image1;  // the wallpaper's tile

  // Painting: FramePainter_Strips.cpp.
  void Picture1_Paint();
  void Picture2_Paint();
  void Picture7_Paint();
  void Picture4_Paint();

  // Mouse and scrolling: FramePainter_Mouse.cpp.
  void Picture1_MouseDown(std::int16_t button, std::int16_t shift, float x, float y);
  void Picture2_MouseDown(std::int16_t button, std::int16_t shift, float x, float y);
  void Picture2_MouseMove(std::int16_t button, std::int16_t shift, float x, float y);
  void SetRollFrame(std::int32_t frame, std::int16_t cell);
  void HGlide1_Scroll();
  void HGlide2_Scroll();

  // Keys in the strips: FramePainter_Keys.cpp.
  bool Form_KeyDown(const platform::KeyPress& press) override;

  // Load and layout: FramePainter_Layout.cpp.
  void Picture3_Resize();
  void Picture5_Resize();
  void Picture2_Resize();
  /// Takes over what a retrieval or a new roll has changed: the scroll ranges and both strips.
  void ShowNewFrames();

  // Retrieving and shooting: FramePainter_Shooting.cpp.
  void vl_button1_Click();
  void vl_button2_Click();
  void vl_button3_Click();

  // The theme. This window's twins of the main window's routines.
  void PrefsCallback(platform::Window& form);
  void Draw_Pattern(platform::Window& form);
  /// Without a picture that can be loaded the backdrop is plain.
  void LoadWallpaper();

 protected:
  void Form_Load() override;
  void Form_Paint() override;
  void Form_Resize() override;
  void Form_Unload(platform::Flag& cancel) override;

 private:
  void PlaceControls();
  void ColorControls();
  void BindEvents();
  void SetScrollRanges();

  void ChooseCell(std::int32_t cell);
  void GoToFrame(std::int32_t frame);
  /// What part of a strip is shown; nothing if the frames give no thumbnails.
  std::optional<StripView> CellsView() const;
  std::optional<StripView> RollView() const;
};

/// The shape of planes that hold a strip's picture in the screen's own pixels.
PlaneShape PlanesOfStrip(platform::PictureBox& strip);

extern platform::WindowInstance<FramePainter> frame_painter;
host::FormObject& FramePainterForm();

}  // namespace painter
