#include "sheet/Form3.h"

#include "app/Form1.h"
#include "platform/numbers.h"

using platform::PixelsFromTwips;
using platform::Rgb;

platform::WindowInstance<Form3> form3;

namespace {

constexpr int kWidth = PixelsFromTwips(2730), kHeight = PixelsFromTwips(1770);
constexpr int kDarkRuleTop = PixelsFromTwips(1380), kLightRuleTop = PixelsFromTwips(1410);

}  // namespace

Form3::Form3()
    : Window({.name = "Form3",
              .caption = "Set Frames per second",
              .border = Border::FixedToolWindow,
              .client_width = kWidth,
              .client_height = kHeight,
              .icons = {}}),
      Line1(*this, "Line1", 0, kDarkRuleTop, kWidth - 1, kDarkRuleTop, Rgb(64, 64, 64)),
      Line2(*this, "Line2", 0, kLightRuleTop, kWidth - 1, kLightRuleTop, Rgb(192, 192, 192)) {
  Text7.MoveTwips(1140, 600, 555, 315);
  Text7.SetAccessibleName("Frames per second");
  Label7.MoveTwips(780, 660, 330, 195);
  vl_button1.MoveTwips(30, 1440, 975, 315);
  vl_button1.SetCaption("Set");
  vl_button2.MoveTwips(1740, 1440, 975, 315);
  vl_button2.SetCaption("Cancel");
  vl_button1.Click = [this] { vl_button1_Click(); };
  vl_button2.Click = [this] { vl_button2_Click(); };
  Text7.Entered = [this] { vl_button1_Click(); };
  Text7.Escaped = [this] { vl_button2_Click(); };
}

void Form3::Form_Load() { form1->PrefsCallback(*this); }
void Form3::Form_Paint() { form1->Draw_Pattern(*this); }

double Form3::Rate() const { return platform::NumberAtStart(Text7.Text()); }

void Form3::vl_button1_Click() {
  // A rate that no sheet can have is refused before the host or the sheet hears of it; the dialog stays for
  // another.
  if (!form1->AcceptsRate(Rate())) return;
  Hide();
  form1->UseFR();
  form1->SetupGrid();
}

/// No question and no rebuild, but what was typed stays the frame rate's text.
void Form3::vl_button2_Click() { Hide(); }
