#include "look/VlDropDial.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScreen>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "look/FinePainter.h"
#include "look/shading.h"
#include "platform/ToolkitColor.h"
#include "platform/numbers.h"

namespace look {
namespace {

using platform::Color;

constexpr Color kFieldFill = platform::Rgb(85, 85, 102), kFieldText = platform::Rgb(255, 238, 136);
constexpr Color kButtonFill = platform::Rgb(192, 192, 192), kTroughFill = platform::Rgb(143, 149, 158);
constexpr int kButtonWidth = 17, kSliderWidth = 150, kSliderHeight = 22, kHandleWidth = 11;

int BoundOf(const std::string& text) { return platform::RoundToLong(platform::NumberAtStart(text)); }

/// The slider that drops down.
class DropSlider : public QSlider {
 public:
  explicit DropSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setFixedSize(kSliderWidth, kSliderHeight);
    setAttribute(Qt::WA_Hover);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    FinePainter fine(this);
    const int middle = fine.Box().center().y(), half = fine.Pixels(3);
    const QRect groove(fine.Box().left(), middle - half, fine.Box().width(), 2 * half + 1);
    fine.Panel(groove, {kTroughFill, kTroughFill}, {}, Height::Sunken);
    const int left = fine.Pixels(HandleLeft()), right = fine.Pixels(HandleLeft() + kHandleWidth);
    const QRect handle(fine.Box().left() + left, fine.Box().top(), right - left, fine.Box().height());
    fine.Panel(handle,
               FillShades(underMouse() ? Scaled(kButtonFill, 1.07) : kButtonFill, 1.2, Height::Raised), {},
               Height::Raised);
    if (hasFocus()) fine.FocusRing(fine.Inset(handle, 1), kButtonFill);
  }

  // The handle goes where the pointer is, from the first press on: the slider is there for a quick choice.
  void mousePressEvent(QMouseEvent* event) override { Follow(*event); }
  void mouseMoveEvent(QMouseEvent* event) override { Follow(*event); }
  void mouseReleaseEvent(QMouseEvent*) override {}

 private:
  int Path() const { return width() - kHandleWidth; }
  int HandleLeft() const {
    const int span = maximum() - minimum();
    return span == 0 ? 0 : platform::RoundToLong(static_cast<double>(value() - minimum()) * Path() / span);
  }
  void Follow(const QMouseEvent& event) {
    if (!(event.buttons() & Qt::LeftButton)) return;
    const double along = (event.position().x() - kHandleWidth / 2.0) / Path();
    setValue(minimum() + platform::RoundToLong(along * (maximum() - minimum())));
  }
};

/// The pop-up that holds the slider; Enter and Escape close it, as a click elsewhere does.
class DropPanel : public QWidget {
 public:
  explicit DropPanel(QSpinBox& field) : QWidget(&field, Qt::Popup), slider_(new DropSlider(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 5, 6, 5);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(slider_);
    setFocusProxy(slider_);
    slider_->setAccessibleName(field.accessibleName());
    slider_->setRange(field.minimum(), field.maximum());
    slider_->setPageStep(std::max(1, (field.maximum() - field.minimum()) / 8));
    slider_->setValue(field.value());
    connect(slider_, &QSlider::valueChanged, &field, &QSpinBox::setValue);
    setAttribute(Qt::WA_DeleteOnClose);
  }

  void DropBelow(const QWidget& field) {
    adjustSize();
    const QRect screen = field.screen()->availableGeometry();
    QPoint corner = field.mapToGlobal(QPoint(0, field.height()));
    if (corner.y() + height() > screen.bottom()) corner.setY(field.mapToGlobal(QPoint(0, 0)).y() - height());
    corner.setX(std::max(screen.left(), std::min(corner.x(), screen.right() - width())));
    move(corner);
    show();
    slider_->setFocus(Qt::PopupFocusReason);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    FinePainter fine(this);
    fine.Panel(fine.Box(), {kButtonFill, kButtonFill}, {}, Height::Raised);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape)
      close();
    else
      QWidget::keyPressEvent(event);
  }

 private:
  DropSlider* slider_;
};

/// The base class brings typing within bounds, wheel, arrow keys and the role for assistive technology.
class DialWidget : public QSpinBox {
 public:
  DialWidget() {
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setFrame(false);
    setAttribute(Qt::WA_Hover);
    setMouseTracking(true);
    platform::SetPaletteColor(this, QPalette::Base, kFieldFill);
    platform::SetPaletteColor(this, QPalette::Text, kFieldText);
    lineEdit()->setAlignment(Qt::AlignRight);
    lineEdit()->setFrame(false);
  }

  /// A number out of bounds may stand in the field while it is being typed: Return, or leaving the field,
  /// makes it the bound.
  QValidator::State validate(QString& typed, int& cursor) const override {
    bool is_number = false;
    const int number = typed.toInt(&is_number);
    if (is_number && (number < minimum() || number > maximum())) return QValidator::Intermediate;
    return QSpinBox::validate(typed, cursor);
  }
  void fixup(QString& typed) const override {
    bool is_number = false;
    const int number = typed.toInt(&is_number);
    if (is_number) typed = QString::number(std::clamp(number, minimum(), maximum()));
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QSpinBox::resizeEvent(event);
    PlaceField();
  }
  void changeEvent(QEvent* event) override {
    QSpinBox::changeEvent(event);
    PlaceField();
  }
  void showEvent(QShowEvent* event) override {
    QSpinBox::showEvent(event);
    PlaceField();
  }

  void paintEvent(QPaintEvent*) override {
    FinePainter fine(this);
    fine.Panel(fine.Box(), {kFieldFill, kFieldFill}, {}, Height::Sunken);
    const QRect button = DeviceButton(fine);
    const bool hot = isEnabled() && ButtonBox().contains(mapFromGlobal(QCursor::pos()));
    fine.Panel(button, FillShades(hot ? Scaled(kButtonFill, 1.07) : kButtonFill, 1.2, Height::Raised), {},
               Height::Raised);
    PaintArrow(fine, button);
    if (hasFocus()) fine.Frame(fine.Box(), platform::Rgb(255, 255, 255));
  }

  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && ButtonBox().contains(event->position().toPoint()))
      Drop();
    else
      QSpinBox::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    QSpinBox::mouseMoveEvent(event);
    update();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool alt_down = event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier;
    if (alt_down || event->key() == Qt::Key_F4)
      Drop();
    else
      QSpinBox::keyPressEvent(event);
  }

 private:
  QRect ButtonBox() const { return {width() - kButtonWidth, 0, kButtonWidth, height()}; }

  QRect DeviceButton(const FinePainter& fine) const {
    const int wide = fine.Pixels(kButtonWidth);
    const QRect& box = fine.Box();
    return fine.Inset({box.right() + 1 - wide, box.top(), wide, box.height()}, 1);
  }

  void PaintArrow(FinePainter& fine, const QRect& button) {
    const int rows = std::max(3, fine.Pixels(3.5)), line = 1;
    const int middle = button.center().x(), top = button.center().y() - rows / 2;
    const Color ink = isEnabled() ? 0 : Mix(kButtonFill, 0, 0.4);
    for (int row = 0; row < rows; ++row) {
      const int half = rows - 1 - row;
      fine.Fill({middle - half, top + row * line, 2 * half + 1, line}, ink);
    }
  }

  void PlaceField() { lineEdit()->setGeometry(2, 2, width() - kButtonWidth - 4, height() - 4); }

  void Drop() {
    setFocus(Qt::MouseFocusReason);
    interpretText();
    (new DropPanel(*this))->DropBelow(*this);
  }
};

}  // namespace

struct VL_DropDial::State {
  DialWidget* widget;
};

VL_DropDial::VL_DropDial(platform::Container& container, std::string name, const std::string& text,
                         const std::string& min, const std::string& max)
    : Control(container, platform::ControlKind::Other, std::move(name), new DialWidget),
      state_(new State{static_cast<DialWidget*>(Widget())}) {
  state_->widget->setRange(BoundOf(min), BoundOf(max));
  state_->widget->setValue(BoundOf(text));
}

VL_DropDial::~VL_DropDial() = default;

std::string VL_DropDial::Text() const { return state_->widget->text().toStdString(); }
int VL_DropDial::Min() const { return state_->widget->minimum(); }
int VL_DropDial::Max() const { return state_->widget->maximum(); }
/// Also of a number that is still being typed.
int VL_DropDial::value() const {
  state_->widget->interpretText();
  return state_->widget->value();
}
void VL_DropDial::SetValue(int value) { state_->widget->setValue(value); }

}  // namespace look
