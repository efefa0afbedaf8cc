// Ends a process when its window has been painted for the first time, which is what the start is timed to.
#pragma once

#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace bench {

/// Watches for the window of that title.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QString title) : QObject(qApp), title_(std::move(title)) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    const auto* widget = event->type() == QEvent::Paint ? qobject_cast<QWidget*>(object) : nullptr;
    if (widget != nullptr && !seen_ && widget->isWindow() && widget->windowTitle().startsWith(title_)) {
      seen_ = true;
      // Behind the flush of this very paint.
      QTimer::singleShot(0, [] { _exit(0); });
    }
    return false;
  }

 private:
  QString title_;
  bool seen_ = false;
};

}  // namespace bench
