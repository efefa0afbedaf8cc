#include "platform/Widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <limits>

#include "platform/Application.h"
#include "platform/Picture.h"
#include "platform/ToolkitColor.h"
#include "platform/Window.h"

namespace platform {
namespace {

QString Utf16(const std::string& text) { return QString::fromStdString(text); }

void Raise(const std::function<void()>& event) {
  if (event) RunEvent(event);
}

constexpr double kSmallLetters = 0.92, kLeastPoints = 5.0;
constexpr int kClosestPercent = 84;

void Shrink(QFont& font, double factor) {
  if (factor < 1) font.setPointSizeF(std::max(kLeastPoints, font.pointSizeF() * factor));
}

/// The design gives texts a fixed room, made for small letters; where a text is too big for it at the
/// desktop's text size, the letters give way: they get lower to fit in height, then stand closer to fit in
/// width, then get smaller.
QFont FontThatFits(QFont font, const QString& text, double width, double height) {
  Shrink(font, height / std::max(QFontMetricsF(font).height(), 1.0));
  const double fits = width / std::max(QFontMetricsF(font).horizontalAdvance(text), 1.0);
  if (fits >= 1) return font;
  font.setStretch(std::max(kClosestPercent, static_cast<int>(100 * fits)));
  Shrink(font, 100 * fits / kClosestPercent);
  return font;
}

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

class EditWidget : public QLineEdit {
 public:
  EditWidget() {
    // The desktop's own frame would eat a third of the design's small fields.
    setFrame(false);
    setTextMargins(kFrame, kFrame, kFrame, kFrame);
    connect(this, &QLineEdit::textChanged, this, &EditWidget::Fit);
  }
  std::function<void()> lost_focus;
  /// False lets the key go on to the window, whose close box it may be.
  std::function<bool()> escaped;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QColor ground = palette().color(QPalette::Base);
    painter.setPen(hasFocus() ? palette().color(QPalette::Highlight) : ground.darker(170));
    painter.drawRect(QRectF(0.5, 0.5, width() - 1, height() - 1));
    if (hasFocus()) painter.drawRect(QRectF(1.5, 1.5, width() - 3, height() - 3));
  }
  void resizeEvent(QResizeEvent* event) override {
    QLineEdit::resizeEvent(event);
    Fit();
  }
  void focusOutEvent(QFocusEvent* event) override {
    QLineEdit::focusOutEvent(event);
    // A context menu only borrows the focus.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
      Raise(lost_focus);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape && escaped()) return;
    QLineEdit::keyPressEvent(event);
  }

 private:
  /// What can't be edited is to be read as a whole; what can scrolls along with the cursor.
  void Fit() {
    const double room = isReadOnly() ? width() - 2 * kFrame - kToolkitMargins : 1e6;
    const QFont fitting = FontThatFits(QApplication::font(), text(), room, height() - 2 * kFrame + 1);
    if (fitting != font()) setFont(fitting);
    if (isReadOnly()) setCursorPosition(0);
  }

  static constexpr int kFrame = 1, kToolkitMargins = 5;
};

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

class ListWidget : public QListWidget {
 public:
  std::function<void()> click;

 protected:
  bool event(QEvent* event) override {
    const bool handled = QListWidget::event(event);
    if (event->type() == QEvent::Paint && hasFocus()) PaintFocusFrame(this);
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
    return handled;
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    QListWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && itemAt(event->pos()) != nullptr) Raise(click);
  }
  void keyPressEvent(QKeyEvent* event) override {
    QListWidget::keyPressEvent(event);
    const bool confirmed =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (confirmed && currentRow() >= 0) Raise(click);
  }
};

class BarWidget : public QScrollBar {
 public:
  BarWidget() : QScrollBar(Qt::Horizontal) { setFocusPolicy(Qt::TabFocus); }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QScrollBar::paintEvent(event);
    if (hasFocus()) PaintFocusFrame(this);
  }
};

class RuleWidget : public QWidget {
 public:
  QColor color;

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), color); }
};

template <class Wanted>
Wanted* As(const Control& control) {
  return static_cast<Wanted*>(control.Widget());
}

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

TextBox::TextBox(Container& container, std::string name, const std::string& text)
    : Control(container, ControlKind::TextBox, std::move(name), new EditWidget) {
  auto* edit = As<EditWidget>(*this);
  // The toolkit's own limit would cut a long text that is only shown here to be edited.
  edit->setMaxLength(std::numeric_limits<int>::max());
  edit->setText(Utf16(text));
  text_ = text;
  edit->lost_focus = [this] { Raise(LostFocus); };
  QObject::connect(edit, &QLineEdit::textChanged, [this](const QString& changed) {
    text_ = changed.toStdString();
    Raise(Change);
  });
  QObject::connect(edit, &QLineEdit::returnPressed, [this] { Raise(Entered); });
  edit->escaped = [this] {
    Raise(Escaped);
    return static_cast<bool>(Escaped);
  };
}
void TextBox::SetText(const std::string& text) { As<EditWidget>(*this)->setText(Utf16(text)); }
void TextBox::SelectAll() { As<EditWidget>(*this)->selectAll(); }
void TextBox::SetReadOnly(bool read_only) { As<EditWidget>(*this)->setReadOnly(read_only); }
Color TextBox::BackColor() const { return FromToolkit(Widget()->palette().color(QPalette::Base)); }
void TextBox::SetBackColor(Color color) { SetPaletteColor(Widget(), QPalette::Base, color); }
Color TextBox::ForeColor() const { return FromToolkit(Widget()->palette().color(QPalette::Text)); }
void TextBox::SetForeColor(Color color) { SetPaletteColor(Widget(), QPalette::Text, color); }

ListBox::ListBox(Container& container, std::string name, const std::vector<std::string>& items)
    : Control(container, ControlKind::ListBox, std::move(name), new ListWidget) {
  auto* list = As<ListWidget>(*this);
  for (const std::string& item : items) list->addItem(Utf16(item));
  list->setUniformItemSizes(true);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->click = [this] { Raise(Click); };
}
void ListBox::SetListIndex(int index) { As<ListWidget>(*this)->setCurrentRow(index); }
std::string ListBox::Text() const {
  const auto* item = As<ListWidget>(*this)->currentItem();
  return item == nullptr ? "" : item->text().toStdString();
}
Color ListBox::BackColor() const { return FromToolkit(Widget()->palette().color(QPalette::Base)); }
void ListBox::SetBackColor(Color color) { SetPaletteColor(Widget(), QPalette::Base, color); }
Color ListBox::ForeColor() const { return FromToolkit(Widget()->palette().color(QPalette::Text)); }
void ListBox::SetForeColor(Color color) { SetPaletteColor(Widget(), QPalette::Text, color); }

HScrollBar::HScrollBar(Container& container, std::string name)
    : Control(container, ControlKind::ScrollBar, std::move(name), new BarWidget) {
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
    : Control(container, ControlKind::CommandButton, std::move(name), new QPushButton(Utf16(caption))) {
  As<QPushButton>(*this)->setAutoDefault(true);
  QObject::connect(As<QPushButton>(*this), &QPushButton::clicked, [this] { Raise(Click); });
}

LineControl::LineControl(Container& container, std::string name, int x1, int y1, int x2, int y2, Color color)
    : Control(container, ControlKind::Line, std::move(name), new RuleWidget), color_(color) {
  // A rule is part of the ground that it is drawn on: presses go through it.
  Widget()->setAttribute(Qt::WA_TransparentForMouseEvents);
  Move(std::min(x1, x2), std::min(y1, y2), std::abs(x2 - x1) + 1, std::abs(y2 - y1) + 1);
  SetForeColor(color);
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
    : Control(container, ControlKind::Image, std::move(name), new QWidget) {
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
  // A wallpaper ends above it.
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
