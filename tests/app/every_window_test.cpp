// What holds for every control, each window and all that they can be told: it is shown at once and whole.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAccessible>
#include <QHoverEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTableView>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "look/HGlide.h"
#include "look/VlButton.h"
#include "look/VlDropDial.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/cell_store.h"
#include "platform/Grid.h"
#include "platform/Menu.h"
#include "platform/Picture.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "sheet/Form3.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace {

using namespace platform;

struct Bench : Window {
  Bench() : Window({.name = "Bench", .caption = "", .client_width = 500, .client_height = 300, .icons = {}}) {
    int place = 0;
    for (Control* control : Controls()) {
      control->Move(8 + place % 5 * 98, 8 + place / 5 * 60, 90, 50);
      ++place;
    }
    small.Move(8, 280, 9, 9);
    grid.Move(400, 130, 90, 150);
    canvas.TakeKeyboard();
    Show();
    while (!TopWidget()->isActiveWindow()) QApplication::processEvents();
  }
  Menu menu{*this, "menu", "&Menu"};
  MenuItem item{menu, "item", "&Item"};
  Label label{*this, "label", "Words"};
  TextBox text{*this, "text", "12"};
  ListBox list{*this, "list", {"ant", "b\"é\" & 'e'"}};
  HScrollBar bar{*this, "bar"};
  CheckBox check{*this, "check", "Tick"};
  CommandButton button{*this, "button", "Go"};
  PictureBox canvas{*this, "canvas"};
  Grid grid{*this, "grid", 3, 2};
  look::vl_button push{*this, "push"};
  look::vl_button toggle{*this, "toggle", look::vl_button::TwoState};
  look::vl_button small{*this, "small", look::vl_button::TwoState};
  look::HGlide glide{*this, "glide"};
  look::VL_DropDial dial{*this, "dial", "4", "1", "20"};
  LineControl rule{*this, "rule", 5, 270, 5, 290, Rgb(9, 9, 9)};
};

QImage OnScreen(Window& window) {
  for (int i = 0; i < 3; ++i) support::HandleEvents();
  return window.TopWidget()->screen()->grabWindow(window.TopWidget()->winId()).toImage();
}

struct EveryControl : testing::Test, Bench {};

TEST_F(EveryControl, ShowsAtOnceWhatItIsToldAndNothingOfWhatStoodThere) {
  QApplication::setCursorFlashTime(0);
  QImage red(7, 9, QImage::Format_RGB32);
  red.fill(Qt::red);
  ASSERT_TRUE(red.save(QString::fromStdString(support::ScratchFolder() + "/red.png")));
  const Color one = Rgb(200, 60, 90), other = Rgb(60, 90, 200);
  const std::function<void()> steps[] = {
      [&] { label.SetCaption("Other words"); },
      [&] { label.SetForeColor(one); },
      [&] { label.SetLeft(20); },
      [&] { text.SetText("345"); },
      [&] { text.SetBackColor(one); },
      [&] { text.SetForeColor(other); },
      [&] { list.SetListIndex(1); },
      [&] { list.SetBackColor(one); },
      [&] { list.SetForeColor(other); },
      [&] { bar.SetLargeChange(500); },
      [&] { bar.SetMax(400); },
      [&] { bar.SetValue(200); },
      [&] { bar.SetMin(100); },
      [&] { check.SetValue(1); },
      [&] { check.SetBackColor(one); },
      [&] { rule.SetForeColor(one); },
      [&] { rule.SetX(2); },
      [&] { rule.BringToFront(), rule.Move(9, 9, 1, 200); },
      [&] { canvas.SetBackColor(one); },
      [&] { canvas.Print("Words"); },
      [&] {
        FillBox(canvas.Pixels(), {3, 4, 9, 12}, other), canvas.Changed({3, 4, 9, 12});
      },
      [&] {
        canvas.ShowRules({70, 80}, other);
      },
      [&] { canvas.ShowRules({70}, other); },
      [&] { canvas.FrameColumns(10, 40), canvas.SetFocus(); },
      [&] { canvas.FrameColumns(20, 50); },
      [&] { canvas.Cls(); },
      [&] { canvas.SetPicture(std::make_shared<Picture>(red)); },
      [&] {
        canvas.Draw =
            [&] {
              PlotPoint(canvas.Pixels(), 60, 40, other), canvas.Changed({60, 40, 61, 41});
            },
        canvas.DrawLater();
      },
      [&] { push.SetBackColor(one); },
      [&] { push.SetHighlight(one); },
      [&] { push.SetShadow(other); },
      [&] { push.SetGradient(2); },
      [&] { push.SetBorderless(true); },
      [&] { push.SetCaption("Go"); },
      [&] { push.SetCaption(""), push.SetPicture(support::ScratchFolder() + "/red"); },
      [&] {
        support::Press(push.Widget(), {5, 5});
      },
      [&] {
        support::Release(push.Widget(), {5, 5});
      },
      [&] { push.Widget()->setEnabled(false); },
      [&] { toggle.SetValue(true); },
      [&] { small.SetValue(true); },
      [&] { small.SetBackColor(one); },
      [&] { glide.SetRange(3); },
      [&] { glide.SetPosition(2); },
      [&] { glide.SetBackColor(one); },
      [&] { glide.SetForeColor(other); },
      [&] { glide.SetHighlight(one); },
      [&] { glide.SetShadow(other); },
      [&] {
        support::Press(glide.Widget(), {60, 20});
      },
      [&] {
        support::Release(glide.Widget(), {60, 20});
      },
      [&] { glide.SetWidth(60); },
      [&] { dial.SetValue(17); },
      [&] { dial.Widget()->setEnabled(false); },
      [&] { grid.SetRow(1); },
      [&] { grid.SetText("né"); },
      [&] { grid.SetCol(1); },
      [&] { grid.Clear(); },
      [&] { grid.SetColWidth(0, 300); },
      [&] { grid.SetRows(9); },
      [&] { grid.SetRow(0); },
      [&] { grid.SetCols(1); },
      [&] { SetBackColor(Rgb(20, 20, 20)); },
      [&] { label.SetCaption("A"); },
      [&] { label.SetCaption("Some more"); },
      [&] { label.SetVisible(false); },
      [&] { label.SetVisible(true); },
      [&] { button.SetVisible(false); },
      [&] { text.SetFocus(); },
      [&] { list.SetFocus(); },
      [&] { bar.SetFocus(); },
      [&] { check.SetFocus(); },
      [&] { grid.SetFocus(); },
      [&] { toggle.SetFocus(); },
      [&] { small.SetFocus(); },
      [&] { glide.SetFocus(); },
  };
  for (std::size_t step = 0; step < std::size(steps); ++step) {
    const QImage before = OnScreen(*this);
    steps[step]();
    const QImage shown = OnScreen(*this);
    EXPECT_NE(shown, before) << step;
    for (QWidget* widget : TopWidget()->findChildren<QWidget*>()) widget->update();
    const QImage anew = OnScreen(*this);
    EXPECT_EQ(shown, anew) << step;
  }
}

/// Texts that other alphabets, quotes and marks of the toolkit would spoil.
constexpr const char* kWords = "Łódź \"née\" & 'ßé' <b>…</b>";

TEST_F(EveryControl, KeepsAnyText) {
  const QString words = kWords;
  const auto of = [](const Control& control, const char* property) {
    return control.Widget()->property(property).toString();
  };
  const CheckBox ticked(*this, "ticked", kWords);
  const CommandButton pressed(*this, "pressed", kWords);
  ListBox listed(*this, "listed", {kWords});
  listed.SetListIndex(0);
  const Menu named(*this, "named", kWords);
  const MenuItem chosen(menu, "chosen", kWords);
  label.SetCaption(kWords);
  text.SetText(kWords);
  push.SetCaption(kWords);
  rule.SetToolTip(kWords, kWords);
  glide.SetAccessibleName(kWords);
  glide.SetAccessibleDescription(kWords);
  canvas.SetAccessibleItem(kWords);
  SetCaption(kWords);
  for (const int row : {0, 1}) grid.SetRow(row), grid.SetText(kWords);
  support::HandleEvents();
  const auto* model = static_cast<QTableView*>(grid.Widget())->model();
  const auto spoken = [](QWidget* widget) { return QAccessible::queryAccessibleInterface(widget); };
  for (const QString& kept : {of(ticked, "text"),
                              of(pressed, "text"),
                              QString::fromStdString(listed.Text()),
                              MenuBar()->actions().back()->text(),
                              menu.Widget()->actions().back()->text(),
                              QString::fromStdString(label.Caption()),
                              spoken(label.Widget())->text(QAccessible::Name),
                              QString::fromStdString(text.Text()),
                              of(text, "text"),
                              QString::fromStdString(push.caption()),
                              of(push, "accessibleName"),
                              of(rule, "accessibleName"),
                              of(glide, "accessibleName"),
                              of(glide, "accessibleDescription"),
                              spoken(canvas.Widget())->child(0)->text(QAccessible::Name),
                              TopWidget()->windowTitle(),
                              QString::fromStdString(Caption()),
                              QString::fromStdString(grid.TextMatrix(0, 0)),
                              model->headerData(0, Qt::Horizontal).toString(),
                              model->index(0, 0).data().toString()})
    EXPECT_EQ(kept, words);
  EXPECT_EQ(of(rule, "toolTip"), words + " (" + words + ")");
  const auto advance = [](const char* printed) { return MaskOf({"", 20}, printed, 1).advance; };
  EXPECT_LT(advance("éé"), 1.2 * advance("ee")) << "on a canvas";
}

/// The main window with a sound, the painter with cells, and all their dialogs.
std::vector<Window*> OpenAll(support::Desk& desk) {
  Form1& main = desk.Main();
  main.OpenDropped(support::WriteScratch("voice.wav", support::WaveBytes(8, 1000, std::string(5000, 'x'))));
  painter::RetrieveFrames();
  painter::StartRoll(painter::TheRoll(), 5);
  std::vector<Window*> windows = {&main, &form2.Hold(), &form3.Hold(), &painter::fp_options.Hold(),
                                  &painter::frame_painter.Hold()};
  for (Window* window : windows) window->Show();
  support::HandleEvents();
  return windows;
}

TEST(EveryWindow, ShowsWhereTheKeyboardIs) {
  support::Desk desk;
  int stops = 0;
  for (Window* window : OpenAll(desk)) {
    window->TopWidget()->activateWindow();
    while (!window->TopWidget()->isActiveWindow()) QApplication::processEvents();
    for (Control* control : window->Controls()) {
      if (!(control->Widget()->focusPolicy() & Qt::TabFocus) || !control->Visible()) continue;
      window->TopWidget()->setFocus();
      const QImage without = OnScreen(*window);
      control->SetFocus();
      EXPECT_NE(OnScreen(*window), without) << control->Name();
      ++stops;
    }
  }
  EXPECT_GE(stops, 40);
}

TEST(EveryWindow, ShowsEachCaptionAsWholeAndAsLargeAsItsRoomAllows) {
  support::Desk desk;
  for (Window* window : OpenAll(desk))
    for (Control* control : window->Controls()) {
      const auto* label = dynamic_cast<Label*>(control);
      if (label == nullptr) continue;
      QImage shown = label->Widget()->grab().toImage();
      const double scale = shown.devicePixelRatio();
      QRect ink;
      for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
          if (qGray(shown.pixel(x, y)) < 60) ink |= QRect(x, y, 1, 1);
      const double wanted =
          QFontMetricsF(label->Widget()->font()).horizontalAdvance(QString::fromStdString(label->Caption()));
      const double room = std::min(0.92 * wanted, label->Width() - 8.);
      EXPECT_GT(ink.width() / scale, 0.75 * room) << window->Name() << ' ' << label->Name();
      EXPECT_TRUE(ink.top() > 0 && ink.bottom() < shown.height() - 1 && ink.right() < shown.width() - 1)
          << window->Name() << ' ' << label->Name();
    }
}

TEST(EveryWindow, HasPicturesOnItsButtonsThatStandOutFromAnyGround) {
  support::Desk desk;
  desk.Main();
  for (Control* control : form1->Controls()) {
    auto* button = dynamic_cast<look::vl_button*>(control);
    if (button == nullptr || button->Width() < 20) continue;
    for (const int shade : {0, 60, 100, 150, 200, 255})
      for (const bool on : {true, false})
        for (const bool down : {true, false}) {
          button->SetBackColor(Rgb(shade, shade, shade));
          button->SetValue(on);
          static_cast<QAbstractButton*>(button->Widget())->setDown(down);
          const QImage shown = button->Widget()->grab().toImage();
          const QRect middle = QRect(shown.rect()).adjusted(6, 6, -6, -6);
          int contrast = 0;
          for (int y = middle.top(); y <= middle.bottom(); ++y)
            for (int x = middle.left() + 1; x <= middle.right(); ++x)
              contrast = std::max(contrast,
                                  std::abs(qGray(shown.pixel(x, y)) - qGray(shown.pixel(middle.left(), y))));
          EXPECT_GT(contrast, 40) << button->Name() << ' ' << shade << on << down;
        }
  }
}

}  // namespace
