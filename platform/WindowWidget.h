// The toolkit's widgets behind a Window: the window itself, and in it the client area that its controls stand
// on.
#pragma once

#include <QColor>
#include <QMenuBar>
#include <QWidget>
#include <functional>
#include <string>

namespace platform {

/// The client area: the wallpaper's ground and the controls' parent.
class ClientWidget : public QWidget {
 public:
  explicit ClientWidget(QWidget* parent);
  /// Lies under what `paint` puts on it.
  QColor ground;
  /// What paints, while `paint` runs.
  QPainter* painter = nullptr;
  std::function<void()> paint, resized;
  std::function<void(QPainter&)> paint_plates;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
};

class WindowWidget : public QWidget {
 public:
  explicit WindowWidget(Qt::WindowFlags flags);

  ClientWidget* client;
  QMenuBar* menu_bar = nullptr;
  std::function<void()> close_box;
  std::function<bool(const QKeyEvent&)> key_down;
  std::function<void(const std::string&)> take_file;
  bool escape_closes = false;

  int MenuHeight() const;
  void PlaceClient();

 protected:
  void resizeEvent(QResizeEvent*) override { PlaceClient(); }
  /// Escape is a dialog's close box.
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
};

}  // namespace platform
