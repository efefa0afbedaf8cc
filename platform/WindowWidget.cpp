#include "platform/WindowWidget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QUrl>
#include <algorithm>

#include "platform/Application.h"
#include "platform/HeldEvents.h"

namespace platform {
namespace {

/// The path of the first of the files that are being dragged; empty if there is none, or while a dialog is
/// open.
std::string DroppedFile(const QDropEvent& event) {
  if (QApplication::activeModalWidget() != nullptr) return {};
  for (const QUrl& url : event.mimeData()->urls())
    // The name's bytes, which needn't be UTF-8.
    if (url.isLocalFile())
      return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
  return {};
}

}  // namespace

ClientWidget::ClientWidget(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  // Background and tiles start at the left top corner: a change of size shows more or less of them, but moves
  // none.
  setAttribute(Qt::WA_StaticContents);
}

void ClientWidget::paintEvent(QPaintEvent* event) {
  QPainter own(this);
  own.setClipRegion(event->region());
  own.fillRect(event->rect(), ground);
  painter = &own;
  RunEvent(paint);
  painter = nullptr;
  paint_plates(own);
}

void ClientWidget::resizeEvent(QResizeEvent* event) {
  if (EventsAreHeld()) {
    RunLater([widget = QPointer(this)] {
      if (widget) widget->resized();
    });
  } else {
    RunEvent(resized);
  }
  // Controls that are redrawn at once while the window shrinks leave their old right ends on the screen.
  if (event->size().width() < event->oldSize().width()) update();
}

WindowWidget::WindowWidget(Qt::WindowFlags flags) : QWidget(nullptr, flags), client(new ClientWidget(this)) {}

int WindowWidget::MenuHeight() const {
  return menu_bar == nullptr ? 0 : std::max(menu_bar->heightForWidth(width()), menu_bar->sizeHint().height());
}

void WindowWidget::PlaceClient() {
  const int menu_height = MenuHeight();
  if (menu_bar != nullptr) menu_bar->setGeometry(0, 0, width(), menu_height);
  client->setGeometry(0, menu_height, width(), std::max(0, height() - menu_height));
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && escape_closes) return RunEvent(close_box);
  bool used = false;
  RunEvent([&] { used = key_down(*event); });
  if (!used) QWidget::keyPressEvent(event);
}

void WindowWidget::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFile(*event).empty()) event->acceptProposedAction();
}

void WindowWidget::dropEvent(QDropEvent* event) {
  // The program that the file comes from may be gone before it has told the file's name.
  const std::string path = DroppedFile(*event);
  if (path.empty()) return event->ignore();
  // That program waits until this returns, so a routine that may ask the user something runs later.
  RunLater([take = take_file, path] { take(path); });
  event->acceptProposedAction();
}

void WindowWidget::closeEvent(QCloseEvent* event) {
  // The window object decides: hiding and deleting are its own.
  event->ignore();
  RunEvent(close_box);
}

}  // namespace platform
