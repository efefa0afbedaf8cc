// Large arrays that are about to be filled, got from the operating system with few interruptions.
#pragma once

#include <cstddef>

namespace platform {

/// A large page of the common processors. Where a machine's are larger, the advice below is passed over.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20;

/// Has the operating system give these bytes in large pages, where it can, when they are first written. For
/// memory that is about to be filled whole. The bytes themselves stay as they are.
void AskForLargePages(void* start, std::size_t bytes);

}  // namespace platform
