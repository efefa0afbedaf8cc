// Work that nobody can be made to wait for: it may hang for good in somebody else's code.
#pragma once

#include <chrono>
#include <functional>

namespace recorder {

/// Runs the work on a thread of its own and returns at once. The work owns what it uses, or shares it.
void RunAside(std::function<void()> work);

/// Waits until none of that work is running any more, at most so long. False if some still is: the process
/// then has to end without the destructors of what the work may yet touch.
bool AllAsideEnded(std::chrono::milliseconds patience);

}  // namespace recorder
