// How much memory the machine has to give.
#pragma once

namespace platform {

/// Bytes that can be filled before the system begins to end processes: what is free or easily freed, and the
/// swap space. Infinite where the system doesn't say.
///
/// Asking before a large array is made is needed because the making of it says little: the system promises
/// memory that it doesn't have and ends the process, unsaved sheet and all, when it is written to.
double FreeMemoryBytes();

}  // namespace platform
