// The audio library as a whole, for the files of this folder that use its devices.
#pragma once

#include <mutex>

namespace platform {

/// The library's list of devices is not guarded by itself: hold this while opening, closing or listing any.
std::mutex& AudioLibraryMutex();

/// Sets the library up if that hasn't been done yet. False if the machine has no audio driver. The mutex is
/// to be held.
bool AudioLibraryReady();

}  // namespace platform
