#include "painter/FPOptions.h"

#include <cstdint>

#include "app/Form1.h"
#include "host/HandedWindow.h"
#include "host/HostSession.h"
#include "painter/FramePainter.h"
#include "painter/cell_store.h"
#include "painter/strip_state.h"
#include "platform/Dialogs.h"
#include "platform/memory.h"
#include "platform/numbers.h"

namespace painter {

platform::WindowInstance<FPOptions> fp_options;

host::FormObject& FPOptionsForm() {
  static host::HandedWindow<FPOptions> form("FPOptions", fp_options);
  return form;
}

FPOptions::FPOptions()
    : Window({.name = "FPOptions",
              .caption = "Frame painter options...",
              .border = Border::FixedDialog,
              .start = Start::CenterOwner,
              .client_width = platform::PixelsFromTwips(5175),
              .client_height = platform::PixelsFromTwips(2040),
              .icons = {}}),
      Label1(*this, "Label1", "Number of frames of new anim"),
      Text1(*this, "Text1", "30"),
      Command1(*this, "Command1", "Ok") {
  Label1.MoveTwips(450, 660, 2340, 255);
  Text1.MoveTwips(2820, 630, 1245, 285);
  Command1.MoveTwips(1830, 1560, 1515, 285);
  Text1.SetAccessibleName("Number of frames of new anim");
  Text1.Entered = [this] { Command1_Click(); };
  Command1.Click = [this] { Command1_Click(); };
}

void FPOptions::Command1_Click() {
  const double length = RollLengthFromText(Text1.Text());
  if (length < 1) return Refuse("The number of frames must be a number, and at least 1.");
  if (length > kLongestRoll)
    return Refuse("A roll can't have more than " + platform::NumberText(kLongestRoll) + " frames.");
  if (RollBytes(length) > platform::FreeMemoryBytes() ||
      !StartRoll(TheRoll(), static_cast<std::int32_t>(length)))
    return Refuse("There is not enough memory for " + platform::NumberText(length) + " frames. " +
                  platform::MemoryFigures(RollBytes(length)));
  TheStrips().FrameForKeys = 0;
  const bool was_open = frame_painter.IfLoaded() != nullptr;
  host::HostSession.Call("Vel_SendFormObject", &FramePainterForm(), std::int16_t{0});
  // A window that was open already doesn't load again: it must be told of the new cells and the new roll.
  if (auto* window = frame_painter.IfLoaded(); window != nullptr && was_open) window->ShowNewFrames();
  fp_options.Unload();
}

/// Never themed, but on the same ground as the window that it is called from. Painting loads nothing.
void FPOptions::Form_Paint() {
  if (Form1* main_window = form1.IfLoaded()) main_window->Draw_Pattern(*this);
}

void FPOptions::Refuse(const std::string& reason) {
  platform::MsgBox(reason);
  Text1.SetFocus();
  Text1.SelectAll();
}

}  // namespace painter
