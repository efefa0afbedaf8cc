// The question for size and length of a new animation.
#pragma once

#include <optional>

#include "host/standin/animation.h"
#include "host/standin/frame_size.h"

class QWidget;

namespace host {

/// White frames as the user wants them, or nothing if the user leaves the dialog.
std::optional<Animation> AskForNewAnimation(QWidget* parent, FrameSize proposal);

}  // namespace host
