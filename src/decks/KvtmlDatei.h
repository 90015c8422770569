// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace paukfix {

// A word in one language, with what is said of it.
struct KvtmlWort
{
    QString text, bemerkung, bild, ton; // media: addresses relative to the file
    QStringList falsche;                // wrong choices
    int stufe = 0;                      // 0 to 7: how well it is known when asked in the first language
    int angaben = 0;                    // pronunciation, examples and what else is said of it
};

struct KvtmlEintrag
{
    qint64 nummer = 0;
    KvtmlWort frage, antwort; // in the first language and in the second
    int weitere = 0;          // languages
    QStringList lektionen;    // "A::B", the first one is its own
    bool ruht = false;        // not asked
};

struct KvtmlInhalt
{
    QString art, titel;
    QStringList lektionen;
    std::vector<KvtmlEintrag> eintraege;
    int fremdeZeilen = 0; // not in the file's encoding
};

// Reads a vocabulary document of version 1 or 2. Nothing that it points to is fetched; entities of its own
// are resolved within narrow bounds. Throws StoreError for what is no such document, damaged, or made to
// harm.
KvtmlInhalt KvtmlLesen(const QByteArray &bytes);

// Whether bytes may begin a document.
bool IstKvtml(const QByteArray &anfang);

} // namespace paukfix
