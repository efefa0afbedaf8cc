// The entry of the program's own code.
#pragma once

#include <string>

namespace app {

/// Head of the window title, set by Main.
extern std::string AppTitle;

/// Reaches the host and hands it the main window; the host brings that up. Throws if there is no host to be
/// had or the host fails.
void Main();

}  // namespace app
