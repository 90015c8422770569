// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardEditor.h"
#include "EditorTestSupport.h"

#include <functional>

namespace paukfix {

using namespace Qt::StringLiterals;

// A form that keeps what it is given, plain text as rich text.
class TestFormular final : public Kartensicht
{
public:
    Kartenblatt Inhalt() const override { return blatt; }

    void Zeigen(const Kartenblatt &neu, const Formularkopf &neuerKopf) override
    {
        blatt = neu;
        blatt.Frage_Klartext = blatt.Frage;
        blatt.Antwort_Klartext = blatt.Antwort;
        kopf = neuerKopf;
        ++gezeigt;
        beimZeigen();
    }

    void KopfZeigen(const Formularkopf &neuerKopf) override { kopf = neuerKopf; }

    void Gespeichert() override { ++gespeichert; }

    void FokusAufFrage() override { fokus = u"MFrage"_s; }

    void FokusAufAntwort(std::size_t box) override { fokus = u"Antwort(%1)"_s.arg(box); }

    void Tippen(const QString &frage, const QString &antwort)
    {
        blatt.Frage = blatt.Frage_Klartext = frage;
        blatt.Antwort[0] = blatt.Antwort_Klartext[0] = antwort;
    }

    Kartenblatt blatt;
    Formularkopf kopf;
    QString fokus;
    int gezeigt = 0;
    std::function<void()> beimZeigen = [] {};
    int gespeichert = 0;
};

struct Werk
{
    explicit Werk(const QList<CardRecord> &cards = {}) : kartei(cards) { editor.Load(); }

    void Aendern(const QString &frage)
    {
        form.blatt.Frage = form.blatt.Frage_Klartext = frage;
        editor.cardDirty = true;
    }

    int Nummer() { return kartei.store.Felder().FrageNr.Integer(); }

    TestKartei kartei;
    CardStore &store = kartei.store;
    TestFormular form;
    Aufbewahrung aufbewahrung{store, kartei.messages, kartei.dienste.dialoge};
    CardEditor editor{store, kartei.messages, aufbewahrung, form};
};

inline QList<CardRecord> Drei()
{
    return {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 2, 1)};
}

} // namespace paukfix
