// Routines whose failure is passed over.
#pragma once

#include <exception>

namespace app {

/// Runs a routine; a failure anywhere in it skips the rest of it and is passed over. For those few places
/// only where the system goes on regardless. False if it failed.
template <typename Routine>
bool Guarded(const Routine& routine) {
  try {
    routine();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace app
