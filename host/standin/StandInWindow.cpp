#include "host/standin/StandInWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>
#include <utility>

#include "host/standin/FrameView.h"
#include "host/standin/HostSettings.h"
#include "host/standin/StandInLook.h"
#include "host/standin/animation.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/QuietLook.h"
#include "platform/Translation.h"

namespace host {

StandInWindow::StandInWindow(std::shared_ptr<StandIn> stand_in, RunsAs runs_as)
    : stand_in_(std::move(stand_in)), runs_as_(runs_as) {
  setObjectName("StandIn");
  setWindowTitle(tr("Vellumark (stand-in)"));
  setWindowIcon(platform::ProgramIcon("host"));
  // The tool's process lives as long as the tool's windows, however long the host's stays open.
  setAttribute(Qt::WA_QuitOnClose, runs_as == RunsAs::Program);
  setAttribute(Qt::WA_ShowWithoutActivating, runs_as == RunsAs::PartOfTool);
  DressStandIn(*this);
  MakeTransportActions();
  setCentralWidget(MakeBody());
  MakeMenus();
  setAcceptDrops(true);
  picture_folder_ = QString::fromStdString(platform::DocumentsFolder());
  stand_in_->SetWallpaper(WallpaperFile(ChosenWallpaper()).toStdString());

  paint_clock_.start();
  refresh_timer_.setSingleShot(true);
  connect(&refresh_timer_, &QTimer::timeout, this,
          [this] { platform::RunEvent([this] { RefreshFrame(); }); });
  play_timer_.setTimerType(Qt::PreciseTimer);
  connect(&play_timer_, &QTimer::timeout, this, [this] { platform::RunEvent([this] { PlayTick(); }); });
  stand_in_->SetView(this);
  StandInWindow::AnimationChanged();
  PutInCorner();
}

StandInWindow::~StandInWindow() { stand_in_->SetView(nullptr); }

QWidget* StandInWindow::MakeBody() {
  auto* body = new QWidget(this);
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  view_ = new FrameView(*stand_in_, body);
  rows->addWidget(view_, 1);
  rows->addWidget(MakeCaptionRow());
  rows->addWidget(MakeTransportRow());
  rows->addWidget(MakeStatusRow());
  return body;
}

QWidget* StandInWindow::MakeCaptionRow() {
  auto* row = new QWidget(this);
  auto* columns = new QHBoxLayout(row);
  columns->setContentsMargins(14, 8, 14, 4);
  frame_label_ = new QLabel(row);
  frame_label_->setObjectName("FrameLabel");
  facts_label_ = new QLabel(row);
  facts_label_->setObjectName("FactsLabel");
  facts_label_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  columns->addWidget(frame_label_, 1);
  columns->addWidget(facts_label_);
  return row;
}

QWidget* StandInWindow::MakeTransportRow() {
  auto* row = new QWidget(this);
  auto* columns = new QHBoxLayout(row);
  columns->setContentsMargins(10, 2, 14, 8);
  columns->setSpacing(2);
  for (QAction* action : {first_, back_, play_, forward_, last_}) {
    auto* button = new QToolButton(row);
    button->setDefaultAction(action);
    button->setIconSize({18, 18});
    // The buttons take no focus: the space bar is for playing, and a focused button would take it. By
    // keyboard there are the slider and the actions' keys.
    button->setFocusPolicy(Qt::NoFocus);
    columns->addWidget(button);
  }
  scrub_ = new QSlider(Qt::Horizontal, row);
  scrub_->setObjectName("Scrub");
  scrub_->setAccessibleName(tr("Current frame"));
  connect(scrub_, &QSlider::valueChanged, this,
          [this](int frame) { platform::RunEvent([this, frame] { StepTo(frame); }); });
  columns->addSpacing(8);
  columns->addWidget(scrub_, 1);
  return row;
}

QWidget* StandInWindow::MakeStatusRow() {
  auto* row = new QWidget(this);
  row->setObjectName("StatusRow");
  row->setAttribute(Qt::WA_StyledBackground);
  auto* columns = new QHBoxLayout(row);
  columns->setContentsMargins(14, 5, 14, 5);
  status_label_ = new QLabel(row);
  status_label_->setObjectName("StatusLabel");
  status_bar_ = new QProgressBar(row);
  status_bar_->setObjectName("StatusBar");
  status_bar_->setAccessibleName(tr("Progress"));
  status_bar_->setTextVisible(false);
  // A long text must not widen the window.
  status_label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  columns->addWidget(status_label_, 1);
  columns->addWidget(status_bar_, 1);
  return row;
}

void StandInWindow::PutInCorner() {
  // All menus show, however long their names are in the user's language.
  resize(sizeHint().expandedTo({menuBar()->sizeHint().width(), 0}));
  const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
  const int frame_allowance = 32;
  move(std::max(room.left(), room.right() - width() - 24),
       std::max(room.top(), room.bottom() - height() - frame_allowance - 24));
}

void StandInWindow::FrameKept() {
  if (play_timer_.isActive() && !own_step_) StopPlay();
}

void StandInWindow::FrameMoved() {
  FrameKept();
  // A tool in this process may block the thread next, for the sound of the very frame that it has moved to.
  if (isVisible() && paint_clock_.elapsed() >= next_frame_paint_ms_) ShowFrameAtOnce();
  RefreshSoon();
}

void StandInWindow::ShowFrameAtOnce() {
  const qint64 start = paint_clock_.elapsed();
  RefreshFrame();
  frame_label_->repaint();
  scrub_->repaint();
  view_->ShowAtOnce();
  next_frame_paint_ms_ = NextPaint(start);
}

/// A slow screen gets fewer pictures, so that showing never takes more than a tenth of the tool's time.
qint64 StandInWindow::NextPaint(qint64 start_ms) const {
  const qint64 end_ms = paint_clock_.elapsed();
  return end_ms + std::max<qint64>(33, 9 * (end_ms - start_ms));
}

void StandInWindow::FramePainted() { RefreshSoon(); }

void StandInWindow::AnimationChanged() {
  const QSignalBlocker quiet(scrub_);
  StopPlay();
  const int frames = stand_in_->CurrentAnimation().FrameCount();
  scrub_->setRange(0, std::max(frames - 1, 0));
  scrub_->setEnabled(frames > 1);
  for (QAction* action : {first_, back_, play_, forward_, last_}) action->setEnabled(frames > 1);
  RefreshCaptions();
  // The note in the status row may speak of the frames that were there before.
  RefreshStatus();
  RefreshSoon();
}

void StandInWindow::RateChanged() {
  RefreshCaptions();
  if (play_timer_.isActive()) {
    StopPlay();
    TogglePlay();
  }
}

void StandInWindow::RefreshSoon() {
  if (refresh_pending_) return;
  refresh_pending_ = true;
  refresh_timer_.start(10);
}

void StandInWindow::RefreshFrame() {
  refresh_pending_ = false;
  const QSignalBlocker quiet(scrub_);
  scrub_->setValue(stand_in_->CurrentFrame());
  frame_label_->setText(tr("Frame %1").arg(stand_in_->CurrentFrame()));
  view_->Renew();
}

void StandInWindow::RefreshCaptions() {
  const Animation& animation = stand_in_->CurrentAnimation();
  const int frames = animation.FrameCount();
  facts_label_->setText(tr("%1  ·  %2 × %3  ·  %4 fps")
                            .arg(frames == 1 ? tr("1 frame") : tr("%1 frames").arg(frames))
                            .arg(animation.Size().width)
                            .arg(animation.Size().height)
                            .arg(QString::fromStdString(stand_in_->RateText())));
}

void StandInWindow::RefreshStatus() {
  const auto& status = stand_in_->Status();
  status_label_->setWordWrap(false);
  status_label_->setText(status ? QString::fromStdString(status->text) : WhatToolsDid());
  // While a tool reads or writes frames the animation must stay the one that it is at work on.
  animation_menu_->setEnabled(!status);
  status_bar_->setVisible(status.has_value());
  status_bar_->setValue(status ? static_cast<int>(status->percent) : 0);
  LayOutStatus();
}

/// Tells how many frames were read or written: nothing else in this window shows that a shooting or a
/// retrieval has taken place.
QString StandInWindow::WhatToolsDid() const {
  const FrameCounts& counts = stand_in_->Counts();
  if (counts.written > 0)
    return counts.written == 1 ? tr("1 frame shot") : tr("%1 frames shot").arg(counts.written);
  if (counts.read > 0)
    return counts.read == 1 ? tr("1 frame retrieved") : tr("%1 frames retrieved").arg(counts.read);
  return tr("Ready");
}

void StandInWindow::LayOutStatus() {
  // Now rather than by the event loop, which a tool in this process may block next.
  status_label_->parentWidget()->layout()->activate();
  centralWidget()->layout()->activate();
}

void StandInWindow::ShowNote(const QString& text) {
  if (stand_in_->Status()) return;
  status_label_->setWordWrap(true);
  status_label_->setText(text);
  LayOutStatus();
}

void StandInWindow::TellProblem(const QString& text) {
  std::fprintf(stderr, "vellumark-standin: %s\n", qPrintable(text));
  ShowNote(text);
}

void StandInWindow::StatusChanged() {
  // An opening or closing display always shows; progress in between as often as an eye can follow.
  const bool progress = stand_in_->Status() && status_bar_->isVisible() &&
                        status_label_->text().toStdString() == stand_in_->Status()->text;
  if (progress && paint_clock_.elapsed() < next_status_paint_ms_) return;
  RefreshStatus();
  if (isVisible()) ShowStatusAtOnce();
  // The frame that was sampled roughly in between is drawn in full quality again.
  if (!stand_in_->Status()) RefreshSoon();
}

void StandInWindow::ShowStatusAtOnce() {
  const qint64 start = paint_clock_.elapsed();
  status_label_->parentWidget()->repaint();
  ShowFrameAtOnce();
  next_status_paint_ms_ = NextPaint(start);
}

void StandInWindow::closeEvent(QCloseEvent* event) {
  if (runs_as_ == RunsAs::Program) return event->setAccepted(MayQuit());
  if (outlives_tool_) {
    const platform::ToolkitInUsersLanguage language;
    event->ignore();
    if (MayDropFrames()) platform::Quit();
    return;
  }
  // Without this window a user couldn't reach the host any more, and the sheet's process must not end with
  // its host's window: so it only steps aside.
  event->ignore();
  showMinimized();
}

}  // namespace host
