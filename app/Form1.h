// The main window: its controls, its menus, its routines, each routine named in the section of its subject. A
// section's routines stand in that subject's folder, in files named Form1_*.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "look/VlButton.h"
#include "platform/Dialogs.h"
#include "platform/Grid.h"
#include "platform/Menu.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "platform/numbers.h"
#include "sheet/shape_names.h"

namespace timeline {
class WaveCanvas;
class VelocityCanvas;
}  // namespace timeline

class Form1 : public platform::Window {
 public:
  Form1();
  ~Form1() override;

  // --- Start and end: app/
  void Form_Load() override;
  void Form_Paint() override;
  void Form_Unload(platform::Flag& cancel) override;
  /// The keys that do what a button does, those that step from shape to shape, and shapes by letter.
  bool Form_KeyDown(const platform::KeyPress& press) override;
  /// A sheet or a wave file, as if it had been opened from the menu.
  void OpenDropped(const std::string& path);
  void QuitMouth_Click();

  // --- The sheet: sheet/
  void SetupGrid();
  /// The current frame: the grid's row minus 1, -1 on the header row.
  std::int32_t GetCurrentTick() const;
  void Grid1_Click();
  void Grid1_KeyUp(int key_code, int shift);
  void Grid1_LeaveCell();
  void Grid1_SelChange();
  void List1_Click();
  void Text2_Change();
  void Text2_LostFocus();

  // --- Frame rate and timing: sheet/
  /// Why a rate and a sound's seconds give no sheet; empty if they do, and then there is room for its rows.
  std::string RefusalOfRows(double rate, double seconds);
  /// Whether the loaded sound has a sheet at this rate; the user is told why not.
  bool AcceptsRate(double rate);
  void InitTitleBar();
  void UseFR();
  void SetFPS_Click();
  /// The six rate items: writes the rate, asks about the host, rebuilds.
  void ChooseRate(const std::string& rate);

  // --- The sheet file: sheet/
  void MenuOpen_Click();
  void MenuSave_Click();
  /// Writes the sheet as it stands to a file of its own beside the sheet's, or else to a folder of the
  /// user's, unless it is empty or just what its file holds. It asks neither the user nor the host. Result:
  /// words for the user that say where it is, or an empty text.
  std::string RescueSheet();

  // --- The wave file: audio/
  /// Whether the load went through. Failures are reported to the user here.
  bool OpenWaveFile(const std::string& path);
  void OpenWave_Click();
  void Sampleinfo_Click();
  void RecordAudio_Click();

  // --- Transport: audio/
  void vl_button1_Click();
  void vl_button2_Click();
  void vl_button5_Click();
  void Timer1_Timer();
  void Playtick();
  void Picture2_MouseDown(std::int16_t button, std::int16_t shift, float x, float y);
  void Picture2_MouseMove(std::int16_t button, std::int16_t shift, float x, float y);

  // --- Layout, zoom, scroll: timeline/
  void Form_Resize() override;
  void CalcPictureWidths();
  void AdjustHscroll();
  void vl_button3_Click();
  void vl_button4_Click();
  void HScroll1_Change();
  void HScroll1_Scroll();

  // --- The waveform: timeline/
  void PaintWav();
  void PaintGradient();

  // --- The velocity tracks: timeline/
  void InitVelocity();
  void PaintVelocity();
  void ChooseChannel(int channel);
  /// In the order of the channels.
  std::array<look::vl_button*, 4> VisibilityButtons() {
    return {&vl_button13, &vl_button14, &vl_button15, &vl_button16};
  }
  void vl_button11_Click();
  void vl_button12_Click();
  void Picture4_MouseDown(std::int16_t button, std::int16_t shift, float x, float y);
  void Picture4_MouseMove(std::int16_t button, std::int16_t shift, float x, float y);

  // --- The mouth: timeline/
  void PaintMouth();
  void MySketch_Click();
  void MYCartoon_Click();

  // --- The frame painter's menu item: painter/
  void FramePainterM_Click();

  // --- The look: look/
  void PrefsCallback(platform::Window& form_object);
  void Draw_Pattern(platform::Window& this_object);
  /// The dialogs that stand open take on the host's colours; they aren't handed to the host themselves.
  void DressDialogs();
  /// Without a picture that can be loaded the ground is plain.
  void LoadWallpaper();

  // --- Controls, in the order in which the theme walks them.
  look::vl_button vl_button18{*this, "vl_button18", look::vl_button::TwoState};    // Audio/frame lock
  platform::PictureBox Picture1{*this, "Picture1"};                                // mouth preview
  platform::ListBox List1;                                                         // shape names
  look::vl_button vl_button5{*this, "vl_button5"};                                 // Stop playback
  look::vl_button vl_button1{*this, "vl_button1"};                                 // Play waveform
  look::vl_button vl_button2{*this, "vl_button2"};                                 // Play the current frame
  look::vl_button vl_button3{*this, "vl_button3"};                                 // Zoom in
  look::vl_button vl_button4{*this, "vl_button4"};                                 // Zoom out
  platform::Label Label2{*this, "Label2", "100", platform::Label::Align::Center};  // zoom in percent
  look::vl_button vl_button10{*this, "vl_button10", look::vl_button::TwoState};    // Draw on velocity track
  look::vl_button vl_button11{*this, "vl_button11"};                               // Undo
  look::vl_button vl_button12{*this, "vl_button12"};                               // Clear velocity track
  look::vl_button vl_button6{*this, "vl_button6"};                                 // Velocity yellow
  look::vl_button vl_button7{*this, "vl_button7"};                                 // Velocity red
  look::vl_button vl_button8{*this, "vl_button8"};                                 // Velocity green
  look::vl_button vl_button9{*this, "vl_button9"};                                 // Velocity blue
  platform::Label Label1{*this, "Label1", "Velocity track"};
  platform::Label Label3{*this, "Label3", "(Yellow)"};  // the active channel
  platform::PictureBox Picture3{*this, "Picture3"};     // viewport of the timeline
  platform::PictureBox Picture2{Picture3, "Picture2"};  // waveform
  platform::LineControl Line1;                          // playback cursor
  platform::PictureBox Picture4{Picture3, "Picture4"};  // velocity tracks
  look::vl_button vl_button13{Picture3, "vl_button13", look::vl_button::TwoState};  // yellow visible
  look::vl_button vl_button14{Picture3, "vl_button14", look::vl_button::TwoState};  // red visible
  look::vl_button vl_button15{Picture3, "vl_button15", look::vl_button::TwoState};  // green visible
  look::vl_button vl_button16{Picture3, "vl_button16", look::vl_button::TwoState};  // blue visible
  platform::HScrollBar HScroll1{Picture3, "HScroll1"};
  platform::Grid Grid1;                           // the sheet
  platform::TextBox Text2{*this, "Text2"};        // comment editor, over the grid while in use
  platform::ImageHolder Image1{*this, "Image1"};  // wallpaper
  platform::LineControl Line2, Line3, Line4, Line5, Line7, Line6;  // rules of the tool strip

  platform::CommonDialog CommonDialog1{"Select a wave file", "Wave|*.wav"};
  platform::CommonDialog CommonDialog2{"Select an exposure sheet", "Exposure sheet|*.exp"};
  platform::Timer Timer1{*this, "Timer1", 2};  // playback

  platform::Menu File{*this, "File", "&File"};
  platform::MenuItem MenuOpen, MenuSave;
  platform::MenuItem OpenWave, Sampleinfo, RecordAudio;
  platform::MenuItem QuitMouth;
  platform::Menu MenuOptons{*this, "MenuOptons", "&Timing"};
  platform::MenuItem tenfps{MenuOptons, "tenfps", "1&0 fps"};
  platform::MenuItem twelvefps{MenuOptons, "twelvefps", "1&2 fps (Film on twos)"};
  platform::MenuItem fifteenfps{MenuOptons, "fifteenfps", "15 fps (&NTSC on twos)"};
  platform::MenuItem twentyfourfps{MenuOptons, "twentyfourfps", "2&4 fps (Film)"};
  platform::MenuItem twentyfivefps{MenuOptons, "twentyfivefps", "25 fps (&PAL)"};
  platform::MenuItem thirtyfps{MenuOptons, "thirtyfps", "&30 fps (NTSC)"};
  platform::MenuItem SetFPS{MenuOptons, "SetFPS", "&Set FPS..."};
  platform::Menu MyMouth{*this, "MyMouth", "&Mouth set"};
  platform::MenuItem MySketch{MyMouth, "MySketch", "&Sketch"};
  platform::MenuItem MYCartoon{MyMouth, "MYCartoon", "&Cartoon"};
  platform::Menu Camera{*this, "Camera", "&Camera"};
  platform::MenuItem FramePainterM{Camera, "FramePainterM", "&Frame painter..."};

 private:
  void PlaceControls();
  void DressButtons();
  void BindSheet();
  void BindTransport();
  void BindTimeline();
  void BindMenus();

  /// Takes the current cell's text over into SheetCells, if the two agree in size and the cell isn't the
  /// header's.
  void RecordCell();
  void FillFrameNumbers();
  void WriteHeader();
  void ShowCommentEditor();
  void PlaceCommentEditor();
  /// The keyboard goes back to the grid, and not to whatever control comes next.
  void CloseCommentEditor();
  /// The current row takes the shape, or none; not on the header row.
  void PutShape(const std::string& shape);
  /// Who can't see the cell hears what it holds now.
  void TellShape();
  void TypeShape(char letter);
  /// While tracks are being drawn: the active one a little up (-1) or down (1) at the current frame. A held
  /// key is one stroke.
  void BendTrack(int direction, bool goes_on);
  /// To the next row that has a shape, up (-1) or down (1); stays where there is none.
  void GoToShape(int direction);

  void OpenSheet(const std::string& path);
  void OpenSound(const std::string& path);
  void TellIfSoundGivesNoRows();

  /// The cursor, the row, the mouth and the host, to where the clock stands.
  void FollowSound(double sound_seconds);
  void AdvanceToRow(std::int32_t row);
  void EndRun();
  /// Selects a frame, shows it and plays it, if it isn't the one that was scrubbed last.
  void ScrubTo(std::int32_t frame);

  void ChangeZoom(float factor);
  /// Along the timeline, or with Ctrl one click of a zoom button about the pointer. x on the canvas.
  void TurnWheel(float notches, std::int16_t shift, float x);
  void ZoomAbout(bool in, float x);
  void ChooseMouthSet(platform::MenuItem& chosen, platform::MenuItem& other);

  bool PaintedOnce = false;

  /// Clock reading in seconds since midnight when "Play waveform" was pressed.
  float PlayStartTime = 0;
  /// The frame of the last press or drag on the waveform; outlives a load.
  std::int32_t LastScrubFrame = 0;

  sheet::ShapeTyping shape_typing_;
  /// The file that the sheet was opened from or saved to last. A sound that was opened by itself begins a new
  /// sheet, which has none yet.
  std::string sheet_file_;
  /// The part of a turn of the wheel that hasn't yet added up to one zoom step.
  float zoom_turn_ = 0;

  // What the two canvases show and what they are to show next.
  std::unique_ptr<timeline::WaveCanvas> wave_canvas_;
  std::unique_ptr<timeline::VelocityCanvas> velocity_canvas_;
};

/// The one main window: form1->Grid1 loads it, form1.Hold() doesn't.
extern platform::WindowInstance<Form1> form1;
