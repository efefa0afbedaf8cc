#include "platform/QuietLook.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <string>

#include "platform/Picture.h"

namespace platform {
namespace {

const QColor kFaint(96, 100, 108);

QPixmap Draw(const QPainterPath& sign, int side, const QColor& color) {
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 24.0, side / 24.0);
  painter.fillPath(sign, color);
  return pixmap;
}

/// Two arrow heads to the right.
QPainterPath More() {
  QPainterPath sign;
  for (const double left : {4.0, 12.0})
    sign.addPolygon(
        QPolygonF({{left, 5}, {left + 2, 5}, {left + 8, 12}, {left + 2, 19}, {left, 19}, {left + 6, 12}}));
  return sign;
}

class ProgramStyle : public QProxyStyle {
 public:
  ProgramStyle() : QProxyStyle("Fusion") {}

  /// Every menu bar asks for this icon at once, to be shown when it has no room. The toolkit's own is read
  /// from a picture, for which it would load all its readers of pictures during the start.
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override {
    if (icon == SP_ToolBarHorizontalExtensionButton)
      return QuietSign(More(), QApplication::palette().windowText().color());
    return QProxyStyle::standardIcon(icon, option, widget);
  }
};

}  // namespace

void UseProgramStyle() { QApplication::setStyle(new ProgramStyle); }

QIcon QuietSign(const QPainterPath& sign, const QColor& ink) {
  QIcon icon;
  for (const int side : {24, 48}) {
    icon.addPixmap(Draw(sign, side, ink));
    icon.addPixmap(Draw(sign, side, kFaint), QIcon::Disabled);
  }
  return icon;
}

QIcon ProgramIcon(const char* program) {
  QIcon icon;
  // The larger drawings, which take longer to read than all of these together, come by the name of the
  // desktop's file.
  for (const int side : {16, 24, 32, 48, 64}) {
    const auto path = ":/assets/icons/" + std::string(program) + "-" + std::to_string(side) + ".png";
    icon.addPixmap(QPixmap::fromImage(Picture::Load(path)->Image()));
  }
  return icon;
}

QString QuietStyle() {
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
    QSlider::groove:horizontal { height: 4px; background: #40454d; border-radius: 2px; }
    QSlider::sub-page:horizontal { background: #ecb25c; border-radius: 2px; }
    QSlider::sub-page:horizontal:disabled { background: #40454d; }
    QSlider::handle:horizontal { width: 12px; margin: -5px 0; border-radius: 6px; background: #f3f4f6; }
    QSlider::handle:horizontal:disabled { background: #7b808a; }
    QSlider::handle:horizontal:focus { background: #ffd596; }
    QProgressBar { border: none; background: #40454d; border-radius: 3px; max-height: 6px; }
    QProgressBar::chunk { background: #ecb25c; border-radius: 3px; }
    QPushButton { background: #3a3f47; border: 1px solid #15171a; border-radius: 4px; padding: 5px 14px; }
    QPushButton:hover { background: #454b54; }
    QPushButton:default, QPushButton:focus { border-color: #ecb25c; }
    QSpinBox, QDoubleSpinBox, QLineEdit, QComboBox, QListView, QTreeView {
      background: #1b1d21; border: 1px solid #40454d; border-radius: 3px; padding: 3px;
      selection-background-color: #ecb25c; selection-color: #1f2226; }
    QSpinBox::up-button, QSpinBox::down-button, QDoubleSpinBox::up-button, QDoubleSpinBox::down-button {
      background: #2b2f35; border: none; width: 18px; }
    QSpinBox::up-arrow, QDoubleSpinBox::up-arrow { image: url(:/assets/host/up.png); width: 9px; height: 9px; }
    QSpinBox::down-arrow, QDoubleSpinBox::down-arrow, QComboBox::down-arrow {
      image: url(:/assets/host/down.png); width: 9px; height: 9px; }
    QComboBox::drop-down { border: none; width: 20px; }
    QComboBox QAbstractItemView { background: #1b1d21; border: 1px solid #40454d; }
    QScrollBar { background: #1f2226; border: none; }
    QScrollBar:vertical { width: 12px; }
    QScrollBar:horizontal { height: 12px; }
    QScrollBar::handle { background: #40454d; border-radius: 4px; margin: 2px; }
    QScrollBar::handle:vertical { min-height: 24px; }
    QScrollBar::handle:horizontal { min-width: 24px; }
    QScrollBar::handle:hover { background: #565c66; }
    QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
    QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
    QSplitter::handle { background: #26292f; }
    QHeaderView { background: #2b2f35; border: none; }
    QHeaderView::section { background: #2b2f35; border: none; border-right: 1px solid #40454d; padding: 3px 6px; }
    QSpinBox:focus, QDoubleSpinBox:focus, QLineEdit:focus { border-color: #ecb25c; }
  )";
}

}  // namespace platform
