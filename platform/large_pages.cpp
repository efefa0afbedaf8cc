#include "platform/large_pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace platform {

void AskForLargePages(void* start, std::size_t bytes) {
  if (bytes < kLargePage) return;
  // Advice is given for whole pages of the common size; the large ones among them are the system's to find.
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t into_page = reinterpret_cast<std::uintptr_t>(start) % page;
  madvise(static_cast<char*>(start) - into_page, bytes + into_page, MADV_HUGEPAGE);
}

}  // namespace platform
