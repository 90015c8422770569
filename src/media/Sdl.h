// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <SDL.h>

namespace paukfix {

// SDL, loaded at its first use: with it come some thirty libraries, whose loading would be a quarter of the
// program's start, and most sessions begin without a sound. Each member is the function of SDL of that name.
struct Sdl
{
    decltype(&SDL_SetHint) SetHint = nullptr;
    decltype(&SDL_InitSubSystem) InitSubSystem = nullptr;
    decltype(&SDL_QuitSubSystem) QuitSubSystem = nullptr;
    decltype(&SDL_AudioInit) AudioInit = nullptr;
    decltype(&SDL_AudioQuit) AudioQuit = nullptr;
    decltype(&SDL_GetNumAudioDevices) GetNumAudioDevices = nullptr;
    decltype(&SDL_OpenAudioDevice) OpenAudioDevice = nullptr;
    decltype(&SDL_PauseAudioDevice) PauseAudioDevice = nullptr;
    decltype(&SDL_CloseAudioDevice) CloseAudioDevice = nullptr;
    decltype(&SDL_RWFromConstMem) RWFromConstMem = nullptr;
    decltype(&SDL_LoadWAV_RW) LoadWAV_RW = nullptr;
    decltype(&SDL_FreeWAV) FreeWAV = nullptr;
    decltype(&SDL_TLSCleanup) TLSCleanup = nullptr;
};

// For every thread. Once loaded SDL stays to the end of the program. Null where the machine has no SDL.
const Sdl *LoadSdl();

} // namespace paukfix
