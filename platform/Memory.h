// How much memory the machine has to give.
#pragma once

#include <functional>
#include <string>

namespace platform {

/// Bytes that can be filled before the system begins to end processes: what is free or easily freed, and the
/// swap space. Infinite where the system doesn't say.
///
/// Asking before a large array is made is needed because the making of it says little: the system promises
/// memory that it doesn't have and ends the process, unsaved sheet and all, when it is written to.
double FreeMemoryBytes();

/// In place of the machine's figure; null brings that back.
void ReadFreeMemoryFrom(std::function<double()> measure);

/// For a message that refuses something: "27 GB would be needed, 3.1 GB are free."
std::string MemoryFigures(double needed_bytes);

}  // namespace platform
