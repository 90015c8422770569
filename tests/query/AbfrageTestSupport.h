// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Drehbuch.h"
#include "Eingabewache.h"
#include "Fensterwechsel.h"
#include "KarteiOeffner.h"
#include "PFUse.h"
#include "TestDienste.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTextEdit>
#include <SQLiteCpp/Database.h>

#include <functional>
#include <memory>
#include <optional>

namespace paukfix {

// What a query left behind, or the verdict that it shows.
using Ergebnis = std::optional<AbfrageErgebnis>;
inline constexpr Ergebnis Nichts;
inline constexpr Ergebnis Richtig = AbfrageErgebnis::Richtig;
inline constexpr Ergebnis Falsch = AbfrageErgebnis::Falsch;
inline constexpr Ergebnis Bearbeiten = AbfrageErgebnis::Bearbeiten;
inline constexpr Ergebnis Geloescht = AbfrageErgebnis::Geloescht;

// Asks cards of a real card file in the real window, driven by key and mouse.
class AbfrageBuehne : public TestDienste, public Hand
{
public:
    AbfrageBuehne() : AbfrageBuehne(eigener_) {}

    explicit AbfrageBuehne(Zufall &gegeben) : zufall_(gegeben)
    {
        store.KarteiPfad = kartei.path();
        oeffner.BoxZeichnen = [] {};
    }

    // Writes the cards to a card file, opens it, and stands on its first card in box order.
    void Oeffnen(const QList<CardRecord> &karten)
    {
        MakeCardFile(kartei.filePath("a.pzb"), karten);
        Oeffnen();
    }

    void Oeffnen()
    {
        QString name = "a.pzb";
        oeffner.OpenCardFile(name);
        QCOMPARE(name, "a.pzb");
        store.Karten().MoveFirst();
    }

    // Asks the current card and lets `lernen` act as the learner. A window still open then is closed. All
    // cards of a stage are asked in one window, as in the program.
    Ergebnis Fragen(const std::function<void()> &lernen)
    {
        FensterBauen();
        const Drehbuch buch({Drehbuch::In("PFUse", [&](QWidget &) {
            lernen();
            fenster->close();
        })});
        return fenster->Fragen(true);
    }

    void FensterBauen()
    {
        if (!fenster)
            fenster = std::make_unique<PFUse>(store, Dienste{meldungen, dialoge, clock, zufall_, ton, konfig},
                                              wechsel);
        Nimm(*fenster);
    }

    // One card in a file of two, with another one that stays as it is.
    Ergebnis Fragen(const CardRecord &karte, const std::function<void()> &lernen)
    {
        store.CloseCardFile();
        QFile::remove(kartei.filePath("a.pzb"));
        Oeffnen({karte, MakeCard(90, 5, 90)});
        return Fragen(lernen);
    }

    QCheckBox *Check1(int i) const { return Finde<QCheckBox>(QString("Check1(%1)").arg(i)); }

    QCheckBox *Check2(int i) const { return Finde<QCheckBox>(QString("Check2(%1)").arg(i)); }

    // Types `eingabe` and presses Enter.
    void Antworten(const QString &eingabe) const
    {
        Tippe(eingabe);
        Taste(Qt::Key_Return);
    }

    QTemporaryDir kartei;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
    QWidget box; // stands for the window that the keyboard comes from
    Eingabewache wache{box};
    Fensterwechsel wechsel{wache, box};
    std::unique_ptr<PFUse> fenster;

private:
    MersenneZufall eigener_;
    Zufall &zufall_;
};

// A card to be answered by typing.
inline CardRecord TippKarte(const QString &antwort)
{
    CardRecord karte = MakeCard(17, 0, 1);
    karte.Antwort_1 = karte.Antwort_1_Klartext = antwort;
    return karte;
}

// A card to be answered by ticking; `richtig` holds the right lines' digits, "25" for lines 2 and 5.
inline CardRecord KreuzKarte(const QString &richtig)
{
    CardRecord karte = MakeCard(17, 0, 1);
    karte.Antworttyp = 2;
    karte.Antwort_1 = "eins";
    karte.Antwort_2 = "zwei";
    karte.Antwort_3 = "drei";
    karte.Antwort_4 = "vier";
    karte.Antwort_5 = "";
    bool CardRecord::*const kreuze[] = {&CardRecord::Antwort_ch_1, &CardRecord::Antwort_ch_2,
                                        &CardRecord::Antwort_ch_3, &CardRecord::Antwort_ch_4,
                                        &CardRecord::Antwort_ch_5};
    for (int i = 0; i < 5; ++i)
        karte.*kreuze[i] = richtig.contains(QString::number(i + 1));
    return karte;
}

} // namespace paukfix
