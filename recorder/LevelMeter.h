// The level of a recording as a bar with a scale of decibels.
#pragma once

#include <QCoreApplication>
#include <QWidget>

#include "recorder/level.h"

namespace recorder {

class LevelMeter : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(recorder::LevelMeter)

 public:
  explicit LevelMeter(QWidget* parent);
  /// The bar stands only while something is heard; the mark and the sign of too high a level stay.
  void Show(const Meter& meter, bool hearing);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double XOf(double decibels) const;
  void DrawBar(QPainter& painter) const;
  void DrawScale(QPainter& painter) const;

  double bar_ = kFloorDecibels;
  double mark_ = kFloorDecibels;
  bool overloaded_ = false;
};

}  // namespace recorder
