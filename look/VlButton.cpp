#include "look/VlButton.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <utility>

#include "look/FinePainter.h"
#include "look/shading.h"
#include "platform/Application.h"
#include "platform/WidgetParts.h"

namespace look {
namespace {

using platform::Color;

/// Below this width or height there is room for a colour and a mark, no more.
constexpr int kSmallPixels = 16;
constexpr double kHoverFactor = 1.07;

struct Dress {
  Color fill = platform::Rgb(192, 192, 192);
  EdgeColors edges;
  double gradient = 1.2;
  bool borderless = false;
};

QImage WithLightnessTurned(const QImage& picture) {
  QImage turned = picture.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < turned.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(turned.scanLine(y));
    for (int x = 0; x < turned.width(); ++x) {
      const Color color = LightnessTurned(platform::Rgb(qRed(row[x]), qGreen(row[x]), qBlue(row[x])));
      row[x] =
          qRgba(platform::RedOf(color), platform::GreenOf(color), platform::BlueOf(color), qAlpha(row[x]));
    }
  }
  return turned;
}

/// The pictures are drawn for bright buttons; a dark one gets them with light and dark exchanged.
QImage PictureFor(const QImage& picture, Color ground, int width, int height) {
  const QImage sized = picture.size() == QSize(width, height)
                           ? picture
                           : picture.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return ReadableOn(ground) == 0 ? sized : WithLightnessTurned(sized);
}

/// The base class brings what needs no drawing: the press that ends inside or outside, the space bar, focus,
/// the role for assistive technology.
class ButtonWidget : public QPushButton {
 public:
  explicit ButtonWidget(bool two_state) {
    setCheckable(two_state);
    setAutoDefault(false);
    // A click leaves the keyboard where it was.
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    connect(this, &QPushButton::clicked, this, [this] { WasClicked(); });
  }

  Dress dress;
  QImage picture, dense_picture;
  std::function<void()> raise_click;
  std::function<void(std::int16_t, std::int16_t, float, float)> raise_mouse_up;

 protected:
  void paintEvent(QPaintEvent*) override {
    FinePainter fine(this);
    if (width() < kSmallPixels || height() < kSmallPixels)
      PaintSmall(fine);
    else
      PaintLarge(fine);
  }

  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

  void mousePressEvent(QMouseEvent* event) override {
    QPushButton::mousePressEvent(event);
    // Presses of other mouse buttons are accepted too: otherwise the control below would get them.
    event->accept();
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    const QPointer<ButtonWidget> alive(this);
    const QPointF at = event->position();
    by_mouse_ = true;
    QPushButton::mouseReleaseEvent(event);
    event->accept();
    if (!alive) return;
    by_mouse_ = false;
    raise_mouse_up(platform::MouseButtonBits(event->button()), platform::ShiftKeyBits(event->modifiers()),
                   static_cast<float>(at.x()), static_cast<float>(at.y()));
  }

  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || event->isAutoRepeat()) return QPushButton::keyPressEvent(event);
    // A button that the mouse holds down comes up with it, which the toolkit doesn't show.
    update();
    click();
  }

 private:
  bool IsDown() const { return isDown() || isChecked(); }

  void WasClicked() {
    if (!isCheckable()) raise_click();
    // A press by keyboard has no mouse release after it, so the new state is told here.
    if (isCheckable() && !by_mouse_)
      raise_mouse_up(1, 0, static_cast<float>(width()) / 2, static_cast<float>(height()) / 2);
  }

  Color FillColor() const {
    if (!isEnabled()) return Mix(dress.fill, platform::Rgb(128, 128, 128), 0.4);
    return underMouse() ? Scaled(dress.fill, kHoverFactor) : dress.fill;
  }

  void PaintLarge(FinePainter& fine) {
    const Height height = IsDown() ? Height::Sunken : Height::Raised;
    const Shades shades = FillShades(FillColor(), dress.gradient, height);
    if (dress.borderless)
      PaintBorderless(fine, shades);
    else
      fine.Panel(fine.Box(), shades, dress.edges, height);
    const Color ground = Mix(shades.top, shades.bottom, 0.5);
    PaintPicture(fine, ground);
    PaintText(fine, ground);
    if (isChecked()) PaintMark(fine, ground);
    if (hasFocus()) fine.FocusRing(fine.Inset(fine.Box(), 1), ground);
  }

  void PaintBorderless(FinePainter& fine, const Shades& shades) {
    fine.Fill(fine.Box(), shades);
    if (IsDown() || underMouse()) fine.Frame(fine.Box(), Mix(shades.bottom, dress.edges.shadow, 0.6));
  }

  void PaintPicture(FinePainter& fine, Color ground) {
    if (picture.isNull()) return;
    const int width_pixels = fine.Pixels(picture.width()), height_pixels = fine.Pixels(picture.height());
    const bool dense = width_pixels > picture.width() && !dense_picture.isNull();
    const QImage shown = PictureFor(dense ? dense_picture : picture, ground, width_pixels, height_pixels);
    const int shift = isDown() ? fine.Pixels(1) : 0;
    const QPoint corner(fine.Box().left() + (fine.Box().width() - width_pixels) / 2 + shift,
                        fine.Box().top() + (fine.Box().height() - height_pixels) / 2 + shift);
    fine.Painter().setOpacity(isEnabled() ? 1 : 0.4);
    fine.Painter().drawImage(corner, shown);
    fine.Painter().setOpacity(1);
  }

  void PaintText(FinePainter& fine, Color ground) {
    if (text().isEmpty()) return;
    const Color ink = isEnabled() ? ReadableOn(ground) : Mix(ground, ReadableOn(ground), 0.45);
    fine.Caption(*this, text(), ink, IsDown() ? 1 : 0);
  }

  /// A bright bar along the lower edge tells a button that is on from one that is held down, in any colours.
  void PaintMark(FinePainter& fine, Color ground) {
    const Color white = platform::Rgb(255, 255, 255);
    const QRect& box = fine.Box();
    const int side = fine.Pixels(4), thick = fine.Pixels(2), above = (hasFocus() ? 3 : 1) * fine.Hairline();
    const QRect bar(box.left() + side, box.bottom() + 1 - above - thick, box.width() - 2 * side, thick);
    fine.Fill(bar, Contrast(white, ground) >= 2 ? white : 0);
  }

  void PaintSmall(FinePainter& fine) {
    const Color fill = FillColor();
    const Color rim = Mix(fill, 0, underMouse() ? 0.9 : 0.6);
    const bool hollow = isCheckable() && !isChecked();
    const bool sunken = isDown() && !hollow;
    fine.Fill(fine.Box(), hollow ? Mix(fill, 0, 0.85) : rim);
    if (hollow)
      fine.Frame(fine.Box(), isDown() ? Mix(fill, 0, 0.4) : fill);
    else
      fine.Fill(fine.Inset(fine.Box(), 1), FillShades(fill, 1.0, sunken ? Height::Sunken : Height::Raised));
    if (isChecked()) PaintSmallMark(fine, fill);
    if (hasFocus()) fine.FocusRing(fine.Box(), fill);
  }

  void PaintSmallMark(FinePainter& fine, Color fill) {
    const int margin = fine.Pixels((width() - 3) / 2.0);
    fine.Fill(fine.Box().adjusted(margin, margin, -margin, -margin), ReadableOn(fill));
  }

  bool by_mouse_ = false;
};

}  // namespace

struct vl_button::State {
  ButtonWidget* widget;
  Dress& Worn() const { return widget->dress; }

  template <typename Value>
  void Put(Value& place, Value value) const {
    place = value;
    widget->update();
  }
};

vl_button::vl_button(platform::Container& container, std::string name, Type button_type)
    : Control(container, platform::ControlKind::Other, std::move(name),
              new ButtonWidget(button_type == TwoState)),
      state_(new State{static_cast<ButtonWidget*>(Widget())}) {
  state_->widget->raise_click = [this] {
    if (Click) platform::RunEvent(Click);
  };
  state_->widget->raise_mouse_up = [this](std::int16_t button, std::int16_t shift, float x, float y) {
    if (MouseUp) platform::RunEvent([&] { MouseUp(button, shift, x, y); });
  };
}

vl_button::~vl_button() = default;

std::string vl_button::caption() const { return state_->widget->text().toStdString(); }

void vl_button::SetCaption(const std::string& caption) {
  state_->widget->setText(QString::fromStdString(caption));
  // The caption stays the accessible name, whether a tip is set before or after it.
  SetAccessibleName(caption);
}

void vl_button::SetPicture(const std::string& resource) {
  const QString base = QString::fromStdString(resource);
  state_->widget->picture = QImage(base + ".png", "PNG");
  state_->widget->dense_picture = QImage(base + "@2x.png", "PNG");
  state_->widget->dense_picture.setDevicePixelRatio(1);
  state_->widget->update();
}

void vl_button::SetRepeats(bool repeats) { state_->widget->setAutoRepeat(repeats); }

bool vl_button::value() const { return state_->widget->isChecked(); }
void vl_button::SetValue(bool value) { state_->widget->setChecked(value); }

Color vl_button::BackColor() const { return state_->Worn().fill; }
void vl_button::SetBackColor(Color color) { state_->Put(state_->Worn().fill, color); }
bool vl_button::Borderless() const { return state_->Worn().borderless; }
void vl_button::SetBorderless(bool borderless) { state_->Put(state_->Worn().borderless, borderless); }
Color vl_button::Highlight() const { return state_->Worn().edges.highlight; }
void vl_button::SetHighlight(Color color) { state_->Put(state_->Worn().edges.highlight, color); }
Color vl_button::Shadow() const { return state_->Worn().edges.shadow; }
void vl_button::SetShadow(Color color) { state_->Put(state_->Worn().edges.shadow, color); }
double vl_button::Gradient() const { return state_->Worn().gradient; }
void vl_button::SetGradient(double gradient) { state_->Put(state_->Worn().gradient, gradient); }

}  // namespace look
