// The part of the stand-in's window that shows a frame.
#pragma once

#include <QImage>
#include <QWidget>

#include "host/standin/stand_in.h"

namespace host {

/// Shows the stand-in's current frame as large as it fits, on a dark mat.
class FrameView : public QWidget {
 public:
  FrameView(const StandIn& stand_in, QWidget* parent);

  QSize sizeHint() const override;
  /// To be called when the frame or its pixels have changed: the picture prepared for the screen is outdated.
  void Renew();
  /// Shows the frame at once, roughly sampled: for a program that is busy and must not wait for its window.
  void ShowAtOnce();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Where the frame is shown within the view, with its proportions kept.
  QRect PictureBox() const;
  /// Scales the frame to that many of the screen's pixels, unless that is done already.
  void Prepare(const QSize& device_size);

  const StandIn& stand_in_;
  QImage prepared_;
  bool stale_ = true;
  bool rough_ = false;
};

}  // namespace host
