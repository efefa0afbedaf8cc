// What stands where on the sheet's windows, what it is called, and what the menus hold and do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QWidget>
#include <sstream>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "platform/Application.h"
#include "sheet/Form3.h"
#include "support/desk.h"
#include "support/sheet_lines.h"

namespace {

using support::Fields;
using support::Split;

/// A line for each control in its order: name, place, size, tip or else what it is called, state.
Fields Controls(platform::Window& window) {
  window.Show();
  support::HandleEvents();
  Fields lines{std::to_string(window.ScaleWidth()) + "x" + std::to_string(window.ScaleHeight()) + " " +
               window.Caption()};
  for (const platform::Control* control : window.Controls()) {
    QWidget* const widget = control->Widget();
    const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    std::ostringstream line;
    line << control->Name() << ' ' << control->Left() << ',' << control->Top() << ' ' << control->Width()
         << 'x' << control->Height() << ' '
         << (widget->toolTip().isEmpty() ? name : widget->toolTip()).toStdString();
    if (const auto* toggle = dynamic_cast<const look::vl_button*>(control); toggle && toggle->value())
      line << ", on";
    for (const char* property : {"readOnly", "autoRepeat"})
      if (widget->property(property).toBool()) line << ", " << property;
    if (dynamic_cast<const platform::LineControl*>(control)) line << platform::RedOf(control->ForeColor());
    lines.push_back(line.str() + (widget->isHidden() ? ", hidden" : ""));
  }
  return lines;
}

TEST(Inventory, EveryControlHasItsPlaceAndName) {
  support::Desk desk;
  EXPECT_THAT(
      Controls(desk.Main()),
      testing::IsSupersetOf(Split(
          "vl_button18 4,4 22x24 Audio/frame lock, on|Picture1 4,32 129x129 Mouth: none|"
          "List1 4,164 129x229 Mouth shapes|vl_button5 136,4 23x23 Stop playback (Space or Esc)|"
          "vl_button1 162,4 23x23 Play waveform (Space)|vl_button2 194,4 23x23 Play the current frame (.)|"
          "vl_button3 226,4 23x23 Zoom in (+), autoRepeat|vl_button4 252,4 23x23 Zoom out (-), "
          "autoRepeat|Label2 278,8 23x17 100|"
          "vl_button10 308,4 23x23 Draw on velocity track|vl_button11 334,4 23x23 Undo (Ctrl+Z)|"
          "vl_button12 360,4 23x23 Clear velocity track|vl_button6 386,4 11x11 Velocity yellow|"
          "vl_button7 386,16 11x11 Velocity red|vl_button8 398,4 11x11 Velocity green|"
          "vl_button9 398,16 11x11 Velocity blue|Label1 412,8 69x15 Velocity track|"
          "Label3 480,8 43x15 (Yellow)|Picture3 136,32 514x147 Timeline|Picture2 0,0 514x64 Waveform|Line1 "
          "0,0 1x81 255, hidden|"
          "Picture4 0,65 514x64 Velocity tracks|vl_button13 0,120 9x9 Channel visibility, on|"
          "vl_button14 10,120 9x9 Channel visibility, on|vl_button15 20,120 9x9 Channel visibility, on|"
          "vl_button16 30,120 9x9 Channel visibility, on|HScroll1 0,130 514x17 Timeline position|"
          "Grid1 136,180 514x213 Exposure sheet|Text2 136,180 100x19 Comment, hidden|Line2 188,4 1x23 "
          "64|Line3 190,4 1x23 192|"
          "Line4 220,4 1x23 64|Line5 222,4 1x23 192|Line7 302,4 1x23 64|Line6 304,4 1x23 192")));
  // 15 twips to the pixel: rows 450 apart.
  EXPECT_EQ(Controls(form2.Hold()),
            Split("204x239 Sample info|Label1 56,34 45x13 Format|Label2 56,64 45x13 #Chnls|Label3 56,94 "
                  "45x13 SmpleRt|"
                  "Label4 56,124 45x13 ByteRt|Label5 56,154 45x13 BlkAlng|Label6 56,184 45x13 Bts/Smpl|"
                  "Text1 112,30 37x21 Format, readOnly|Text2 112,60 37x21 #Chnls, readOnly|"
                  "Text3 112,90 37x21 SmpleRt, readOnly|Text4 112,120 37x21 ByteRt, readOnly|"
                  "Text5 112,150 37x21 BlkAlng, readOnly|Text6 112,180 37x21 Bts/Smpl, readOnly"));
  EXPECT_EQ(Controls(form3.Hold()),
            Split("182x118 Set Frames per second|Text7 76,40 37x21 Frames per second|Label7 52,44 22x13 "
                  "FPS|vl_button1 2,96 65x21 Set|"
                  "vl_button2 116,96 65x21 Cancel|Line1 0,92 182x1 64|Line2 0,94 182x1 192"));
}

TEST(Inventory, TheMenusHoldTheirItemsAndDoWhatTheySay) {
  support::Desk desk;
  Form1& form = desk.Main();
  Fields items;
  for (QAction* menu : form.MenuBar()->actions()) {
    items.push_back(menu->text().toStdString() + ":");
    for (QAction* item : menu->menu()->actions())
      items.push_back((item->text() + " " + item->shortcut().toString()).trimmed().toStdString() +
                      (item->isChecked() ? " *" : ""));
  }
  EXPECT_EQ(items,
            Split("&File:|&Open exposure sheet... Ctrl+O|&Save exposure sheet... Ctrl+S||Open &Wave file...|"
                  "Show sample &info...|&Record audio...||&Quit|&Timing:|1&0 fps|1&2 fps (Film on twos)|"
                  "15 fps (&NTSC on twos)|2&4 fps (Film)|25 fps (&PAL)|&30 fps (NTSC)|&Set FPS...|"
                  "&Mouth set:|&Sketch *|&Cartoon|&Camera:|&Frame painter..."));
  const auto choose = [&](const char* item) {
    form.TopWidget()->findChild<QAction*>(item)->trigger();
    support::HandleEvents();
  };
  for (const std::string& rate :
       Split("10 tenfps|12 twelvefps|15 fifteenfps|24 twentyfourfps|25 twentyfivefps|30 thirtyfps")) {
    choose(rate.c_str() + 3);
    EXPECT_EQ(form3->Text7.Text(), rate.substr(0, 2));
  }
  EXPECT_EQ(desk.messages.shown.size(), 6U) << "the question whether the host is to follow";
  for (const char* item : {"MenuOpen", "MenuSave", "OpenWave", "Sampleinfo", "SetFPS"}) choose(item);
  ASSERT_EQ(desk.files.asked.size(), 3U);
  EXPECT_EQ(desk.files.asked[0].filter, "Exposure sheet|*.exp");
  EXPECT_EQ(desk.files.asked[2].title, "Select a wave file");
  EXPECT_TRUE(form2->Visible() && form3->Visible());
  desk.host->Take();
  choose("FramePainterM");
  EXPECT_THAT(desk.host->Take(), testing::Contains("Vel_GetAppDir()"));
}

}  // namespace
