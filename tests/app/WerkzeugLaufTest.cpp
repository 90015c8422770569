// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QFile>
#include <QFileInfo>

using namespace paukfix;

// The built program in a real window: the file tools from its menu, by keyboard alone.
class WerkzeugLaufTest : public Laufbuehne
{
    Q_OBJECT

private:
    void Oeffnen(Lauf &lauf) const
    {
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
    }

    // Opens a menu of the main window, and in it an entry, both counted from 1.
    void Waehlen(int menue, int eintrag) const
    {
        QVERIFY(anzeige_->Taste("Lern-Box", "Alt_L"));
        for (int i = 1; i < menue; ++i)
            QVERIFY(anzeige_->Taste("Lern-Box", "Right"));
        for (int i = 0; i < eintrag; ++i)
            QVERIFY(anzeige_->Taste("Lern-Box", "Down"));
        QVERIFY(anzeige_->Taste("Lern-Box", "Return"));
    }

    void Tippen(const QString &titel, const QString &text) const
    {
        for (const QChar zeichen : text)
            QVERIFY(anzeige_->Taste(titel, zeichen == '.' ? QString("period") : QString(zeichen)));
    }

private slots:

    void init() { Aufbauen(Vorspann::Ja); }

    void ImportedLinesAreCardsOfTheFile()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        QFile text(Pfad("neu.txt"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("der Hund\tthe dog\tTiere\r\ndie K\xE4rntnerin\tthe Carinthian\r\n");
        text.close();

        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Oeffnen(lauf);
        Waehlen(5, 2);
        Tippen("ASCII-Import", "neu.txt");
        QVERIFY(anzeige_->Taste("ASCII-Import", "Return"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // it tells the success
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());

        const QList<CardRecord> karten = ReadCards(Pfad("a.pzb"));
        QCOMPARE(karten.size(), 3);
        QCOMPARE(karten[0], MakeCard(1, 0, 1));
        QCOMPARE(karten[1].Frage, "der Hund");
        QCOMPARE(karten[1].Antwort_1_Klartext, "the dog");
        QCOMPARE(karten[1].Picture_9_Name, "Tiere");
        QCOMPARE(karten[2].Frage_Klartext, "die Kärntnerin");
        QCOMPARE(karten[2].FrageNr, 3.0);
    }

    // Files of other systems write an umlaut as a letter and its dots.
    void ADecomposedUmlautIsAnsweredAsItIsTyped()
    {
        MakeCardFile(Pfad("a.pzb"), {});
        QFile text(Pfad("neu.txt"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write(QString("bear\tBa\u0308r\r\n").toUtf8());
        text.close();
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Oeffnen(lauf);
        Waehlen(5, 2);
        Tippen("ASCII-Import", "neu.txt");
        QVERIFY(anzeige_->Taste("ASCII-Import", "Return"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        anzeige_->Tastatur("de");
        for (const char *taste : {"B", "adiaeresis", "r", "Return"})
            QVERIFY(anzeige_->Taste("Merkkasten Abfrage", taste));
        anzeige_->Tastatur("us");
        QVERIFY(anzeige_->Schliessen("Merkkasten Abfrage", "Return"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        const CardRecord karte = ReadCards(Pfad("a.pzb"))[0];
        QCOMPARE(karte.Antwort_1_Klartext, "Bär");
        QCOMPARE(karte.FachNr, 2.0); // right
    }

    void KeysDuringTheWorkAreLost()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        QList<CardRecord> karten;
        for (int i = 1; i <= 2000; ++i)
            karten << MakeCard(i, 0, i);
        MakeCardFile(Pfad("b.pzb"), karten);
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Oeffnen(lauf);
        Waehlen(5, 4);
        Tippen("Kartei anhängen", "b.pzb");
        const qint64 vorher = QFileInfo(Pfad("a.pzb")).size();
        QVERIFY(anzeige_->Tasten("Kartei anhängen", {"Return", "Return", "space"}));
        // Escape would end the work, until it is stored.
        QVERIFY(QTest::qWaitFor([&] { return QFileInfo(Pfad("a.pzb")).size() > vorher; }, 30000));
        QVERIFY(QTest::qWaitFor(
            [&] {
                return anzeige_->Taste("Kartei anhängen", "Escape") &&
                       QTest::qWaitFor([&] { return !anzeige_->Offen("Kartei anhängen"); }, 500);
            },
            30000));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(ReadCards(Pfad("a.pzb")).size(), qsizetype(2001));
    }

    void TheOverviewOpensAndGoesBack()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 3, 1)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Oeffnen(lauf);
        Waehlen(4, 1);
        QVERIFY(anzeige_->Taste("Lernkarten", "Down"));
        QVERIFY(anzeige_->Taste("Lernkarten", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    // Sent to somebody else, who opens it by its name, and again in the file dialog.
    void APackedBoxComesOutWithItsPicture()
    {
        CardRecord karte = MakeCard(1, 0, 1);
        karte.Picture_1_Name = "bild.jpg";
        MakeCardFile(Pfad("a.pzb"), {karte});
        QFile bild(Pfad("bild.jpg"));
        QVERIFY(bild.open(QIODevice::WriteOnly));
        bild.write("Bild");
        bild.close();
        QTemporaryDir dort;
        {
            Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
            Oeffnen(lauf);
            Waehlen(5, 8);
            QVERIFY(anzeige_->Taste("Kartei packen", "Return"));
            QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
            QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
            QVERIFY(lauf.IstZuEnde());
        }
        QVERIFY(QFile::rename(Pfad("a.pzbz"), dort.filePath("reise.pzbz")));
        {
            Lauf lauf(*anzeige_, Pfad("paukfix"), {dort.filePath("reise.pzbz")});
            QVERIFY(lauf.Starten());
            QVERIFY(QTest::qWaitFor([&] { return lauf.HatGeoeffnet(dort.filePath("reise/a.pzb")); }, 10000));
            QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
            QVERIFY(lauf.IstZuEnde());
        }
        QFile da(dort.filePath("reise/bild.jpg"));
        QVERIFY(da.open(QIODevice::ReadOnly));
        QCOMPARE(da.readAll(), "Bild");
        QCOMPARE(ReadCards(dort.filePath("reise/a.pzb")), QList{karte});

        QVERIFY(QFile::rename(dort.filePath("reise.pzbz"), Pfad("b.pzbz")));
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Oeffnen(lauf);
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+o"));
        Tippen("Merkkasten öffnen", "b.pzbz");
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Return"));
        QVERIFY(QTest::qWaitFor([&] { return lauf.HatGeoeffnet(Pfad("b/a.pzb")); }, 10000));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    // What is named on the command line comes in by Enter alone.
    void ADeckOnTheCommandLineBecomesABox()
    {
        QVERIFY(QFile::copy(QStringLiteral(DECKS_DIR "/basic.apkg"), Pfad("fremd.apkg")));
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("fremd.apkg")});
        QVERIFY(lauf.Starten());
        // Enter does nothing until the deck was looked through.
        QVERIFY(QTest::qWaitFor(
            [&] {
                return anzeige_->Taste("Fremde Kartei einlesen", "Return") &&
                       QTest::qWaitFor([&] { return QFile::exists(Pfad("fremd.pzb")); }, 500);
            },
            30000));
        QVERIFY(lauf.HatGeoeffnet(Pfad("fremd.pzb")));
        QVERIFY(QTest::qWaitFor(
            [&] {
                const QString titel = anzeige_->Offen("Fremde Kartei") ? "Fremde Kartei" : "Merkkasten";
                return anzeige_->Taste(titel, "Escape") && anzeige_->Taste("Lern-Box", "ctrl+q");
            },
            30000));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(ReadCards(Pfad("fremd.pzb")).size(), 40);
        QVERIFY(QFile::exists(Pfad("schach.jpg")));
    }

    void DoneCardsGoBackToNeu()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 6, 1), MakeCard(3, 6, 2)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Oeffnen(lauf);
        Waehlen(5, 7);
        QVERIFY(anzeige_->Taste("Erledigte Karten nach Fach Neu", "Return"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(ReadCards(Pfad("a.pzb")), (QList{MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)}));
    }
};

PAUKFIX_CORE_TEST(WerkzeugLaufTest)
#include "WerkzeugLaufTest.moc"
