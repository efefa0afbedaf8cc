#include <QMouseEvent>
#include <QPainter>

#include "platform/Accessible.h"
#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"
#include "platform/Widgets.h"
#include "platform/Window.h"

namespace platform {
namespace {

constexpr double kSmallLetters = 0.92;

QFont WithSmallLetters(QFont font) {
  font.setPointSizeF(font.pointSizeF() * kSmallLetters);
  return font;
}

class LabelWidget : public QWidget {
 public:
  QString caption;
  Qt::Alignment align = Qt::AlignLeft;
  QColor color = Qt::black;
  const Window* window = nullptr;
  const std::function<void()>* click = nullptr;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setFont(
        FontThatFits(WithSmallLetters(font()), caption, width() - Margin(), height() + kOverhang));
    const int layout = static_cast<int>(align | Qt::AlignVCenter) | Qt::TextSingleLine;
    if (window->GroundIsDark()) PaintPlate(painter, painter.boundingRect(rect(), layout, caption));
    painter.setPen(color);
    painter.drawText(rect(), layout, caption);
  }

  void mousePressEvent(QMouseEvent* event) override {
    event->setAccepted(*click && event->button() == Qt::LeftButton);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (rect().contains(event->position().toPoint())) Raise(*click);
  }

 private:
  /// No setting has a colour for labels, which stay black: on a dark ground they get a bright one of their
  /// own.
  void PaintPlate(QPainter& painter, const QRectF& text) const {
    if (caption.isEmpty()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(166, 171, 180));
    painter.drawRoundedRect(text.adjusted(-3, 0, 3, 0) & QRectF(rect()), 2, 2);
  }

  /// A caption that begins at the left ends before the field that follows it, which may lie over its right
  /// end.
  int Margin() const { return align == Qt::AlignLeft ? 8 : 4; }

  /// A line's height has room above and below the letters themselves.
  static constexpr int kOverhang = 1;
};

}  // namespace

Label::Label(Container& container, std::string name, const std::string& caption, Align align)
    : Control(container, ControlKind::Label, std::move(name), new LabelWidget) {
  SetAccessibleRole(Widget(), QAccessible::StaticText);
  if (align == Align::Right) As<LabelWidget>(*this)->align = Qt::AlignRight;
  if (align == Align::Center) As<LabelWidget>(*this)->align = Qt::AlignHCenter;
  As<LabelWidget>(*this)->window = &OwnerWindow();
  As<LabelWidget>(*this)->click = &Click;
  SetCaption(caption);
}
std::string Label::Caption() const { return As<LabelWidget>(*this)->caption.toStdString(); }
void Label::SetCaption(const std::string& caption) {
  As<LabelWidget>(*this)->caption = Utf16(caption);
  SetAccessibleName(caption);
  Widget()->update();
}
Color Label::ForeColor() const { return FromToolkit(As<LabelWidget>(*this)->color); }
void Label::SetForeColor(Color color) {
  As<LabelWidget>(*this)->color = ToolkitColor(color);
  Widget()->update();
}

}  // namespace platform
