// The pictures on the stand-in's transport buttons, drawn by code, and its own icon.
#pragma once

#include <QIcon>

namespace host {

enum class Transport { First, Back, Play, Pause, Forward, Last };

QIcon TransportIcon(Transport which);
QIcon StandInIcon();

}  // namespace host
