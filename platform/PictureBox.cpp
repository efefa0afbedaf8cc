#include "platform/PictureBox.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "platform/Accessible.h"
#include "platform/Application.h"
#include "platform/Picture.h"
#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"

namespace platform {
namespace {

QFont ToolkitFont(const Font& font, double scale) {
  QFont wanted = QGuiApplication::font();
  if (!font.family.empty()) wanted.setFamily(QString::fromStdString(font.family));
  // A point is 1/72 inch of a screen of 96 pixels to the inch, whatever the real one has: canvases count in
  // pixels.
  wanted.setPixelSize(std::max(1, static_cast<int>(std::lround(font.points * 96 / 72 * scale))));
  return wanted;
}

}  // namespace

TextMask MaskOf(const Font& font, const std::string& text, double scale) {
  const QFont face = ToolkitFont(font, scale);
  const QString wide = QString::fromStdString(text);
  const QFontMetricsF metrics(face);
  // Letters may reach beyond their advance and their line, so the mask has a margin on all sides.
  const int margin = static_cast<int>(std::ceil(metrics.height()));
  TextMask mask;
  mask.advance = metrics.horizontalAdvance(wide);
  mask.left = mask.top = -margin;
  mask.width = static_cast<int>(std::ceil(mask.advance)) + 2 * margin;
  mask.height = static_cast<int>(std::ceil(metrics.height())) + 2 * margin;
  QImage image(mask.width, mask.height, QImage::Format_RGB32);
  image.fill(Qt::black);
  {
    QPainter painter(&image);
    painter.setFont(face);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(margin, margin + metrics.ascent()), wide);
  }
  mask.coverage.resize(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height));
  auto out = mask.coverage.begin();
  for (int y = 0; y < mask.height; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    out = std::transform(row, row + mask.width, out,
                         [](QRgb pixel) { return static_cast<std::uint8_t>(qGreen(pixel)); });
  }
  return mask;
}

/// What a canvas keeps between paints.
struct PictureBox::Surface {
  QImage image;
  double scale = 1;
  std::vector<int> rules;
  Color rule_color = 0;
  int frame_left = 0, frame_right = 0;
  Color back = Rgb(255, 255, 255);
  Color fore = 0;
  Font font;
  double pen_x = 0, pen_y = 0;
  bool drawing_pending = false;
  std::shared_ptr<const Picture> picture;
  /// Around all that the screen doesn't show yet.
  QRect unseen;

  /// Puts a place on the screen soon, or at the next Refresh.
  void Show(QWidget& widget, const QRect& place) {
    unseen |= place;
    widget.update(place);
  }
};

class PictureWidget : public QWidget {
 public:
  explicit PictureWidget() { setAttribute(Qt::WA_OpaquePaintEvent); }
  PictureBox* box = nullptr;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    RunEvent([this] {
      box->DrawNow();
      if (box->Paint) box->Paint();
    });
    // Pixel by pixel: where a design pixel isn't a whole number of the screen's, the control's corner may lie
    // within one of them, and the image would be smeared over its neighbours.
    QPainter painter(this);
    const QTransform to_screen = painter.deviceTransform();
    const QPoint corner = to_screen.map(QPointF(0, 0)).toPoint();
    painter.setWorldTransform(to_screen.inverted());
    PictureBox::Surface& surface = *box->surface_;
    surface.unseen = {};
    painter.drawImage(corner, surface.image);
    for (const int column : surface.rules)
      painter.fillRect(corner.x() + ScaledPixel(column, surface.scale), corner.y(), 1, surface.image.height(),
                       ToolkitColor(surface.rule_color));
    if (hasFocus()) PaintFrame(painter, corner, surface);
  }

  void focusInEvent(QFocusEvent*) override {
    update();
    // After the toolkit has told of the widget itself.
    RunLater([widget = QPointer(this)] {
      if (widget && widget->hasFocus()) TellAccessibleItem(widget);
    });
  }
  void focusOutEvent(QFocusEvent*) override { update(); }

  void resizeEvent(QResizeEvent*) override {
    RunEvent([this] { box->FitSurface(); });
  }

  void mousePressEvent(QMouseEvent* event) override {
    PassMove();
    Pass(box->MouseDown, *event, MouseButtonBits(event->button()));
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseReleaseEvent(QMouseEvent* event) override {
    PassMove();
    Pass(box->MouseUp, *event, MouseButtonBits(event->button()));
  }
  /// Of moves that have queued up, as they do behind a routine that has blocked, only the last is raised.
  void mouseMoveEvent(QMouseEvent* event) override {
    if (!last_move_)
      RunLater([widget = QPointer(this)] {
        if (widget) widget->PassMove();
      });
    last_move_.reset(event->clone());
  }
  void wheelEvent(QWheelEvent* event) override {
    if (!box->Wheel) return event->ignore();
    const QPoint turn = event->angleDelta();
    const int longer = std::abs(turn.x()) > std::abs(turn.y()) ? turn.x() : turn.y();
    const auto x = static_cast<float>(event->position().x());
    RunEvent(
        [&] { box->Wheel(static_cast<float>(longer) / kWheelNotch, ShiftKeyBits(event->modifiers()), x); });
    event->accept();
  }

 private:
  static constexpr float kWheelNotch = 120;

  /// Bright within dark, so that it shows on any picture.
  void PaintFrame(QPainter& painter, QPoint corner, const PictureBox::Surface& surface) const {
    const int left = ScaledPixel(surface.frame_left, surface.scale),
              right = ScaledPixel(surface.frame_right, surface.scale);
    QRect frame(corner.x() + left, corner.y(), right - left, surface.image.height());
    const int line = ScaledPixel(1, surface.scale);
    for (const auto& [color, lines] :
         {std::pair(palette().color(QPalette::Highlight).darker(150), 1),
          std::pair(palette().color(QPalette::Highlight), 2), std::pair(QColor(Qt::white), 1)}) {
      const int width = line * lines;
      const QRect inner = frame.adjusted(width, width, -width, -width);
      for (const QRect& side : QRegion(frame) - inner) painter.fillRect(side, color);
      frame = inner;
    }
  }

  void PassMove() {
    if (const auto move = std::move(last_move_))
      Pass(box->MouseMove, *move, MouseButtonBits(move->buttons()));
  }

  static void Pass(const PictureBox::MouseEvent& handler, const QMouseEvent& event, std::int16_t buttons) {
    if (!handler) return;
    const auto x = static_cast<float>(event.position().x()), y = static_cast<float>(event.position().y());
    RunEvent([&] { handler(buttons, ShiftKeyBits(event.modifiers()), x, y); });
  }

  std::unique_ptr<QMouseEvent> last_move_;
};

PictureBox::PictureBox(Container& container, std::string name)
    : Control(container, ControlKind::Other, std::move(name), new PictureWidget),
      surface_(std::make_unique<Surface>()) {
  static_cast<PictureWidget*>(Widget())->box = this;
  SetAccessibleRole(Widget(), QAccessible::Graphic);
}

void PictureBox::ActAsPanel() { SetAccessibleRole(Widget(), QAccessible::Pane); }

PictureBox::~PictureBox() = default;

/// Gives the image the control's size. A control that isn't on the screen yet gets its resize event late, so
/// every routine that needs the image calls this first.
void PictureBox::FitSurface() {
  const double scale = std::max(1.0, Widget()->devicePixelRatioF());
  const QSize size(CoveredPixels(std::max(1, Width()), scale), CoveredPixels(std::max(1, Height()), scale));
  const bool rescaled = surface_->scale != scale;
  if (surface_->image.size() == size && !rescaled) return;
  QImage fresh(size, QImage::Format_RGB32);
  fresh.fill(ToolkitColor(surface_->back));
  if (!surface_->image.isNull() && !rescaled) QPainter(&fresh).drawImage(0, 0, surface_->image);
  const bool was_shown = !surface_->image.isNull();
  surface_->image = std::move(fresh);
  surface_->scale = scale;
  if (rescaled) ShowPicture();
  if (Resize) RunEvent(Resize);
  if (!rescaled || !was_shown) return;
  surface_->drawing_pending = true;
  RunLater([alive = std::weak_ptr<bool>(alive_), this] {
    if (alive.lock() && Rescaled) Rescaled();
  });
}

double PictureBox::Scale() const { return surface_->scale; }

Color PictureBox::BackColor() const { return surface_->back; }
/// Setting another background colour clears the canvas.
void PictureBox::SetBackColor(Color color) {
  if (color == surface_->back && !surface_->image.isNull()) return;
  surface_->back = color;
  Cls();
  ShowPicture();
}
Color PictureBox::ForeColor() const { return surface_->fore; }
void PictureBox::SetForeColor(Color color) { surface_->fore = color; }
void PictureBox::SetFont(const Font& font) { surface_->font = font; }
const Font& PictureBox::TextFont() const { return surface_->font; }

PixelView PictureBox::Pixels() {
  FitSurface();
  QImage& image = surface_->image;
  return MakeView(reinterpret_cast<Pixel*>(image.bits()), image.width(), image.height(),
                  static_cast<int>(image.bytesPerLine() / 4), surface_->scale);
}

void PictureBox::Changed(const PixelBox& box) {
  if (box.Empty()) return;
  // The control's corner may lie within one of the screen's pixels: one pixel more on all sides then.
  const double scale = surface_->scale;
  const int around = scale == 1 ? 0 : 1;
  const int left = static_cast<int>(std::floor(box.left / scale)) - around,
            top = static_cast<int>(std::floor(box.top / scale)) - around,
            right = static_cast<int>(std::ceil(box.right / scale)) + around,
            bottom = static_cast<int>(std::ceil(box.bottom / scale)) + around;
  surface_->Show(*Widget(), QRect(left, top, right - left, bottom - top));
}

void PictureBox::Cls() {
  FitSurface();
  surface_->image.fill(ToolkitColor(surface_->back));
  MovePen(0, 0);
  surface_->Show(*Widget(), Widget()->rect());
}

void PictureBox::MovePen(double x, double y) {
  surface_->pen_x = x;
  surface_->pen_y = y;
}

void PictureBox::Print(const std::string& text) {
  const PixelView view = Pixels();
  const TextMask mask = MaskOf(surface_->font, text, view.scale);
  BlendMask(view, view.At(surface_->pen_x), view.At(surface_->pen_y), mask, surface_->fore);
  surface_->pen_x += mask.advance / view.scale;
  surface_->Show(*Widget(), Widget()->rect());
}

void PictureBox::SetPicture(std::shared_ptr<const Picture> picture) {
  // The preview calls this on every row: showing again what is shown costs nothing.
  if (picture && picture == surface_->picture && !surface_->image.isNull()) return;
  surface_->picture = std::move(picture);
  Cls();
  ShowPicture();
}

void PictureBox::ShowPicture() {
  if (surface_->picture)
    QPainter(&surface_->image).drawImage(0, 0, surface_->picture->ImageAt(surface_->scale));
}

const std::shared_ptr<const Picture>& PictureBox::ShownPicture() const { return surface_->picture; }

void PictureBox::DrawLater() {
  if (surface_->drawing_pending) return;
  surface_->drawing_pending = true;
  RunLater([alive = std::weak_ptr<bool>(alive_), this] {
    if (alive.lock()) DrawNow();
  });
}

void PictureBox::DrawNow() {
  FitSurface();
  if (!surface_->drawing_pending) return;
  surface_->drawing_pending = false;
  if (Draw) Draw();
}

Color PictureBox::Point(int x, int y) {
  DrawNow();
  return FromToolkit(
      surface_->image.pixelColor(ScaledPixel(x, surface_->scale), ScaledPixel(y, surface_->scale)));
}

void PictureBox::ShowRules(std::vector<int> columns, Color color) {
  if (columns == surface_->rules && color == surface_->rule_color) return;
  surface_->rules = std::move(columns);
  surface_->rule_color = color;
  surface_->Show(*Widget(), Widget()->rect());
}

void PictureBox::TakeKeyboard() {
  Widget()->setFocusPolicy(Qt::StrongFocus);
  SetAccessibleRole(Widget(), QAccessible::List);
}

void PictureBox::SetAccessibleItem(const std::string& text) {
  platform::SetAccessibleItem(Widget(), QString::fromStdString(text));
}

void PictureBox::FrameColumns(int left, int right) {
  if (left == surface_->frame_left && right == surface_->frame_right) return;
  surface_->frame_left = left;
  surface_->frame_right = right;
  surface_->Show(*Widget(), Widget()->rect());
}

void PictureBox::Refresh() {
  if (RefreshIsPaused()) return;
  DrawNow();
  if (!Widget()->isVisible()) return;
  // A whole canvas would be much to copy for a box that has moved, on a dense screen above all. In one
  // rectangle, as the toolkit is slow where it has to clip by several. Whatever else has changed in the
  // window goes with it.
  Widget()->repaint(surface_->unseen.isEmpty() ? QRect(0, 0, 1, 1) : surface_->unseen);
  surface_->unseen = {};
}

}  // namespace platform
