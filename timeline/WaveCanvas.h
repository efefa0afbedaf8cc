// What the waveform canvas shows and is to show next.
#pragma once

namespace timeline {

class WaveCanvas {};

}  // namespace timeline
