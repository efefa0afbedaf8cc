// What the velocity canvas shows and is to show next.
#pragma once

namespace timeline {

class VelocityCanvas {};

}  // namespace timeline
