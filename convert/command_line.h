// What the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "convert/message.h"

namespace convert {

enum class Format {
  kSheet,
  kSwitchData,
  kCueTable,
  kCueXml,
  kCueJson,
  kPapagayo,
  kXdts,
  kCsv,
  kPdf,
  kSvg,
  kWave,
  kWords
};

struct FormatFacts {
  Format format;
  /// As --from and --to take it.
  const char* name;
  bool in, out;
};
/// Every format once.
const std::vector<FormatFacts>& Formats();

enum class Paper { kA4, kLetter };

struct Request {
  enum class Kind { kConvert, kHelp, kVersion, kShapes, kFault } kind = Kind::kConvert;
  Message fault;

  std::string input, output;
  Format from = Format::kSheet, to = Format::kSheet;
  std::optional<std::string> rate_text;
  std::string sound, shapes;
  Paper paper = Paper::kA4;
  std::string language = "en-us";
  /// Whether a speech synthesizer, if there is one, may be asked for the sounds of words.
  bool synthesizer = true;
  bool force = false;
};

/// Reads the arguments, the program's own name first.
Request ReadCommandLine(int argument_count, char** arguments);

}  // namespace convert
