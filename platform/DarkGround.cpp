#include "platform/DarkGround.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QVariant>

namespace platform {
namespace {

constexpr const char* kDarkProperty = "ground_is_dark";

bool StandsInGrid(const QScrollBar& bar) {
  for (const QWidget* around = bar.parentWidget(); around != nullptr; around = around->parentWidget())
    if (qobject_cast<const QTableView*>(around) != nullptr) return true;
  return false;
}

}  // namespace

QPalette PaletteOn(bool dark_ground) {
  if (!dark_ground) return QApplication::palette();
  QPalette palette(QColor(52, 56, 63), QColor(40, 43, 49));
  palette.setColor(QPalette::Base, QColor(43, 47, 53));
  for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
    palette.setColor(role, QColor(222, 225, 230));
    palette.setColor(QPalette::Disabled, role, QColor(126, 131, 140));
  }
  palette.setColor(QPalette::Highlight, QColor(92, 110, 138));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

void NoteDarkGround(QWidget& window, bool dark) {
  window.setProperty(kDarkProperty, dark);
  for (QScrollBar* bar : window.findChildren<QScrollBar*>())
    if (!StandsInGrid(*bar)) bar->setPalette(PaletteOn(dark));
}

void DressOver(const QWidget* owner, QWidget& dialog) {
  if (owner != nullptr && owner->property(kDarkProperty).toBool()) dialog.setPalette(PaletteOn(true));
}

}  // namespace platform
