#include "look/HGlide.h"

#include <QAbstractSlider>
#include <QBasicTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "look/FinePainter.h"
#include "look/glide_layout.h"
#include "look/shading.h"
#include "platform/Application.h"

namespace look {
namespace {

using platform::Color;

constexpr int kFirstRepeatMilliseconds = 350, kRepeatMilliseconds = 60;
constexpr int kWheelNotch = 120;

/// The base class holds range and position and speaks to assistive technology.
class GlideWidget : public QAbstractSlider {
 public:
  GlideWidget() {
    setOrientation(Qt::Horizontal);
    setRange(0, 0);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractSlider::valueChanged, this, [this] {
      if (!by_code_) raise_scroll();
    });
  }

  Color trough = platform::Rgb(143, 149, 158), bar = platform::Rgb(224, 224, 224);
  EdgeColors edges;
  std::function<void()> raise_scroll;

  /// Makes a change by code, which raises no event.
  template <typename Change>
  void ByCode(Change change) {
    by_code_ = true;
    change();
    by_code_ = false;
  }
  void LayOut() {
    setPageStep(PageOf(Trough().width(), Trough().height(), maximum()));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    FinePainter fine(this);
    fine.Panel(fine.Box(), {Scaled(trough, 0.94), trough}, edges, Height::Sunken);
    PaintBar(fine);
  }

  void resizeEvent(QResizeEvent*) override { LayOut(); }

  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return;
    pointer_ = event->position().toPoint().x();
    const QRect grip = BarBox();
    if (pointer_ >= grip.left() && pointer_ <= grip.right()) {
      grip_offset_ = pointer_ - grip.left();
      setSliderDown(true);
      update();
      return;
    }
    PageTowardPointer();
    paging_.start(kFirstRepeatMilliseconds, this);
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    pointer_ = event->position().toPoint().x();
    if (!isSliderDown()) return;
    const QRect room = Trough();
    setValue(
        PositionAtBarLeft(pointer_ - grip_offset_ - room.left(), room.width(), room.height(), maximum()));
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return;
    paging_.stop();
    setSliderDown(false);
    update();
  }

  void timerEvent(QTimerEvent* event) override {
    if (event->timerId() != paging_.timerId()) return QAbstractSlider::timerEvent(event);
    paging_.start(kRepeatMilliseconds, this);
    PageTowardPointer();
  }

  void wheelEvent(QWheelEvent* event) override {
    const QPoint turn = event->angleDelta();
    wheel_ += std::abs(turn.x()) > std::abs(turn.y()) ? turn.x() : turn.y();
    const int notches = wheel_ / kWheelNotch;
    wheel_ -= notches * kWheelNotch;
    StepBy(-notches);
  }

  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Left:
      case Qt::Key_Up:
        return StepBy(-1);
      case Qt::Key_Right:
      case Qt::Key_Down:
        return StepBy(1);
      case Qt::Key_PageUp:
        return StepBy(-pageStep());
      case Qt::Key_PageDown:
        return StepBy(pageStep());
      case Qt::Key_Home:
        return setValue(0);
      case Qt::Key_End:
        return setValue(maximum());
      default:
        event->ignore();
    }
  }

 private:
  QRect Trough() const { return rect().adjusted(2, 2, -2, -2); }

  QRect BarBox() const {
    const QRect room = Trough();
    const BarPlace place = PlaceBar(room.width(), room.height(), maximum(), value());
    return {room.left() + place.left, room.top(), place.width, room.height()};
  }

  void StepBy(int positions) {
    const std::int64_t wanted = std::int64_t{value()} + positions;
    setValue(static_cast<int>(std::clamp<std::int64_t>(wanted, 0, maximum())));
  }

  void PageTowardPointer() {
    const QRect grip = BarBox();
    if (pointer_ < grip.left()) return StepBy(-pageStep());
    if (pointer_ > grip.right()) return StepBy(pageStep());
    paging_.stop();
  }

  QRect DeviceBar(const FinePainter& fine) const {
    const QRect design = BarBox();
    const int left = fine.Pixels(design.left()), right = fine.Pixels(design.left() + design.width());
    const QRect room = fine.Inset(fine.Box(), 2);
    return {fine.Box().left() + left, room.top(), right - left, room.height()};
  }

  void PaintBar(FinePainter& fine) {
    const QRect box = DeviceBar(fine);
    const bool lively = isEnabled() && maximum() > 0;
    const Color fill =
        lively ? (underMouse() || isSliderDown() ? Scaled(bar, 1.07) : bar) : Mix(bar, trough, 0.6);
    fine.Panel(box, FillShades(fill, 1.0, isSliderDown() ? Height::Sunken : Height::Raised), edges,
               Height::Raised);
    if (lively) PaintGrip(fine, box, fill);
    if (hasFocus()) fine.FocusRing(fine.Inset(box, 1), fill);
  }

  /// Three upright ridges that say "take hold here".
  void PaintGrip(FinePainter& fine, const QRect& box, Color fill) {
    const int line = fine.Hairline(), apart = fine.Pixels(4);
    const int top = box.top() + box.height() / 4, height = box.height() - 2 * (box.height() / 4);
    for (int ridge = -1; ridge <= 1; ++ridge) {
      const int x = box.center().x() + ridge * apart;
      fine.Fill({x, top, line, height}, Mix(fill, ReadableOn(fill), 0.5));
      fine.Fill({x + line, top, line, height}, Mix(fill, LightnessTurned(ReadableOn(fill)), 0.6));
    }
  }

  bool by_code_ = false;
  int pointer_ = 0, grip_offset_ = 0, wheel_ = 0;
  QBasicTimer paging_;
};

}  // namespace

struct HGlide::State {
  GlideWidget* widget;

  void Put(Color& place, Color color) const {
    place = color;
    widget->update();
  }
};

HGlide::HGlide(platform::Container& container, std::string name)
    : Control(container, platform::ControlKind::Other, std::move(name), new GlideWidget),
      state_(new State{static_cast<GlideWidget*>(Widget())}) {
  state_->widget->raise_scroll = [this] {
    if (Scroll) platform::RunEvent(Scroll);
  };
}

HGlide::~HGlide() = default;

int HGlide::Range() const { return state_->widget->maximum(); }

void HGlide::SetRange(int range) {
  GlideWidget& widget = *state_->widget;
  widget.ByCode([&] { widget.setRange(0, std::max(range, 0)); });
  widget.LayOut();
}

int HGlide::Position() const { return state_->widget->value(); }

void HGlide::SetPosition(int position) {
  GlideWidget& widget = *state_->widget;
  widget.ByCode([&] { widget.setValue(position); });
}

void HGlide::LayOut() { state_->widget->LayOut(); }

Color HGlide::BackColor() const { return state_->widget->trough; }
void HGlide::SetBackColor(Color color) { state_->Put(state_->widget->trough, color); }
Color HGlide::ForeColor() const { return state_->widget->bar; }
void HGlide::SetForeColor(Color color) { state_->Put(state_->widget->bar, color); }
Color HGlide::Highlight() const { return state_->widget->edges.highlight; }
void HGlide::SetHighlight(Color color) { state_->Put(state_->widget->edges.highlight, color); }
Color HGlide::Shadow() const { return state_->widget->edges.shadow; }
void HGlide::SetShadow(Color color) { state_->Put(state_->widget->edges.shadow, color); }

}  // namespace look
