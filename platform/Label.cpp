#include <QPainter>

#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"
#include "platform/Widgets.h"

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

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setFont(FontThatFits(WithSmallLetters(font()), caption, width() - kMargin, height() + kOverhang));
    painter.setPen(color);
    painter.drawText(rect(), static_cast<int>(align | Qt::AlignVCenter) | Qt::TextSingleLine, caption);
  }

 private:
  /// A line's height has room above and below the letters themselves.
  static constexpr int kMargin = 4, kOverhang = 1;
};

}  // namespace

Label::Label(Container& container, std::string name, const std::string& caption, Align align)
    : Control(container, ControlKind::Label, std::move(name), new LabelWidget) {
  if (align == Align::Right) As<LabelWidget>(*this)->align = Qt::AlignRight;
  if (align == Align::Center) As<LabelWidget>(*this)->align = Qt::AlignHCenter;
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
