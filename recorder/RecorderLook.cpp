#include "recorder/RecorderLook.h"

#include <QPainterPath>

#include "platform/QuietLook.h"

namespace recorder {
namespace {

const QColor kRecord(226, 88, 78);

/// The sign within a square of side 24.
QPainterPath Shape(Sign sign) {
  QPainterPath path;
  switch (sign) {
    case Sign::Record:
      path.addEllipse(QPointF(12, 12), 8, 8);
      break;
    case Sign::Stop:
      path.addRoundedRect(QRectF(5, 5, 14, 14), 1.5, 1.5);
      break;
    case Sign::Listen:
      path.moveTo(7, 4);
      path.lineTo(20, 12);
      path.lineTo(7, 20);
      path.closeSubpath();
      break;
    case Sign::Save:
      path.addRect(10.5, 3, 3, 9);
      path.moveTo(5.5, 10);
      path.lineTo(18.5, 10);
      path.lineTo(12, 17);
      path.closeSubpath();
      path.addRect(4, 19, 16, 2.5);
      path.setFillRule(Qt::WindingFill);
      break;
  }
  return path;
}

}  // namespace

QIcon SignIcon(Sign sign) {
  return sign == Sign::Record ? platform::QuietSign(Shape(sign), kRecord) : platform::QuietSign(Shape(sign));
}

QString RecorderStyle() {
  return platform::QuietStyle() + R"(
    #Status { color: #b9bec7; }
    QToolButton, QPushButton { background: #3a3f47; border: 1px solid #15171a; border-radius: 4px;
      padding: 6px 12px; }
    QFileDialog QToolButton { padding: 3px; }
    QToolButton:hover { background: #454b54; }
    QToolButton:pressed, QPushButton:pressed { background: #17191c; }
    QToolButton:focus, QPushButton:focus, QPushButton:default { border-color: #ecb25c; }
    QToolButton:disabled, QPushButton:disabled { background: #2b2f35; color: #7b808a; }
    QComboBox:focus { border-color: #ecb25c; }
    QComboBox:disabled { color: #7b808a; }
  )";
}

}  // namespace recorder
