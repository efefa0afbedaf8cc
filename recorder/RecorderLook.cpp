#include "recorder/RecorderLook.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace recorder {
namespace {

const QColor kInk(222, 225, 230), kFaint(96, 100, 108), kRecord(226, 88, 78);

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

QPixmap Draw(Sign sign, int side, const QColor& color) {
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 24.0, side / 24.0);
  painter.fillPath(Shape(sign), color);
  return pixmap;
}

}  // namespace

QIcon RecorderIcon() {
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 128})
    icon.addPixmap(QPixmap(QString(":/assets/icons/recorder-%1.png").arg(side), "PNG"));
  return icon;
}

QIcon SignIcon(Sign sign) {
  QIcon icon;
  for (const int side : {24, 48}) {
    icon.addPixmap(Draw(sign, side, sign == Sign::Record ? kRecord : kInk));
    icon.addPixmap(Draw(sign, side, kFaint), QIcon::Disabled);
  }
  return icon;
}

QString RecorderStyle() {
  return R"(
    QMainWindow, QDialog { background: #26292f; }
    QWidget { color: #dee1e6; }
    QMenuBar { background: #1f2226; padding: 2px 6px; }
    QMenuBar::item { background: transparent; padding: 4px 9px; border-radius: 3px; }
    QMenuBar::item:selected { background: #3a3f47; }
    QMenu { background: #2b2f35; border: 1px solid #15171a; padding: 4px; }
    QMenu::item { padding: 5px 26px 5px 24px; border-radius: 3px; }
    QMenu::item:selected { background: #ecb25c; color: #1f2226; }
    QMenu::item:disabled { color: #7b808a; }
    QMenu::separator { height: 1px; background: #40454d; margin: 4px 6px; }
    QToolTip { background: #1f2226; color: #dee1e6; border: 1px solid #40454d; }
    #Status { color: #b9bec7; }
    QToolButton, QPushButton { background: #3a3f47; border: 1px solid #15171a; border-radius: 4px;
      padding: 6px 12px; }
    QFileDialog QToolButton { padding: 3px; }
    QToolButton:hover, QPushButton:hover { background: #454b54; }
    QToolButton:pressed, QPushButton:pressed { background: #17191c; }
    QToolButton:focus, QPushButton:focus, QPushButton:default { border-color: #ecb25c; }
    QToolButton:disabled, QPushButton:disabled { background: #2b2f35; color: #7b808a; }
    QLineEdit, QComboBox, QListView, QTreeView { background: #1b1d21; border: 1px solid #40454d;
      border-radius: 3px; padding: 4px; selection-background-color: #ecb25c; selection-color: #1f2226; }
    QComboBox:focus, QLineEdit:focus { border-color: #ecb25c; }
    QComboBox:disabled { color: #7b808a; }
    QComboBox::drop-down { border: none; width: 20px; }
    QComboBox::down-arrow { image: url(:/assets/host/down.png); width: 9px; height: 9px; }
    QHeaderView { background: #2b2f35; border: none; }
    QHeaderView::section { background: #2b2f35; border: none; border-right: 1px solid #40454d;
      padding: 3px 6px; }
  )";
}

}  // namespace recorder
