#include "platform/Window.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include "platform/Accessible.h"
#include "platform/Application.h"
#include "platform/DarkGround.h"
#include "platform/Lifetime.h"
#include "platform/Picture.h"
#include "platform/ToolkitColor.h"
#include "platform/WindowWidget.h"

namespace platform {
namespace {

std::vector<Window*>& LiveWindows() {
  static std::vector<Window*> windows;
  return windows;
}

std::vector<std::unique_ptr<Window>>& UnloadedWindows() {
  static std::vector<std::unique_ptr<Window>> windows;
  return windows;
}

int loaded_count = 0;

Qt::WindowFlags FlagsFor(Window::Border border) {
  // Without CustomizeWindowHint desktops add the very buttons that the other flags leave out.
  constexpr Qt::WindowFlags bare =
      Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowSystemMenuHint;
  switch (border) {
    case Window::Border::Sizable:
      return Qt::Window;
    case Window::Border::FixedToolWindow:
    case Window::Border::SizableToolWindow:
      return Qt::Tool | bare;
    case Window::Border::FixedDialog:
      return Qt::Dialog | bare;
  }
  return Qt::Window;
}

bool IsFixed(Window::Border border) {
  return border == Window::Border::FixedToolWindow || border == Window::Border::FixedDialog;
}

/// A tile in the screen's own pixels, kept for the next paint: scaling it for each paint would cost more than
/// the rest of the window together. A tile whose size isn't a whole number of the screen's pixels isn't
/// scaled beforehand.
const QImage& TileAtScale(const QImage& tile, double scale) {
  static QImage stretched;
  static qint64 stretched_from = 0;
  const QSizeF wanted = QSizeF(tile.size()) * scale;
  if (scale == 1 || wanted != wanted.toSize().toSizeF()) return tile;
  if (stretched_from != tile.cacheKey() || stretched.size() != wanted.toSize()) {
    stretched = tile.scaled(wanted.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    stretched_from = tile.cacheKey();
  }
  return stretched;
}

/// Black letters are readable on anything brighter than this.
constexpr int kDarkestForBlack = 110;

bool IsDark(QRgb color) { return qGray(color) < kDarkestForBlack; }

/// Whether a tile is dark on average. Worked out once for each tile, not for every paint.
bool IsDark(const QImage& tile) {
  static qint64 judged = 0;
  static bool dark = false;
  if (judged != tile.cacheKey()) {
    dark = IsDark(tile.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0));
    judged = tile.cacheKey();
  }
  return dark;
}

KeyPress::Key KeyOf(const QKeyEvent& event) {
  using Key = KeyPress::Key;
  if (event.matches(QKeySequence::Undo)) return Key::Undo;
  switch (event.key()) {
    case Qt::Key_Space:
      return Key::Space;
    case Qt::Key_Escape:
      return Key::Escape;
    case Qt::Key_Up:
      return Key::Up;
    case Qt::Key_Down:
      return Key::Down;
    case Qt::Key_Left:
      return Key::Left;
    case Qt::Key_Right:
      return Key::Right;
    case Qt::Key_Home:
      return Key::Home;
    case Qt::Key_End:
      return Key::End;
    default:
      return Key::Other;
  }
}

KeyPress PressOf(const QKeyEvent& event) {
  KeyPress press;
  press.key = KeyOf(event);
  press.text = event.text().toStdString();
  press.control = event.modifiers().testFlag(Qt::ControlModifier);
  press.alt = event.modifiers().testFlag(Qt::AltModifier);
  press.shift = event.modifiers().testFlag(Qt::ShiftModifier);
  press.repeated = event.isAutoRepeat();
  return press;
}

}  // namespace

int LoadedWindowCount() { return loaded_count; }

QWidget* VisibleWindow() {
  for (Window* window : LiveWindows())
    if (window->Visible()) return window->TopWidget();
  return nullptr;
}

void DestroyAllWindows() {
  UnloadedWindows().clear();
  while (!LiveWindows().empty()) {
    Window* window = LiveWindows().back();
    LiveWindows().pop_back();
    window->Forget();
  }
}

void RepaintWindows() {
  for (Window* window : LiveWindows()) window->Repaint();
}

Window::Window(const Design& design)
    : name_(design.name), design_(design), widget_(std::make_unique<WindowWidget>(FlagsFor(design.border))) {
  LiveWindows().push_back(this);
  widget_->setObjectName(QString::fromStdString(name_));
  widget_->client->setObjectName(QString::fromStdString(name_ + "_client"));
  widget_->client->paint = [this] { RaisePaint(); };
  widget_->client->resized = [this] { RaiseResize(); };
  widget_->close_box = [this] { CloseBox(); };
  widget_->client->paint_plates = [this](QPainter& painter) {
    if (ground_is_dark_) PaintLabelPlates(*this, painter);
  };
  widget_->key_down = [this](const QKeyEvent& event) { return Form_KeyDown(PressOf(event)); };
  widget_->escape_closes = IsFixed(design.border);
  SetAccessibleRole(widget_.get(),
                    design.border == Border::Sizable ? QAccessible::Window : QAccessible::Dialog);
  SetAccessibleRole(widget_->client, QAccessible::Pane);
  Window::SetBackColor(back_color_);
  SetCaption(design.caption);
  if (!design.icons.empty()) {
    QIcon icon;
    for (const std::string& file : design.icons) icon.addFile(QString::fromStdString(file));
    widget_->setWindowIcon(icon);
  }
}

Window::~Window() {
  std::erase(LiveWindows(), this);
  if (loaded_) --loaded_count;
}

void Window::Forget() {
  if (release_) release_();
}

void Window::Load() {
  if (loaded_) return;
  loaded_ = true;
  ++loaded_count;
  ResizeClient(design_.client_width, design_.client_height);
  Form_Load();
  RepaintWindows();
}

void Window::ResizeClient(int width, int height) {
  const QSize size(width, height + widget_->MenuHeight());
  if (IsFixed(design_.border)) widget_->setFixedSize(size);
  widget_->resize(size);
  // The toolkit holds back resize events of windows that aren't shown yet; the layout must not wait for them.
  widget_->PlaceClient();
}

void Window::LimitClient(int least_width, int least_height, int most_width, int most_height) {
  const int menu_height = widget_->MenuHeight();
  widget_->setMinimumSize(least_width, least_height > 0 ? least_height + menu_height : 0);
  widget_->setMaximumSize(most_width > 0 ? most_width : QWIDGETSIZE_MAX,
                          most_height > 0 ? most_height + menu_height : QWIDGETSIZE_MAX);
}

void Window::Show() {
  Load();
  if (!loaded_) return;  // Form_Load may have unloaded it.
  if (!widget_->isVisible() && design_.start != Start::SystemDefault) {
    const QWidget* over = design_.start == Start::CenterOwner ? QApplication::activeWindow() : nullptr;
    const QRect area = over != nullptr ? over->frameGeometry() : widget_->screen()->availableGeometry();
    widget_->move(area.center() - QPoint(widget_->width() / 2, widget_->height() / 2));
  }
  // `show` alone would leave a minimised window minimised.
  widget_->setWindowState(widget_->windowState() & ~Qt::WindowMinimized);
  widget_->show();
  widget_->raise();
  widget_->activateWindow();
}

void Window::ShowOwnedBy(Window& owner) {
  Load();
  widget_->winId();
  owner.widget_->winId();
  widget_->windowHandle()->setTransientParent(owner.widget_->windowHandle());
  if (!widget_->isVisible() && owner.Visible()) {
    const QRect beside = owner.widget_->frameGeometry();
    widget_->move(beside.left() + 48, beside.top() + 72);
  }
  Show();
}

void Window::Hide() { widget_->hide(); }
bool Window::Visible() const { return widget_->isVisible(); }

bool Window::Unload() {
  if (!loaded_ || unloading_) return true;
  unloading_ = true;
  Flag cancel = kFalse;
  Form_Unload(cancel);
  unloading_ = false;
  if (cancel != kFalse) return false;
  widget_->hide();
  loaded_ = false;
  --loaded_count;
  Form_Terminate();
  RepaintWindows();
  // The routine that is running may be one of this window's own.
  if (release_) UnloadedWindows().push_back(release_());
  RunLater([] { UnloadedWindows().clear(); });
  WindowCountHasChanged();
  return true;
}

std::string Window::Caption() const { return widget_->windowTitle().toStdString(); }
void Window::SetCaption(const std::string& caption) {
  widget_->setWindowTitle(QString::fromStdString(caption));
}

int Window::ScaleWidth() const { return widget_->client->width(); }
int Window::ScaleHeight() const { return widget_->client->height(); }

void Window::SetBackColor(Color color) {
  back_color_ = color;
  SetPaletteColor(widget_->client, QPalette::Window, color);
  widget_->client->ground = ToolkitColor(color);
  Repaint();
}

void Window::TilePicture(const Picture& picture) {
  QPainter* painter = widget_->client->painter;
  if (painter == nullptr) return;
  laid_tile_ = &picture;
  const double scale = widget_->client->devicePixelRatioF();
  const QImage& tile = TileAtScale(picture.Image(), scale);
  QBrush brush(tile);
  brush.setTransform(QTransform::fromScale(static_cast<double>(picture.Width()) / tile.width(),
                                           static_cast<double>(picture.Height()) / tile.height()));
  painter->setRenderHint(QPainter::SmoothPixmapTransform, &tile == &picture.Image() && scale != 1);
  painter->fillRect(widget_->client->rect(), brush);
}

void Window::Repaint() { widget_->client->update(); }

void Window::TabThrough(const std::vector<const Control*>& order) {
  for (std::size_t next = 1; next < order.size(); ++next)
    QWidget::setTabOrder(order[next - 1]->Widget(), order[next]->Widget());
}

void Window::TakeDroppedFiles(std::function<void(const std::string& path)> take) {
  widget_->take_file = std::move(take);
  widget_->setAcceptDrops(true);
}

QWidget* Window::ContainerWidget() { return widget_->client; }
QWidget* Window::TopWidget() { return widget_.get(); }

QMenuBar* Window::MenuBar() {
  if (widget_->menu_bar == nullptr) {
    widget_->menu_bar = new QMenuBar(widget_.get());
    widget_->menu_bar->setNativeMenuBar(false);
  }
  return widget_->menu_bar;
}

void Window::RaiseResize() {
  if (!loaded_ || !Visible()) return;
  Form_Resize();
}

void Window::RaisePaint() {
  if (!loaded_) return;
  laid_tile_ = nullptr;
  Form_Paint();
  NoteGround(laid_tile_ != nullptr ? IsDark(laid_tile_->Image()) : IsDark(ToolkitColor(back_color_).rgb()));
}

void Window::NoteGround(bool dark) {
  if (dark == ground_is_dark_) return;
  ground_is_dark_ = dark;
  NoteDarkGround(*widget_, dark);
  const QPalette palette = PaletteOn(dark);
  if (widget_->menu_bar != nullptr) {
    widget_->menu_bar->setPalette(palette);
    for (QMenu* menu : widget_->menu_bar->findChildren<QMenu*>()) menu->setPalette(palette);
  }
  for (Control* control : controls_) {
    if (control->Kind() == ControlKind::StatusBar) control->Widget()->setPalette(palette);
    if (control->Kind() == ControlKind::Label) control->Widget()->update();
  }
}

}  // namespace platform
