#include "host/standin/FrameView.h"

#include <QPainter>

#include "host/standin/animation.h"
#include "host/standin/frame_pixels.h"
#include "platform/Accessible.h"
#include "platform/Application.h"

namespace host {
namespace {

constexpr int kMargin = 14;
/// Small frames are magnified by no more than this.
constexpr int kMostMagnified = 8;

QImage ImageFrom(const PixelBlock& block) {
  return QImage(reinterpret_cast<const uchar*>(block.pixels.data()), block.width, block.height,
                QImage::Format_RGB32)
      .copy();
}

}  // namespace

FrameView::FrameView(const StandIn& stand_in, QWidget* parent) : QWidget(parent), stand_in_(stand_in) {
  setObjectName("FrameView");
  setAccessibleName(QObject::tr("Current frame"));
  platform::SetAccessibleRole(this, QAccessible::Graphic);
  setMinimumSize(200, 120);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize FrameView::sizeHint() const { return {320 + 2 * kMargin, 240 + 2 * kMargin}; }

void FrameView::Renew() {
  stale_ = true;
  rough_ = false;
  update();
}

void FrameView::ShowAtOnce() {
  stale_ = true;
  rough_ = true;
  repaint();
}

QRect FrameView::PictureBox() const {
  const FrameSize size = stand_in_.CurrentAnimation().Size();
  const QRect room = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
  QSize fitted = QSize(size.width, size.height).scaled(room.size(), Qt::KeepAspectRatio);
  fitted = fitted.boundedTo({size.width * kMostMagnified, size.height * kMostMagnified}).expandedTo({1, 1});
  QRect box({0, 0}, fitted);
  box.moveCenter(room.center());
  return box;
}

void FrameView::Prepare(const QSize& device_size) {
  const Animation& animation = stand_in_.CurrentAnimation();
  const int frame = stand_in_.CurrentFrame();
  prepared_ = rough_
                  ? ImageFrom(SampleFramePixels(animation, frame, device_size.width(), device_size.height()))
                  : ImageFrom(FramePixels(animation, frame))
                        .scaled(device_size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  stale_ = false;
}

void FrameView::paintEvent(QPaintEvent*) {
  const QRect box = PictureBox();
  const QSize device_size = (QSizeF(box.size()) * devicePixelRatioF()).toSize().expandedTo({1, 1});
  const bool any_frame = stand_in_.CurrentAnimation().FrameCount() > 0;
  if (any_frame && (stale_ || prepared_.size() != device_size))
    platform::RunEvent([&] { Prepare(device_size); });
  QPainter painter(this);
  painter.fillRect(rect(), QColor(24, 26, 30));
  if (!any_frame) return;
  painter.drawImage(box, prepared_);
  painter.setPen(QColor(70, 74, 82));
  painter.drawRect(box.adjusted(-1, -1, 0, 0));
}

}  // namespace host
