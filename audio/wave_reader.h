// Reading a RIFF wave file by a fixed and narrow route, two channels reduced to one on the way.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "audio/sample_store.h"
#include "platform/byte_source.h"

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
///
/// Of a two-channel file the first channel of each pair is kept, of as many pairs as would have been read,
/// and WaveDataLength is halved, rounded down; the format keeps describing the file. That is done piece by
/// piece while reading, so that the memory is never above the samples kept and one piece. `before_reducing`
/// is called once before it.
WaveResult ReadWave(platform::ByteSource& source, const SampleStore& earlier,
                    const std::function<void()>& before_reducing = {});

/// The same for a file by name; a file that can't be opened is a reason that names it.
WaveResult ReadWaveFile(const std::string& path, const SampleStore& earlier,
                        const std::function<void()>& before_reducing = {});

/// Walks from the position, the first byte behind the "fmt " chunk, to "data". 0: the identifier has just
/// been read. -1: there is none, or ten other chunks stood before it. Chunks are not aligned: an odd one is
/// followed at once by the next.
std::int32_t FindDataChunk(platform::ByteSource& source);

}  // namespace audio
