#include "app/Program.h"

#include <cstdint>
#include <memory>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "host/HandedWindow.h"
#include "host/HostSession.h"
#include "host/bus/BusHost.h"
#include "host/standin/EmbeddedHost.h"
#include "platform/Application.h"
#include "platform/UntimelyEnd.h"
#include "timeline/velocity_values.h"

namespace app {
namespace {

/// The host that runs beside the tool if there is one, else the embedded stand-in.
std::shared_ptr<host::HostObject> MakeHost() {
  if (auto beside = host::ConnectToBusHost()) return beside;
  return host::MakeEmbeddedHost();
}

}  // namespace

std::string AppTitle;

void Main() {
  AppTitle = "Exposure Sheet 2.3";
  host::HostSession.Set(MakeHost());
  timeline::Tracks();
  audio::LoadedSound();
  platform::BeforeUntimelyEnd([] {
    Form1* const form = form1.IfLoaded();
    return form == nullptr ? std::string() : form->RescueSheet();
  });
  platform::BeforeEnd([] { host::HostSession.Set(nullptr); });
  form1.Hold();
  static host::HandedWindow<Form1> handed("Form1", form1);
  host::HostSession.Call("Vel_SendFormObject", static_cast<host::FormObject*>(&handed), std::int16_t{0});
}

}  // namespace app
