// The main window's title and the commands that change the frame rate.
#include <string>

#include "app/Form1.h"
#include "app/Program.h"
#include "host/HostSession.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/numbers.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "sheet/timing.h"

void Form1::InitTitleBar() {
  SetCaption(sheet::TitleText(app::AppTitle, sheet::FrameRate(), sheet::CalcTime().value_or(0),
                              platform::DecimalSign()));
}

void Form1::UseFR() {
  const auto answer = platform::MsgBox("Use the frame rate in the main program as well?",
                                       platform::Buttons::YesNo, platform::Icon::Question);
  if (answer == platform::Answer::Yes) host::HostSession.Call("vel_SetFrameRate", sheet::FrameRate());
}

void Form1::ChooseRate(const std::string& rate) {
  if (!AcceptsRate(platform::NumberAtStart(rate))) return;
  form3->Text7.SetText(rate);
  UseFR();
  SetupGrid();
}

void Form1::SetFPS_Click() {
  form3->ShowOwnedBy(*this);
  form3->Text7.SetFocus();
  form3->Text7.SelectAll();
}
