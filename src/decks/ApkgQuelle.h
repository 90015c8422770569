// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "ApkgPaket.h"
#include "ApkgSammlung.h"
#include "Deckquelle.h"

namespace paukfix {

// The cards of a package (.apkg, .colpkg): each note's templates are filled, and what comes of it is read as
// HTML. What follows "<hr id=answer>" is the answer.
class ApkgQuelle final : public Deckquelle
{
public:
    explicit ApkgQuelle(const QString &pfad);

    Deckinhalt Inhalt() const override;
    bool Naechste(Deckkarte &karte, Deckbericht &bericht) override;

    int Gelesen() const override { return gelesen_; }

    void VonVorn() override;

    std::optional<QByteArray> Medium(const QString &name) override { return paket_.Medium(name); }

private:
    struct Seite;

    bool Bauen(const Sammlungszeile &zeile, Deckkarte &karte, Deckbericht &bericht);
    bool AnkreuzkarteBauen(const Notiztyp &typ, const Sammlungszeile &zeile, Deckkarte &karte,
                           Deckbericht &bericht);
    bool Fuellen(const Notiztyp &typ, const Kartenvorlage &vorlage, const Sammlungszeile &zeile, Seite &frage,
                 Seite &antwort, Deckbericht &bericht);
    std::optional<Kartentext> Lesen(Seite &seite);
    std::optional<Deckmedium> Waehlen(const QStringList &namen, Deckrest weitere, const QString &beispiel,
                                      Deckbericht &bericht) const;
    void Beimessen(qsizetype zeichen);

    ApkgPaket paket_;
    ApkgSammlung sammlung_;
    int gelesen_ = 0;
    bool fertig_ = false;
    qint64 frei_ = 0; // characters that templates may still make
};

// The compartment that fits to an interval in days.
int FachAusTagen(qint64 tage);

} // namespace paukfix
