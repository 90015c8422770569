// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// Learns through the real store until it is killed: says on its standard output what it is about to store,
// and when that is stored. Arguments: card file, seed; with a third one it also imports cards, takes back
// what it has done and does it again.
#include "BoxRechnung.h"
#include "CardAdd.h"
#include "CardTransaction.h"
#include "KarteVerschieben.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <array>
#include <cstdio>
#include <unistd.h>

using namespace paukfix;

static void Say(const char *what, const char *step, int frageNr = 0, int richtig = 0)
{
    std::array<char, 64> line{};
    const int length = std::snprintf(line.data(), line.size(), "%s %s %d %d\n", what, step, frageNr, richtig);
    if (write(STDOUT_FILENO, line.data(), static_cast<size_t>(length)) != length)
        _exit(2);
}

static void Answer(CardStore &kartei, TestMeldungen &meldungen, int fach, bool richtig)
{
    if (!ErsteKarte(kartei.Karten(), fach))
        return;
    const int frageNr = kartei.Felder().FrageNr.Integer();
    Say("will", "antwort", frageNr, richtig ? 1 : 0);
    KarteVerschieben(kartei, meldungen, Gefragt(kartei), richtig);
    Say("hat", "antwort", frageNr, richtig ? 1 : 0);
}

static void Import(CardStore &kartei)
{
    Say("will", "import");
    {
        const Aenderung schritt(kartei, "Import");
        CardTransaction zug(kartei.Karten());
        int karten = 0;
        AddSimpleCards(kartei, [&](SimpleCard &karte) {
            karte = {"Frage", "Antwort", "Thema"};
            return karten++ < 3;
        });
        zug.Commit();
    }
    Say("hat", "import");
}

static void Turn(const char *step, const QString &there, Schritte &schritte, void (Schritte::*turn)())
{
    if (there.isEmpty())
        return;
    Say("will", step);
    (schritte.*turn)();
    Say("hat", step);
}

int main(int argc, char *argv[])
{
    if (argc != 3 && argc != 4)
        return 2;
    TestMeldungen meldungen;
    TestClock clock;
    clock.perSecond = 1;
    CardStore kartei;
    KarteiOeffner oeffner(kartei, meldungen, clock);
    const QFileInfo file(QString::fromLocal8Bit(argv[1]));
    kartei.KarteiPfad = file.path();
    QString name = file.fileName();
    oeffner.OpenCardFile(name);
    if (name.isEmpty())
        return 3;
    QRandomGenerator random(static_cast<quint32>(std::atoi(argv[2])));
    const bool turning = argc == 4;
    Schritte &schritte = kartei.schritte;
    Say("offen", "box");
    for (;;) {
        const int what = turning ? static_cast<int>(random.bounded(20)) : 0;
        if (what < 9)
            Answer(kartei, meldungen, static_cast<int>(random.bounded(6)), random.bounded(3) != 0);
        else if (what < 10)
            Import(kartei);
        else if (what < 16)
            Turn("zurueck", schritte.Zurueckzunehmen(), schritte, &Schritte::Zuruecknehmen);
        else
            Turn("wieder", schritte.Wiederholbar(), schritte, &Schritte::Wiederholen);
    }
}
