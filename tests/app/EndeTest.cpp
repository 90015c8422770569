// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzungsbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <csignal>

using namespace paukfix;

namespace {

using Tasten = QList<QPair<QString, QString>>; // a window's title, and a key that is pressed there

// Where the program is when its end comes.
struct Zustand
{
    const char *name;
    Tasten tasten;
    QString fenster;           // what has the keyboard then; empty where nothing waits for a key
    int nachher = 0;           // the compartment of card 1 in the end
    QString frage = "Frage 1"; // and its question
    int vorher = 0;            // its compartment at the beginning
};

const QString Box = "Lern-Box", Abfrage = "Merkkasten Abfrage", Editor = "Merkkasten Ändern",
              Meldung = "Merkkasten (a.pzb)";

// An entry of the menu, so many to the right and so many down.
Tasten Menue(int rechts, int runter)
{
    Tasten tasten{{Box, "alt"}};
    tasten.append(Tasten(rechts, {Box, "Right"}));
    tasten.append(Tasten(runter, {Box, "Down"}));
    return tasten << qMakePair(Box, QString("Return"));
}

Tasten Falsch(const QString &fach)
{
    return {{Box, fach}, {Abfrage, "x"}, {Abfrage, "Return"}};
}

// An entry of the editor's menu "Extras", so many down.
Tasten EditorExtras(int runter)
{
    return Tasten{{Editor, "alt+x"}} + Tasten(runter, {Editor, "Down"}) + Tasten{{Editor, "Return"}};
}

QList<Zustand> Zustaende()
{
    const Tasten editor = Menue(2, 1);
    const Tasten geaendert = editor + Tasten{{Editor, "y"}};
    return {
        {"box", {}, Box},
        {"open menu", {{Box, "alt"}, {Box, "Down"}}, Box},
        {"query", {{Box, "n"}}, Abfrage},
        {"half an answer", {{Box, "n"}, {Abfrage, "x"}}, Abfrage},
        {"verdict", Falsch("n"), Abfrage, 1},
        {"verdict of the learner", Falsch("n") + Tasten{{Abfrage, "alt+r"}}, Abfrage, 2},
        {"verdict, delete the card?", Falsch("n") + Tasten{{Abfrage, "alt+l"}}, Meldung, 1},
        {"flight", Falsch("n") + Tasten{{Abfrage, "Return"}}, {}, 1},
        {"congratulation", Falsch("5") + Tasten{{Abfrage, "alt+r"}, {Abfrage, "Return"}}, Meldung, 6,
         "Frage 1", 5},
        {"die", {{Box, "w"}}, {}},
        {"automatic mode", Menue(1, 1), Box},
        {"message", {{Box, "4"}}, Meldung},
        {"open a file", {{Box, "ctrl+o"}}, "Merkkasten öffnen"},
        {"new file", {{Box, "ctrl+n"}}, "Merkkasten anlegen"},
        {"standard font", Menue(2, 2), "Schriftart"},
        {"its colour", Menue(2, 2) + Tasten{{"Schriftart", "alt+f"}}, "Schriftfarbe"},
        {"other card file", {{Box, "ctrl+l"}}, "Datei laden"},
        {"editor", editor, Editor},
        {"changed card", geaendert + Tasten{{Editor, "alt+Prior"}, {Meldung, "Return"}}, Editor, 0,
         "yFrage 1"},
        {"search", editor + Tasten{{Editor, "F3"}}, "Suchen"},
        {"search over a changed card", geaendert + Tasten{{Editor, "F3"}}, "Suchen", 0, "yFrage 1"},
        {"pictures of a card", editor + EditorExtras(5), "Bild bearbeiten"},
        {"sounds of a card", editor + EditorExtras(6), "Sound bearbeiten"},
        {"overview", Menue(3, 1), "Lernkarten"},
        {"export", Menue(4, 1), "ASCII-Export"},
        {"import", Menue(4, 2), "ASCII-Import"},
        {"topics", Menue(4, 3), "Thema ausfiltern"},
        {"append", Menue(4, 4), "Kartei anhängen"},
        {"mirror", Menue(4, 5), "Thema ausfiltern"},
        {"all cards to new", Menue(4, 6), "Alle Karten nach Fach Neu"},
        {"done cards to new", Menue(4, 7), "Erledigte Karten nach Fach Neu"},
        {"statistics", Menue(4, 12), "Statistik"},
        {"about", Menue(5, 3), "über Paukfix"},
    };
}

enum class Ende
{
    Sitzung,
    Beendet, // SIGTERM
    Unterbrochen,
    Aufgelegt
};

} // namespace

// The end of the program, whoever asks for it and wherever it is: what was judged is stored, what was written
// too, and it ends.
class EndeTest : public Sitzungsbuehne
{
    Q_OBJECT

private:
    QString Kartei() const { return ordner_->filePath("a.pzb"); }

    void Anfangen(const QStringList &argumente)
    {
        lauf_ = std::make_unique<Lauf>(*anzeige_, ordner_->filePath("paukfix"), argumente);
        QVERIFY(lauf_->Starten());
    }

    void Signal(int signal) const
    {
        QCOMPARE(::kill(static_cast<pid_t>(lauf_->prozess.processId()), signal), 0);
    }

    void Beenden(Ende ende)
    {
        switch (ende) {
        case Ende::Sitzung:
            sitzung_->Beenden(Sitzungsverwalter::Fragen::Alle);
            QVERIFY(sitzung_->Gesichert());
            QVERIFY(sitzung_->Gelungen());
            sitzung_->Schluss();
            break;
        case Ende::Beendet:
            return Signal(SIGTERM);
        case Ende::Unterbrochen:
            return Signal(SIGINT);
        case Ende::Aufgelegt:
            return Signal(SIGHUP);
        }
    }

    // The editor with a card that may not be stored.
    void Verderben()
    {
        MakeCardFile(Kartei(), {MakeCard(1, 0, 1)});
        Anfangen({Kartei()});
        QVERIFY(lauf_->HatGeoeffnet(Kartei()));
        for (const auto &[titel, taste] :
             Menue(2, 1) + Tasten{{Editor, "ctrl+a"}, {Editor, "Delete"}, {Editor, "alt+Prior"}})
            QVERIFY(anzeige_->Taste(titel, taste));
        QVERIFY(anzeige_->Schliessen(Meldung, "Return"));
        QVERIFY(anzeige_->WarteAuf(Editor));
    }

private slots:

    void init() { Aufbauen(Vorspann::Ja); }

    void cleanup() { Abbauen(); }

    void EveryStateEnds_data()
    {
        QTest::addColumn<int>("zustand");
        QTest::addColumn<int>("ende");
        const QList<Zustand> zustaende = Zustaende();
        const bool kurz = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS");
        for (int i = 0; i < zustaende.size(); ++i) {
            const QString name = zustaende[i].name;
            QTest::addRow("session, %s", zustaende[i].name) << i << int(Ende::Sitzung);
            if (!kurz || name.contains("verdict"))
                QTest::addRow("terminated, %s", zustaende[i].name) << i << int(Ende::Beendet);
            if (name == "verdict" || name == "message") {
                QTest::addRow("interrupted, %s", zustaende[i].name) << i << int(Ende::Unterbrochen);
                QTest::addRow("hung up, %s", zustaende[i].name) << i << int(Ende::Aufgelegt);
            }
        }
    }

    void EveryStateEnds()
    {
        QFETCH(int, zustand);
        QFETCH(int, ende);
        const Zustand z = Zustaende()[zustand];
        MakeCardFile(Kartei(), {MakeCard(1, z.vorher, 1), MakeCard(2, 6, 1)});
        Anfangen({Kartei()});
        QVERIFY(lauf_->HatGeoeffnet(Kartei()));
        QVERIFY(sitzung_->Angemeldet());
        for (const auto &[titel, taste] : z.tasten)
            QVERIFY2(anzeige_->Taste(titel, taste), qPrintable(titel));
        if (!z.fenster.isEmpty())
            QVERIFY(anzeige_->WarteAuf(z.fenster));
        if (z.fenster == Abfrage && z.nachher != 0)
            QVERIFY(anzeige_->WarteAufFarbe(z.nachher == 1 ? "#FF0000" : "#00FF00"));
        Beenden(Ende(ende));
        QVERIFY(lauf_->IstZuEnde());
        const QList<CardRecord> karten = ReadCards(Kartei());
        QCOMPARE(karten.size(), 2);
        const CardRecord &karte = karten[karten[0].FrageNr == 1 ? 0 : 1];
        QCOMPARE(int(karte.FachNr), z.nachher);
        QCOMPARE(karte.Frage_Klartext, z.frage);
        QCOMPARE(FaultIn(Kartei()), QString());
    }

    // What was judged is in the file as soon as the desktop is told that all is well.
    void AVerdictIsStoredWhenTheSessionIsTold()
    {
        MakeCardFile(Kartei(), {MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        Anfangen({Kartei()});
        QVERIFY(lauf_->HatGeoeffnet(Kartei()));
        QVERIFY(sitzung_->Angemeldet());
        for (const auto &[titel, taste] : Falsch("n"))
            QVERIFY(anzeige_->Taste(titel, taste));
        QVERIFY(anzeige_->WarteAufFarbe("#FF0000"));
        sitzung_->Beenden(Sitzungsverwalter::Fragen::Keine);
        QVERIFY(sitzung_->Gesichert());
        QVERIFY(sitzung_->Gelungen());
        sitzung_->DochNicht();
        // The session goes on, and so does its user, with the next card.
        for (const auto &[titel, taste] : Falsch("n") + Tasten{{Abfrage, "Return"}, {Box, "ctrl+q"}})
            QVERIFY(anzeige_->Taste(titel, taste));
        QVERIFY(lauf_->IstZuEnde());
        for (const CardRecord &karte : ReadCards(Kartei()))
            QCOMPARE(int(karte.FachNr), 1);
    }

    void TheQuestionAtADamagedFileEnds_data()
    {
        QTest::addColumn<int>("ende");
        QTest::newRow("session") << int(Ende::Sitzung);
        QTest::newRow("terminated") << int(Ende::Beendet);
    }

    // Nothing is repaired that nobody agreed to.
    void TheQuestionAtADamagedFileEnds()
    {
        QFETCH(int, ende);
        MakeCardFile(Kartei(), {MakeCard(1, 0, 1)});
        QFile datei(Kartei());
        QVERIFY(datei.resize(datei.size() - 4096) && datei.open(QIODevice::ReadOnly));
        const QByteArray vorher = datei.readAll();
        Anfangen({Kartei()});
        QVERIFY(anzeige_->WarteAuf("Merkkasten"));
        QVERIFY(sitzung_->Angemeldet());
        Beenden(Ende(ende));
        QVERIFY(lauf_->IstZuEnde());
        QVERIFY(datei.seek(0));
        QCOMPARE(datei.readAll(), vorher);
    }

    void TheOpeningOfAFileEnds()
    {
        MakeCardFile(Kartei(), {MakeCard(1, 0, 1)});
        Anfangen({Kartei()});
        QVERIFY(anzeige_->WarteAuf(Box));
        Signal(SIGTERM);
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(ReadCards(Kartei()).size(), 1);
    }

    void TheIntroEnds()
    {
        Anfangen({});
        QVERIFY(anzeige_->WarteAuf("Merkkasten"));
        Signal(SIGTERM);
        QVERIFY(lauf_->IstZuEnde());
    }

    void AToolAtWorkComesToItsEnd()
    {
        QList<CardRecord> karten;
        for (int i = 1; i <= 1500; ++i)
            karten << MakeCard(i, 3, i);
        MakeCardFile(Kartei(), karten);
        Anfangen({Kartei()});
        QVERIFY(lauf_->HatGeoeffnet(Kartei()));
        for (const auto &[titel, taste] : Menue(4, 6) + Tasten{{"Alle Karten nach Fach Neu", "Return"}})
            QVERIFY(anzeige_->Taste(titel, taste));
        Signal(SIGTERM);
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(FaultIn(Kartei()), QString());
        QMap<int, int> faecher;
        for (const CardRecord &karte : ReadCards(Kartei()))
            ++faecher[int(karte.FachNr)];
        QCOMPARE(faecher.size(), 1); // all cards or none
    }

    void AnUnfinishedCardAsksAndMayStay()
    {
        Verderben();
        Signal(SIGTERM);
        QVERIFY(anzeige_->Schliessen(Meldung, "Return")); // no question
        QVERIFY(anzeige_->Taste(Meldung, "Return"));      // discard? no
        for (const char *taste : {"d", "o", "c", "h"})
            QVERIFY(anzeige_->Taste(Editor, taste));
        QVERIFY(anzeige_->Taste(Editor, "alt+Prior"));
        QVERIFY(anzeige_->Schliessen(Meldung, "Return"));
        Signal(SIGTERM);
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(ReadCards(Kartei())[0].Frage_Klartext, "doch");
    }

    void AnUnfinishedCardIsDiscardedOnRequest()
    {
        Verderben();
        Signal(SIGTERM);
        QVERIFY(anzeige_->Schliessen(Meldung, "Return"));
        QVERIFY(anzeige_->Taste(Meldung, "alt+j"));
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(ReadCards(Kartei())[0], MakeCard(1, 0, 1));
    }
};

PAUKFIX_CORE_TEST(EndeTest)
#include "EndeTest.moc"
