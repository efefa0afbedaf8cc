// The pictures on the stand-in's transport buttons, drawn by code.
#pragma once

#include <QIcon>

namespace host {

enum class Transport { First, Back, Play, Pause, Forward, Last };

/// The sign for a transport button.
QIcon TransportIcon(Transport which);

}  // namespace host
