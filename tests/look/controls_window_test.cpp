// The in-house controls under a user's hands.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QElapsedTimer>
#include <QImage>
#include <QScreen>
#include <set>
#include <string>
#include <vector>

#include "look/HGlide.h"
#include "look/VlButton.h"
#include "look/VlDropDial.h"
#include "platform/Window.h"
#include "support/UserInput.h"

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

TEST(VlButton, EveryStateLooksDifferentEvenWithoutColour) {
  Bench bench;
  // The focus shows in the active window alone.
  while (!bench.TopWidget()->isActiveWindow()) QApplication::processEvents();
  vl_button& button = bench.toggle;
  bench.push.SetPicture(":/assets/icons/play");
  const auto ink = [&] { return qGray(bench.push.Widget()->grab().toImage().pixel(10, 11)); };
  const int usable = ink();
  bench.push.Widget()->setEnabled(false);
  EXPECT_GT(ink(), usable + 30) << "what can't be used is faded";
  bench.push.Widget()->setEnabled(true);
  for (const int size : {9, 11, 23}) {
    for (const bool borderless : {false, true}) {
      button.Move(30, 4, size, size);
      button.SetBorderless(borderless);
      std::vector<QImage> pictures;
      for (const bool on : {false, true}) {
        button.SetValue(on);
        for (const platform::Control* focused :
             std::initializer_list<const platform::Control*>{&bench.push, &button}) {
          focused->Widget()->setFocus();
          const QImage look = button.Widget()->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
          for (const QImage& other : pictures) EXPECT_NE(look, other) << size << " " << borderless;
          pictures.push_back(look);
        }
      }
    }
  }
}

TEST(Controls, ShowWhereTheKeyboardIs) {
  Bench bench;
  while (!bench.TopWidget()->isActiveWindow()) QApplication::processEvents();
  for (platform::Control* control : std::initializer_list<platform::Control*>{&bench.toggle, &bench.glide}) {
    bench.push.SetFocus();
    const QImage before = control->Widget()->grab().toImage();
    control->SetFocus();
    const QImage shown = control->Widget()->grab().toImage();
    std::set<int> levels;
    for (int y = 0; y < shown.height(); ++y)
      for (int x = 0; x < shown.width(); ++x)
        if (shown.pixel(x, y) != before.pixel(x, y)) levels.insert(qGray(shown.pixel(x, y)));
    EXPECT_TRUE(levels.contains(0) && levels.contains(255)) << "a ring for any ground: " << control->Name();
  }
}

TEST(VlButton, LightFallsOnItFromTheLeft) {
  Bench bench;
  for (const bool pressed : {false, true}) {
    if (pressed) Press(bench.push.Widget(), {5, 6});
    const QImage look = bench.push.Widget()->grab().toImage();
    int left = 0, right = 0;
    for (int x = 0; x < 4; ++x) left += qGray(look.pixel(x, 11)), right += qGray(look.pixel(22 - x, 11));
    EXPECT_EQ(left > right, !pressed) << left << ' ' << right;
  }
}

TEST(HGlide, ScrollComesFromTheUserAloneAndEachPositionOnce) {
  Bench bench;
  HGlide& glide = bench.glide;
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
  Press(widget, {395, 9});
  Release(widget, {395, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 772"});
}

TEST(HGlide, BarFollowsThePointerAndAPressBesideItPages) {
  Bench bench;
  bench.glide.SetRange(3);
  QWidget* widget = bench.glide.Widget();
  // The trough is 396 pixels between its edges, the bar 99: its middle stands at 51.
  Press(widget, {51, 9});
  DragTo(widget, {51 + 60, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 1"});
  DragTo(widget, {51 + 61, 9});
  EXPECT_EQ(bench.Seen(), Texts{});
  DragTo(widget, {4000, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 3"});
  Release(widget, {4000, 9});
  DragTo(widget, {51, 9});
  EXPECT_EQ(bench.Seen(), Texts{});
  Press(widget, {20, 9});
  Release(widget, {20, 9});
  EXPECT_EQ(bench.Seen(), Texts{"at 2"});
  // Held, it pages on until the bar is under the pointer.
  Press(widget, {120, 9});
  QElapsedTimer clock;
  for (clock.start(); bench.seen.empty() && clock.elapsed() < 5000;) QApplication::processEvents();
  for (clock.restart(); clock.elapsed() < 200;) QApplication::processEvents();
  EXPECT_EQ(bench.Seen(), Texts{"at 1"});
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
  Press(bench.dial.Widget(), {46, 9}, Qt::RightButton);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  Press(bench.dial.Widget(), {46, 9});
  QWidget* panel = QApplication::activePopupWidget();
  ASSERT_NE(panel, nullptr);
  QWidget* slider = panel->focusProxy();
  Key(slider, Qt::Key_Right);
  EXPECT_EQ(bench.dial.value(), 5);
  Press(slider, {149, 11});
  EXPECT_EQ(bench.dial.value(), 20);
  DragTo(slider, {-50, 11});
  EXPECT_EQ(bench.dial.value(), 1);
  Release(slider, {-50, 11});
  Key(slider, Qt::Key_Right);
  EXPECT_EQ(bench.dial.value(), 2);
  Key(slider, Qt::Key_Escape);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(bench.dial.value(), 2);

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

TEST(Controls, TellAssistiveTechnologyWhatTheyAre) {
  Bench bench;
  bench.push.SetToolTip("Play waveform");
  bench.toggle.SetToolTip("Channel visibility");
  bench.toggle.SetValue(true);
  bench.glide.SetAccessibleName("Cells");
  bench.glide.SetRange(7);
  bench.dial.SetAccessibleName("Amount");
  bench.dial.SetToolTip("A tip is no name where there is one");
  const auto of = [](platform::Control& control) {
    return QAccessible::queryAccessibleInterface(control.Widget());
  };
  EXPECT_EQ(of(bench.push)->text(QAccessible::Name), "Play waveform");
  EXPECT_TRUE(of(bench.toggle)->state().checkable);
  EXPECT_TRUE(of(bench.toggle)->state().checked);
  EXPECT_EQ(of(bench.glide)->role(), QAccessible::Slider);
  EXPECT_EQ(of(bench.glide)->valueInterface()->maximumValue().toInt(), 7);
  EXPECT_EQ(of(bench.dial)->role(), QAccessible::SpinBox);
  EXPECT_EQ(of(bench.dial)->text(QAccessible::Name), "Amount");
}

}  // namespace
}  // namespace look
