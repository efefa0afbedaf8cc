// The in-house controls: what is seen of them, their bar and their slider under the mouse.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QImage>
#include <QSlider>
#include <string>
#include <vector>

#include "platform/ControlsBench.h"

namespace look {
namespace {

using platform::Rgb;
using support::DragTo;
using support::Key;
using support::Press;
using support::Release;

struct InHouse : testing::Test {
  /// Where the dial's slider hangs, if it has dropped.
  static QSlider* Dropped() {
    QWidget* const panel = QApplication::activePopupWidget();
    return panel == nullptr ? nullptr : static_cast<QSlider*>(panel->focusProxy());
  }
  void Type(const char* digits) {
    Key(dial, Qt::Key_A, Qt::ControlModifier);
    for (const char* at = digits; *at != 0; ++at) Key(dial, Qt::Key_0, Qt::NoModifier, QString(QChar(*at)));
  }

  platform::ControlsBench bench;
  QWidget *glide = bench.glide.Widget(), *dial = bench.dial.Widget();
};

/// The greys that a control of the bench shows at these points, on a ground of 10.
std::vector<int> Greys(platform::ControlsBench& bench, const platform::Control& control,
                       const std::vector<QPoint>& points) {
  bench.SetBackColor(Rgb(10, 10, 10));
  const QImage image = bench.ContainerWidget()->grab(control.Widget()->geometry()).toImage();
  std::vector<int> greys;
  for (const QPoint& point : points) greys.push_back(qGray(image.pixel(point)));
  return greys;
}

using Expected = std::vector<int>;

/// An even fill of 100, highlight 200, shadow 0.
void DressPlainly(vl_button& button) {
  button.SetBackColor(Rgb(100, 100, 100));
  button.SetHighlight(Rgb(200, 200, 200));
  button.SetShadow(0);
  button.SetGradient(1);
}

/// A picture of 4 by 2 in black with a hole, and its twin, which a dark button shows in white.
void GiveDot(vl_button& button) {
  QImage dot(4, 2, QImage::Format_ARGB32);
  dot.fill(Qt::black);
  dot.setPixelColor(2, 0, Qt::transparent);
  const QString file = QString::fromStdString(support::ScratchFolder()) + "/dot";
  ASSERT_TRUE(dot.save(file + ".png") && dot.scaled(8, 4).save(file + "@2x.png"));
  button.SetPicture(file.toStdString());
}

TEST_F(InHouse, ButtonLooksAsItsStateIs) {
  bench.dial.SetFocus();
  for (vl_button* button : {&bench.push, &bench.toggle}) {
    DressPlainly(*button);
    button->Widget()->resize(20, 18);
  }
  GiveDot(bench.push);
  const auto push = [this] {
    // The outline, the upper edge, the face, the picture's hole and its corners before and after its shift,
    // the lower edge.
    return Greys(bench, bench.push, {{9, 0}, {9, 1}, {4, 4}, {10, 8}, {8, 8}, {12, 10}, {9, 16}});
  };
  EXPECT_EQ(push(), (Expected{25, 185, 100, 100, 255, 100, 65}));
  Press(bench.push.Widget(), {5, 6});
  EXPECT_EQ(push(), (Expected{18, 32, 72, 72, 72, 255, 123})) << "held down";
  Release(bench.push.Widget(), {5, 6});
  bench.push.Widget()->setEnabled(false);
  EXPECT_EQ(push()[4], 168) << "faded";

  const auto toggle = [this] {
    // The left edge inwards, the face, and the lower edge upwards.
    return Greys(bench, bench.toggle, {{1, 9}, {2, 9}, {9, 9}, {9, 16}, {9, 14}, {9, 13}});
  };
  bench.toggle.SetValue(true);
  EXPECT_EQ(toggle(), (Expected{32, 72, 72, 255, 72, 72})) << "a bright mark below";
  bench.toggle.SetFocus();
  EXPECT_EQ(toggle(), (Expected{255, 0, 72, 255, 255, 255})) << "a ring, and the mark within it";

  // A small one shows its colour where it is on.
  bench.toggle.Widget()->resize(9, 9);
  const auto shown = [this] { return Greys(bench, bench.toggle, {{0, 4}, {1, 4}, {3, 4}, {6, 4}}); };
  EXPECT_EQ(shown(), (Expected{255, 0, 255, 100}));
  bench.toggle.SetValue(false);
  bench.dial.SetFocus();
  EXPECT_EQ(shown(), (Expected{100, 15, 15, 15}));
}

/// One and a half of the screen's pixels to each of the design's: the lines stay one pixel wide.
TEST(CanvasOnAFractionalScale, AButtonHasSharpEdges) {
  platform::ControlsBench bench;
  if (bench.TopWidget()->devicePixelRatioF() != 1.5) GTEST_SKIP();
  DressPlainly(bench.push);
  bench.push.Widget()->resize(20, 18);
  GiveDot(bench.push);
  EXPECT_EQ(
      Greys(bench, bench.push, {{0, 9}, {1, 9}, {2, 9}, {11, 13}, {12, 13}, {17, 13}, {18, 13}, {28, 9}}),
      (Expected{25, 185, 100, 100, 255, 255, 100, 65}));
  bench.push.SetCaption(".");
  bench.push.SetFocus();
  EXPECT_EQ(Greys(bench, bench.push, {{0, 13}, {1, 13}, {2, 13}, {3, 13}}), (Expected{25, 255, 0, 100}));
}

TEST_F(InHouse, GlideShowsItsBar) {
  bench.dial.SetFocus();
  bench.glide.Widget()->resize(60, 12);
  bench.glide.SetBackColor(0);
  bench.glide.SetForeColor(Rgb(160, 160, 160));
  bench.glide.SetRange(3);
  bench.glide.SetPosition(1);
  // A bar of 24 in a way of 32.
  EXPECT_EQ(Greys(bench, bench.glide, {{11, 5}, {16, 5}, {33, 5}, {39, 5}}), (Expected{0, 160, 160, 0}));
}

TEST_F(InHouse, GlideStaysWithinItsRange) {
  EXPECT_EQ(bench.After([&] {
    for (const auto& [range, position, stands] :
         {std::tuple(10, 99, 10), {4, 4, 4}, {-3, 0, 0}, {10, -2, 0}}) {
      bench.glide.SetRange(range);
      bench.glide.SetPosition(position);
      EXPECT_EQ(std::pair(bench.glide.Range(), bench.glide.Position()),
                std::pair(std::max(range, 0), stands));
    }
    bench.glide.SetPosition(5);
    bench.glide.SetRange(4);
    EXPECT_EQ(bench.glide.Position(), 4);
  }),
            "");
  // The bar is three times as wide as the trough is high, 45 of 146 pixels, which leaves it a way of 101.
  bench.glide.SetRange(3000);
  EXPECT_EQ(bench.After([&] { Key(glide, Qt::Key_PageDown); }), "at 1341,");
  // A touchpad's notch comes in parts.
  const auto turned = [&](int by) { return bench.After([&] { support::Wheel(glide, by); }); };
  EXPECT_EQ(turned(-120), "at 1342,");
  EXPECT_EQ(turned(60), "");
  EXPECT_EQ(turned(60), "at 1341,");
}

TEST_F(InHouse, GlidesBarFollowsThePointerAndAPressBesideItPages) {
  bench.glide.Move(4, 0, 400, 19);
  bench.glide.SetRange(3);
  // The trough is 396 pixels between its edges, the bar 99: it ends at 100. Half way from 1 to 2, of a way of
  // 297.
  EXPECT_EQ(bench.After([&] { Press(glide, {100, 9}), DragTo(glide, {100 + 148, 9}); }), "elsewhere,at 1,");
  EXPECT_EQ(bench.After([&] { DragTo(glide, {100 + 149, 9}), DragTo(glide, {4000, 9}); }), "at 2,at 3,");
  EXPECT_EQ(bench.After([&] { Release(glide, {4000, 9}), DragTo(glide, {51, 9}); }), "");
  EXPECT_EQ(bench.After([&] { Press(glide, {20, 9}), Release(glide, {20, 9}); }), "elsewhere,at 2,");
  // It doesn't page on then, in the time in which a button that is held clicks again.
  bench.push.SetRepeats(true);
  const auto until = [this](const char* seen) {
    return bench.After([&] {
      while (bench.log.str().find(seen) == std::string::npos) QApplication::processEvents();
    });
  };
  Press(bench.push.Widget(), {5, 6});
  EXPECT_EQ(until("push,push").find("at"), std::string::npos);
  Release(bench.push.Widget(), {5, 6});
  // Held, it pages on until the bar is under the pointer, wherever that has gone.
  for (const auto& [to, seen] : {std::pair(120, "at 1,"), {390, "at 3,"}}) {
    bench.glide.SetPosition(3);
    Press(glide, {120, 9});
    DragTo(glide, QPointF(to, 9));
    EXPECT_EQ(until("at"), seen);
    QElapsedTimer clock;
    EXPECT_EQ(bench.After([&] {
      for (clock.start(); clock.elapsed() < 200;) QApplication::processEvents();
    }),
              "");
    Release(glide, {120, 9});
  }
}

TEST_F(InHouse, DialStaysWithinItsBounds) {
  const VL_DropDial open_below(bench, "amount", "16", "", "32");
  EXPECT_EQ(open_below.Min(), 0);
  const VL_DropDial beyond(bench, "beyond", "99", "1", "20");
  EXPECT_EQ(beyond.Text(), "20");
  Key(dial, Qt::Key_Up);
  EXPECT_EQ(bench.dial.value(), 5);
  support::Wheel(dial, -120);
  EXPECT_EQ(bench.dial.value(), 4);
  for (const auto& [typed, value] : {std::pair("199", 20), {"x", 20}, {"0", 1}}) {
    Type(typed);
    EXPECT_EQ(bench.dial.value(), value) << typed;
  }
}

TEST_F(InHouse, DialsSliderDropsDownAndChooses) {
  bench.dial.Move(4, 280, 53, 19);
  bench.dial.SetAccessibleName("Amount");
  Press(dial, {46, 9}, Qt::RightButton);
  EXPECT_EQ(Dropped(), nullptr);
  Press(dial, {46, 9});
  ASSERT_NE(Dropped(), nullptr);
  EXPECT_EQ(Dropped()->accessibleName(), "Amount");
  const auto value = [this](const auto& hands) {
    hands(Dropped());
    return bench.dial.value();
  };
  EXPECT_EQ(value([](QWidget* slider) { Key(slider, Qt::Key_Right); }), 5);
  EXPECT_EQ(value([](QWidget* slider) { Key(slider, Qt::Key_PageUp); }), 7) << "an eighth of the way";
  // 72.5 of 139 pixels of 19 steps.
  EXPECT_EQ(value([](QWidget* slider) { Press(slider, {78, 11}); }), 11);
  EXPECT_EQ(value([](QWidget* slider) { Press(slider, {149, 11}); }), 20);
  EXPECT_EQ(value([](QWidget* slider) { DragTo(slider, {-50, 11}), Release(slider, {-50, 11}); }), 1);
  Key(Dropped(), Qt::Key_A);
  EXPECT_EQ(value([](QWidget* slider) { Key(slider, Qt::Key_Right); }), 2);
  Key(Dropped(), Qt::Key_Escape);
  EXPECT_EQ(Dropped(), nullptr);
  EXPECT_EQ(bench.dial.value(), 2);
  // By key, on from what has been typed; Enter closes it too.
  Type("99");
  Key(dial, Qt::Key_F4);
  ASSERT_NE(Dropped(), nullptr);
  EXPECT_EQ(value([](QWidget* slider) { Key(slider, Qt::Key_Left); }), 19);
  Key(Dropped(), Qt::Key_Return);
  Key(dial, Qt::Key_Down);
  EXPECT_EQ(Dropped(), nullptr);
  Key(dial, Qt::Key_Down, Qt::AltModifier);
  ASSERT_NE(Dropped(), nullptr);
  EXPECT_EQ(Dropped()->value(), 18);
  Key(Dropped(), Qt::Key_Enter);

  // At the screen's lower edge it drops up, and is drawn in from the right one.
  const QRect screen = dial->screen()->availableGeometry();
  dial->window()->move(screen.right() - 60, screen.bottom() - bench.TopWidget()->height());
  Press(dial, {46, 9});
  ASSERT_NE(Dropped(), nullptr);
  const QRect panel = Dropped()->window()->geometry();
  EXPECT_LT(panel.center().y(), dial->mapToGlobal(QPoint(0, 0)).y());
  EXPECT_LT(panel.center().x(), screen.right() - 60);
  Dropped()->window()->close();
}

}  // namespace
}  // namespace look
