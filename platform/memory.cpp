#include "platform/memory.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <utility>

#include "platform/numbers.h"

namespace platform {
namespace {

std::function<double()> replaced_measure;

}  // namespace

double FreeMemoryBytes() {
  if (replaced_measure) return replaced_measure();
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

void ReadFreeMemoryFrom(std::function<double()> measure) { replaced_measure = std::move(measure); }

std::string MemoryFigures(double needed_bytes) {
  const double free = FreeMemoryBytes();
  const std::string needed = SizeText(needed_bytes, RoundTo::Above) + " would be needed";
  return std::isfinite(free) ? needed + ", " + SizeText(free, RoundTo::Below) + " are free." : needed + ".";
}

}  // namespace platform
