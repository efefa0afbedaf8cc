// Rhubarb Lip Sync's cues, whichever of its three formats they come in.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "convert/document.h"

namespace convert {

struct Cue {
  double start_seconds = 0;
  std::string letter;
  /// Where it stands in the file, for messages: "line 7", "cue 7".
  Message place;
};

/// No message, or why this start can't be used: below 0, or behind what a sheet can hold.
std::optional<Message> FaultOf(const Cue& cue, const Context& context);

/// The sheet of cues that have no fault. duration_seconds and sound_name as far as the file tells them.
Reading SheetOfCues(const std::vector<Cue>& cues, std::optional<double> duration_seconds,
                    const std::string& sound_name, const Context& context);

}  // namespace convert
