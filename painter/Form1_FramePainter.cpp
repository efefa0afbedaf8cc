// The main window's menu item "Frame painter...".
#include "app/Form1.h"
#include "host/HostSession.h"
#include "host/variant.h"
#include "painter/Retrieve.h"
#include "platform/Dialogs.h"

void Form1::FramePainterM_Click() {
  if (host::AsLong(host::HostSession.Call("vel_GetTotalFrames"), "vel_GetTotalFrames") < 1) {
    platform::MsgBox("Not enough frames exist.  Create an animaiton of at least several frames first.");
    return;
  }
  painter::LaunchFramePainter();
}
