// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// Learns through the real store until it is killed: says on its standard output what it is about to store,
// and when that is stored. Arguments: card file, seed.
#include "BoxRechnung.h"
#include "KarteVerschieben.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <array>
#include <cstdio>
#include <unistd.h>

using namespace paukfix;

static void Say(const char *what, int frageNr, bool richtig)
{
    std::array<char, 64> line{};
    const int length = std::snprintf(line.data(), line.size(), "%s %d %d\n", what, frageNr, richtig ? 1 : 0);
    if (write(STDOUT_FILENO, line.data(), static_cast<size_t>(length)) != length)
        _exit(2);
}

int main(int argc, char *argv[])
{
    if (argc != 3)
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
    Say("offen", 0, false);
    for (;;) {
        const int fach = static_cast<int>(random.bounded(6));
        if (!ErsteKarte(kartei.Karten(), fach))
            continue;
        const bool richtig = random.bounded(3) != 0;
        const int frageNr = kartei.Felder().FrageNr.Integer();
        Say("will", frageNr, richtig);
        KarteVerschieben(kartei, meldungen, richtig);
        Say("hat", frageNr, richtig);
    }
}
