// The in-house controls under a user's hands.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QImage>
#include <QScreen>
#include <QSlider>
#include <string>
#include <vector>

#include "look/HGlide.h"
#include "look/VlButton.h"
#include "look/VlDropDial.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace look {
namespace {

using platform::Rgb;
using support::DragTo;
using support::Key;
using support::Press;
using support::Release;

class Bench : public platform::Window {
 public:
  Bench()
      : Window(
            {.name = "Bench", .caption = "Bench", .client_width = 420, .client_height = 120, .icons = {}}) {
    push.Move(4, 4, 23, 23);
    toggle.Move(30, 4, 23, 23);
    glide.Move(4, 40, 400, 19);
    dial.Move(4, 80, 53, 19);
    push.Click = [this] { seen.push_back("click"); };
    for (vl_button* button : {&push, &toggle})
      button->MouseUp = [this, button](std::int16_t number, std::int16_t shift, float x, float y) {
        seen.push_back("up " + std::to_string(number) + " " + std::to_string(shift) + " " +
                       std::to_string(static_cast<int>(x)) + " " + std::to_string(static_cast<int>(y)) +
                       (button->value() ? " on" : " off"));
      };
    toggle.Click = [this] { seen.push_back("wrong"); };
    glide.Scroll = [this] { seen.push_back("at " + std::to_string(glide.Position())); };
    Show();
  }
  std::vector<std::string> Seen() { return std::exchange(seen, {}); }

  std::vector<std::string> seen;
  vl_button push{*this, "push"};
  vl_button toggle{*this, "toggle", vl_button::TwoState};
  HGlide glide{*this, "glide"};
  VL_DropDial dial{*this, "dial", "4", "1", "20"};
};

using Texts = std::vector<std::string>;

TEST(VlButton, PushButtonClicksOnReleaseInsideByTheLeftButtonOnly) {
  Bench bench;
  QWidget* push = bench.push.Widget();
  Press(push, {5, 6});
  EXPECT_EQ(bench.Seen(), Texts{});
  Release(push, {5, 6}, Qt::LeftButton, Qt::ShiftModifier | Qt::AltModifier);
  EXPECT_EQ(bench.Seen(), (Texts{"click", "up 1 5 5 6 off"}));
  Press(push, {5, 6});
  DragTo(push, {5, 40});
  Release(push, {5, 40});
  EXPECT_EQ(bench.Seen(), Texts{"up 1 0 5 40 off"});
  Press(push, {5, 6}, Qt::RightButton);
  Release(push, {5, 6}, Qt::RightButton);
  EXPECT_EQ(bench.Seen(), Texts{"up 2 0 5 6 off"});
  QMouseEvent right(QEvent::MouseButtonPress, {5, 6}, push->mapToGlobal(QPointF(5, 6)), Qt::RightButton,
                    Qt::RightButton, Qt::NoModifier);
  QApplication::sendEvent(push, &right);
  EXPECT_TRUE(right.isAccepted()) << "what lies below must not get it";
  bench.push.SetRepeats(true);
  Press(push, {5, 6});
  while (bench.Seen().empty()) QApplication::processEvents();
}

TEST(VlButton, TwoStateButtonHasFlippedBeforeMouseUpArrives) {
  Bench bench;
  QWidget* toggle = bench.toggle.Widget();
  Press(toggle, {5, 6});
  EXPECT_FALSE(bench.toggle.value());
  Release(toggle, {5, 6});
  EXPECT_EQ(bench.Seen(), Texts{"up 1 0 5 6 on"});
  Press(toggle, {5, 6});
  Release(toggle, {60, 6});
  EXPECT_EQ(bench.Seen(), Texts{"up 1 0 60 6 on"});
  bench.toggle.SetValue(false);
  EXPECT_FALSE(bench.toggle.value());
  EXPECT_EQ(bench.Seen(), Texts{});
  Key(toggle, Qt::Key_Space);
  EXPECT_EQ(bench.Seen(), Texts{"up 1 0 11 11 on"}) << "a key after the mouse";
}

TEST(VlButton, KeysDoWhatTheMouseDoes) {
  Bench bench;
  for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    Key(bench.push.Widget(), key);
    EXPECT_EQ(bench.Seen(), Texts{"click"}) << key;
    const bool before = bench.toggle.value();
    Key(bench.toggle.Widget(), key);
    EXPECT_EQ(bench.Seen(), Texts{before ? "up 1 0 11 11 off" : "up 1 0 11 11 on"}) << key;
  }
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
  QApplication::sendEvent(bench.push.Widget(), &held);
  Key(bench.push.Widget(), Qt::Key_A);
  EXPECT_EQ(bench.Seen(), Texts{});
}

/// The greys that a control of the bench shows at these points, on a ground of 10.
std::vector<int> Greys(Bench& bench, const platform::Control& control, const std::vector<QPoint>& points,
                       bool hovered = false) {
  bench.SetBackColor(Rgb(10, 10, 10));
  control.Widget()->setAttribute(Qt::WA_UnderMouse, hovered);
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

/// A picture of 4 by 2 in black with a hole, which a dark button shows in white.
void GiveDot(vl_button& button) {
  QImage dot(4, 2, QImage::Format_ARGB32);
  dot.fill(Qt::black);
  dot.setPixelColor(2, 0, Qt::transparent);
  ASSERT_TRUE(dot.save(QString::fromStdString(support::ScratchFolder() + "/dot.png")));
  button.SetPicture(support::ScratchFolder() + "/dot");
}

TEST(VlButton, EachStateLooksAsItIs) {
  Bench bench;
  // The focus shows in the active window alone.
  while (!bench.TopWidget()->isActiveWindow()) QApplication::processEvents();
  bench.dial.SetFocus();
  for (vl_button* button : {&bench.push, &bench.toggle}) {
    DressPlainly(*button);
    button->Widget()->resize(20, 18);
  }
  GiveDot(bench.push);
  const auto push = [&bench](bool hovered = false) {
    // The outline, the upper edge, the face, the picture's hole and its corners before and after its shift,
    // the lower edge.
    return Greys(bench, bench.push, {{9, 0}, {9, 1}, {4, 4}, {10, 8}, {8, 8}, {12, 10}, {9, 16}}, hovered);
  };
  EXPECT_EQ(push(), (Expected{25, 185, 100, 100, 255, 100, 65}));
  Press(bench.push.Widget(), {5, 6});
  EXPECT_EQ(push(), (Expected{18, 32, 72, 72, 72, 255, 123})) << "held down";
  Release(bench.push.Widget(), {5, 6});
  bench.push.SetBorderless(true);
  EXPECT_EQ(push(true), (Expected{43, 107, 107, 107, 255, 107, 107})) << "framed under the pointer";
  bench.push.Widget()->setEnabled(false);
  EXPECT_EQ(push(), (Expected{111, 111, 111, 111, 168, 111, 111})) << "faded";
  bench.push.SetCaption("W");
  EXPECT_NE(Greys(bench, bench.push, {{9, 6}, {10, 6}, {9, 11}, {10, 11}}), Expected(4, 111));

  const auto toggle = [&bench] {
    // The left edge inwards, the face, and the lower edge upwards.
    return Greys(bench, bench.toggle, {{1, 9}, {2, 9}, {9, 9}, {9, 16}, {9, 14}, {9, 13}});
  };
  bench.toggle.SetValue(true);
  EXPECT_EQ(toggle(), (Expected{32, 72, 72, 255, 72, 72})) << "a bright mark below";
  bench.toggle.SetFocus();
  EXPECT_EQ(toggle(), (Expected{255, 0, 72, 255, 255, 255})) << "a ring, and the mark within it";
  bench.toggle.SetBackColor(Rgb(255, 255, 255));
  EXPECT_EQ(toggle(), (Expected{0, 255, 184, 0, 0, 0})) << "dark on bright";

  // A small one shows its colour where it is on.
  bench.toggle.SetBackColor(Rgb(100, 100, 100));
  bench.toggle.Widget()->resize(9, 9);
  const auto shown = [&bench] { return Greys(bench, bench.toggle, {{0, 4}, {1, 4}, {3, 4}, {6, 4}}); };
  EXPECT_EQ(shown(), (Expected{255, 0, 255, 100}));
  bench.dial.SetFocus();
  EXPECT_EQ(shown(), (Expected{40, 100, 255, 100}));
  bench.toggle.SetValue(false);
  EXPECT_EQ(shown(), (Expected{100, 15, 15, 15}));
  Press(bench.toggle.Widget(), {5, 6});
  EXPECT_EQ(shown(), (Expected{60, 15, 15, 15}));
}

/// One and a half of the screen's pixels to each of the design's: the lines stay one pixel wide.
TEST(CanvasOnAFractionalScale, AButtonHasSharpEdges) {
  Bench bench;
  if (bench.TopWidget()->devicePixelRatioF() != 1.5) GTEST_SKIP();
  DressPlainly(bench.push);
  bench.push.Widget()->resize(20, 18);
  GiveDot(bench.push);
  EXPECT_EQ(
      Greys(bench, bench.push, {{0, 9}, {1, 9}, {2, 9}, {11, 13}, {12, 13}, {17, 13}, {18, 13}, {28, 9}}),
      (Expected{25, 185, 100, 100, 255, 255, 100, 65}));
}

TEST(HGlide, ShowsItsBarAndTheKeyboard) {
  Bench bench;
  while (!bench.TopWidget()->isActiveWindow()) QApplication::processEvents();
  bench.dial.SetFocus();
  bench.glide.Widget()->resize(60, 12);
  bench.glide.SetBackColor(0);
  bench.glide.SetForeColor(Rgb(160, 160, 160));
  bench.glide.SetHighlight(Rgb(200, 200, 200));
  bench.glide.SetShadow(0);
  bench.glide.SetRange(3);
  bench.glide.SetPosition(1);
  // A bar of 24 in a way of 32, its grip in the middle.
  EXPECT_EQ(
      Greys(bench, bench.glide, {{12, 5}, {13, 5}, {14, 5}, {16, 5}, {24, 5}, {25, 5}, {36, 5}, {37, 5}}),
      (Expected{0, 40, 194, 160, 80, 217, 40, 0}));
  bench.glide.SetFocus();
  bench.glide.SetRange(0);
  EXPECT_EQ(Greys(bench, bench.glide, {{2, 5}, {3, 5}, {4, 5}, {25, 5}, {56, 5}, {57, 5}}),
            (Expected{16, 255, 0, 64, 255, 16}));
}

TEST(DropDial, IsAFieldAndAButtonWithAnArrow) {
  Bench bench;
  EXPECT_EQ(Greys(bench, bench.dial, {{4, 9}, {35, 9}, {37, 9}, {44, 7}, {44, 10}}),
            (Expected{87, 87, 72, 0, 0}));
}

TEST(HGlide, ScrollComesFromTheUserAloneAndEachPositionOnce) {
  Bench bench;
  HGlide& glide = bench.glide;
  EXPECT_EQ(std::pair(glide.Range(), glide.Position()), std::pair(0, 0));
  glide.SetRange(10);
  glide.SetPosition(99);
  EXPECT_EQ(glide.Position(), 10);
  glide.SetRange(4);
  EXPECT_EQ(glide.Position(), 4);
  glide.SetRange(-3);
  EXPECT_EQ(glide.Position(), 0);
  EXPECT_EQ(bench.Seen(), Texts{});

  glide.SetRange(10);
  QWidget* widget = glide.Widget();
  const std::pair<int, Texts> keys[] = {{Qt::Key_Right, {"at 1"}},    {Qt::Key_Down, {"at 2"}},
                                        {Qt::Key_Left, {"at 1"}},     {Qt::Key_Up, {"at 0"}},
                                        {Qt::Key_Left, {}},           {Qt::Key_End, {"at 10"}},
                                        {Qt::Key_PageUp, {"at 9"}},   {Qt::Key_Home, {"at 0"}},
                                        {Qt::Key_PageDown, {"at 1"}}, {Qt::Key_PageDown, {"at 2"}}};
  for (const auto& [key, seen] : keys) {
    Key(widget, key);
    EXPECT_EQ(bench.Seen(), seen) << key;
  }
  support::Wheel(widget, -120);
  EXPECT_EQ(bench.Seen(), Texts{"at 3"});
  // A touchpad's notch comes in parts.
  support::Wheel(widget, 60);
  EXPECT_EQ(bench.Seen(), Texts{});
  support::Wheel(widget, 60);
  EXPECT_EQ(bench.Seen(), Texts{"at 2"});
  // The bar is three times as wide as the trough is high, 45 of 396 pixels, which leaves it a way of 351.
  glide.SetRange(3000);
  Key(widget, Qt::Key_PageDown);
  EXPECT_EQ(bench.Seen(), Texts{"at 387"});
}

TEST(HGlide, BarFollowsThePointerAndAPressBesideItPages) {
  Bench bench;
  bench.glide.SetRange(3);
  QWidget* widget = bench.glide.Widget();
  // The trough is 396 pixels between its edges, the bar 99: its middle stands at 51.
  Press(widget, {51, 9});
  // Half way from 1 to 2, of a way of 297.
  DragTo(widget, {51 + 148, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 1"});
  DragTo(widget, {51 + 149, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 2"});
  DragTo(widget, {4000, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 3"});
  Release(widget, {4000, 9});
  DragTo(widget, {51, 9});
  EXPECT_EQ(bench.Seen(), Texts{});
  Press(widget, {20, 9});
  Release(widget, {20, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 2"});
  // Held, it pages on until the bar is under the pointer.
  bench.glide.SetPosition(3);
  Press(widget, {120, 9});
  while (bench.seen.size() < 2) QApplication::processEvents();
  QElapsedTimer clock;
  for (clock.start(); clock.elapsed() < 200;) QApplication::processEvents();
  EXPECT_EQ(bench.Seen(), (Texts{"at 2", "at 1"}));
  Release(widget, {120, 9});
}

TEST(DropDial, ValueStaysWithinItsBounds) {
  Bench bench;
  const VL_DropDial open_below(bench, "amount", "16", "", "32");
  EXPECT_EQ(open_below.Min(), 0);
  const VL_DropDial beyond(bench, "beyond", "99", "1", "20");
  EXPECT_EQ(beyond.Text(), "20");

  QWidget* widget = bench.dial.Widget();
  Key(widget, Qt::Key_Up);
  EXPECT_EQ(bench.dial.value(), 5);
  support::Wheel(widget, -120);
  EXPECT_EQ(bench.dial.value(), 4);
  Key(widget, Qt::Key_A, Qt::ControlModifier);
  for (const char digit : {'1', '9', '9'})
    Key(widget, Qt::Key_0 + digit - '0', Qt::NoModifier, QString(QChar(digit)));
  EXPECT_EQ(bench.dial.value(), 20);
  Key(widget, Qt::Key_A, Qt::ControlModifier);
  Key(widget, Qt::Key_X, Qt::NoModifier, "x");
  EXPECT_EQ(bench.dial.value(), 20);
}

TEST(DropDial, SliderDropsDownAndChooses) {
  Bench bench;
  bench.dial.SetAccessibleName("Amount");
  Press(bench.dial.Widget(), {46, 9}, Qt::RightButton);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  Press(bench.dial.Widget(), {46, 9});
  QWidget* panel = QApplication::activePopupWidget();
  ASSERT_NE(panel, nullptr);
  QWidget* slider = panel->focusProxy();
  EXPECT_EQ(slider->accessibleName(), "Amount");
  Key(slider, Qt::Key_Right);
  EXPECT_EQ(bench.dial.value(), 5);
  Key(slider, Qt::Key_PageUp);
  EXPECT_EQ(bench.dial.value(), 7) << "an eighth of the way";
  // 72.5 of 139 pixels of 19 steps.
  Press(slider, {78, 11});
  EXPECT_EQ(bench.dial.value(), 11);
  Press(slider, {149, 11});
  EXPECT_EQ(bench.dial.value(), 20);
  DragTo(slider, {-50, 11});
  EXPECT_EQ(bench.dial.value(), 1);
  Release(slider, {-50, 11});
  Key(slider, Qt::Key_Right);
  EXPECT_EQ(bench.dial.value(), 2);
  Key(slider, Qt::Key_A);
  EXPECT_EQ(QApplication::activePopupWidget(), panel);
  Key(slider, Qt::Key_Escape);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(bench.dial.value(), 2);
  // By key, on from what has been typed; Enter closes it too.
  Key(bench.dial.Widget(), Qt::Key_A, Qt::ControlModifier);
  Key(bench.dial.Widget(), Qt::Key_9, Qt::NoModifier, "9");
  Key(bench.dial.Widget(), Qt::Key_F4);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  slider = QApplication::activePopupWidget()->focusProxy();
  Key(slider, Qt::Key_Left);
  EXPECT_EQ(bench.dial.value(), 8);
  Key(slider, Qt::Key_Return);
  Key(bench.dial.Widget(), Qt::Key_Down);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  Key(bench.dial.Widget(), Qt::Key_Down, Qt::AltModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  slider = QApplication::activePopupWidget()->focusProxy();
  EXPECT_EQ(static_cast<QSlider*>(slider)->value(), 7);
  Key(slider, Qt::Key_Enter);

  // At the screen's lower edge it drops up.
  QWidget* window = bench.dial.Widget()->window();
  const QRect screen = window->screen()->availableGeometry();
  window->move(screen.right() - 60, screen.bottom() - window->height());
  Press(bench.dial.Widget(), {46, 9});
  panel = QApplication::activePopupWidget();
  ASSERT_NE(panel, nullptr);
  EXPECT_LT(panel->geometry().center().y(), bench.dial.Widget()->mapToGlobal(QPoint(0, 0)).y());
  EXPECT_LT(panel->geometry().center().x(), screen.right() - 60) << "and is drawn in from the right one";
  panel->close();
}

}  // namespace
}  // namespace look
