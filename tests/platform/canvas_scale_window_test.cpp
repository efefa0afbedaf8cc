// What a canvas leaves on a screen whose pixels are no whole multiple of its own. Run at such a scale by its
// own entry in the list of tests; at any other there is nothing to see.
#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <cmath>

#include "app/Form1.h"
#include "support/desk.h"

namespace {

QImage OnScreen() {
  support::HandleEvents();
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == "Form1") return window->screen()->grabWindow(window->winId()).toImage();
  return {};
}

TEST(CanvasOnAFractionalScale, AChangedBoxLeavesNothingOfWhatStoodThere) {
  support::Desk desk;
  platform::PictureBox& canvas = desk.Main().Picture2;
  const QImage before = OnScreen();
  if (before.devicePixelRatio() == std::floor(before.devicePixelRatio())) GTEST_SKIP();
  const platform::PixelView pixels = canvas.Pixels();
  for (const int left : {50, 51, 53, 54}) {
    const platform::PixelBox box{left, 5, left + 17, 60};
    platform::InvertBox(pixels, box);
    canvas.Changed({0, 0, pixels.width, pixels.height});
    EXPECT_NE(OnScreen(), before) << left;
    platform::InvertBox(pixels, box);
    canvas.Changed(box);
    EXPECT_EQ(OnScreen(), before) << left;
  }
}

}  // namespace
