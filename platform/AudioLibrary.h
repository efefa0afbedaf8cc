// The audio library as a whole, for the files of this folder that use its devices.
#pragma once

#include <SDL.h>

#include <mutex>

namespace platform {

/// The library's routines that are used, by their names without the prefix. They are looked up when the first
/// is wanted, since the library brings thirty others along, whose loading takes a tenth of the program's
/// start.
struct AudioRoutines {
  decltype(&SDL_SetHint) SetHint = nullptr;
  decltype(&SDL_InitSubSystem) InitSubSystem = nullptr;
  decltype(&SDL_WasInit) WasInit = nullptr;
  decltype(&SDL_GetCurrentAudioDriver) GetCurrentAudioDriver = nullptr;
  decltype(&SDL_GetNumAudioDevices) GetNumAudioDevices = nullptr;
  decltype(&SDL_GetAudioDeviceName) GetAudioDeviceName = nullptr;
  decltype(&SDL_OpenAudioDevice) OpenAudioDevice = nullptr;
  decltype(&SDL_CloseAudioDevice) CloseAudioDevice = nullptr;
  decltype(&SDL_PauseAudioDevice) PauseAudioDevice = nullptr;
  decltype(&SDL_GetAudioDeviceStatus) GetAudioDeviceStatus = nullptr;
  decltype(&SDL_TLSCleanup) TLSCleanup = nullptr;
};

/// To be used only after AudioLibraryReady has said true: all are null where the library is missing.
const AudioRoutines& AudioLibrary();

/// The library's list of devices is not guarded by itself: hold this while opening, closing or listing any.
std::mutex& AudioLibraryMutex();

/// Sets the library up if that hasn't been done yet. False if the machine has no such library or no audio
/// driver. The mutex is to be held.
bool AudioLibraryReady();

}  // namespace platform
