// The dialog that fixes the length of the new roll.
#pragma once

#include <string>

#include "host/variant.h"
#include "platform/Widgets.h"
#include "platform/Window.h"

namespace painter {

class FPOptions : public platform::Window {
 public:
  FPOptions();

  platform::Label Label1;
  platform::TextBox Text1;           // the length asked for
  platform::CommandButton Command1;  // "Ok"

  void Command1_Click();
  void Form_Paint() override;

 private:
  /// Says why there is no such roll; the dialog stays with its text ready to be typed over.
  void Refuse(const std::string& reason);
};

extern platform::WindowInstance<FPOptions> fp_options;
host::FormObject& FPOptionsForm();

}  // namespace painter
