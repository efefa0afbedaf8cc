// The stand-in's own quiet dark look, so that nobody takes its window for the tool's.
#pragma once

class QWidget;

namespace host {

/// Gives the window, and with it its dialogs, the stand-in's colours.
void DressStandIn(QWidget& window);

}  // namespace host
