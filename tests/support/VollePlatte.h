// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

// A disk that can be full or broken: every file that the database engine opens from Einbauen() on stands on
// it.
namespace VollePlatte {

enum class Zustand
{
    Gesund,
    Voll,   // nothing more can be written
    Kaputt, // nothing can be read or written
};

// Once, before the first card file is opened.
void Einbauen();
void Setzen(Zustand zustand);

} // namespace VollePlatte
