#include "audio/sample_store.h"

#include <sys/mman.h>

namespace audio {

std::shared_ptr<void> ZeroedMemory(std::size_t bytes) {
  // No reserve: a small file may declare a sound of 2 GB, of which only what the file holds is ever touched.
  void* memory =
      mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) return nullptr;
  return {memory, [bytes](void* start) { munmap(start, bytes); }};
}

SampleStore& LoadedSound() {
  static SampleStore sound;
  return sound;
}

std::int32_t SampleCount(const SampleStore& sound) {
  switch (sound.WaveFormat.wBitsPerSample) {
    case 8:
      return sound.WaveDataLength;
    case 16:
      return sound.WaveDataLength / 2;
    default:
      return 0;
  }
}

}  // namespace audio
