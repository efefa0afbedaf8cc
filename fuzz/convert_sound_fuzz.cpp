// Any bytes as a sound of any format: it opens or tells why not; and what is made of it is a whole wave file,
// which the tool opens by its narrow route.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "audio/wave_reader.h"
#include "convert/sound/SoundFile.h"
#include "convert/streams.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

/// Few bytes can be a long silence, which only costs time here.
constexpr std::int64_t kMostSamples = 1 << 20;

/// The bytes as a file without a place on the disk.
convert::Descriptor MemoryFile(std::string_view bytes) {
  convert::Descriptor file(memfd_create("sound", MFD_CLOEXEC));
  Check(file.Number() >= 0 && convert::WriteWhole(file.Number(), bytes));
  return file;
}

/// What was written to the standard output while a routine ran.
template <typename Routine>
std::string OutputOf(const Routine& routine) {
  const convert::Descriptor file = MemoryFile({});
  const convert::Descriptor terminal(dup(STDOUT_FILENO));
  dup2(file.Number(), STDOUT_FILENO);
  routine();
  dup2(terminal.Number(), STDOUT_FILENO);
  std::string bytes(static_cast<std::size_t>(lseek(file.Number(), 0, SEEK_END)), '\0');
  Check(pread(file.Number(), bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
  return bytes;
}

}  // namespace

/// The Vorbis library keeps a block of memory of a stream that it refuses.
extern "C" const char* __lsan_default_suppressions();  // NOLINT: the sanitizer's own name
extern "C" const char* __lsan_default_suppressions() { return "leak:libvorbis"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const convert::Descriptor file = MemoryFile({reinterpret_cast<const char*>(data), size});
  const auto opened = convert::SoundFile::Open("/proc/self/fd/" + std::to_string(file.Number()));
  Check((opened.sound == nullptr) == !opened.reason.empty());
  if (!opened.sound) return 0;
  Check(opened.sound->Channels() > 0 && opened.sound->SamplesPerSecond() > 0);
  std::int64_t samples = 0;
  opened.sound->Play([&](std::span<const double> piece) {
    samples += static_cast<std::int64_t>(piece.size());
    return samples <= kMostSamples;
  });
  if (samples > kMostSamples) return 0;
  Check(opened.sound->ScanAll().peak >= 0);
  const std::string standard_output(convert::kStandardStream);
  convert::Messages notes;
  convert::Message failure;
  const std::string wave =
      OutputOf([&] { failure = convert::WriteWave(*opened.sound, standard_output, notes); });
  // What is damaged may give other samples at each reading: a failure, if they are fewer.
  if (!failure.Empty()) return 0;
  platform::MemorySource source(wave);
  const audio::WaveResult result = audio::ReadWave(source, {});
  Check(result.sound.has_value());
  constexpr std::size_t kHeadBytes = 44;
  const auto bytes = static_cast<std::size_t>(result.sound->WaveDataLength);
  Check(bytes % 2 == 0 && kHeadBytes + bytes == wave.size() && result.sound->WaveFormat.nChannels == 1);
  return 0;
}
