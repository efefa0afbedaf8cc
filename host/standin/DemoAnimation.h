// The animation that the stand-in begins with.
#pragma once

#include "host/standin/animation.h"

namespace host {

/// 48 frames of 320 by 240: a round fellow who hops across a meadow and talks. The last frame leads back into
/// the first. Each is drawn when it is first asked for.
Animation DrawDemoAnimation();

}  // namespace host
