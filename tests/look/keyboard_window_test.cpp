// The windows by keyboard alone.
#include <gtest/gtest.h>

#include <QWidget>
#include <string>

#include "app/Form1.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "sheet/Form3.h"

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
  EXPECT_EQ(
      TabOrder(form1.Hold()),
      "vl_button18 vl_button5 vl_button1 vl_button2 vl_button3 vl_button4 vl_button10 vl_button11 "
      "vl_button12 "
      "vl_button6 vl_button7 vl_button8 vl_button9 vl_button13 vl_button14 vl_button15 vl_button16 HScroll1 "
      "List1 Grid1 ");
  EXPECT_EQ(TabOrder(form3.Hold()), "Text7 vl_button1 vl_button2 ");
  EXPECT_EQ(TabOrder(painter::fp_options.Hold()), "Text1 Command1 ");
  EXPECT_EQ(TabOrder(painter::frame_painter.Hold()),
            "vl_button1 HGlide1 HGlide2 Check1 VL_DropDial1 VL_DropDial2 vl_button2 vl_button3 ");
}

}  // namespace
