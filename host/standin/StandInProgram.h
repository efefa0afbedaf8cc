// The stand-in for a host as a program of its own.
#pragma once

namespace host {

/// Shows the stand-in's window, takes the host's name on the session bus and serves it until the window is
/// closed. Returns the process's status. Without a bus the window says so and works alone.
int RunStandIn(int argument_count, char** arguments);

}  // namespace host
