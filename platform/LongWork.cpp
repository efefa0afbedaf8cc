#include "platform/LongWork.h"

#include <QApplication>
#include <QProgressBar>
#include <algorithm>
#include <exception>
#include <utility>

#include "platform/Control.h"
#include "platform/Dialogs.h"
#include "platform/HeldEvents.h"
#include "platform/UntimelyEnd.h"

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenPaints{100}, kBeforeBar{500};
constexpr double kShareOfInnerWork = 0.2;
constexpr int kBarSteps = 1000;

std::chrono::milliseconds patience_before_question{10'000};
LongWork* innermost = nullptr;

}  // namespace

void KeepPainted() {
  static Clock::time_point next;
  static bool painting = false;
  if (painting || QCoreApplication::instance() == nullptr || Clock::now() < next) return;
  painting = true;
  {
    // On X11, input that is left in the queue is looked at again only when something else arrives. So input
    // that is to be dropped is dropped as it comes.
    const bool drops_input = LongWork::DropsInput();
    HeldEvents held(nullptr, drops_input);
    held.Handle(drops_input ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
  }
  painting = false;
  next = Clock::now() + kBetweenPaints;
}

LongWork::LongWork(const Control* covered)
    : covered_(covered),
      outer_(std::exchange(innermost, this)),
      began_(Clock::now()),
      next_look_(began_ + kBetweenPaints) {
  // Before the control is seen nobody waits at it, and the pointer's picture would only delay the start.
  if (covered_ != nullptr && covered_->Widget()->isVisible()) busy_.emplace();
  if (outer_ == nullptr) return;
  start_ = now_ = outer_->now_;
  end_ = start_ + kShareOfInnerWork * (outer_->end_ - start_);
  began_ = outer_->began_;
}

LongWork::~LongWork() {
  innermost = outer_;
  if (outer_ != nullptr) {
    outer_->start_ = outer_->now_ = end_;
    if (bar_) outer_->bar_ = std::move(bar_);
    return;
  }
  if (covered_ != nullptr && !bar_) return;
  bar_.reset();
  if (std::uncaught_exceptions() > 0 || QCoreApplication::instance() == nullptr) return;
  DropAllInput();
}

bool LongWork::DropsInput() {
  for (const LongWork* work = innermost; work != nullptr; work = work->outer_)
    if (work->bar_ != nullptr || (work->outer_ == nullptr && work->covered_ == nullptr)) return true;
  return false;
}

void LongWork::Report(int done, int all) {
  EndIfAsked();
  if (all > 0) now_ = start_ + (end_ - start_) * done / all;
  if (Clock::now() < next_look_) return;
  if (covered_ != nullptr && Clock::now() - began_ >= kBeforeBar) ShowBar();
  KeepPainted();
  next_look_ = Clock::now() + kBetweenPaints;
}

void LongWork::ShowBar() {
  if (!bar_ && outer_ != nullptr) bar_ = std::move(outer_->bar_);
  if (!bar_) {
    QWidget* const ground = covered_->Widget();
    bar_ = std::make_unique<QProgressBar>(ground);
    bar_->setObjectName("LongWorkBar");
    bar_->setAccessibleName("Progress");
    bar_->setRange(0, kBarSteps);
    const QSize size(std::max(40, ground->width() * 3 / 4), bar_->sizeHint().height());
    bar_->setGeometry(
        QRect(QPoint((ground->width() - size.width()) / 2, (ground->height() - size.height()) / 2), size));
    bar_->show();
  }
  bar_->setValue(static_cast<int>(kBarSteps * now_));
}

Patience::Patience(const char* question, const char* leave)
    : question_(question), leave_(leave), since_(Clock::now()) {}

Patience::~Patience() = default;

void Patience::Restart() {
  EndIfAsked();
  asked_.reset();
  since_ = Clock::now();
}

bool Patience::Lasts() {
  EndIfAsked();
  const auto waited = Clock::now() - since_;
  if (waited < patience_before_question) {
    if (waited >= kBetweenPaints) KeepPainted();
    return true;
  }
  if (!asked_) asked_ = std::make_unique<StandingQuestion>(question_, "Keep waiting", leave_);
  const auto keep_waiting = asked_->Answer();
  if (keep_waiting.value_or(false)) Restart();
  return keep_waiting.value_or(true);
}

void AskAfter(std::chrono::milliseconds patience) { patience_before_question = patience; }

}  // namespace platform
