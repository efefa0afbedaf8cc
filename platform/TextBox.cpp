#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <functional>
#include <limits>
#include <string>
#include <utility>

#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"
#include "platform/Widgets.h"

namespace platform {
namespace {

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
  const std::function<void()>* pressed_elsewhere = nullptr;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QColor ground = palette().color(QPalette::Base);
    painter.setPen(hasFocus() ? palette().color(QPalette::Highlight) : ground.darker(170));
    painter.drawRect(QRectF(0.5, 0.5, width() - 1, height() - 1));
    if (hasFocus()) painter.drawRect(QRectF(1.5, 1.5, width() - 3, height() - 3));
  }
  void showEvent(QShowEvent* event) override {
    QLineEdit::showEvent(event);
    if (*pressed_elsewhere) qApp->installEventFilter(this);
  }
  void hideEvent(QHideEvent* event) override {
    qApp->removeEventFilter(this);
    QLineEdit::hideEvent(event);
  }
  /// Most of a window doesn't take the focus, so that a press there is seen only from above.
  bool eventFilter(QObject* receiver, QEvent* event) override {
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (press && receiver->isWidgetType() && IsElsewhere(static_cast<QWidget*>(receiver)))
      Raise(*pressed_elsewhere);
    return false;
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
  /// What stands open over the box, such as its context menu, belongs to it.
  bool IsElsewhere(const QWidget* widget) const {
    return widget != this && !isAncestorOf(widget) && QApplication::activePopupWidget() == nullptr;
  }

  /// What can't be edited is to be read as a whole; what can scrolls along with the cursor.
  void Fit() {
    const double room = isReadOnly() ? width() - 2 * kFrame - kToolkitMargins : 1e6;
    const QFont fitting = FontThatFits(QApplication::font(), text(), room, height() - 2 * kFrame + 1);
    if (fitting != font()) setFont(fitting);
    if (isReadOnly()) setCursorPosition(0);
  }

  static constexpr int kFrame = 1, kToolkitMargins = 5;
};

}  // namespace

TextBox::TextBox(Container& container, std::string name, const std::string& text)
    : Control(container, ControlKind::TextBox, std::move(name), new EditWidget) {
  auto* edit = As<EditWidget>(*this);
  // The toolkit's own limit would cut a long text that is only shown here to be edited.
  edit->setMaxLength(std::numeric_limits<int>::max());
  edit->setText(Utf16(text));
  text_ = text;
  edit->lost_focus = [this] { Raise(LostFocus); };
  edit->pressed_elsewhere = &PressedElsewhere;
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

}  // namespace platform
