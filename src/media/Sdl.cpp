// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sdl.h"

#include <dlfcn.h>
#include <optional>
#include <type_traits>

namespace paukfix {

namespace {

std::optional<Sdl> Load()
{
    void *library = dlopen("libSDL2-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return std::nullopt;
    bool complete = true;
    const auto find = [&](auto &function, const char *name) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, name));
        complete = complete && function != nullptr;
    };
    Sdl sdl;
    find(sdl.SetHint, "SDL_SetHint");
    find(sdl.InitSubSystem, "SDL_InitSubSystem");
    find(sdl.QuitSubSystem, "SDL_QuitSubSystem");
    find(sdl.AudioInit, "SDL_AudioInit");
    find(sdl.AudioQuit, "SDL_AudioQuit");
    find(sdl.GetNumAudioDevices, "SDL_GetNumAudioDevices");
    find(sdl.OpenAudioDevice, "SDL_OpenAudioDevice");
    find(sdl.PauseAudioDevice, "SDL_PauseAudioDevice");
    find(sdl.CloseAudioDevice, "SDL_CloseAudioDevice");
    find(sdl.RWFromConstMem, "SDL_RWFromConstMem");
    find(sdl.LoadWAV_RW, "SDL_LoadWAV_RW");
    find(sdl.FreeWAV, "SDL_FreeWAV");
    find(sdl.TLSCleanup, "SDL_TLSCleanup");
    return complete ? std::optional(sdl) : std::nullopt;
}

} // namespace

const Sdl *LoadSdl()
{
    static const std::optional<Sdl> sdl = Load();
    return sdl ? &*sdl : nullptr;
}

} // namespace paukfix
