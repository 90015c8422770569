// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Lernlauf.h"

#include "KarteiOeffner.h"
#include "Kartenrahmen.h"
#include "Kasten.h"
#include "TestDienste.h"
#include "TestProgram.h"
#include "WuerfelBild.h"
#include "Wuerfelspiel.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace paukfix;

using Ergebnis = std::optional<AbfrageErgebnis>;

// A query without a window: it ends as it is told, after `waehrend` has been run.
class TestAbfrage final : public Kartenabfrage
{
public:
    void Vorbereiten(int fach) override { vorbereitet << fach; }

    Ergebnis Fragen(bool darfBearbeiten) override
    {
        ++gefragt;
        bearbeitbar = darfBearbeiten;
        urteil = IstUrteil(ergebnis) ? ergebnis : std::nullopt;
        waehrend();
        return ergebnis;
    }

    Ergebnis Urteil() const override { return urteil; }

    void Schliessen() override { ++geschlossen; }

    void Zurueckkehren() override { beimZurueckkehren(); }

    void Abschliessen() override { beimAbschliessen(); }

    Ergebnis ergebnis = AbfrageErgebnis::Richtig;
    std::function<void()> waehrend = [] {};
    std::function<void()> beimZurueckkehren = [] {};
    std::function<void()> beimAbschliessen = [] {};
    QList<int> vorbereitet;
    int gefragt = 0, geschlossen = 0;
    Ergebnis urteil;
    bool bearbeitbar = false;
};

namespace {

// The learning run on a real card file, without the main window: three new cards and one of compartment 5.
struct Lernbuehne : TestDienste
{
    Lernbuehne()
    {
        clock.perSecond = 2;
        konfig.Animation = false;
        kartei.KarteiPfad = ordner.path();
        MakeCardFile(ordner.filePath("a.pzb"),
                     {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3), MakeCard(4, 5, 1)});
        QString name = "a.pzb";
        oeffner.OpenCardFile(name);
        kasten.resize(700, 400);
        kasten.show();
        lauf.SetAbfrage(abfrage);
    }

    int Anzahl(std::size_t fach) { return kartei.FachInfo[fach].Anzahl; }

    QTemporaryDir ordner;
    CardStore kartei;
    KarteiOeffner oeffner{kartei, meldungen, clock};
    Kasten kasten{kartei.FachInfo};
    Belegung belegung{kasten};
    Eingabewache eingabe{kasten};
    TestAbfrage abfrage;
    Kartenflug flug{kasten, oeffner.verzoegerung, konfig, eingabe};
    Lernlauf lauf{{kartei, meldungen, belegung, eingabe, flug}};
    Wuerfelspiel spiel{{kartei, oeffner.verzoegerung, Alle(), belegung, eingabe, kasten.Wuerfel(), lauf}};
};

} // namespace

// One card's road: found, asked, moved by its verdict, and what goes wrong is reported.
class LernlaufTest : public QObject
{
    Q_OBJECT

private slots:

    void ARightAnswerMovesTheFirstCardAndTheBoxIsDrawn()
    {
        Lernbuehne b;
        QStringList verlauf;
        connect(&b.lauf, &Lernlauf::Zurueckgekehrt, this,
                [&] { verlauf << QString("zurueck %1").arg(b.Anzahl(2)); });
        connect(&b.lauf, &Lernlauf::BoxGeaendert, this,
                [&] { verlauf << QString("gezeichnet %1").arg(b.Anzahl(2)); });
        b.abfrage.beimAbschliessen = [&] { verlauf << QString("gemerkt %1").arg(b.Anzahl(2)); };
        b.lauf.Image0_Click(0);
        QCOMPARE(b.abfrage.gefragt, 1);
        QCOMPARE(b.Anzahl(0), 2);
        QCOMPARE(b.kartei.Felder().FrageNr.Integer(), 1);
        // What the query's window keeps may take a message, and neither that nor the change of windows may
        // hold up the verdict.
        QCOMPARE(verlauf, (QStringList{"gezeichnet 1", "zurueck 1", "gemerkt 1"}));
        QVERIFY(!b.belegung.IstBelegt());
    }

    void ACardFliesWhenTheBoxHasTheKeyboardAsAKeyCanEndIt()
    {
        Lernbuehne b;
        b.konfig.Animation = true;
        QPoint liegt;
        QStringList zurueck;
        b.abfrage.beimZurueckkehren = [&] {
            zurueck << QString("%1 %2").arg(b.Anzahl(2)).arg(b.kasten.Karte().pos() == liegt);
        };
        b.abfrage.waehrend = [&] { liegt = b.kasten.Karte().pos(); };
        b.lauf.Image0_Click(0);
        QCOMPARE(zurueck, QStringList{"0 1"});
        QVERIFY(b.kasten.Karte().pos() != liegt);
    }

    void AMessageWaitsUntilTheBoxHasTheKeyboard()
    {
        Lernbuehne b;
        QList<qsizetype> gemeldet; // when it has it
        b.abfrage.beimZurueckkehren = [&] { gemeldet << b.meldungen.gezeigt.size(); };
        b.lauf.Image0_Click(5);
        QCOMPARE(b.meldungen.gezeigt.size(), 1);
        b.abfrage.waehrend = [&] { b.kartei.CloseCardFile(); };
        b.lauf.Image0_Click(0);
        QCOMPARE(b.meldungen.gezeigt.size(), 2);
        QCOMPARE(gemeldet, (QList<qsizetype>{0, 1}));
    }

    void AWrongAnswerGoesToCompartment1()
    {
        Lernbuehne b;
        b.abfrage.ergebnis = AbfrageErgebnis::Falsch;
        b.lauf.Image0_Click(5);
        QCOMPARE(b.Anzahl(5), 0);
        QCOMPARE(b.Anzahl(1), 1);
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void WithoutAVerdictNothingMoves_data()
    {
        QTest::addColumn<Ergebnis>("ausgang");
        QTest::newRow("abandoned") << Ergebnis();
        QTest::newRow("edit") << Ergebnis(AbfrageErgebnis::Bearbeiten);
        QTest::newRow("deleted") << Ergebnis(AbfrageErgebnis::Geloescht);
    }

    void WithoutAVerdictNothingMoves()
    {
        QFETCH(Ergebnis, ausgang);
        Lernbuehne b;
        b.abfrage.urteil = AbfrageErgebnis::Richtig; // of the query before
        b.abfrage.ergebnis = ausgang;
        const QSignalSpy zurueck(&b.lauf, &Lernlauf::Zurueckgekehrt);
        const QSignalSpy bearbeiten(&b.lauf, &Lernlauf::BearbeitenGewuenscht);
        b.lauf.Image0_Click(0);
        QCOMPARE(b.Anzahl(0), 3);
        QCOMPARE(b.Anzahl(2), 0);
        // The editor takes the place of the box.
        QCOMPARE(bearbeiten.size(), ausgang == AbfrageErgebnis::Bearbeiten ? 1 : 0);
        QCOMPARE(zurueck.size(), ausgang == AbfrageErgebnis::Bearbeiten ? 0 : 1);
        QVERIFY(!b.kasten.findChild<QWidget *>("Karte")->isVisible());
    }

    void TheEndOfTheSessionStoresAShownVerdictAtOnceAndOnce()
    {
        Lernbuehne b;
        b.abfrage.waehrend = [&] {
            QCOMPARE(b.Anzahl(2), 0);
            QVERIFY(b.lauf.SitzungEndet());
            QCOMPARE(b.Anzahl(2), 1);
            QCOMPARE(b.abfrage.geschlossen, 1);
        };
        b.lauf.Image0_Click(0);
        QCOMPARE(b.abfrage.gefragt, 1);
        QCOMPARE(b.Anzahl(0), 2);
        QCOMPARE(b.Anzahl(2), 1);
        QCOMPARE(b.Anzahl(3), 0);
        b.kartei.CloseCardFile();
        const QList<CardRecord> karten = ReadCards(b.ordner.filePath("a.pzb"));
        QCOMPARE(karten[2].FrageNr, 1.0);
        QCOMPARE(karten[2].FachNr, 2.0);
    }

    // Keys are kept while the card flies, but the desktop does not wait.
    void TheEndOfTheSessionStoresTheVerdictOfACardThatFlies()
    {
        Lernbuehne b;
        b.konfig.Animation = true;
        int imFlug = -1;
        b.abfrage.waehrend = [&] {
            QMetaObject::invokeMethod(
                &b.lauf,
                [&] {
                    QVERIFY(b.lauf.SitzungEndet());
                    imFlug = b.Anzahl(2);
                },
                Qt::QueuedConnection);
        };
        int beimZeichnen = -1;
        connect(&b.lauf, &Lernlauf::BoxGeaendert, this, [&] { beimZeichnen = imFlug; });
        b.lauf.Image0_Click(0);
        QCOMPARE(imFlug, 1);
        QCOMPARE(beimZeichnen, 1); // it was in the flight, not after it
        QCOMPARE(b.Anzahl(2), 1);
        QCOMPARE(b.Anzahl(0), 2);
    }

    void WithoutAVerdictTheEndOfTheSessionStoresNothing()
    {
        Lernbuehne b;
        b.abfrage.urteil = AbfrageErgebnis::Richtig;
        b.abfrage.ergebnis.reset();
        b.abfrage.waehrend = [&] { QVERIFY(b.lauf.SitzungEndet()); };
        b.lauf.Image0_Click(0);
        QCOMPARE(b.abfrage.geschlossen, 0);
        QCOMPARE(b.Anzahl(0), 3);
    }

    // The query goes on to say that it has shown a verdict.
    void AStoredVerdictIsNotStoredAgainByTheEndOfTheSession()
    {
        Lernbuehne b;
        b.abfrage.beimAbschliessen = [&] { QVERIFY(b.lauf.SitzungEndet()); }; // while a message is read
        b.lauf.Image0_Click(0);
        QVERIFY(b.abfrage.Urteil());
        QVERIFY(b.lauf.SitzungEndet());
        QCOMPARE(b.Anzahl(0), 2);
        QCOMPARE(b.Anzahl(2), 1);
    }

    void AVerdictThatTheEndOfTheSessionCannotStoreIsReportedLater()
    {
        Lernbuehne b;
        const QSignalSpy gescheitert(&b.lauf, &Lernlauf::Gescheitert);
        const QSignalSpy verloren(&b.lauf, &Lernlauf::KarteiVerloren);
        b.abfrage.waehrend = [&] {
            b.kartei.CloseCardFile();
            QVERIFY(!b.lauf.SitzungEndet());
            QCOMPARE(b.meldungen.Texte(), QStringList()); // the desktop waits for an answer
        };
        b.lauf.Image0_Click(0);
        QTRY_COMPARE(b.meldungen.gezeigt.size(), 1);
        QVERIFY(b.meldungen.Texte()[0].startsWith("Die Antwort konnte nicht gespeichert werden: "));
        QVERIFY(b.meldungen.Texte()[0].endsWith("\n\nDie Kartei wurde geschlossen."));
        QCOMPARE(gescheitert.size(), 1);
        QCOMPARE(verloren.size(), 1);
    }

    void AFileThatIsGoneIsReportedAfterTheBoxHasChanged()
    {
        Lernbuehne b;
        b.abfrage.waehrend = [&] { b.kartei.CloseCardFile(); };
        qsizetype meldungen = -1;
        connect(&b.lauf, &Lernlauf::KarteiVerloren, this, [&] { meldungen = b.meldungen.gezeigt.size(); });
        b.lauf.Image0_Click(0);
        QCOMPARE(meldungen, 0);
        QCOMPARE(b.meldungen.gezeigt.size(), 1);
        QVERIFY(b.kartei.FehlerStatus > 0);
        b.lauf.Image0_Click(0);
        QCOMPARE(b.abfrage.gefragt, 1);
    }

    void NothingBeginsWhileSomethingIsUnderWayOrTheWindowIsAway()
    {
        Lernbuehne b;
        b.zufall.Wuerfe({6, 6, 6, 6});
        {
            const auto belegt = b.belegung.Belegen();
            b.lauf.Image0_Click(0);
            b.spiel.PicWürfel_Click();
        }
        b.kasten.hide();
        b.lauf.Image0_Click(0);
        b.spiel.PicWürfel_Click();
        QCOMPARE(b.abfrage.gefragt, 0);
        b.kasten.show();
        b.lauf.Image0_Click(0);
        QCOMPARE(b.abfrage.gefragt, 1);
    }

    void TheNextQueryIsMadeReadyOnlyWhileTheBoxIsAtRest()
    {
        Lernbuehne b;
        b.abfrage.waehrend = [&] { b.lauf.Vorbereiten(3); };
        b.lauf.Image0_Click(0);
        QCOMPARE(b.abfrage.vorbereitet, QList<int>());
        b.lauf.Vorbereiten(2);
        b.kasten.hide();
        b.lauf.Vorbereiten(1);
        QCOMPARE(b.abfrage.vorbereitet, QList<int>{2});
    }

    void WhileACardIsAskedTheBoxIsBusy()
    {
        Lernbuehne b;
        bool belegt = false;
        b.abfrage.waehrend = [&] { belegt = b.belegung.IstBelegt(); };
        b.lauf.Image0_Click(0);
        QVERIFY(belegt);
    }

    void TheQueryIsToldWhetherCardsCanBeEdited()
    {
        Lernbuehne b;
        b.lauf.Image0_Click(0);
        QVERIFY(!b.abfrage.bearbeitbar);
        b.lauf.SetBearbeitbar(true);
        b.lauf.Image0_Click(0);
        QVERIFY(b.abfrage.bearbeitbar);
    }

    void TheDieRollsUntilACompartmentIsAccepted()
    {
        Lernbuehne b;
        b.zufall.Wuerfe({1, 3, 5}); // 1 and 3 are empty
        QColor grund;
        b.abfrage.waehrend = [&] { grund = b.kasten.Wuerfel().Grund(); };
        b.spiel.PicWürfel_Click();
        QCOMPARE(b.abfrage.gefragt, 1);
        QCOMPARE(b.Anzahl(5), 0);
        QCOMPARE(b.Anzahl(6), 1);
        QCOMPARE(b.kasten.Wuerfel().Augen(), 5);
        QCOMPARE(grund, QColor(0, 255, 0));
        QCOMPARE(b.kasten.Wuerfel().Grund(), QColor(Qt::white)); // the colour belongs to the pick
    }

    void TheDieNeverDrawsTheLastCardOfSeveral()
    {
        Lernbuehne b;
        b.zufall.Wuerfe({6});
        b.zufall.zahlen.push_back(0.999);
        int nummer = 0;
        b.abfrage.waehrend = [&] { nummer = b.kartei.Felder().FrageNr.Integer(); };
        b.spiel.PicWürfel_Click();
        QCOMPARE(nummer, 2);
    }

    void TheDieSaysThatNoCardIsThere()
    {
        Lernbuehne b;
        QString leer = "leer.pzb";
        MakeCardFile(b.ordner.filePath(leer), {MakeCard(1, 6, 1)});
        b.oeffner.OpenCardFile(leer);
        b.spiel.PicWürfel_Click();
        QCOMPARE(b.meldungen.Texte(), QStringList("Sorry, gar keine Karten da"));
        QCOMPARE(b.abfrage.gefragt, 0);
    }
};

PAUKFIX_TEST(LernlaufTest)
#include "LernlaufTest.moc"
