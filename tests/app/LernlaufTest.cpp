// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programmlauf.h"
#include "StoreTestSupport.h"

#include <QRandomGenerator>
#include <QTest>

#include <set>

// The whole program in its window, driven by the keyboard alone.
class LernlaufTest : public QObject
{
    Q_OBJECT

private:
    Bildschirm bildschirm_;

    static QString Kartei(const Programmlauf &lauf)
    {
        const QString pfad = lauf.Pfad(QStringLiteral("Lernen mit Ümlaut.pzb"));
        QList<CardRecord> karten;
        for (int i = 1; i <= 40; ++i) {
            CardRecord karte = MakeCard(i, i % 4, i);
            karte.Antwort_1 = karte.Antwort_1_Klartext = QStringLiteral("ja");
            karten << karte;
        }
        MakeCardFile(pfad, karten);
        return pfad;
    }

    void Oeffnen(Programmlauf &lauf, const QString &pfad)
    {
        lauf.Starten({pfad});
        QVERIFY(lauf.WartenAufSperre(pfad));
        QVERIFY(bildschirm_.WartenAuf(QStringLiteral("Lern-Box")));
    }

    void Antworten(const QString &fach, const QString &antwort)
    {
        bildschirm_.Taste(fach);
        QVERIFY(bildschirm_.WartenAuf(QStringLiteral("Merkkasten Abfrage")));
        bildschirm_.Tippen(antwort);
        bildschirm_.Taste(QStringLiteral("Return"));
        bildschirm_.Taste(QStringLiteral("Return"));
    }

private slots:

    void initTestCase() { QVERIFY(bildschirm_.Bereit()); }

    void CardsAreLearnedWithTheKeyboardAlone()
    {
        Programmlauf lauf(bildschirm_);
        const QString pfad = Kartei(lauf);
        Oeffnen(lauf, pfad);
        Antworten(QStringLiteral("n"), QStringLiteral("ja"));
        QVERIFY(bildschirm_.WartenAuf(QStringLiteral("Lern-Box")));
        Antworten(QStringLiteral("n"), QStringLiteral("nein"));
        QVERIFY(bildschirm_.WartenAuf(QStringLiteral("Lern-Box")));
        bildschirm_.Taste(QStringLiteral("alt+F4"));
        QCOMPARE(lauf.Ende(), 0);
        QList<QPair<int, int>> orte;
        for (const CardRecord &karte : ReadCards(pfad))
            if (karte.FrageNr == 4 || karte.FrageNr == 8)
                orte << qMakePair(static_cast<int>(karte.FrageNr), static_cast<int>(karte.FachNr));
        QCOMPARE(orte, (QList<QPair<int, int>>{{8, 1}, {4, 2}}));
    }

    void ASecondProgramIsToldThatTheFileIsLocked()
    {
        Programmlauf erster(bildschirm_);
        const QString pfad = Kartei(erster);
        Oeffnen(erster, pfad);
        Programmlauf zweiter(bildschirm_);
        zweiter.Starten({pfad});
        QVERIFY(bildschirm_.WartenAuf(QStringLiteral("Merkkasten")));
        QVERIFY(erster.Laeuft());
        QVERIFY(zweiter.Laeuft());
        zweiter.Toeten();
        erster.Toeten();
        QCOMPARE(ReadCards(pfad).size(), 40);
    }

    // Ten kills and more: every card has moved once per answer or not at all, and the file is sound.
    void AKillAtAnyMomentLosesNoAnswer()
    {
        const int kills = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 2 : 12;
        QRandomGenerator zufall(99);
        Programmlauf vorlage(bildschirm_);
        const QString pfad = Kartei(vorlage);
        for (int kill = 0; kill < kills; ++kill) {
            const QList<CardRecord> vorher = ReadCards(pfad);
            Programmlauf lauf(bildschirm_);
            Oeffnen(lauf, pfad);
            const int antworten = 1 + static_cast<int>(zufall.bounded(3));
            for (int i = 0; i < antworten; ++i) {
                Antworten(QStringLiteral("Return"), QStringLiteral("nein"));
                if (i + 1 < antworten)
                    QVERIFY(bildschirm_.WartenAuf(QStringLiteral("Lern-Box")));
            }
            // The last answer is being stored now, or not yet, or already.
            QTest::qWait(static_cast<int>(zufall.bounded(60)));
            lauf.Toeten();

            const QList<CardRecord> nachher = ReadCards(pfad);
            QCOMPARE(nachher.size(), vorher.size());
            std::set<double> bewegt;
            for (const CardRecord &karte : nachher)
                for (const CardRecord &alt : vorher)
                    if (alt.FrageNr == karte.FrageNr &&
                        (alt.FachNr != karte.FachNr || alt.FachLfdNr != karte.FachLfdNr)) {
                        QCOMPARE(karte.FachNr, 1.0); // wrong answers only
                        QCOMPARE(karte.Frage, alt.Frage);
                        bewegt.insert(karte.FrageNr);
                    }
            const int zahl = static_cast<int>(bewegt.size());
            QVERIFY2(
                zahl == antworten || zahl == antworten - 1,
                qPrintable(QStringLiteral("kill %1: %2 of %3 answers").arg(kill).arg(zahl).arg(antworten)));
            CardFile file(pfad);
            QCOMPARE(file.Database().execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
        }
    }
};

QTEST_GUILESS_MAIN(LernlaufTest)
#include "LernlaufTest.moc"
