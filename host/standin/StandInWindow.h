// The window of the stand-in for a host, the same whether the stand-in runs within the tool or by itself.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>

#include "host/standin/stand_in.h"
#include "host/standin/theme_presets.h"

class QAction;
class QLabel;
class QMenu;
class QProgressBar;
class QSlider;

namespace host {

class FrameView;

/// Whether the stand-in shares the tool's process or is a program of its own.
enum class RunsAs { PartOfTool, Program };

/// Shows the frames of a stand-in, steps through them and plays them, opens and saves pictures, and chooses
/// the tools' colours. It listens to the stand-in as its StandInView.
class StandInWindow : public QMainWindow, public StandInView {
  Q_DECLARE_TR_FUNCTIONS(host::StandInWindow)

 public:
  /// Makes the window and becomes the stand-in's view until it is destroyed. It isn't shown yet.
  StandInWindow(std::shared_ptr<StandIn> stand_in, RunsAs runs_as);
  ~StandInWindow() override;

  /// Shows a line of text in the status row, as long as no tool's progress display is open there.
  void ShowNote(const QString& text);
  /// The same for what has failed, which whoever started the program reads on its error output too.
  void TellProblem(const QString& text);

  /// Within the tool: whether the process may end now that the tool's last window has closed. If the user
  /// keeps frames that aren't saved, this window stays and ends the process when it is closed.
  bool MayEndWithTool();

  // What the stand-in tells its view.
  void FrameMoved() override;
  void FrameKept() override;
  void FramePainted() override;
  void AnimationChanged() override;
  void RateChanged() override;
  void StatusChanged() override;
  void FormSent(FormObject& form) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // The parts of the window: StandInWindow.cpp.
  /// All that stands below the menus: the frame, and below it the three rows made here.
  QWidget* MakeBody();
  /// Number of the current frame, size and rate.
  QWidget* MakeCaptionRow();
  /// Buttons for stepping and playing, and the slider through the frames.
  QWidget* MakeTransportRow();
  /// A tool's progress display, or else a note.
  QWidget* MakeStatusRow();
  void MakeTransportActions();
  QAction* MakeStepAction(const char* name, const QIcon& icon, const QString& text, const QKeySequence& keys,
                          std::function<void()> step);
  /// To the screen's right lower corner, where the tool's window leaves most room.
  void PutInCorner();

  // The menus: StandInMenus.cpp.
  void MakeMenus();
  void MakeAnimationMenu();
  void MakePlayMenu();
  void MakeLookMenu();
  void MakeToolsMenu();
  void MakeHelpMenu();
  void AddWallpapers(QMenu* menu);
  /// Stores the theme, with its wallpaper, and has the tools' windows take it on.
  void ChooseTheme(Theme theme);
  /// Stores the wallpaper and has the tools' windows take it on. Empty for none.
  void ChooseWallpaper(const QString& name_or_path);
  /// Stores a wallpaper and ticks it in the menu; the tools' windows hear of it from DressTools only.
  void PutWallpaper(const QString& name_or_path);
  /// Has every window that tools have handed over read colours and wallpaper again.
  void DressTools();
  /// Asks for a picture of the user's own as wallpaper.
  void AskWallpaper();
  /// Asks for the rate.
  void AskRate();
  /// Starts the exposure sheet, as a process of its own.
  void StartTool();
  void ShowFailure(const QString& text);
  void About();

  // The animation: StandInFrames.cpp. What is named Ask begins with a dialog.
  /// Files or a folder by the toolkit's dialog, from the folder used last; none if the user cancels. The mode
  /// for any file is that for saving.
  QStringList AskFiles(const QString& title, const QString& filter, QFileDialog::FileMode mode);
  void AskNewAnimation();
  void OpenDemonstration();
  void AskPictures();
  void AskFolder();
  void OpenPictures(const QStringList& files);
  void OpenFolder(const QString& folder);
  /// Pictures, or a folder of them, as if they had been opened from the menu.
  void OpenDropped(const QStringList& paths);
  void AskSave();
  /// Whether saving under this name may replace pictures that are there; asks the user.
  bool MayReplacePictures(const QString& base);
  void SaveFrames(const QString& base);
  /// Whether frames that are nowhere else may go; asks the user.
  bool MayDropFrames();
  /// False, after a word to the user, while a tool reads or writes frames.
  bool FramesAreFree();
  /// Both of these: whether another animation may take the place of this one.
  bool MayReplaceFrames();
  /// Whether the program may end; asks the user if frames would be lost or a tool still needs them.
  bool MayQuit();

  // What the parts show: StandInWindow.cpp.
  /// Brings the frame up to date from the event loop, once for all that happens until then.
  void RefreshSoon();
  void RefreshFrame();
  void RefreshCaptions();
  void RefreshStatus();
  /// "12 frames shot", "48 frames retrieved", or nothing: what tools did since the progress display opened.
  QString WhatToolsDid() const;
  void LayOutStatus();
  /// Repaints without waiting for the event loop, which a tool in this process may block next.
  void ShowStatusAtOnce();
  void ShowFrameAtOnce();
  /// When to repaint at once again, after a repaint that began at start_ms: painting may take a tenth of the
  /// time.
  qint64 NextPaint(qint64 start_ms) const;

  // Playing: StandInPlayback.cpp.
  void StepTo(int frame);
  void TogglePlay();
  void StopPlay();
  void PlayTick();
  double FramesPerSecond() const;

  std::shared_ptr<StandIn> stand_in_;
  RunsAs runs_as_;

  /// The tool has gone, and this window stays for its frames.
  bool outlives_tool_ = false;

  QMenu* animation_menu_ = nullptr;
  QString picture_folder_;
  FrameView* view_ = nullptr;
  QLabel* frame_label_ = nullptr;
  QLabel* facts_label_ = nullptr;
  QSlider* scrub_ = nullptr;
  QLabel* status_label_ = nullptr;
  QProgressBar* status_bar_ = nullptr;
  QAction* first_ = nullptr;
  QAction* back_ = nullptr;
  QAction* play_ = nullptr;
  QAction* forward_ = nullptr;
  QAction* last_ = nullptr;

  QTimer refresh_timer_;
  bool refresh_pending_ = false;
  bool own_step_ = false;
  QElapsedTimer paint_clock_;
  qint64 next_status_paint_ms_ = 0, next_frame_paint_ms_ = 0;

  QTimer play_timer_;
  QElapsedTimer play_clock_;
  int play_start_ = 0;
};

}  // namespace host
