// The recorder as a program of its own.
#pragma once

namespace recorder {

/// Shows the recorder's window until it is closed. Returns the process's status. The exposure sheet starts it
/// without arguments; `--version` and `--help` are answered, and the toolkit's own options are read.
int RunRecorder(int argument_count, char** arguments);

}  // namespace recorder
