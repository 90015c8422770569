// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AnderesProgramm.h"
#include "LBoxBuehne.h"
#include "TestPlaces.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QLabel>
#include <QProcess>
#include <QToolButton>

using namespace paukfix;

namespace {

constexpr qsizetype NochEinmal = 0, Sichern = 1, Verwerfen = 2;

// What the learner is asked about an answer that could not be stored, for `grund`.
QString Frage(const QString &grund)
{
    return "Die Antwort konnte nicht gespeichert werden: " + grund +
           "\n\nDie Antwort ist noch nicht verloren. Was soll geschehen?";
}

} // namespace

// An answer that cannot be stored is kept in the box until its learner has decided.
class LBoxHaltenTest : public QObject
{
    Q_OBJECT

private:
    // The next query is answered right; before its verdict is stored, this happens to disk or file.
    static void AntwortNach(LBoxBuehne &b, const std::function<void()> &geschieht)
    {
        b.NaechsteAbfrage([&b, geschieht](QWidget *) {
            b.Tippe("Antwort " + b.gefragt.last());
            b.Taste(Qt::Key_Return);
            geschieht();
            b.Taste(Qt::Key_Return);
        });
        b.Taste(Qt::Key_N);
    }

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void cleanup() { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); }

    void ItIsTriedAgainUntilTheDiskHasRoom()
    {
        LBoxBuehne b;
        b.OeffnenMit({2, 0, 1});
        b.meldungen.wahlen = {NochEinmal, NochEinmal};
        QStringList box;
        b.meldungen.beiFrage = [&] {
            box << b.Finde("Image0(0)")->accessibleName(); // shows what is stored
            if (b.meldungen.gezeigt.size() == 2)
                VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        };
        AntwortNach(b, [] { VollePlatte::Setzen(VollePlatte::Zustand::Voll); });
        const QString grund =
            "Der Datenträger ist voll; in „" + b.Pfad("a.pzb") + "“ wurde nichts gespeichert.";
        QCOMPARE(b.meldungen.Texte(), (QStringList{Frage(grund), Frage(grund)}));
        QCOMPARE(b.meldungen.knopfreihen[0],
                 (QStringList{"&noch einmal", "&unter anderem Namen sichern", "&verwerfen"}));
        QCOMPARE(box, QStringList({"Fach Neu: 2 von 700 Karten", "Fach Neu: 2 von 700 Karten"}));
        QCOMPARE(b.Anzahl(0), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Finde<QLabel>("LGeschehen")->text(), QString("Richtig: Karte 1 ging von Neu nach Fach 2"));
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Anzahl(0), 2);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 0);
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {3, 1}, {}, {}, {}, {}}));
    }

    void ItIsStoredWhenTheFileIsBack()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.wahlen = {NochEinmal, NochEinmal};
        b.meldungen.beiFrage = [&] {
            if (b.meldungen.gezeigt.size() == 2)
                QVERIFY(QFile::rename(b.Pfad("weg.pzb"), b.Pfad("a.pzb")));
        };
        AntwortNach(b, [&] { QVERIFY(QFile::rename(b.Pfad("a.pzb"), b.Pfad("weg.pzb"))); });
        QCOMPARE(b.meldungen.Texte(),
                 (QStringList{Frage("Die Datei „" + b.Pfad("a.pzb") +
                                    "“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war."),
                              Frage("Die Datei „" + b.Pfad("a.pzb") + "“ wurde nicht gefunden.")}));
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {1}, {}, {}, {}, {}}));
    }

    // A drive was unplugged and plugged in again: the same cards in another file.
    void ItIsStoredInACopyThatTookThePlace()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.wahlen = {NochEinmal};
        AntwortNach(b, [&] {
            QVERIFY(QFile::copy(b.Pfad("a.pzb"), b.Pfad("neu")));
            QVERIFY(QFile::remove(b.Pfad("a.pzb")) && QFile::rename(b.Pfad("neu"), b.Pfad("a.pzb")));
        });
        QCOMPARE(b.meldungen.gezeigt.size(), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {1}, {}, {}, {}, {}}));
    }

    void AnotherBoxAtThePlaceIsNotTouched()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.wahlen = {NochEinmal, Sichern};
        b.dialoge.pfade = {b.Pfad("neu.pzb")};
        const QList<CardRecord> andere{MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)};
        AntwortNach(b, [&] {
            QVERIFY(QFile::remove(b.Pfad("a.pzb")));
            MakeCardFile(b.Pfad("a.pzb"), andere);
        });
        QCOMPARE(b.meldungen.Texte().last(),
                 Frage("Die Datei „" + b.Pfad("a.pzb") + "“ wurde durch eine andere Kartei ersetzt."));
        QCOMPARE(b.Gespeichert()[0].size(), 3);
        QCOMPARE(ReadCards(b.Pfad("a.pzb")), andere);
        QCOMPARE(ReadCards(b.Pfad("neu.pzb")).last().FachNr, 2.0);
    }

    void WhileAnotherProgramHasTheFileItIsKept()
    {
        LBoxBuehne b;
        b.OeffnenMit({3});
        QProcess anderes;
        b.meldungen.wahlen = {NochEinmal, NochEinmal};
        b.meldungen.beiFrage = [&] {
            if (b.meldungen.gezeigt.size() < 2)
                return;
            anderes.closeWriteChannel();
            QVERIFY(anderes.waitForFinished());
        };
        AntwortNach(b, [&] {
            LoseLocks(b.Pfad("a.pzb"));
            anderes.start(WorkerPath("lock_worker"), {b.Pfad("a.pzb")});
            QVERIFY(anderes.waitForReadyRead());
            QCOMPARE(anderes.readAll().trimmed(), QByteArray("0"));
        });
        const QString grund =
            "Die Datei „" + b.Pfad("a.pzb") + "“ ist gesperrt: ein anderes Programm hat sie geöffnet.";
        QCOMPARE(b.meldungen.Texte(), (QStringList{Frage(grund), Frage(grund)}));
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2, 3}, {}, {1}, {}, {}, {}, {}}));
    }

    void WhatAnotherProgramHasChangedIsSeenAfterwards()
    {
        LBoxBuehne b;
        b.OeffnenMit({3});
        b.meldungen.wahlen = {NochEinmal};
        AntwortNach(b, [&] {
            LoseLocks(b.Pfad("a.pzb"));
            QProcess anderes;
            anderes.start(WorkerPath("lock_worker"),
                          {b.Pfad("a.pzb"), "UPDATE Lernkarten SET FachNr=4 WHERE FrageNr=3"});
            anderes.closeWriteChannel();
            QVERIFY(anderes.waitForFinished());
            QCOMPARE(anderes.readAll().trimmed(), QByteArray("0"));
        });
        QCOMPARE(b.meldungen.gezeigt.size(), 1);
        QCOMPARE(b.Anzahl(0), 1);
        QCOMPARE(b.Anzahl(2), 1);
        QCOMPARE(b.Anzahl(4), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {1}, {}, {3}, {}, {}}));
    }

    void SavedUnderAnotherNameTheBoxGoesOnThere()
    {
        LBoxBuehne b;
        b.OeffnenMit({3});
        b.Lernen(Qt::Key_N, true);
        const QString ziel = b.programm.filePath("anderswo.pzb");
        b.meldungen.wahlen = {Sichern, Sichern, Sichern, Sichern};
        b.dialoge.pfade = {QString(), b.Pfad("a.txt"), b.Pfad("a.pzb"), ziel};
        AntwortNach(b, [&] { VollePlatte::Setzen(VollePlatte::Zustand::Voll, b.Pfad("a.pzb")); });
        const QString voll =
            Frage("Der Datenträger ist voll; in „" + b.Pfad("a.pzb") + "“ wurde nichts gespeichert.");
        QCOMPARE(b.meldungen.Texte(),
                 (QStringList{voll, voll, "Bitte nur .pzb Dateien", voll,
                              "Die Kartei konnte nicht unter anderem Namen gesichert werden: Die Datei „" +
                                  b.Pfad("a.pzb") +
                                  "“ ist die Kartei selbst.\n\nDie Antwort ist noch nicht verloren. Was soll "
                                  "geschehen?"}));
        QCOMPARE(b.dialoge.zumSpeichern[0].titel, QString("Kartei unter anderem Namen sichern"));
        QCOMPARE(b.dialoge.zumSpeichern[0].vorgabe, QString("a gesichert.pzb"));
        // The learner sees where he is, and goes on.
        QCOMPARE(b.Finde<QToolButton>("LKartei")->text(), QString("anderswo.pzb"));
        QCOMPARE(b.meldungen.Titel(), QString("Merkkasten (anderswo.pzb)"));
        QCOMPARE(b.konfig.MDat[0], ziel);
        QCOMPARE(b.Arbeitsverzeichnis(), b.programm.path());
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 2);
        b.Lernen(Qt::Key_N, false);
        QCOMPARE(b.gefragt, (QStringList{"1", "2", "3"}));
        // What was answered before the move can be taken back in the new file, too.
        for (int i = 0; i < 3; ++i)
            b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Anzahl(0), 3);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler() + b.kartei.sitzung.FalschZaehler(), 0);
        for (int i = 0; i < 3; ++i)
            b.Taste(Qt::Key_Y, Qt::ControlModifier);
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2, 3}, {}, {1}, {}, {}, {}, {}}));
        QCOMPARE(FaultIn(ziel), QString());
        QList<int> faecher;
        for (const CardRecord &karte : ReadCards(ziel))
            faecher << int(karte.FrageNr) * 10 + int(karte.FachNr);
        QCOMPARE(faecher, (QList<int>{31, 12, 22}));
    }

    void BehindTheMoveTheNewFileIsTriedAgain()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.wahlen = {Sichern, NochEinmal, NochEinmal};
        b.dialoge.pfade = {b.Pfad("neu.pzb")};
        b.meldungen.beiFrage = [&] {
            switch (b.meldungen.gezeigt.size()) {
            case 1:
                VollePlatte::Setzen(VollePlatte::Zustand::Voll, b.Pfad("neu.pzb"));
                break;
            case 2:
                VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
                QVERIFY(QFile::rename(b.Pfad("neu.pzb"), b.Pfad("weg.pzb")));
                break;
            default:
                QVERIFY(QFile::rename(b.Pfad("weg.pzb"), b.Pfad("neu.pzb")));
            }
        };
        AntwortNach(b, [&] { VollePlatte::Setzen(VollePlatte::Zustand::Voll, b.Pfad("a.pzb")); });
        QCOMPARE(b.meldungen.Texte().mid(1),
                 (QStringList{Frage("Der Datenträger ist voll; in „" + b.Pfad("neu.pzb") +
                                    "“ wurde nichts gespeichert."),
                              Frage("Die Datei „" + b.Pfad("neu.pzb") + "“ wurde nicht gefunden.")}));
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{1, 2}, {}, {}, {}, {}, {}, {}}));
        QCOMPARE(ReadCards(b.Pfad("neu.pzb")).last().FachNr, 2.0);
    }

    void ABoxThatCannotBeReadEitherSaysSoAndKeepsTheAnswer()
    {
        LBoxBuehne b;
        b.OeffnenMit({300});
        b.meldungen.wahlen = {Sichern, NochEinmal};
        b.dialoge.pfade = {b.Pfad("neu.pzb")};
        b.meldungen.beiFrage = [&] {
            if (b.meldungen.gezeigt.size() == 2)
                VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        };
        AntwortNach(b, [&] {
            VollePlatte::Setzen(VollePlatte::Zustand::Kaputt, b.Pfad("a.pzb"));
            b.kartei.Karten().Beside(
                [](SQLite::Database &database) { sqlite3_db_release_memory(database.getHandle()); });
        });
        QCOMPARE(b.meldungen.Texte().last(),
                 "Die Kartei konnte nicht unter anderem Namen gesichert werden: Ein-/Ausgabefehler bei der "
                 "Datei „" +
                     b.Pfad("a.pzb") + "“.\n\nDie Antwort ist noch nicht verloren. Was soll geschehen?");
        QVERIFY(!QFile::exists(b.Pfad("neu.pzb")));
        QCOMPARE(b.Anzahl(0), 299);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Gespeichert()[2], QList<int>{1});
    }

    void ClosingTheQuestionIsNoDiscarding()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.meldungen.beiFrage = [&] {
            if (b.meldungen.gezeigt.size() == 3)
                VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        };
        AntwortNach(b, [] { VollePlatte::Setzen(VollePlatte::Zustand::Voll); });
        QCOMPARE(b.meldungen.gezeigt.size(), 3);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {}, {1}, {}, {}, {}, {}}));
    }

    void TheAutomaticModeGoesOnBehindAKeptAnswer()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 3}); // the fullest from the first to the last
        b.clock.perSecond = 1;   // every look at the clock sees another second
        b.meldungen.wahlen = {NochEinmal};
        // Only now: while the first query is open, the second scene would play in it.
        b.meldungen.beiFrage = [&b] {
            VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
            // Its second card is its last: from then on its clock stands.
            b.NaechsteAbfrage([&b](QWidget *) {
                b.clock.perSecond = 1'000'000;
                b.Tippe("Antwort 2");
                b.Taste(Qt::Key_Return);
                b.Taste(Qt::Key_Return);
            });
        };
        b.NaechsteAbfrage([&b](QWidget *) {
            b.Tippe("Antwort 1");
            b.Taste(Qt::Key_Return);
            VollePlatte::Setzen(VollePlatte::Zustand::Voll);
            b.Taste(Qt::Key_Return);
        });
        b.Menue("MAutoschalter")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(b.Anzahl(3), 2, 60'000);
        QVERIFY(b.Menue("MAutoschalter")->isChecked());
        b.Menue("MAutoschalter")->trigger();
        QCOMPARE(b.gefragt, (QStringList{"1", "2"}));
        QCOMPARE(b.meldungen.knopfreihen.size(), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 2);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {}, {3}, {1, 2}, {}, {}, {}}));
    }

    void WhatIsDiscardedIsNotCounted()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.wahlen = {Verwerfen};
        AntwortNach(b, [] { VollePlatte::Setzen(VollePlatte::Zustand::Voll); });
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 0);
        QCOMPARE(b.kartei.schritte.Zurueckzunehmen(), QString());
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(b.kartei.schritte.Zurueckzunehmen(), QString("Antwort auf Frage 1"));
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {1}, {}, {}, {}, {}}));
    }
};

PAUKFIX_TEST(LBoxHaltenTest)
#include "LBoxHaltenTest.moc"
