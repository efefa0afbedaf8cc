// The wall clock and short waits.
#pragma once

#include <functional>

namespace platform {

/// Seconds since local midnight with a fraction, from 0 to below 86400: it wraps to 0 at midnight.
double SecondsSinceMidnight();

/// In place of the real clock; null brings that back.
void ReadClockFrom(std::function<double()> clock);

/// Gives the processor up for a while, without handling events.
void Sleep(int milliseconds);

}  // namespace platform
