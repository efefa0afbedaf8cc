#include "audio/sample_store.h"

#include <sys/mman.h>

#include <algorithm>

#include "platform/large_pages.h"

namespace audio {

std::shared_ptr<void> ZeroedMemory(std::size_t bytes, std::size_t soon_filled) {
  // Large pages begin at multiples of their size, which takes a little more room to find.
  const std::size_t whole_pages = std::min(soon_filled, bytes) / platform::kLargePage * platform::kLargePage;
  const std::size_t room = whole_pages > 0 ? bytes + platform::kLargePage : bytes;
  // No reserve: a small file may declare a sound of 2 GB, of which only what the file holds is ever touched.
  void* memory =
      mmap(nullptr, room, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) return nullptr;
  void* start = memory;
  std::size_t left = room;
  if (whole_pages > 0) {
    std::align(platform::kLargePage, bytes, start, left);
    platform::AskForLargePages(start, whole_pages);
  }
  return {start, [memory, room](void*) { munmap(memory, room); }};
}

SampleStore& LoadedSound() {
  static SampleStore sound;
  return sound;
}

std::optional<double> SecondsOfSound(const SampleStore& sound) {
  const auto& format = sound.WaveFormat;
  if (sound.WaveDataLength <= 0 || format.nSamplesPerSec <= 0) return std::nullopt;
  switch (format.wBitsPerSample) {
    case 8:
      return static_cast<double>(sound.WaveDataLength) / format.nSamplesPerSec;
    case 16:
      return static_cast<double>(sound.WaveDataLength) / 2 / format.nSamplesPerSec;
    default:
      return std::nullopt;
  }
}

std::string DepthNotice(const SampleStore& sound) {
  const auto& format = sound.WaveFormat;
  if (sound.WaveDataLength == 0 || format.wBitsPerSample == 8 || format.wBitsPerSample == 16) return {};
  constexpr std::int16_t floating_point = 3;
  return "The sound has " + std::to_string(format.wBitsPerSample) + " bits per sample" +
         (format.wFormatTag == floating_point ? ", as floating-point numbers" : "") +
         ". Only sounds of 8 or 16 bits can be shown, so its sheet has no rows.\n"
         "Save the sound with 16 bits in a sound editor and open that.";
}

}  // namespace audio
