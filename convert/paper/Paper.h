// The sheet on paper.
#pragma once

#include <string>

#include "convert/command_line.h"
#include "convert/document.h"
#include "convert/sound/SoundFile.h"

namespace convert {

/// The sheet as PDF, or as one SVG with the pages one below the other. name: of the sheet, for the heading.
/// sound: for the waveform; null if there is none.
Writing PrintSheet(const Document& document, const std::string& name, SoundFile* sound, Paper paper,
                   bool svg);

}  // namespace convert
