#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <functional>
#include <string>
#include <utility>

#include "platform/Accessible.h"
#include "platform/DarkGround.h"
#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"
#include "platform/Widgets.h"
#include "platform/Window.h"

namespace platform {
namespace {

constexpr double kSmallLetters = 0.92;
const QColor kPlate(166, 171, 180);
/// As far as a plate goes beyond its text; controls may stand close by.
constexpr double kPlateEnds = 2.5;

QFont WithSmallLetters(QFont font) {
  font.setPointSizeF(font.pointSizeF() * kSmallLetters);
  return font;
}

class LabelWidget : public QWidget {
 public:
  QString caption;
  Qt::Alignment align = Qt::AlignLeft;
  QColor color = Qt::black;
  const std::function<void()>* click = nullptr;
  /// Called when the plate, which is the ground's and goes beyond the label, has to be painted anew.
  std::function<void()> plate_changed = [] {};

  /// Where the text stands in the container.
  QRectF TextBox() const {
    if (caption.isEmpty()) return {};
    return QFontMetricsF(FittingFont()).boundingRect(QRectF(geometry()), Layout(), caption);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setFont(FittingFont());
    painter.setPen(color);
    painter.drawText(rect(), Layout(), caption);
  }

  bool event(QEvent* event) override {
    for (const auto type : {QEvent::Move, QEvent::Resize, QEvent::ShowToParent, QEvent::HideToParent})
      if (event->type() == type) plate_changed();
    return QWidget::event(event);
  }
  void mousePressEvent(QMouseEvent* event) override {
    event->setAccepted(*click && event->button() == Qt::LeftButton);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) Raise(*click);
  }

 private:
  int Layout() const { return static_cast<int>(align | Qt::AlignVCenter) | Qt::TextSingleLine; }
  QFont FittingFont() const {
    return FontThatFits(WithSmallLetters(font()), caption, width() - Margin(), height() + kOverhang);
  }

  /// A caption that begins at the left ends before the field that follows it, which may lie over its right
  /// end.
  int Margin() const { return align == Qt::AlignLeft ? 8 : 4; }

  /// A line's height has room above and below its letters, so it may exceed the label's height by this.
  static constexpr int kOverhang = 1;
};

}  // namespace

Label::Label(Container& container, std::string name, const std::string& caption, Align align)
    : Control(container, ControlKind::Label, std::move(name), new LabelWidget) {
  SetAccessibleRole(Widget(), QAccessible::StaticText);
  if (align == Align::Right) As<LabelWidget>(*this)->align = Qt::AlignRight;
  if (align == Align::Center) As<LabelWidget>(*this)->align = Qt::AlignHCenter;
  As<LabelWidget>(*this)->click = &Click;
  As<LabelWidget>(*this)->plate_changed = [this] {
    if (OwnerWindow().GroundIsDark()) OwnerWindow().Repaint();
  };
  SetCaption(caption);
}
std::string Label::Caption() const { return As<LabelWidget>(*this)->caption.toStdString(); }
void Label::SetCaption(const std::string& caption) {
  As<LabelWidget>(*this)->caption = Utf16(caption);
  SetAccessibleName(caption);
  Widget()->update();
  // The plate is as long as the text.
  As<LabelWidget>(*this)->plate_changed();
}
Color Label::ForeColor() const { return FromToolkit(As<LabelWidget>(*this)->color); }
void Label::SetForeColor(Color color) {
  As<LabelWidget>(*this)->color = ToolkitColor(color);
  Widget()->update();
}

void PaintLabelPlates(const Window& window, QPainter& painter) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kPlate);
  for (const Control* control : window.Controls()) {
    if (control->Kind() != ControlKind::Label || !control->Visible()) continue;
    const QRectF text = As<LabelWidget>(*control)->TextBox();
    if (!text.isEmpty()) painter.drawRoundedRect(text.adjusted(-kPlateEnds, 0, kPlateEnds, 0), 3, 3);
  }
}

}  // namespace platform
