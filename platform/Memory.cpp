#include "platform/Memory.h"

#include <fstream>
#include <limits>
#include <string>

namespace platform {

double FreeMemoryBytes() {
  std::ifstream table("/proc/meminfo");
  double kilobytes = 0;
  bool known = false;
  for (std::string line; std::getline(table, line);) {
    const bool available = line.starts_with("MemAvailable:");
    if (!available && !line.starts_with("SwapFree:")) continue;
    kilobytes += std::stod(line.substr(line.find(':') + 1));
    known |= available;
  }
  return known ? kilobytes * 1024 : std::numeric_limits<double>::infinity();
}

}  // namespace platform
