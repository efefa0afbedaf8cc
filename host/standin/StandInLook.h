// How the stand-in's window looks: its style, and the signs on its buttons, drawn by code.
#pragma once

#include <QIcon>

class QWidget;

namespace host {

enum class Transport { First, Back, Play, Pause, Forward, Last };

/// The sign for a transport button.
QIcon TransportIcon(Transport which);

/// Gives the window, and with it its dialogs, the stand-in's colours.
void DressStandIn(QWidget& window);

}  // namespace host
