// The window of the stand-in for a host: embedded in the tool or in a process of its own, it is the same.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
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

enum class Place { Embedded, Apart };

class StandInWindow : public QMainWindow, public StandInView {
  Q_DECLARE_TR_FUNCTIONS(host::StandInWindow)

 public:
  StandInWindow(std::shared_ptr<StandIn> stand_in, Place place);
  ~StandInWindow() override;

  /// A line for the user in the status row, as long as no display is open there.
  void ShowNote(const QString& text);

  /// Embedded: whether the process may end now that the tool's last window has closed. If the user keeps
  /// frames that aren't saved, this window stays and ends the process when it is closed.
  bool MayEndWithTool();

  void FrameMoved() override;
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
  // The parts.
  QWidget* MakeBody();
  QWidget* MakeCaptionRow();
  QWidget* MakeTransportRow();
  QWidget* MakeStatusRow();
  void MakeTransportActions();
  QAction* MakeStepAction(const char* name, const QIcon& icon, const QString& text, const QKeySequence& keys,
                          std::function<void()> step);
  void PutInCorner();

  // The menus.
  void MakeMenus();
  void MakeAnimationMenu();
  void MakePlayMenu();
  void MakeLookMenu();
  void MakeToolsMenu();
  void MakeHelpMenu();
  void AddWallpapers(QMenu* menu);
  void ChooseTheme(Theme theme);
  void ChooseWallpaper(const QString& name_or_path);
  /// Takes on a wallpaper and ticks it in the menu; the tools' windows hear of it from DressTools.
  void PutWallpaper(const QString& name_or_path);
  void DressTools();
  void AskWallpaper();
  void AskNewAnimation();
  void OpenDemonstration();
  void AskPictures();
  void AskFolder();
  void OpenPictures(const QStringList& files);
  void OpenFolder(const QString& folder);
  /// Pictures, or a folder of them, as if they had been opened from the menu.
  void OpenDropped(const QStringList& paths);
  void AskSave();
  bool MayReplacePictures(const QString& base);
  void SaveFrames(const QString& base);
  void AskRate();
  /// Whether frames that are nowhere else may go; asks the user.
  bool MayDropFrames();
  /// False, after a word to the user, while a tool reads or writes frames.
  bool FramesAreFree();
  bool MayReplaceFrames();
  bool MayQuit();
  void StartTool();
  void ShowFailure(const QString& text);
  void About();

  // What they show.
  void RefreshSoon();
  void RefreshFrame();
  void RefreshCaptions();
  void RefreshStatus();
  QString WhatToolsDid() const;
  void LayOutStatus();
  void ShowStatusAtOnce();
  void ShowFrameAtOnce();
  qint64 NextPaint(qint64 start_ms) const;

  // Playing.
  void StepTo(int frame);
  void TogglePlay();
  void StopPlay();
  void PlayTick();
  double FramesPerSecond() const;

  std::shared_ptr<StandIn> stand_in_;
  Place place_;

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
