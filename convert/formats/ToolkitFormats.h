// The formats of JSON and XML, which the toolkit reads and writes.
#pragma once

#include <string_view>

#include "convert/document.h"

namespace convert {

/// Rhubarb Lip Sync's JSON: "mouthCues" of "start", "end" and "value"; "metadata" with "soundFile" and
/// "duration".
Reading ReadCueJson(std::string_view bytes, const Context& context);

/// Rhubarb Lip Sync's XML: "rhubarbResult" with "metadata" and "mouthCues" of "mouthCue" with start and end.
Reading ReadCueXml(std::string_view bytes, const Context& context);

/// XDTS, the exchange digital time sheet, version 5. The mouths are the cell column named "Mouth", or else
/// the first whose cells all name mouths, or else the first; a cell's number is that of the mouth's drawing.
/// Dialogue becomes comments.
Reading ReadXdts(std::string_view bytes, const Context& context);
Writing WriteXdts(const Document& document);

}  // namespace convert
