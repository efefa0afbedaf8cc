// The pictures on the stand-in's transport buttons, drawn by code, and its own icon.
#pragma once

#include <QIcon>

namespace host {

enum class Transport { First, Back, Play, Pause, Forward, Last };

/// The sign for a transport button.
QIcon TransportIcon(Transport which);
/// The icon of the stand-in's window.
QIcon StandInIcon();

}  // namespace host
