// The pictures on the stand-in's transport buttons, and its own icon, drawn by code.
#pragma once

#include <QIcon>

namespace host {

enum class Transport { First, Back, Play, Pause, Forward, Last };

QIcon TransportIcon(Transport which);
QIcon StandInIcon();

}  // namespace host
