// The in-house controls under a user's hands.
#include <gtest/gtest.h>

#include <QAccessible>
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

/// Lines that repeat, once; how often each stands there goes into `counts`.
std::vector<std::string> Folded(const std::vector<std::string>& lines, std::vector<int>& counts) {
  std::vector<std::string> folded;
  for (const std::string& line : lines) {
    if (folded.empty() || line != folded.back()) folded.push_back(line), counts.push_back(0);
    ++counts.back();
  }
  return folded;
}

/// An image by its greys: the letter of each, a point for any other. Columns that repeat stand there once, as
/// do rows: their widths in the first line, the heights before the rows.
std::string Drawn(const QImage& image, const std::string& letters, const std::vector<int>& greys) {
  std::vector<std::string> columns(static_cast<std::size_t>(image.width()));
  for (int x = 0; x < image.width(); ++x)
    for (int y = 0; y < image.height(); ++y) {
      const auto found = std::find(greys.begin(), greys.end(), qGray(image.pixel(x, y)));
      columns[static_cast<std::size_t>(x)] +=
          found == greys.end() ? '.' : letters[static_cast<std::size_t>(found - greys.begin())];
    }
  std::vector<int> widths, heights;
  std::vector<std::string> rows(static_cast<std::size_t>(image.height()));
  for (const std::string& column : Folded(columns, widths))
    for (std::size_t y = 0; y < rows.size(); ++y) rows[y] += column[y];
  const auto folded = Folded(rows, heights);
  std::string text;
  for (const int width : widths) text += std::to_string(width) + " ";
  for (std::size_t i = 0; i < folded.size(); ++i) text += "\n" + std::to_string(heights[i]) + " " + folded[i];
  return text;
}

/// A control of the bench, on a ground of 10.
std::string Drawn(Bench& bench, const platform::Control& control, const std::string& letters,
                  const std::vector<int>& greys, bool hovered = false) {
  bench.SetBackColor(Rgb(10, 10, 10));
  control.Widget()->setAttribute(Qt::WA_UnderMouse, hovered);
  return Drawn(bench.ContainerWidget()->grab(control.Widget()->geometry()).toImage(), letters, greys);
}

/// An even fill of 100, highlight 200, shadow 0.
void DressPlainly(vl_button& button) {
  button.SetBackColor(Rgb(100, 100, 100));
  button.SetHighlight(Rgb(200, 200, 200));
  button.SetShadow(0);
  button.SetGradient(1);
}

/// A picture of 4 by 2 in black, which a dark button shows in white.
void GiveDot(vl_button& button) {
  QImage dot(4, 2, QImage::Format_ARGB32);
  dot.fill(Qt::black);
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
  EXPECT_EQ(Drawn(bench, bench.push, "olfsw", {25, 185, 100, 65, 255}),
            "1 1 6 4 6 1 1 \n1 .ooooo.\n1 ollllso\n6 olfffso\n2 olfwfso\n6 olfffso\n1 ossssso\n1 .ooooo.");
  Press(bench.push.Widget(), {5, 6});
  EXPECT_EQ(Drawn(bench, bench.push, "odfbw", {18, 32, 72, 123, 255}),
            "1 1 7 4 5 1 1 \n1 .ooooo.\n1 oddddbo\n7 odfffbo\n2 odfwfbo\n5 odfffbo\n1 obbbbbo\n1 .ooooo.");
  bench.push.SetBorderless(true);
  EXPECT_EQ(Drawn(bench, bench.push, "ofw", {29, 72, 255}),
            "1 8 4 6 1 \n1 ooooo\n8 offfo\n2 ofwfo\n6 offfo\n1 ooooo");
  Release(bench.push.Widget(), {5, 6});
  EXPECT_EQ(Drawn(bench, bench.push, "ofw", {43, 107, 255}, true),
            "1 7 4 7 1 \n1 ooooo\n7 offfo\n2 ofwfo\n7 offfo\n1 ooooo");
  bench.push.Widget()->setEnabled(false);
  EXPECT_EQ(Drawn(bench, bench.push, "fw", {111, 255}), "8 4 8 \n8 fff\n2 f.f\n8 fff");
  bench.toggle.SetValue(true);
  EXPECT_EQ(Drawn(bench, bench.toggle, "odfbw", {18, 32, 72, 123, 255}),
            "1 1 2 12 2 1 1 \n1 .ooooo.\n1 oddddbo\n13 odfffbo\n1 odfwfbo\n1 obbwbbo\n1 .ooooo.");
  bench.toggle.SetFocus();
  EXPECT_EQ(Drawn(bench, bench.toggle, "ofwk", {18, 72, 255, 0}),
            "1 1 1 1 12 1 1 1 1 \n1 .ooooooo.\n1 owwwwwwwo\n1 owkkkkkwo\n10 owkfffkwo\n2 owkfwfkwo\n"
            "1 owkkkkkwo\n1 owwwwwwwo\n1 .ooooooo.");
  bench.toggle.SetBackColor(Rgb(255, 255, 255));
  EXPECT_EQ(Drawn(bench, bench.toggle, "ofwk", {46, 184, 255, 0}),
            "1 1 1 1 12 1 1 1 1 \n1 .ooooooo.\n1 okkkkkkko\n1 okwwwwwko\n10 okwfffwko\n2 okwfkfwko\n"
            "1 okwwwwwko\n1 okkkkkkko\n1 .ooooooo.");
  bench.toggle.SetBackColor(Rgb(100, 100, 100));
  bench.toggle.Widget()->resize(9, 9);
  EXPECT_EQ(Drawn(bench, bench.toggle, "fwk", {100, 255, 0}),
            "1 1 1 3 1 1 1 \n1 wwwwwww\n1 wkkkkkw\n1 wkfffkw\n3 wkfwfkw\n1 wkfffkw\n1 wkkkkkw\n1 wwwwwww");
  bench.dial.SetFocus();
  EXPECT_EQ(Drawn(bench, bench.toggle, "ofw", {40, 100, 255}),
            "1 2 3 2 1 \n1 ooooo\n2 offfo\n3 ofwfo\n2 offfo\n1 ooooo");
  bench.toggle.SetValue(false);
  EXPECT_EQ(Drawn(bench, bench.toggle, "fk", {100, 15}), "1 7 1 \n1 fff\n7 fkf\n1 fff");
  Press(bench.toggle.Widget(), {5, 6});
  EXPECT_EQ(Drawn(bench, bench.toggle, "dk", {60, 15}), "1 7 1 \n1 ddd\n7 dkd\n1 ddd");
  const std::string blank = Drawn(bench, bench.push, "f", {111});
  bench.push.SetCaption("W");
  EXPECT_NE(Drawn(bench, bench.push, "f", {111}), blank);
}

/// One and a half of the screen's pixels to each of the design's: the lines stay one pixel wide.
TEST(CanvasOnAFractionalScale, AButtonHasSharpEdges) {
  Bench bench;
  if (bench.TopWidget()->devicePixelRatioF() != 1.5) GTEST_SKIP();
  DressPlainly(bench.push);
  bench.push.Widget()->resize(20, 18);
  GiveDot(bench.push);
  EXPECT_EQ(Drawn(bench, bench.push, "olfsw", {25, 185, 100, 65, 255}),
            "1 1 10 6 10 1 1 \n1 .ooooo.\n1 ollllso\n10 olfffso\n3 olfwfso\n10 olfffso\n1 ossssso\n"
            "1 .ooooo.");
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
  EXPECT_EQ(Drawn(bench, bench.glide, "kbolsfh", {0, 80, 40, 194, 104, 160, 217}),
            "1 12 1 1 5 1 1 2 1 1 2 1 1 5 1 1 21 1 1 \n"
            "1 .kkkkkkkkkkkkkkkkk.\n1 kkkkkkkkkkkkkkkkkbk\n1 kkkooooooooooookkbk\n1 kkolllllllllllsokbk\n"
            "4 kkolfbhfbhfbhfsokbk\n1 kkossssssssssssokbk\n1 kkkooooooooooookkbk\n1 kbbbbbbbbbbbbbbbbbk\n"
            "1 .kkkkkkkkkkkkkkkkk.");
  bench.glide.SetFocus();
  bench.glide.SetRange(0);
  EXPECT_EQ(Drawn(bench, bench.glide, "kbofw", {0, 80, 16, 64, 255}),
            "1 1 1 1 1 50 1 1 1 1 1 \n1 .kkkkkkkkk.\n1 kkkkkkkkkbk\n1 kkkoooookbk\n1 kkowwwwwobk\n"
            "1 kkowkkkwobk\n2 kkowkfkwobk\n1 kkowkkkwobk\n1 kkowwwwwobk\n1 kkkoooookbk\n1 kbbbbbbbbbk\n"
            "1 .kkkkkkkkk.");
}

TEST(DropDial, IsAFieldAndAButtonWithAnArrow) {
  Bench bench;
  const std::string arrow = Drawn(bench, bench.dial, "k", {0});
  EXPECT_EQ(arrow.substr(arrow.find('\n')),
            "\n7 .........\n1 .kkkkkkk.\n1 ..kkkkk..\n1 ...kkk...\n1 ....k....\n8 .........");
  const QImage look = bench.ContainerWidget()->grab(bench.dial.Widget()->geometry()).toImage();
  for (const int x : {4, 35}) EXPECT_EQ(look.pixelColor(x, 9), QColor(85, 85, 102)) << x;
  EXPECT_EQ(look.pixelColor(37, 9), QColor(72, 72, 72)) << "the button's outline";
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
  slider->setAttribute(Qt::WA_UnderMouse, false);
  // The handle's upper edge, 11 pixels less its corners, at 6 of 19 steps: 44 pixels from the left.
  EXPECT_EQ(Drawn(slider->grab(QRect(0, 0, 150, 1)).toImage(), "o", {72}), "45 9 96 \n1 .o.");
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
