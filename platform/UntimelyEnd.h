// Ends of the process that the user hasn't asked for: what is to be done before them, and those by a signal.
#pragma once

#include <functional>
#include <string>

namespace platform {

/// Before such an end, whatever it comes by, the routine is run once: it brings the user's work to safety and
/// gives words for the user, or an empty text. It must be done soon and ask nobody. Of what destroys itself
/// when the process exits it may use only what is there before this call.
void BeforeUntimelyEnd(std::function<std::string()> rescue);

/// Runs that routine, unless it has run. Its words; what they are is known from then on.
std::string Rescue();

/// While one of these lives, SIGTERM, SIGHUP and SIGINT end the process only where it can be ended: in the
/// event loop, or where EndIfAsked is called. A process that doesn't come to that within half a minute ends
/// all the same. Ends by way of exit or std::terminate, as the toolkit ends a program whose screen has gone,
/// are preceded by the rescue too. A write that fails is no reason for an end, as the system has it
/// otherwise.
class EndsWatched {
 public:
  EndsWatched();
  ~EndsWatched();
  EndsWatched(const EndsWatched&) = delete;
  EndsWatched& operator=(const EndsWatched&) = delete;
};

/// If a signal has asked for the end: the rescue, its words on the error output, and the end by that signal.
void EndIfAsked();

}  // namespace platform
