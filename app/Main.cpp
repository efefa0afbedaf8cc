#include "app/Main.h"

#include "app/Form1.h"
#include "app/HandedWindow.h"
#include "app/HostSession.h"
#include "host/MakeHost.h"
#include "platform/Application.h"

namespace app {

std::string AppTitle;

void Main() {
  AppTitle = "Exposure Sheet 2.3";
  HostSession.Hold(host::MakeHost());
  platform::BeforeEnd([] { HostSession.Hold(nullptr); });
  form1.Hold();
  static HandedWindow<Form1> handed("Form1", form1);
  HostSession.Call("Vel_SendFormObject", static_cast<host::FormObject*>(&handed), std::int16_t{0});
}

}  // namespace app
