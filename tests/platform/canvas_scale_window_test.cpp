// What is on the screen where a canvas's pixel isn't a whole number of the screen's. The list of tests runs
// this at such a scale; at any other there is nothing to see.
#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "app/Form1.h"
#include "painter/FramePainter.h"
#include "support/UserInput.h"
#include "support/desk.h"
#include "timeline/MouthSets.h"

namespace {

/// The canvas's image on the screen, from the corner that is nearest to the canvas's own.
TEST(CanvasOnAFractionalScale, ShowsItsImagePixelByPixel) {
  support::Desk desk;
  Form1& form = desk.Main();
  const double scale = form.Picture2.Scale();
  if (scale == std::floor(scale)) GTEST_SKIP();
  for (platform::PictureBox* canvas : {&form.Picture2, &form.Picture4}) {
    const platform::PixelView pixels = canvas->Pixels();
    EXPECT_EQ(pixels.width, std::ceil(canvas->ScaleWidth() * scale));
    for (int y = 0; y < pixels.height; ++y)
      for (int x = 0; x < pixels.width; ++x)
        pixels.Row(y)[x] = 0xFF000000u | static_cast<platform::Pixel>((x * 7919 + y * 104729) & 0xFFFFFF);
    canvas->Changed(pixels.clip);
    const QImage screen = support::OnScreen(form.TopWidget());
    const QPointF corner = canvas->Widget()->mapTo(form.TopWidget(), QPointF(0, 0)) * scale;
    const int left = qRound(corner.x()), top = qRound(corner.y());
    // Without the toggles and the last pixels, which the viewport's edge may cut; the platform's picture of
    // the screen ends before the window does.
    const int right = std::min(pixels.width - 2, screen.width() - left);
    ASSERT_GT(right, 300);
    for (int y = 0; y < 60; ++y)
      for (int x = 0; x < right; ++x)
        ASSERT_EQ(screen.pixel(left + x, top + y), pixels.Row(y)[x]) << x << ',' << y;
  }
}

/// At its highest value the handle, 11 of the slider's 150 pixels, ends where the slider does.
TEST(CanvasOnAFractionalScale, ADialsSliderHasItsHandleAtItsValue) {
  support::Desk desk;
  painter::frame_painter.Hold().Show();
  QWidget* dial = painter::frame_painter->VL_DropDial1.Widget();
  painter::frame_painter->VL_DropDial1.SetValue(32);
  support::Press(dial, QPointF(dial->width() - 5, 9));
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  const QImage slider = QApplication::activePopupWidget()->focusProxy()->grab().toImage();
  const double scale = slider.devicePixelRatio();
  const auto bright = [&](double x) { return qGray(slider.pixel(int(x * scale), int(11 * scale))) > 170; };
  EXPECT_TRUE(!bright(136) && bright(142) && bright(147));
  QApplication::activePopupWidget()->close();
}

TEST(CanvasOnAFractionalScale, AMouthIsShownAtItsSize) {
  support::Desk desk;
  Form1& form = desk.Main();
  const double scale = form.Picture1.Scale();
  if (scale == std::floor(scale)) GTEST_SKIP();
  form.MYCartoon_Click();
  form.Picture1.SetBackColor(platform::Rgb(1, 2, 3));
  form.Picture1.SetPicture(form4->MouthPicture(1));
  EXPECT_EQ(form.Picture1.Point(126, 126), platform::Rgb(255, 255, 255));
  EXPECT_EQ(form.Picture1.Point(128, 128), platform::Rgb(1, 2, 3));
}

}  // namespace
