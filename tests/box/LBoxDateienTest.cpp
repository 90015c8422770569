// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"
#include "LBoxBuehne.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

// The roads on which card files are opened and made.
class LBoxDateienTest : public QObject
{
    Q_OBJECT

private slots:

    void NoFileOnTheCommandLineOffersTheOpenDialog()
    {
        LBoxBuehne b;
        b.Zeigen();
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.dialoge.gefragt[0].titel, QString("Merkkasten öffnen"));
        QCOMPARE(b.dialoge.gefragt[0].filter, QString("Lerndateien (*.pzb)|*.pzb"));
        QCOMPARE(b.dialoge.gefragt[0].endung, QString("pzb"));
        QCOMPARE(b.dialoge.gefragt[0].verzeichnis, b.ordner.path());
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(b.kartei.FehlerStatus > 0);
        QCOMPARE(b.meldungen.Titel(), QString("Merkkasten"));
    }

    void TheWindowIsPaintedBeforeAFileIsOpened()
    {
        struct Maler final : QObject
        {
            bool eventFilter(QObject *objekt, QEvent *event) override
            {
                gemalt = gemalt || (event->type() == QEvent::Paint && objekt->objectName() == "Kasten");
                return false;
            }

            bool gemalt = false;
        } maler;

        qApp->installEventFilter(&maler);
        LBoxBuehne b;
        bool vorher = false;
        b.dialoge.beimFragen = [&] { vorher = maler.gemalt; };
        b.Zeigen();
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QVERIFY(vorher);
    }

    // The wait for the clock must not look like a dead program.
    void TheWindowSaysWhatItOpensBeforeItWaits()
    {
        struct Maler final : QObject
        {
            bool eventFilter(QObject *objekt, QEvent *event) override
            {
                const auto *text = qobject_cast<const QLabel *>(objekt);
                if (event->type() == QEvent::Paint && text && text->text() == "a.pzb wird geöffnet …" &&
                    lesungen < 0)
                    lesungen = clock->readings;
                return false;
            }

            const TestClock *clock = nullptr;
            qint64 lesungen = -1;
        } maler;

        LBoxBuehne b;
        maler.clock = &b.clock;
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        qApp->installEventFilter(&maler);
        b.Zeigen(b.Pfad("a.pzb"));
        QVERIFY(b.clock.readings > 0);
        QCOMPARE(maler.lesungen, 0);
    }

    void TheFileOnTheCommandLineIsOpened()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("ö ü.pzb"), {MakeCard(1, 0, 1)});
        b.kartei.KarteiPfad = "/";
        b.Zeigen(b.Pfad("ö ü.pzb"));
        QCOMPARE(b.dialoge.gefragt.size(), 0);
        QCOMPARE(b.kartei.CurrentFileName, QString("ö ü.pzb"));
        QCOMPARE(b.kartei.KarteiPfad, b.ordner.path());
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QCOMPARE(b.meldungen.Titel(), QString("Merkkasten (ö ü.pzb)"));
        QCOMPARE(b.Arbeitsverzeichnis(), b.ordner.path());
        // It is no choice of the user's.
        QVERIFY(!b.Menue("MDat(1)")->isVisible());
    }

    void ANameWithoutDirectoryLiesWhereTheProgramWasStarted()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        b.verzeichnis = b.ordner.path();
        b.kartei.KarteiPfad = b.programm.path();
        b.Zeigen("a.pzb");
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QCOMPARE(b.kartei.KarteiPfad, b.ordner.path());
    }

    void ARelativeDirectoryIsTakenFromWhereTheProgramWasStarted()
    {
        LBoxBuehne b;
        QVERIFY(QDir(b.ordner.path()).mkdir("unten"));
        MakeCardFile(b.Pfad("unten/a.pzb"), {});
        b.verzeichnis = b.ordner.path();
        b.Zeigen("unten/a.pzb");
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QCOMPARE(b.Arbeitsverzeichnis(), b.Pfad("unten"));
        QVERIFY(QFile::exists(b.kartei.CardPath(b.kartei.CurrentFileName)));
    }

    void TheExtensionOnTheCommandLineMayBeUpperCase()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("A.PZB"), {});
        b.Zeigen(b.Pfad("A.PZB"));
        QCOMPARE(b.kartei.CurrentFileName, QString("A.PZB"));
    }

    void AWrongExtensionOnTheCommandLineOffersTheOpenDialog()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("a.txt"), {});
        MakeCardFile(b.Pfad("b.pzb"), {});
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.Zeigen(b.Pfad("a.txt"));
        QCOMPARE(b.meldungen.Texte(), QStringList{"Bitte nur .pzb Dateien"});
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.dialoge.gefragt[0].titel, QString("Merkkasten öffnen"));
        QCOMPARE(b.kartei.CurrentFileName, QString("b.pzb"));
    }

    void AMissingFileOnTheCommandLineIsReported()
    {
        LBoxBuehne b;
        b.Zeigen(b.Pfad("fehlt.pzb"));
        QCOMPARE(b.meldungen.Texte(),
                 (QStringList{"Die Datei „" + b.Pfad("fehlt.pzb") + "“ wurde nicht gefunden. Fcode: 3024",
                              "Fehler beim Öffnen"}));
        QVERIFY(b.kartei.FehlerStatus > 0);
        QCOMPARE(b.kartei.CurrentFileName, QString());
    }

    void AnOpenedFileGoesOnTopOfTheList()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({"/x/eins.pzb", "/x/zwei.pzb"}, "False");
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        b.dialoge.pfade = {b.Pfad("a.pzb")};
        b.Zeigen();
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QCOMPARE(b.Menue("MDat(1)")->text(), b.Pfad("a.pzb"));
        QCOMPARE(b.Menue("MDat(2)")->text(), QString("/x/eins.pzb"));
        QVERIFY(b.KonfigText().startsWith("[recentfiles]\r\n" + b.Pfad("a.pzb") + "\r\n/x/eins.pzb\r\n"));
        QCOMPARE(b.Arbeitsverzeichnis(), b.ordner.path());
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void AWrongExtensionInTheOpenDialogIsRefused()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.dialoge.pfade = {b.Pfad("a.mdb")};
        b.Menue("Möffnen")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList{"Bitte nur .pzb Dateien"});
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QVERIFY(b.kartei.IsOpen());
    }

    void ACancelledOpenDialogKeepsTheOpenFile()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.Menue("Möffnen")->trigger();
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void AFailedOpenLeavesNoFileOpenAndNoEntry()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1});
        QFile text(b.Pfad("text.pzb"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("Das ist keine Kartei.");
        text.close();
        b.dialoge.pfade = {b.Pfad("text.pzb")};
        b.meldungen.antworten = {Meldungen::Antwort::Nein};
        const QString vorher = b.KonfigText();
        b.Menue("Möffnen")->trigger();
        QCOMPARE(b.meldungen.gezeigt.size(), 3);
        QCOMPARE(b.meldungen.Texte()[0], QString("Diese Datei ist beschädigt Reparaturversuch ?"));
        QVERIFY(b.meldungen.Texte()[1].endsWith(" Fcode: 3049"));
        QCOMPARE(b.meldungen.Texte()[2], QString("Fehler beim Öffnen"));
        QCOMPARE(b.meldungen.gezeigt[2].titel, QString("Merkkasten"));
        QCOMPARE(b.KonfigText(), vorher);
        QVERIFY(!b.kartei.IsOpen());
        QVERIFY(b.kartei.FehlerStatus > 0);
        // The name of the last good file is not touched.
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QCOMPARE(b.Anzahl(0), 0);
        b.Taste(Qt::Key_N);
        QCOMPARE(b.gefragt, QStringList());
    }

    void ADirectoryNamedLikeACardFileIsRefused()
    {
        LBoxBuehne b;
        QVERIFY(QDir(b.ordner.path()).mkdir("ordner.pzb"));
        b.Zeigen(b.Pfad("ordner.pzb"));
        QCOMPARE(b.meldungen.Texte().last(), QString("Fehler beim Öffnen"));
        QVERIFY(b.meldungen.Texte()[0].contains("ist ein Ordner"));
    }

    void ARecentFileIsOpenedAndKeepsItsPlace()
    {
        LBoxBuehne b;
        QVERIFY(QDir(b.ordner.path()).mkdir("anderswo"));
        MakeCardFile(b.Pfad("anderswo/z.pzb"), {MakeCard(1, 3, 1)});
        b.KonfigSchreiben({"/x/eins.pzb", b.Pfad("anderswo/z.pzb")}, "False");
        b.Zeigen();
        const QString vorher = b.KonfigText();
        b.Menue("MDat(2)")->trigger();
        QCOMPARE(b.kartei.CurrentFileName, QString("z.pzb"));
        QCOMPARE(b.kartei.KarteiPfad, b.Pfad("anderswo"));
        QCOMPARE(b.Arbeitsverzeichnis(), b.Pfad("anderswo"));
        QCOMPARE(b.KonfigText(), vorher);
        QCOMPARE(b.Menue("MDat(2)")->text(), b.Pfad("anderswo/z.pzb"));
        QCOMPARE(b.Anzahl(3), 1);
    }

    // As on a stick that another computer mounts elsewhere.
    void ARecentFileThatMovedWithTheProgramDirectoryIsFound()
    {
        LBoxBuehne b;
        const QDir programm(b.konfig.ProgrammPfad);
        QVERIFY(programm.mkdir("Sprachen"));
        MakeCardFile(programm.filePath("Sprachen/z.pzb"), {MakeCard(1, 3, 1)});
        MakeCardFile(programm.filePath("y.pzb"), {MakeCard(1, 3, 1)});
        const QString dort = "/weg/" + programm.dirName();
        b.KonfigSchreiben({dort + "/Sprachen/z.pzb", "/weg/y.pzb", b.Pfad("y.pzb")}, "False");
        b.Zeigen();
        const QString vorher = b.KonfigText();
        b.Menue("MDat(1)")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.kartei.CurrentFileName, QString("z.pzb"));
        QCOMPARE(b.kartei.KarteiPfad, programm.filePath("Sprachen"));
        QCOMPARE(b.KonfigText(), vorher);
        b.Menue("MDat(2)")->trigger(); // lay in another directory
        QCOMPARE(b.meldungen.Texte(), QStringList{"Den Ordner „/weg“ gibt es nicht. Fcode: 76"});
        b.Menue("MDat(3)")->trigger(); // was deleted where it lay
        QVERIFY(b.meldungen.Texte().last().contains("/y.pzb“ wurde nicht gefunden."));
    }

    // The process's own directory belongs to whoever started the program.
    void TheCurrentDirectoryStaysWhereItIs()
    {
        const QString vorher = QDir::currentPath();
        LBoxBuehne b;
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 3, 1)});
        b.KonfigSchreiben({b.Pfad("b.pzb")}, "False");
        b.OeffnenMit({1});
        b.Menue("MDat(1)")->trigger();
        QCOMPARE(b.kartei.CurrentFileName, QString("b.pzb"));
        b.dialoge.pfade = {b.Pfad("frisch.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.kartei.CurrentFileName, QString("frisch.pzb"));
        QCOMPARE(QDir::currentPath(), vorher);
    }

    void AMissingRecentFileIsReportedOnce()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({b.Pfad("weg.pzb")}, "False");
        b.Zeigen();
        b.Menue("MDat(1)")->trigger();
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Die Datei „" + b.Pfad("weg.pzb") + "“ wurde nicht gefunden. Fcode: 3024"});
    }

    void AnAmpersandInAFileNameIsShown()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("Haus & Hof.pzb"), {});
        b.KonfigSchreiben({b.Pfad("Haus & Hof.pzb")}, "False");
        b.Zeigen();
        QVERIFY(b.Menue("MDat(1)")->text().endsWith("Haus && Hof.pzb"));
        b.Menue("MDat(1)")->trigger();
        QCOMPARE(b.kartei.CurrentFileName, QString("Haus & Hof.pzb"));
    }

    void NeuMakesAnEmptyCardFileAndOpensIt()
    {
        LBoxBuehne b;
        b.Zeigen();
        b.dialoge.pfade = {b.Pfad("frisch.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.dialoge.gefragt.last().titel, QString("Merkkasten anlegen"));
        QCOMPARE(b.dialoge.gefragt.last().filter, QString("Lerndateien (*.pzb)|*.pzb"));
        QCOMPARE(b.dialoge.gefragt.last().endung, QString("pzb"));
        QCOMPARE(b.kartei.CurrentFileName, QString("frisch.pzb"));
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QVERIFY(!b.Finde<QLabel>("Hinweis")->isVisible());
        QCOMPARE(b.Menue("MDat(1)")->text(), b.Pfad("frisch.pzb"));
        QCOMPARE(b.Arbeitsverzeichnis(), b.ordner.path());
        b.kartei.CloseCardFile();
        QCOMPARE(ReadCards(b.Pfad("frisch.pzb")).size(), 0);
    }

    void NeuRefusesAnotherExtension()
    {
        LBoxBuehne b;
        b.Zeigen();
        b.dialoge.pfade = {b.Pfad("frisch.txt")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList{"Bitte nur .pzb Dateien"});
        QVERIFY(!QFile::exists(b.Pfad("frisch.txt")));
    }

    void NeuOverTheOpenFileEmptiesIt()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2});
        b.dialoge.pfade = {b.Pfad("a.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QCOMPARE(b.Anzahl(0), 0);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {}, {}, {}, {}, {}, {}}));
    }

    void NeuThatFailsKeepsTheOpenFile()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.dialoge.pfade = {b.Pfad("gibt/es/nicht/neu.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Datei konnte nicht angelegt werden: Pfad nicht gefunden: " +
                             b.Pfad("gibt/es/nicht")));
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.kartei.KarteiPfad, b.ordner.path());
        QVERIFY(!b.Menue("MDat(1)")->isVisible());
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(b.gefragt, QStringList{"1"});
    }

    void OpeningAnotherFileShowsItsBox()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 50});
        QList<CardRecord> karten;
        for (int i = 1; i <= 250; ++i)
            karten << MakeCard(i, 3, i);
        MakeCardFile(b.Pfad("b.pzb"), karten);
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.Menue("Möffnen")->trigger();
        QVERIFY(!b.Balken(2)->isVisible());
        QVERIFY(b.Balken(3)->isVisible());
        QCOMPARE(b.fenster->VollstesFach(), 3);
        QCOMPARE(b.Finde("Image0(3)")->accessibleName(),
                 QString("Fach 3: 250 von 250 Karten, vollstes Fach"));
    }

    void AnotherCardFileOfTheDirectoryIsLoaded()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 4, 1)});
        QString gewaehlt;
        LBoxFenster offen;
        offen.KarteiWechseln = [&] { return gewaehlt; };
        b.fenster->SetFenster(offen);
        b.Taste(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        gewaehlt = "b.pzb";
        b.Taste(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(b.kartei.CurrentFileName, QString("b.pzb"));
        QCOMPARE(b.Anzahl(4), 1);
    }

    void AListOfFilesThatCannotBeStoredIsSaidAndTheFileIsOpen()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 4, 1)});
        QVERIFY(QFile::remove(b.programm.filePath("konfig.dat")));
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.Taste(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Liste der letzten Dateien konnte nicht gespeichert werden: Datei nicht "
                             "gefunden: " +
                             b.programm.filePath("konfig.dat")));
        QCOMPARE(b.kartei.CurrentFileName, QString("b.pzb"));
        QCOMPARE(b.Anzahl(4), 1);
    }

    // 32,767 cards: the box is computed 2,979 times while they are counted.
    void ABigFileIsCountedWhole()
    {
        LBoxBuehne b;
        QList<CardRecord> karten;
        karten.reserve(32767);
        for (int i = 1; i <= 32767; ++i) {
            CardRecord karte;
            karte.FrageNr = i;
            karte.FachNr = i % 7;
            karte.FachLfdNr = i;
            karten << karte;
        }
        b.Oeffnen(karten);
        QCOMPARE(b.Anzahl(0), 4681);
        QCOMPARE(b.Anzahl(6), 4681);
        QCOMPARE(BoxRechnen(b.kartei.FachInfo).Breite[1], 200);
        QCOMPARE(b.kartei.HighestCardNumber, 32767);
        QCOMPARE(b.fenster->VollstesFach(), 1);
    }
};

PAUKFIX_TEST(LBoxDateienTest)
#include "LBoxDateienTest.moc"
