// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Schrift.h"

#include <QByteArray>
#include <QPoint>
#include <QSize>
#include <QString>

#include <array>
#include <exception>
#include <functional>
#include <optional>

namespace paukfix {

// What the learner has made of a window; the program chooses what he has left as it was. Logical pixels of
// the desktop, without the frame.
struct Fensterlage
{
    std::optional<QPoint> platz = {};
    std::optional<QSize> groesse = {};
    bool maximiert = false;

    bool operator==(const Fensterlage &) const = default;
};

// The user's settings, as the sections of "konfig.dat" keep them.
struct Einstellungen
{
    Schrift schrift;
    std::array<QString, 5> MDat; // recently opened card files, latest first; an empty entry is not shown
    bool Animation = true;
    Fensterlage Abfrage; // the query's

    // Puts the file name `name` (nothing, where it is empty) on top of the recent files.
    void ZuletztGeoeffnet(const QString &name);
};

// The sections, by the numbers that they are rewritten under.
namespace Abschnitt {
inline constexpr qint16 LetzteDateien = 1, Schrift = 2, Animation = 3, Fenster = 4;
} // namespace Abschnitt

// Takes every setting that `content` holds; what it lacks, or what cannot be read, keeps its value. Each
// error is told to `melden`, and the reading goes on. What is no place or size of a window is passed over.
void EinstellungenLesen(Einstellungen &werte, QByteArrayView content,
                        const std::function<void(const std::exception &fehler)> &melden);

// `content` with one section rewritten, every other line byte for byte as it was: 1 gets the file name
// `value` on top, 2 `werte.schrift`, 3 `value`, "True" or "False", 4 `werte.Abfrage`. Only 4 is appended
// where there is no such section. Throws StoreError for what cannot be written.
QByteArray MitNeuemAbschnitt(const QByteArray &content, qint16 section, const QString &value,
                             const Einstellungen &werte);

// The animation setting as the intro reads it: header and key in exactly this letter case, true when there is
// none. Throws StoreError for what is no such value.
bool AnimationDesIntros(QByteArrayView content);

} // namespace paukfix
