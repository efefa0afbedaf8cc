// The stand-in's transport: stepping and playing.
#include <QAction>
#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "host/standin/StandInLook.h"
#include "host/standin/StandInWindow.h"
#include "platform/Application.h"
#include "platform/numbers.h"

namespace host {

QAction* StandInWindow::MakeStepAction(const char* name, const QIcon& icon, const QString& text,
                                       const QKeySequence& keys, std::function<void()> step) {
  auto* action = new QAction(icon, text, this);
  action->setObjectName(name);
  action->setShortcut(keys);
  action->setToolTip(text + " (" + keys.toString(QKeySequence::NativeText) + ")");
  connect(action, &QAction::triggered, this, [step = std::move(step)] { platform::RunEvent(step); });
  return action;
}

void StandInWindow::MakeTransportActions() {
  const auto last = [this] { return stand_in_->CurrentAnimation().FrameCount() - 1; };
  first_ = MakeStepAction("First", TransportIcon(Transport::First), tr("First frame"), Qt::Key_Home,
                          [this] { StepTo(0); });
  back_ = MakeStepAction("Back", TransportIcon(Transport::Back), tr("One frame back"), Qt::Key_Comma,
                         [this] { StepTo(stand_in_->CurrentFrame() - 1); });
  play_ = MakeStepAction("Play", TransportIcon(Transport::Play), tr("Play"), Qt::Key_Space,
                         [this] { TogglePlay(); });
  forward_ = MakeStepAction("Forward", TransportIcon(Transport::Forward), tr("One frame on"), Qt::Key_Period,
                            [this] { StepTo(stand_in_->CurrentFrame() + 1); });
  last_ = MakeStepAction("Last", TransportIcon(Transport::Last), tr("Last frame"), Qt::Key_End,
                         [this, last] { StepTo(last()); });
}

void StandInWindow::StepTo(int frame) {
  StopPlay();
  stand_in_->GotoFrame(frame);
}

double StandInWindow::FramesPerSecond() const {
  return std::clamp(platform::NumberAtStart(stand_in_->RateText()), 0.1, 240.0);
}

void StandInWindow::TogglePlay() {
  if (play_timer_.isActive()) return StopPlay();
  if (stand_in_->CurrentAnimation().FrameCount() < 2) return;
  play_start_ = stand_in_->CurrentFrame();
  play_clock_.start();
  play_timer_.start(std::max(4, static_cast<int>(500 / FramesPerSecond())));
  play_->setIcon(TransportIcon(Transport::Pause));
  play_->setText(tr("Pause"));
}

void StandInWindow::StopPlay() {
  play_timer_.stop();
  play_->setIcon(TransportIcon(Transport::Play));
  play_->setText(tr("Play"));
}

void StandInWindow::PlayTick() {
  // By the clock, not by counting ticks: a late tick skips frames instead of slowing the film down.
  const double passed = std::floor(static_cast<double>(play_clock_.elapsed()) / 1000 * FramesPerSecond());
  const auto frames = static_cast<double>(stand_in_->CurrentAnimation().FrameCount());
  own_step_ = true;
  stand_in_->GotoFrame(static_cast<int>(std::fmod(play_start_ + passed, frames)));
  own_step_ = false;
}

}  // namespace host
