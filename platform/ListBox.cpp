#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/ToolkitColor.h"
#include "platform/WidgetParts.h"
#include "platform/Widgets.h"

namespace platform {
namespace {

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
  /// Letters typed before the list had the focus are not part of what is looked for now.
  void focusInEvent(QFocusEvent* event) override {
    QListWidget::focusInEvent(event);
    const int row = currentRow();
    keyboardSearch("");
    setCurrentRow(row);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (IsForTheWindow(*event)) return event->ignore();
    QListWidget::keyPressEvent(event);
    const bool confirmed =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (confirmed && currentRow() >= 0) Raise(click);
  }

 private:
  /// Keys that are the window's: punctuation, with which no item begins, and arrow keys with Ctrl.
  static bool IsForTheWindow(const QKeyEvent& event) {
    const bool up_or_down = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    if (up_or_down) return event.modifiers().testFlag(Qt::ControlModifier);
    const QString text = event.text();
    return !text.isEmpty() && text[0].isPrint() && !text[0].isLetterOrNumber() && !text[0].isSpace();
  }
};

}  // namespace

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

}  // namespace platform
