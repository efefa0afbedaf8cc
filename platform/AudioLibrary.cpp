#include "platform/AudioLibrary.h"

#include <dlfcn.h>

#include <type_traits>

namespace platform {
namespace {

// By the system's own calls: the toolkit's loader of libraries is gone at the end of the process, when a
// thread may still be looking for a device.
AudioRoutines LookUp() {
  AudioRoutines found;
  void* const library = dlopen("libSDL2-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
  bool whole = library != nullptr;
  const auto get = [&](auto& routine, const char* name) {
    if (whole) routine = reinterpret_cast<std::remove_reference_t<decltype(routine)>>(dlsym(library, name));
    whole = whole && routine != nullptr;
  };
  get(found.SetHint, "SDL_SetHint");
  get(found.InitSubSystem, "SDL_InitSubSystem");
  get(found.WasInit, "SDL_WasInit");
  get(found.GetCurrentAudioDriver, "SDL_GetCurrentAudioDriver");
  get(found.GetNumAudioDevices, "SDL_GetNumAudioDevices");
  get(found.GetAudioDeviceName, "SDL_GetAudioDeviceName");
  get(found.OpenAudioDevice, "SDL_OpenAudioDevice");
  get(found.CloseAudioDevice, "SDL_CloseAudioDevice");
  get(found.PauseAudioDevice, "SDL_PauseAudioDevice");
  get(found.GetAudioDeviceStatus, "SDL_GetAudioDeviceStatus");
  get(found.TLSCleanup, "SDL_TLSCleanup");
  return whole ? found : AudioRoutines{};
}

}  // namespace

const AudioRoutines& AudioLibrary() {
  static const AudioRoutines routines = LookUp();
  return routines;
}

std::mutex& AudioLibraryMutex() {
  static std::mutex mutex;
  return mutex;
}

bool AudioLibraryReady() {
  const AudioRoutines& library = AudioLibrary();
  if (library.WasInit == nullptr) return false;
  if (library.WasInit(SDL_INIT_AUDIO)) return true;
  // Otherwise the library handles the signals that end the process itself, by an event that nobody here asks
  // it for.
  library.SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  library.SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Exposure Sheet");
  return library.InitSubSystem(SDL_INIT_AUDIO) == 0;
}

}  // namespace platform
