// How much memory the machine has to give.
#pragma once

#include <functional>
#include <string>

namespace platform {

/// Bytes that can be written before the operating system begins to kill processes: free memory, what is
/// easily freed, and swap space. Infinite where the operating system doesn't tell.
///
/// Ask this before allocating a large array. That an allocation succeeds proves little: the operating system
/// promises memory that it lacks, and kills the process, unsaved sheet and all, when that is written to.
double FreeMemoryBytes();

/// In place of the machine's figure; null brings that back.
void ReadFreeMemoryFrom(std::function<double()> measure);

/// For a message that refuses something: "27 GB would be needed, 3.1 GB are free."
std::string MemoryFigures(double needed_bytes);

}  // namespace platform
