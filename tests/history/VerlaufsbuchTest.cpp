// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fortsetzung.h"
#include "ResourceLimit.h"
#include "SafeFile.h"
#include "TestProgram.h"
#include "Verlaufsbuehne.h"
#include "VollePlatte.h"

#include <QDir>
#include <SQLiteCpp/Database.h>

using namespace paukfix;

namespace {

void Schreiben(const QString &pfad, const QByteArray &inhalt)
{
    QFile datei(pfad);
    QVERIFY(datei.open(QIODevice::WriteOnly));
    datei.write(inhalt);
}

const QDate Tag(2026, 11, 21); // of the test clock

} // namespace

// What is kept of real boxes that are really learned.
class VerlaufsbuchTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void init() { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); }

    void AnswersAndCardsOfTheDayAreKept()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Antworten(true);
        b.Antworten(false);
        const std::vector<Tagesstand> erwartet{{Tag, 2, 1, {17, 1, 2}}};
        QCOMPARE(b.Tage(), erwartet);
        b.Beenden();
        b.Starten();
        b.Oeffnen("a.pzb");
        QCOMPARE(b.Tage(), erwartet);
        b.Antworten(true);
        QCOMPARE(b.Tage()[0].richtig, 3);
    }

    // The learner has done nothing but answer, and is answered at once.
    void ItIsWrittenAtRest()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        QVERIFY(!QFile::exists(b.Verlaufspfad()));
        QTRY_VERIFY(QFile::exists(b.Verlaufspfad()));
        VerlaufDatei andere(b.Verlaufspfad());
        QTRY_COMPARE(andere.Lesen({b.Pfad("a.pzb"), {}, {}}).tage.size(), 1U);
        QCOMPARE(andere.Lesen({b.Pfad("a.pzb"), {}, {}}).tage[0].richtig, 1);
    }

    void TheCardFileIsLeftAlone()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        const QByteArray vorher = ReadFile(b.Pfad("a.pzb"), 1 << 20);
        b.Oeffnen("a.pzb");
        b.Tage();
        b.Beenden();
        QCOMPARE(ReadFile(b.Pfad("a.pzb"), 1 << 20), vorher);
        QCOMPARE(QDir(b.ordner.path()).entryList(QDir::Files), QStringList{"a.pzb"});
    }

    void AtMidnightANewDayBegins()
    {
        Verlaufsbuehne b;
        b.clock.jetzt = {{2026, 11, 21}, {23, 59, 50}};
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.clock.jetzt = b.clock.jetzt.addSecs(20);
        b.Antworten(true);
        b.Antworten(false);
        QCOMPARE(b.Tage(),
                 (std::vector<Tagesstand>{{Tag, 1, 0, {19, 0, 1}}, {Tag.addDays(1), 1, 1, {17, 1, 2}}}));
    }

    void AnAnswerThatIsTakenBackIsGone()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Antworten(false);
        QCOMPARE(b.Tage()[0].falsch, 1);
        b.Zuruecknehmen();
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 1, 0, {19, 0, 1}}}));
        b.kartei.schritte.Wiederholen();
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 1, 1, {18, 1, 1}}}));
    }

    // A tool opens the file again; what was learned before can still be taken back.
    void AnAnswerFromBeforeTheFileWasOpenedAgainIsGoneToo()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Antworten(true);
        {
            const SchritteBewahren bewahren(b.kartei);
            b.Oeffnen("a.pzb");
        }
        b.Antworten(true);
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 3, 0, {17, 0, 3}}}));
        b.Zuruecknehmen();
        b.Zuruecknehmen();
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 1, 0, {19, 0, 1}}}));
        b.kartei.schritte.Wiederholen();
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 2, 0, {18, 0, 2}}}));
    }

    void EachBoxHasItsOwnDays()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Anlegen("b.pzb", 20, "mot");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Oeffnen("b.pzb");
        b.Antworten(false);
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 0, 1, {19, 1}}}));
        b.Oeffnen("a.pzb");
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 1, 0, {19, 0, 1}}}));
    }

    void WithoutABoxThereIsNothing()
    {
        Verlaufsbuehne b;
        b.buch->Nachsehen();
        QVERIFY(b.Tage().empty());
        b.Beenden();
        QVERIFY(!QFile::exists(b.Verlaufspfad()));
    }

    void AMovedBoxIsKnownAgain()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        b.Beenden();
        QVERIFY(QFile::rename(b.Pfad("a.pzb"), b.Pfad("neu.pzb")));
        b.Starten();
        b.Oeffnen("neu.pzb");
        b.Antworten(true);
        const Verlaufsbuch::Auskunft auskunft = b.buch->Lesen();
        QCOMPARE(auskunft.stand.tage, (std::vector<Tagesstand>{{Tag, 2, 0, {18, 0, 2}}}));
        QCOMPARE(auskunft.stand.frueher, "");
    }

    void SavedUnderAnotherNameABoxTakesItsHistoryAlong_data()
    {
        QTest::addColumn<bool>("liegtNoch");
        QTest::newRow("the former file is there still") << true;
        QTest::newRow("the former file is gone") << false;
    }

    // What the session has counted by then is not counted again.
    void SavedUnderAnotherNameABoxTakesItsHistoryAlong()
    {
        QFETCH(bool, liegtNoch);
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Antworten(false);
        b.Tage();
        b.Antworten(true); // not written yet
        if (!liegtNoch)
            QVERIFY(QFile::rename(b.Pfad("a.pzb"), b.Pfad("weg.pzb")));
        Umziehen(b.kartei, b.Pfad("neu.pzb"));
        b.Antworten(true);
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 3, 1, {16, 1, 3}}}));
        for (int i = 0; i < 3; ++i)
            b.Zuruecknehmen();
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 1, 0, {19, 0, 1}}}));
        b.kartei.schritte.Wiederholen();
        b.Beenden();
        b.Starten();
        b.Oeffnen("neu.pzb");
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 1, 1, {18, 1, 1}}}));
        QCOMPARE(b.buch->Lesen().stand.frueher, "");
        // The former file is a copy by now, whose learner is asked.
        b.Oeffnen(liegtNoch ? "a.pzb" : "weg.pzb");
        QCOMPARE(b.buch->Lesen().stand.frueher, b.Pfad("neu.pzb"));
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 0, 0, {17, 1, 2}}}));
    }

    void ACopyAsksWhoseHistoryItHas_data()
    {
        QTest::addColumn<bool>("dieselbe");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void ACopyAsksWhoseHistoryItHas()
    {
        QFETCH(bool, dieselbe);
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        b.kartei.CloseCardFile();
        QVERIFY(QFile::copy(b.Pfad("a.pzb"), b.Pfad("kopie.pzb")));
        b.clock.jetzt = b.clock.jetzt.addDays(1);
        b.Oeffnen("kopie.pzb");
        b.Antworten(false);
        QCOMPARE(b.buch->Lesen().stand.frueher, b.Pfad("a.pzb"));
        b.buch->Beantworten(dieselbe);
        const Verlaufsbuch::Auskunft danach = b.buch->Lesen();
        QCOMPARE(danach.stand.frueher, "");
        QCOMPARE(danach.stand.tage.size(), dieselbe ? 2U : 1U);
        QCOMPARE(danach.stand.tage.back(), (Tagesstand{Tag.addDays(1), 0, 1, {18, 1, 1}}));
        // Where the answer was no, each has its own from now on.
        b.Oeffnen("a.pzb");
        QCOMPARE(b.buch->Lesen().stand.tage.front().tag, dieselbe ? Tag.addDays(1) : Tag);
    }

    void AnotherBoxAtTheSamePlaceHasAHistoryOfItsOwn()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        b.kartei.CloseCardFile();
        QVERIFY(QFile::rename(b.Pfad("a.pzb"), b.Pfad("alt.pzb")));
        b.Anlegen("a.pzb", 20, "mot");
        b.Oeffnen("a.pzb");
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 0, 0, {20}}}));
        b.Oeffnen("alt.pzb");
        QCOMPARE(b.Tage()[0].richtig, 1);
    }

    // Whatever happens to its cards while it is open.
    void WithinASessionABoxStaysItself()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        for (int nummer = 1; nummer <= 20; ++nummer) {
            b.kartei.Karten().MoveFirst();
            b.kartei.Karten().Edit();
            b.kartei.Felder().Frage_Klartext.Set("anders");
            b.kartei.Felder().FachNr.Set(1);
            b.kartei.Felder().FachLfdNr.Set(100 + nummer);
            b.kartei.Karten().Update();
        }
        b.kartei.FachInfo.Anhaengen(3); // the cards are looked at again
        b.buch->Nachsehen();
        b.Antworten(true);
        QCOMPARE(b.Tage()[0].richtig, 2);
    }

    void TwoProgramsCountTogether()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Anlegen("b.pzb", 20, "mot");
        Verlaufsbuehne andere;
        andere.buch = std::make_unique<Verlaufsbuch>(andere.kartei, andere.clock, b.Verlaufspfad());
        andere.kartei.KarteiPfad = b.ordner.path();
        b.Oeffnen("a.pzb");
        andere.Oeffnen("b.pzb");
        for (int i = 0; i < 5; ++i) {
            b.Antworten(true);
            andere.Antworten(false);
            QCOMPARE(b.Tage()[0].richtig, i + 1);
            QCOMPARE(andere.Tage()[0].falsch, i + 1);
        }
    }

    void WhileAnotherProgramHoldsItNothingIsLost()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        {
            SQLite::Database halter(b.Verlaufspfad().toStdString(), SQLite::OPEN_READWRITE);
            halter.exec("BEGIN EXCLUSIVE");
            b.Antworten(true);
            const Verlaufsbuch::Auskunft auskunft = b.buch->Lesen();
            QVERIFY2(auskunft.fehler.contains("gesperrt"), qPrintable(auskunft.fehler));
            QCOMPARE(auskunft.stand.tage.back().richtig, 1); // of the file nothing can be read
        }
        b.Antworten(false);
        const Verlaufsbuch::Auskunft danach = b.buch->Lesen();
        QCOMPARE(danach.fehler, "");
        QCOMPARE(danach.stand.tage, (std::vector<Tagesstand>{{Tag, 2, 1, {17, 1, 2}}}));
    }

    void OnAFullDiskLearningGoesOnAndNothingIsLost()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        {
            const FullDisk voll(1);
            const Verlaufsbuch::Auskunft auskunft = b.buch->Lesen();
            QVERIFY2(IsGermanMessage(auskunft.fehler), qPrintable(auskunft.fehler));
            QCOMPARE(auskunft.stand.tage, (std::vector<Tagesstand>{{Tag, 1, 0, {19, 0, 1}}}));
        }
        b.Antworten(true);
        QCOMPARE(b.buch->Lesen().fehler, "");
        QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 2, 0, {18, 0, 2}}}));
    }

    // Each single call of the disk fails once: the old state is there, or the new one.
    void ADiskThatFailsOnceCostsNothing()
    {
        for (int nummer = 1;; ++nummer) {
            Verlaufsbuehne b;
            b.Anlegen("a.pzb");
            b.Oeffnen("a.pzb");
            b.Antworten(true);
            b.Tage();
            b.Antworten(true);
            VollePlatte::Scheitern(nummer);
            b.buch->Lesen();
            const bool gescheitert = VollePlatte::Gescheitert().has_value();
            VollePlatte::Scheitern(0);
            b.Antworten(true);
            QCOMPARE(b.buch->Lesen().fehler, "");
            QCOMPARE(b.Tage(), (std::vector<Tagesstand>{{Tag, 3, 0, {17, 0, 3}}}));
            if (!gescheitert)
                break;
        }
    }

    void WithoutItsDirectoryLearningGoesOn()
    {
        Verlaufsbuehne b;
        b.buch = std::make_unique<Verlaufsbuch>(b.kartei, b.clock, b.Pfad("nirgends/verlauf.sqlite"));
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        const Verlaufsbuch::Auskunft auskunft = b.buch->Lesen();
        QVERIFY2(IsGermanMessage(auskunft.fehler), qPrintable(auskunft.fehler));
        QCOMPARE(auskunft.stand.tage[0].richtig, 1);
    }

    void ABrokenFileIsSetAsideAndSaidOnce_data()
    {
        QTest::addColumn<QByteArray>("inhalt");
        QTest::newRow("no database") << QByteArray(5000, 'x');
        QTest::newRow("cut off") << QByteArray();
        QTest::newRow("another program's") << QByteArray("anders");
    }

    void ABrokenFileIsSetAsideAndSaidOnce()
    {
        QFETCH(QByteArray, inhalt);
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        b.Beenden();
        if (inhalt.isEmpty()) {
            QVERIFY(QFile::resize(b.Verlaufspfad(), 5000));
        } else if (inhalt == "anders") {
            QVERIFY(QFile::remove(b.Verlaufspfad()));
            SQLite::Database(b.Verlaufspfad().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
                .exec("CREATE TABLE box(x)");
        } else {
            Schreiben(b.Verlaufspfad(), inhalt);
        }
        const QByteArray kaputt = ReadFile(b.Verlaufspfad(), 1 << 20);
        b.Starten();
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        Verlaufsbuch::Auskunft auskunft = b.buch->Lesen();
        QCOMPARE(auskunft.stand.beiseite, "verlauf-beschädigt.sqlite");
        QCOMPARE(auskunft.stand.tage, (std::vector<Tagesstand>{{Tag, 1, 0, {18, 0, 2}}}));
        QCOMPARE(ReadFile(b.Pfad("daten/verlauf-beschädigt.sqlite"), 1 << 20), kaputt);
        // Whoever was not told yet is told later, and only once.
        b.Beenden();
        b.Starten();
        b.Oeffnen("a.pzb");
        QCOMPARE(b.buch->Lesen().stand.beiseite, "verlauf-beschädigt.sqlite");
        b.buch->BeiseiteGesagt();
        QCOMPARE(b.buch->Lesen().stand.beiseite, "");
    }

    void ASecondBrokenFileDoesNotTakeTheFirstOnesName()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        for (const char *inhalt : {"eins eins eins", "zwei zwei zwei"}) {
            b.Beenden();
            Schreiben(b.Verlaufspfad(), inhalt);
            b.Starten();
            b.Oeffnen("a.pzb");
            b.Tage();
        }
        QCOMPARE(ReadFile(b.Pfad("daten/verlauf-beschädigt.sqlite"), 99), "eins eins eins");
        QCOMPARE(ReadFile(b.Pfad("daten/verlauf-beschädigt-2.sqlite"), 99), "zwei zwei zwei");
    }

    void AFileOfANewerVersionIsLeftAlone()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Tage();
        b.Beenden();
        SQLite::Database(b.Verlaufspfad().toStdString(), SQLite::OPEN_READWRITE)
            .exec("PRAGMA user_version=9");
        const QByteArray vorher = ReadFile(b.Verlaufspfad(), 1 << 20);
        b.Starten();
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        const Verlaufsbuch::Auskunft auskunft = b.buch->Lesen();
        QVERIFY2(auskunft.fehler.contains("neuere Fassung"), qPrintable(auskunft.fehler));
        QCOMPARE(auskunft.stand.tage[0].richtig, 1);
        QCOMPARE(ReadFile(b.Verlaufspfad(), 1 << 20), vorher);
    }

    void WhatIsNoFileIsLeftAlone()
    {
        Verlaufsbuehne b;
        QVERIFY(QDir().mkpath(b.Verlaufspfad()));
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        QVERIFY(b.buch->Lesen().fehler.contains("keine Datei"));
        QVERIFY(QFileInfo(b.Verlaufspfad()).isDir());
    }
};

PAUKFIX_CORE_TEST(VerlaufsbuchTest)
#include "VerlaufsbuchTest.moc"
