// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QFile>

using namespace paukfix;

// What another program has in the real clipboard is pasted into the real editor.
class EinfuegeLaufTest : public Laufbuehne
{
    Q_OBJECT

private:
    bool Anbieten(Lauf &besitzer, const QByteArray &inhalt)
    {
        QFile datei(Pfad("inhalt"));
        if (!datei.open(QIODevice::WriteOnly) || datei.write(inhalt) != inhalt.size())
            return false;
        datei.close();
        besitzer.prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        return besitzer.Starten() &&
               QTest::qWaitFor(
                   [&] {
                       return besitzer.prozess.bytesAvailable() > 0 || besitzer.prozess.waitForReadyRead(50);
                   },
                   30000) &&
               besitzer.prozess.readAllStandardOutput() == "bereit\n";
    }

    // Into a new card's question, which is stored with the answer "ja".
    CardRecord Eingefuegt(const QString &art, const QByteArray &inhalt)
    {
        MakeCardFile(Pfad("a.pzb"), {});
        Lauf besitzer(*anzeige_, WorkerPath("ablagebesitzer"), {art, Pfad("inhalt")});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        if (!Anbieten(besitzer, inhalt) || !lauf.Starten() || !lauf.HatGeoeffnet(Pfad("a.pzb")))
            return {};
        for (const char *taste : {"alt", "Right", "Right", "Down", "Return"})
            anzeige_->Taste("Lern-Box", taste);
        for (const char *taste : {"ctrl+v", "Tab", "j", "a", "ctrl+i", "alt+F4"})
            anzeige_->Taste("Merkkasten Ändern", taste);
        anzeige_->Taste("Lern-Box", "ctrl+q");
        return lauf.IstZuEnde() ? ReadCards(Pfad("a.pzb")).value(0) : CardRecord();
    }

private slots:

    void init() { Aufbauen(Vorspann::Nein); }

    void ThousandsOfFormattedWordsAreTakenWhole()
    {
        QByteArray html = "<p>";
        for (int i = 0; i < 15'000; ++i)
            html += i % 2 == 0 ? "<b>fett</b> " : "<i>kursiv</i> ";
        const CardRecord karte = Eingefuegt("text/html", html);
        QCOMPARE(karte.Frage_Klartext.count("fett"), 7'500);
        QCOMPARE(karte.Frage_Klartext.count("kursiv"), 7'500);
        QCOMPARE(karte.Frage.count("\\b fett"), 7'500);
    }

    void AWordOfHundredsOfThousandsOfLettersIsTakenWhole()
    {
        QCOMPARE(Eingefuegt("text/plain", QByteArray(400'000, 'a')).Frage_Klartext, QString(400'000, u'a'));
    }

    void WhatIsTooLargeIsRefusedAndChangesNothing_data()
    {
        QTest::addColumn<QString>("art");
        QTest::addColumn<QByteArray>("inhalt");
        QTest::newRow("text") << "text/plain" << QByteArray("wort ").repeated(1'000'000);
        QTest::newRow("lines") << "text/plain" << QByteArray("wort\n").repeated(200'000);
        QTest::newRow("formats") << "text/rtf"
                                 << "{\\rtf1 " + QByteArray("\\b fett\\b0  mager ").repeated(100'000) + "}";
        QTest::newRow("HTML") << "text/html" << QByteArray("<b>fett</b> mager ").repeated(300'000);
        QTest::newRow("elements in each other") << "text/html" << QByteArray("<b>").repeated(100'000) + "x";
        QTest::newRow("list") << "text/html"
                              << "<ul>" + QByteArray("<li>wort").repeated(50'000);
    }

    void WhatIsTooLargeIsRefusedAndChangesNothing()
    {
        QFETCH(QString, art);
        QFETCH(QByteArray, inhalt);
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Lauf besitzer(*anzeige_, WorkerPath("ablagebesitzer"), {art, Pfad("inhalt")});
        QVERIFY(Anbieten(besitzer, inhalt));
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        for (const char *taste : {"alt", "Right", "Right", "Down", "Return"})
            QVERIFY(anzeige_->Taste("Lern-Box", taste));
        // What is selected stays too, and stays selected: the letter takes its place.
        for (const char *taste : {"shift+Right", "ctrl+v"})
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        for (const char *taste : {"x", "ctrl+i", "alt+F4"})
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(ReadCards(Pfad("a.pzb"))[0].Frage_Klartext, "xrage 1");
        QCOMPARE(besitzer.prozess.readAllStandardOutput(), QByteArray());
    }
};

PAUKFIX_CORE_TEST(EinfuegeLaufTest)
#include "EinfuegeLaufTest.moc"
