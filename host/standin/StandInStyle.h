// How the stand-in's window looks.
#pragma once

class QWidget;

namespace host {

/// Gives the window, and with it its dialogs, the stand-in's colours.
void DressStandIn(QWidget& window);

}  // namespace host
