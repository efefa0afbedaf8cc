// The machine's sound in a file.
#pragma once

#include <cstdlib>
#include <string>

#include "support/desk.h"

namespace support {

/// Sends the machine's sound, when it is first opened, into a file, whose path this is.
inline std::string UseDiskDriver() {
  std::string path = ScratchFolder() + "/device.raw";
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
  return path;
}

}  // namespace support
