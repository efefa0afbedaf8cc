#include "platform/Widgets.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "platform/Accessible.h"
#include "platform/Picture.h"
#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"
#include "platform/Window.h"

namespace platform {
namespace {

/// A box without words fills its whole widget: the desktop's own is made to stand beside words, and is cut in
/// the design's small room.
class CheckWidget : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!text().isEmpty()) return QCheckBox::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : QPen(QColor(48, 48, 48), 1));
    painter.setBrush(underMouse() ? QColor(235, 243, 250) : QColor(Qt::white));
    painter.drawRect(hasFocus() ? box.adjusted(0.5, 0.5, -0.5, -0.5) : box);
    if (isChecked()) PaintTick(painter, box);
  }
  bool hitButton(const QPoint& position) const override {
    return text().isEmpty() ? rect().contains(position) : QCheckBox::hitButton(position);
  }

 private:
  static void PaintTick(QPainter& painter, const QRectF& box) {
    const auto at = [&box](double x, double y) {
      return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.setPen(QPen(QColor(24, 24, 24), box.width() / 6.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({at(0.24, 0.52), at(0.43, 0.72), at(0.78, 0.27)}));
  }
};

constexpr int kArrowPixels = 16;

class BarWidget : public QScrollBar {
 public:
  BarWidget() : QScrollBar(Qt::Horizontal) {
    setFocusPolicy(Qt::TabFocus);
    // An arrow button that is held repeats twenty times a second: at one pixel each, scrolling would be too
    // slow to use.
    setSingleStep(kArrowPixels);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QScrollBar::paintEvent(event);
    if (hasFocus()) PaintFocusFrame(this);
  }
  /// For a horizontal bar the toolkit turns the Left and Right keys round.
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Left) return triggerAction(SliderSingleStepSub);
    if (event->key() == Qt::Key_Right) return triggerAction(SliderSingleStepAdd);
    QScrollBar::keyPressEvent(event);
  }
};

class RuleWidget : public QWidget {
 public:
  QColor color;

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), color); }
};

}  // namespace

HScrollBar::HScrollBar(Container& container, std::string name)
    : Control(container, ControlKind::Other, std::move(name), new BarWidget) {
  QObject::connect(As<QScrollBar>(*this), &QScrollBar::valueChanged,
                   [this] { Raise(As<QScrollBar>(*this)->isSliderDown() ? Scroll : Change); });
}
int HScrollBar::Min() const { return As<QScrollBar>(*this)->minimum(); }
void HScrollBar::SetMin(int value) { As<QScrollBar>(*this)->setMinimum(value); }
int HScrollBar::Max() const { return As<QScrollBar>(*this)->maximum(); }
void HScrollBar::SetMax(int value) { As<QScrollBar>(*this)->setMaximum(value); }
int HScrollBar::LargeChange() const { return As<QScrollBar>(*this)->pageStep(); }
void HScrollBar::SetLargeChange(int step) { As<QScrollBar>(*this)->setPageStep(step); }
int HScrollBar::Value() const { return As<QScrollBar>(*this)->value(); }
void HScrollBar::SetValue(int value) { As<QScrollBar>(*this)->setValue(value); }

CheckBox::CheckBox(Container& container, std::string name, const std::string& caption)
    : Control(container, ControlKind::CheckBox, std::move(name), new CheckWidget(Utf16(caption))) {
  Widget()->setAutoFillBackground(true);
  QObject::connect(As<QCheckBox>(*this), &QCheckBox::clicked, [this] { Raise(Click); });
}
int CheckBox::Value() const { return As<QCheckBox>(*this)->isChecked() ? 1 : 0; }
void CheckBox::SetValue(int value) { As<QCheckBox>(*this)->setChecked(value == 1); }
Color CheckBox::BackColor() const { return FromToolkit(Widget()->palette().color(QPalette::Window)); }
void CheckBox::SetBackColor(Color color) { SetPaletteColor(Widget(), QPalette::Window, color); }

CommandButton::CommandButton(Container& container, std::string name, const std::string& caption)
    : Control(container, ControlKind::Other, std::move(name), new QPushButton(Utf16(caption))) {
  As<QPushButton>(*this)->setAutoDefault(true);
  QObject::connect(As<QPushButton>(*this), &QPushButton::clicked, [this] { Raise(Click); });
}

LineControl::LineControl(Container& container, std::string name, int x1, int y1, int x2, int y2, Color color)
    : Control(container, ControlKind::Other, std::move(name), new RuleWidget), color_(color) {
  // A rule is part of the ground that it is drawn on: presses go through it.
  Widget()->setAttribute(Qt::WA_TransparentForMouseEvents);
  SetAccessibleRole(Widget(), QAccessible::Separator);
  Move(std::min(x1, x2), std::min(y1, y2), std::abs(x2 - x1) + 1, std::abs(y2 - y1) + 1);
  LineControl::SetForeColor(color);
}
int LineControl::X1() const { return Left(); }
void LineControl::SetX(int x) { SetLeft(x); }
Color LineControl::ForeColor() const { return color_; }
void LineControl::SetForeColor(Color color) {
  color_ = color;
  As<RuleWidget>(*this)->color = ToolkitColor(color);
  Widget()->update();
}

ImageHolder::ImageHolder(Container& container, std::string name)
    : Control(container, ControlKind::Other, std::move(name), new QWidget) {
  SetVisible(false);
}
ImageHolder::~ImageHolder() = default;
void ImageHolder::SetPicture(std::shared_ptr<const platform::Picture> picture) {
  if (picture) Move(Left(), Top(), picture->Width(), picture->Height());
  picture_ = std::move(picture);
}

StatusBar::StatusBar(Container& container, std::string name)
    : Control(container, ControlKind::StatusBar, std::move(name), new QStatusBar) {
  As<QStatusBar>(*this)->setSizeGripEnabled(true);
  // The wallpaper isn't painted under the status bar, which keeps a ground of its own.
  Widget()->setAutoFillBackground(true);
}

struct Timer::Clockwork {
  QTimer timer;
};

Timer::Timer(Window& window, const std::string& name, int interval_milliseconds)
    : clockwork_(std::make_unique<Clockwork>()) {
  clockwork_->timer.setObjectName(Utf16(name));
  clockwork_->timer.setTimerType(Qt::PreciseTimer);
  clockwork_->timer.setInterval(interval_milliseconds);
  // A window that was unloaded while its timer ran must not be brought back by a tick on the way.
  QObject::connect(&clockwork_->timer, &QTimer::timeout, window.ContainerWidget(), [this, &window] {
    if (window.Loaded()) Raise(Tick);
  });
}
Timer::~Timer() = default;
bool Timer::Enabled() const { return clockwork_->timer.isActive(); }
void Timer::SetEnabled(bool enabled) {
  if (enabled == Enabled()) return;
  if (enabled) {
    clockwork_->timer.start();
  } else {
    clockwork_->timer.stop();
  }
}

}  // namespace platform
