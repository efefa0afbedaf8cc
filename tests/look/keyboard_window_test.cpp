// The windows by keyboard alone.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QWidget>
#include <string>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/cell_store.h"
#include "sheet/Form3.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace {

/// Names in the order in which the Tab key visits them, from the first control on.
std::string TabOrder(platform::Window& window) {
  std::string order;
  QWidget* const top = window.TopWidget();
  for (QWidget* at = top->nextInFocusChain(); at != top; at = at->nextInFocusChain()) {
    const bool visited =
        (at->focusPolicy() & Qt::TabFocus) && at->isVisibleTo(top) && at->focusProxy() == nullptr;
    if (visited) order += at->objectName().toStdString() + " ";
  }
  return order;
}

TEST(TabOrder, FollowsTheWindowFromLeftToRightAndDown) {
  EXPECT_EQ(TabOrder(form1.Hold()),
            "vl_button18 vl_button5 vl_button1 vl_button2 vl_button3 vl_button4 vl_button10 vl_button11 "
            "vl_button12 vl_button6 vl_button7 vl_button8 vl_button9 vl_button13 vl_button14 "
            "vl_button15 vl_button16 HScroll1 List1 Grid1 ");
  EXPECT_EQ(TabOrder(form3.Hold()), "Text7 vl_button1 vl_button2 ");
  EXPECT_EQ(TabOrder(painter::fp_options.Hold()), "Text1 Command1 ");
  EXPECT_EQ(
      TabOrder(painter::frame_painter.Hold()),
      "vl_button1 Picture1 HGlide1 Picture2 HGlide2 Check1 VL_DropDial1 VL_DropDial2 vl_button2 vl_button3 ");
}

/// Seen by whoever looks at the window, heard as a name by whoever can't.
TEST(TabOrder, EveryStopShowsAndTellsThatTheKeyboardIsThere) {
  QApplication::setCursorFlashTime(0);
  support::Desk desk;
  desk.Main().OpenDropped(support::WriteScratch("v.wav", support::WaveBytes(8, 1000, std::string(500, 'x'))));
  painter::RetrieveFrames();
  painter::StartRoll(painter::TheRoll(), 5);
  for (platform::Window* window : std::initializer_list<platform::Window*>{
           &form1.Hold(), &form2.Hold(), &form3.Hold(), &painter::fp_options.Hold(),
           &painter::frame_painter.Hold()}) {
    QWidget* const top = window->TopWidget();
    for (window->Show(); !top->isActiveWindow();) QApplication::processEvents();
    for (platform::Control* control : window->Controls()) {
      QWidget* const stop = control->Widget();
      if (!(stop->focusPolicy() & Qt::TabFocus) || !control->Visible()) continue;
      QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(stop);
      EXPECT_NE(spoken->text(QAccessible::Name), "") << window->Name() << "." << control->Name();
      top->setFocus();
      const QImage without = stop->grab().toImage();
      control->SetFocus();
      const QImage shown = support::OnScreen(top);
      EXPECT_EQ(shown, support::PaintedAnew(top)) << window->Name() << "." << control->Name();
      EXPECT_NE(stop->grab().toImage(), without) << window->Name() << "." << control->Name();
      auto* button = dynamic_cast<look::vl_button*>(control);
      if (window != &form1.Hold() || button == nullptr || button->Width() < 20) continue;
      button->SetPicture("");
      EXPECT_NE(support::OnScreen(top), shown) << control->Name() << " has had no picture";
    }
  }
}

QAccessibleInterface* Spoken(QWidget* widget) { return QAccessible::queryAccessibleInterface(widget); }

TEST(Spoken, EveryThingIsWhatItIs) {
  Form1& form = form1.Hold();
  const struct {
    QWidget* widget;
    QAccessible::Role role;
    const char* name;
  } things[] = {
      {form.TopWidget(), QAccessible::Window, "Exposure Sheet"},
      {form3.Hold().TopWidget(), QAccessible::Dialog, "Set Frames per second"},
      {form.Label1.Widget(), QAccessible::StaticText, "Velocity track"},
      {form.Picture2.Widget(), QAccessible::Graphic, "Waveform"},
      {form.Picture3.Widget(), QAccessible::Pane, "Timeline"},
      {form.vl_button13.Widget(), QAccessible::CheckBox, "Channel visibility, yellow"},
      {form.vl_button16.Widget(), QAccessible::CheckBox, "Channel visibility, blue"},
      {painter::frame_painter.Hold().Picture1.Widget(), QAccessible::List, "Your cells"},
      {painter::frame_painter.Hold().Picture2.Widget(), QAccessible::List, "New roll of film"},
      {painter::frame_painter.Hold().HGlide1.Widget(), QAccessible::Slider, "Scroll your cells"},
      {painter::frame_painter.Hold().VL_DropDial1.Widget(), QAccessible::SpinBox, "Amount of wiggle"},
      {form.Grid1.Widget(), QAccessible::Table, "Exposure sheet"},
  };
  for (const auto& thing : things) {
    EXPECT_EQ(Spoken(thing.widget)->role(), thing.role) << thing.name;
    EXPECT_EQ(Spoken(thing.widget)->text(QAccessible::Name), thing.name);
  }
}

TEST(Spoken, WhereTheSheetStandsAndWhatTheMouthDoes) {
  support::Desk desk;
  Form1& form = desk.Main();
  form.OpenDropped(support::WriteScratch("voice.wav", support::WaveBytes(8, 1000, std::string(1000, 'x'))));
  form.Grid1.SetRow(5);
  form.List1.SetListIndex(12);  // "M "
  form.List1_Click();
  support::HandleEvents();
  const auto told = [](const platform::Control& control, QAccessible::Text what) {
    return Spoken(control.Widget())->text(what).toStdString();
  };
  const auto announced = [](const platform::Control& control) {
    const auto notice = control.Widget()->property("accessible_notice").value<QAccessible::Id>();
    return QAccessible::accessibleInterface(notice)->text(QAccessible::Name).toStdString();
  };
  EXPECT_EQ(told(form.Picture1, QAccessible::Name), "Mouth: lips pressed together");
  EXPECT_EQ(told(form.Picture2, QAccessible::Description), "Frame 4 of 12");
  EXPECT_EQ(told(form.Picture4, QAccessible::Description), "Frame 4 of 12");
  QAccessibleTableInterface* table = Spoken(form.Grid1.Widget())->tableInterface();
  EXPECT_EQ(table->rowCount(), 12);
  EXPECT_EQ(table->cellAt(4, 1)->text(QAccessible::Name), "M ");
  EXPECT_EQ(table->rowDescription(4), "Frame 4");
  form.List1.SetListIndex(14);  // "O "
  form.List1_Click();
  EXPECT_EQ(announced(form.Grid1), "O: round, open");
  form.Grid1.SetRow(7);
  EXPECT_EQ(told(form.Picture1, QAccessible::Name), "Mouth: round, open") << "it is held";
  form.MYCartoon_Click();
  EXPECT_EQ(told(form.Picture1, QAccessible::Name), "Mouth: none");
  form.ChooseChannel(2);
  EXPECT_EQ(announced(form.vl_button8), "Velocity track (Green)");
  EXPECT_EQ(told(form.vl_button8, QAccessible::Description), "chosen");
  form.ChooseChannel(0);
  EXPECT_NE(told(form.vl_button8, QAccessible::Description), "chosen");
}

TEST(Dialogs, EscapeClosesThemAndNoOtherWindow) {
  support::Desk desk;
  using Case = std::tuple<platform::Window*, Qt::WindowType, bool>;
  for (const auto& [window, type, closes] : {Case{&form1.Hold(), Qt::Window, false},
                                             {&form2.Hold(), Qt::Tool, true},
                                             {&form3.Hold(), Qt::Tool, true},
                                             {&painter::fp_options.Hold(), Qt::Dialog, true},
                                             {&painter::frame_painter.Hold(), Qt::Tool, false}}) {
    window->Show();
    EXPECT_EQ(window->TopWidget()->windowType(), type) << window->Name();
    EXPECT_TRUE(window->TopWidget()->windowFlags() & Qt::WindowCloseButtonHint) << window->Name();
    support::Key(window->TopWidget(), Qt::Key_Escape);
    EXPECT_NE(window->Visible(), closes) << window->Name();
  }
}

}  // namespace
