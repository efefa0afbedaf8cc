// The program exposure-sheet-convert: the sheet's data and sounds, out to other programs and back.
#pragma once

namespace convert {

/// What the process ends with.
enum ExitStatus {
  kDone = 0,
  /// The input can't be read or isn't of its format, or the output can't be written. Nothing has been
  /// changed.
  kFailed = 1,
  /// The command line isn't understood.
  kMisused = 2
};

int RunConvert(int argument_count, char** arguments);

}  // namespace convert
