// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Dauerlerner.h"

#include "TestPlaces.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <malloc.h>

namespace paukfix {

namespace {

// What the process holds: kilobytes of memory of its own, and open handles.
struct Verbrauch
{
    qint64 kilobyte = 0;
    qsizetype griffe = 0;

    // The least of some looks: backups and the history are written a little later, by threads of their own.
    static Verbrauch InRuhe()
    {
        Verbrauch wenigstens = Jetzt();
        for (int i = 0; i < 15; ++i) {
            QTest::qWait(100);
            const Verbrauch jetzt = Jetzt();
            wenigstens = {std::min(wenigstens.kilobyte, jetzt.kilobyte),
                          std::min(wenigstens.griffe, jetzt.griffe)};
        }
        return wenigstens;
    }

    static Verbrauch Jetzt()
    {
        malloc_trim(0); // what was given back counts no more
        Verbrauch verbrauch;
        QFile status("/proc/self/status");
        if (status.open(QIODevice::ReadOnly))
            for (const QByteArray &zeile : status.readAll().split('\n'))
                if (zeile.startsWith("RssAnon:"))
                    verbrauch.kilobyte = zeile.mid(8).simplified().split(' ').first().toLongLong();
        status.close();
        verbrauch.griffe = QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
        return verbrauch;
    }
};

// How long a run is: by the clock, or until so many verdicts were given.
struct Laenge
{
    qint64 sekunden = 15;
    qint64 urteile = std::numeric_limits<qint64>::max();

    static Laenge Gewuenscht()
    {
        Laenge laenge;
        if (const qint64 sekunden = qEnvironmentVariable("PAUKFIX_SOAK_SECONDS").toLongLong())
            laenge.sekunden = sekunden;
        if (const qint64 urteile = qEnvironmentVariable("PAUKFIX_SOAK_VERDICTS").toLongLong())
            laenge.urteile = urteile;
        return laenge;
    }
};

} // namespace

void Dauerlerner::Anfangen(const QString &pfad)
{
    pfad_ = pfad;
    const uint saat = qEnvironmentVariable("PAUKFIX_SOAK_SEED").toUInt();
    zufall_.seed(saat);
    qInfo("seed %u", saat);
    QList<CardRecord> karten;
    for (int i = 1; i <= 250; ++i)
        karten << MakeCard(i, i % 6, i);
    MakeCardFile(pfad, karten);
    modell_ = std::make_unique<Boxmodell>(pfad);
}

void Dauerlerner::Lernen(int runde)
{
    const Laenge laenge = Laenge::Gewuenscht();
    QElapsedTimer uhr;
    uhr.start();
    // The program has used everything once, and the engine's caches are full, after a sixth of the way.
    std::optional<Verbrauch> anfangs;
    Verbrauch zuletzt;
    qint64 berichtet = 0;
    const auto anteil = [&] {
        return std::max(double(uhr.elapsed()) / 1000 / double(laenge.sekunden),
                        double(getan_["verdicts"]) / double(laenge.urteile));
    };
    for (bool ende = false; !ende;) {
        for (int i = runde + Wuerfeln(runde); i > 0 && anteil() < 1 && !QTest::currentTestFailed(); --i)
            Schritt();
        ende = anteil() >= 1 && anfangs;
        Neuoeffnen();
        if (QTest::currentTestFailed())
            break;
        zuletzt = Verbrauch::InRuhe();
        if (!anfangs && anteil() > 1.0 / 6)
            anfangs = zuletzt;
        if (ende || uhr.elapsed() - berichtet > 60000) {
            berichtet = uhr.elapsed();
            QString zeile = QString("%1 s, %2 kB of its own, %3 handles")
                                .arg(berichtet / 1000)
                                .arg(zuletzt.kilobyte)
                                .arg(zuletzt.griffe);
            for (const auto &[was, wieoft] : getan_)
                zeile += QString(", %1 %2").arg(wieoft).arg(was);
            qInfo("%s", qPrintable(zeile));
        }
    }
    if (QTest::currentTestFailed())
        return;
    qInfo("after warming up: %lld kB, %lld handles; at the end: %lld kB, %lld handles", anfangs->kilobyte,
          qint64(anfangs->griffe), zuletzt.kilobyte, qint64(zuletzt.griffe));
    QVERIFY(getan_["verdicts"] > 0);
    QVERIFY(getan_["kills"] > 0);
    QCOMPARE(zuletzt.griffe, anfangs->griffe);
#ifndef __SANITIZE_ADDRESS__ // which keeps for a while what was given back
    QVERIFY(zuletzt.kilobyte - anfangs->kilobyte <= 5 * 1024);
#endif
}

Boxmodell::Texte Dauerlerner::NeueTexte()
{
    ++texte_;
    return {QString("Frage %1").arg(texte_), QString("Antwort %1").arg(texte_)};
}

int Dauerlerner::EineKarte()
{
    const auto &karten = modell_->Jetzt().karten;
    return std::next(karten.begin(), Wuerfeln(static_cast<int>(karten.size()) - 1))->first;
}

// Compartments that are about to be too full come first; none where all cards are done.
int Dauerlerner::NaechstesFach()
{
    for (const auto &[fach, voll] : {std::pair(1, 25), std::pair(2, 70), std::pair(3, 200)})
        if (modell_->Schlange(fach).size() > voll)
            return fach;
    QList<int> faecher;
    for (int fach = 0; fach < FachErledigt; ++fach)
        if (!modell_->Schlange(fach).isEmpty())
            faecher << fach;
    return faecher.isEmpty() ? FachErledigt : faecher[Wuerfeln(static_cast<int>(faecher.size()))];
}

void Dauerlerner::Schritt()
{
    const int was = Wuerfeln(1000);
    if (const int fach = NaechstesFach(); was < 880 && fach != FachErledigt)
        Urteilen(fach);
    else if (was < 880 || was >= 988)
        ErledigteZurueck();
    else if (was < 930)
        Zuruecknehmen();
    else if (was < 960)
        Bearbeiten();
    else if (was < 975)
        Ansehen();
    else if (was < 985)
        Einlesen();
    else
        AlleZurueck();
}

// Back and forth.
void Dauerlerner::Zuruecknehmen()
{
    for (int i = Wuerfeln(6); i >= 0; --i) {
        if (Selten(3) ? modell_->KannWieder() : !modell_->KannZurueck() && modell_->KannWieder()) {
            Wieder();
            modell_->Wieder();
            ++getan_["steps done again"];
        } else if (modell_->KannZurueck()) {
            Zurueck();
            modell_->Zurueck();
            ++getan_["steps taken back"];
        }
    }
}

void Dauerlerner::Neuoeffnen()
{
    Weglegen();
    Vergleichen();
    modell_->Vergessen();
    if (!QTest::currentTestFailed()) {
        Toeten();
        Vergleichen();
    }
    Holen();
    ++getan_["reopenings"];
}

void Dauerlerner::Vergleichen()
{
    QCOMPARE(FaultIn(pfad_), QString());
    const Boxmodell::Stand datei = Boxmodell::In(pfad_);
    const Boxmodell::Stand &soll = modell_->Jetzt();
    for (const auto &[nummer, texte] : soll.karten)
        if (!datei.karten.contains(nummer) || datei.karten.at(nummer) != texte)
            QFAIL(qPrintable(QString("card %1 is not what was stored").arg(nummer)));
    QCOMPARE(datei.karten.size(), soll.karten.size());
    for (std::size_t fach = 0; fach < soll.faecher.size(); ++fach)
        QCOMPARE(datei.faecher.at(fach), soll.faecher.at(fach));
    ++getan_["comparisons"];
}

// Another process uses the box, and is killed at a random moment. What it has said to be stored must be
// there; what it was about to store may.
void Dauerlerner::Toeten()
{
    modell_->Vergessen();
    QProcess anderer;
    anderer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    anderer.start(WorkerPath("learn_worker"), {pfad_, QString::number(Wuerfeln(1 << 30)), "wenden"});
    QByteArray gesagt;
    const int zeilen = 1 + Wuerfeln(12);
    while (gesagt.count('\n') < zeilen && anderer.waitForReadyRead(60000))
        gesagt += anderer.readAllStandardOutput();
    QVERIFY2(gesagt.startsWith("offen"), gesagt.constData());
    QTest::qSleep(Wuerfeln(3)); // somewhere within the next steps
    anderer.kill();
    QVERIFY(anderer.waitForFinished(60000));
    gesagt += anderer.readAllStandardOutput();
    QList<QByteArray> offen; // announced and not reported
    for (const QByteArray &zeile : gesagt.split('\n')) {
        const QList<QByteArray> worte = zeile.split(' ');
        if (worte[0] == "will")
            offen = worte;
        else if (worte[0] == "hat" && worte.size() >= 2) {
            Nachvollziehen(worte);
            offen.clear();
        }
    }
    if (offen.size() >= 2 && Boxmodell::In(pfad_) != modell_->Jetzt()) {
        Nachvollziehen(offen);
        ++getan_["kills behind the writing"];
    }
    modell_->Vergessen();
    ++getan_["kills"];
}

void Dauerlerner::Nachvollziehen(const QList<QByteArray> &worte)
{
    if (worte[1] == "zurueck")
        modell_->Zurueck();
    else if (worte[1] == "wieder")
        modell_->Wieder();
    else if (worte[1] == "import")
        modell_->Dazu(QList<Boxmodell::Texte>(3, {"Frage", "Antwort"}));
    else
        modell_->Antworten(worte.at(2).toInt(), worte.at(3).toInt() != 0);
}

} // namespace paukfix
