// Threads that stand by for work which is over within milliseconds.
#pragma once

#include <functional>

namespace painter {

/// Runs `work` on up to `count` threads at the same time, the caller's among them, and returns when it is
/// done. However many run it, all of them together must do the whole of it; it doesn't throw. A thread that
/// hasn't begun when the work is done isn't waited for: on a busy machine one may get its turn milliseconds
/// late. The others are kept for the next time, since a new thread begins too late to be of use. One caller
/// at a time.
void OnThreads(int count, const std::function<void()>& work);

}  // namespace painter
