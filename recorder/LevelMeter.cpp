#include "recorder/LevelMeter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace recorder {
namespace {

constexpr int kBarTop = 4, kBarHeight = 18, kSide = 10;
constexpr int kOverloadWidth = 14;
constexpr double kLoudDecibels = -6, kGoodDecibels = -18;
constexpr int kScale[] = {-60, -48, -36, -24, -18, -12, -6, 0};

const QColor kGround(27, 29, 33), kGreen(92, 184, 122), kAmber(236, 178, 92), kRed(226, 88, 78),
    kInk(163, 168, 177), kMark(243, 244, 246);

}  // namespace

LevelMeter::LevelMeter(QWidget* parent) : QWidget(parent) {
  setObjectName("LevelMeter");
  setAccessibleName(tr("Recording level"));
  setToolTip(tr("The loudest places belong between -18 and -6 decibels."));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize LevelMeter::sizeHint() const { return {300, kBarTop + kBarHeight + 6 + fontMetrics().height()}; }

void LevelMeter::Show(const Meter& meter, bool hearing) {
  if (std::lround(mark_) != std::lround(meter.Mark()))
    setAccessibleDescription(tr("The loudest is at %1 decibels").arg(std::lround(meter.Mark())));
  bar_ = hearing ? meter.Bar() : kFloorDecibels;
  mark_ = meter.Mark();
  overloaded_ = meter.Overloaded();
  update();
}

double LevelMeter::XOf(double decibels) const {
  return kSide + (width() - 2 * kSide - kOverloadWidth) * (1 - decibels / kFloorDecibels);
}

void LevelMeter::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  DrawBar(painter);
  DrawScale(painter);
}

void LevelMeter::DrawBar(QPainter& painter) const {
  const double left = XOf(kFloorDecibels), right = XOf(0);
  painter.setBrush(kGround);
  painter.drawRoundedRect(QRectF(left - 4, kBarTop, right - left + 8, kBarHeight), 4, 4);
  const auto part = [&](double from, double to, const QColor& color, double level) {
    if (level <= from) return;
    painter.setBrush(color);
    painter.drawRect(QRectF(XOf(from), kBarTop + 3, XOf(std::min(to, level)) - XOf(from), kBarHeight - 6));
  };
  part(kFloorDecibels, kGoodDecibels, kGreen.darker(125), bar_);
  part(kGoodDecibels, kLoudDecibels, kGreen, bar_);
  part(kLoudDecibels, -1, kAmber, bar_);
  part(-1, 0, kRed, bar_);
  if (mark_ > kFloorDecibels) {
    painter.setBrush(kMark);
    painter.drawRect(QRectF(XOf(mark_) - 1, kBarTop + 2, 2, kBarHeight - 4));
  }
  painter.setBrush(overloaded_ ? kRed : kGround);
  painter.drawRoundedRect(QRectF(right + 8, kBarTop, kOverloadWidth - 2, kBarHeight), 4, 4);
}

void LevelMeter::DrawScale(QPainter& painter) const {
  painter.setPen(kInk);
  for (const int decibels : kScale) {
    const QRectF place(XOf(decibels) - 20, kBarTop + kBarHeight + 4, 40, fontMetrics().height());
    painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop, QString::number(decibels));
  }
}

}  // namespace recorder
