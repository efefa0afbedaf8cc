// Reading a RIFF wave file by a fixed and narrow route, and the reduction of two channels to one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "audio/byte_source.h"
#include "audio/sample_store.h"

namespace audio {

/// A sound read whole, or the text of the message that tells why not.
struct WaveResult {
  std::optional<SampleStore> sound;
  std::string reason;
};

/// Reads a wave file (RIFF/WAVE, little-endian) from position 0.
///
/// The route: "RIFF", a size that is ignored, "WAVE", "fmt " directly behind it, 16 bytes of format whatever
/// the fmt size says, then the walk to "data" from exactly behind the fmt body.
/// The array of the file's depth is made afresh, and filled from the data on with one sample more than the
/// declared byte count; what follows the chunk lands in its tail, what the file doesn't hold stays 0 and
/// untouched. The other array is the earlier sound's, as are both at a depth other than 8 or 16.
/// A two-channel file comes back as it stands in the file: ReduceToFirstChannel is the caller's next step.
WaveResult ReadWave(ByteSource& source, const SampleStore& earlier);

/// The same for a file by name; a file that can't be opened is a reason that names it.
WaveResult ReadWaveFile(const std::string& path, const SampleStore& earlier);

/// Walks from the position, the first byte behind the "fmt " chunk, to "data". 0: the identifier has just
/// been read. -1: there is none, or ten other chunks stood before it. Chunks are not aligned: an odd one is
/// followed at once by the next.
std::int32_t FindDataChunk(ByteSource& source);

/// Keeps the first channel of each pair, in place, and halves WaveDataLength, rounded down. The format keeps
/// describing the file. Takes as long as what the file held, not as what it declared. The array of the
/// sound's depth must not be shared yet.
void ReduceToFirstChannel(SampleStore& sound);

}  // namespace audio
