// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Deckquelle.h"
#include "KvtmlDatei.h"

namespace paukfix {

// The cards of a vocabulary document: the first language asks, the second one answers; wrong choices make a
// card to be ticked. Where a document has one language only, what is said of a word asks for it. Media are
// read from the document's directory and below, nowhere else.
class KvtmlQuelle final : public Deckquelle
{
public:
    explicit KvtmlQuelle(const QString &pfad);

    Deckinhalt Inhalt() const override;
    bool Naechste(Deckkarte &karte, Deckbericht &bericht) override;

    int Gelesen() const override { return static_cast<int>(gelesen_); }

    void VonVorn() override { gelesen_ = 0; }

    std::optional<QByteArray> Medium(const QString &name) override;

private:
    bool Bauen(const KvtmlEintrag &eintrag, Deckkarte &karte, Deckbericht &bericht) const;
    std::optional<Deckmedium> Bezug(const QString &adresse, Deckbericht &bericht) const;
    QString Ort(const QString &name) const;

    QString verzeichnis_;
    KvtmlInhalt inhalt_;
    bool einsprachig_ = true;
    std::size_t gelesen_ = 0;
};

// The compartment that fits to a grade of 0 to 7, and back.
int FachAusStufe(int stufe);
int StufeAusFach(int fach);

} // namespace paukfix
