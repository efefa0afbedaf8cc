// A bare window of the toolkit, of the same style and size, which ends with its first paint.
#include <QStyleFactory>

#include "bench/start/first_paint.h"

int main(int argument_count, char** arguments) {
  QApplication application(argument_count, arguments);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QWidget window;
  window.setWindowTitle("Bare");
  window.resize(732, 546);
  const bench::FirstPaint watch("Bare");
  window.show();
  return QApplication::exec();
}
