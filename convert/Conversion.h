// One run of the converter: an input read, an output written, and what there is to say about both.
#pragma once

#include <string>

#include "convert/command_line.h"
#include "convert/message.h"

namespace convert {

inline constexpr const char* kProgram = "exposure-sheet-convert";

/// What the process ends with.
enum ExitStatus {
  kDone = 0,
  /// The input can't be read or isn't of its format, or the output can't be written. Nothing has been
  /// changed.
  kFailed = 1,
  /// The command line isn't understood.
  kMisused = 2
};

ExitStatus RunConversion(Request request);

/// In the user's language.
std::string Translated(const Message& message);
/// Onto the error output, the program's name before it.
void Say(const std::string& text);

}  // namespace convert
