// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LBoxBuehne.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QLabel>
#include <QProcess>
#include <QToolButton>

using namespace paukfix;

// The box on a file that another program has: it is looked at.
class LBoxAnsehenTest : public QObject
{
    Q_OBJECT

private:
    QProcess anderes_;

    void Ansehen(LBoxBuehne &b, LBoxFenster fenster = {})
    {
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 3, 1), MakeCard(3, 6, 1)});
        anderes_.start(WorkerPath("lock_worker"), {b.Pfad("a.pzb")});
        QVERIFY(anderes_.waitForReadyRead());
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.Zeigen(b.Pfad("a.pzb"), std::move(fenster));
        QCOMPARE(b.meldungen.gezeigt.size(), 2);
        QVERIFY(b.kartei.NurAnsehen());
        b.meldungen.gezeigt.clear();
    }

private slots:

    void cleanup()
    {
        anderes_.closeWriteChannel();
        QVERIFY(anderes_.state() == QProcess::NotRunning || anderes_.waitForFinished());
    }

    void ABoxWithALongNameFitsASmallWindow()
    {
        LBoxBuehne b;
        const QString name = QString("Donaudampfschifffahrtselektrizität").repeated(5) + ".pzb";
        MakeCardFile(b.Pfad(name), {MakeCard(1, 0, 1)});
        b.Zeigen(b.Pfad(name));
        b.fenster->resize(640, 430);
        QTRY_COMPARE(b.fenster->size(), QSize(640, 430));
        const auto *kartei = b.Finde<QToolButton>("LKartei");
        QVERIFY(kartei->text().startsWith("Donau") && kartei->text().endsWith(".pzb"));
        QCOMPARE(kartei->accessibleName(), name);
    }

    void TitleAndStatusLineSaySo()
    {
        LBoxBuehne b;
        Ansehen(b);
        QCOMPARE(b.fenster->windowTitle(), "Lern-Box – nur zum Ansehen");
        QCOMPARE(b.Finde<QToolButton>("LKartei")->text(), "a.pzb – nur zum Ansehen");
        QCOMPARE(b.Text("Weiter"), "Karten ansehen");
        QCOMPARE(b.Text("LKarten"), "3 Karten, 1 erledigt");
        QCOMPARE(b.Finde("Image0(3)")->accessibleName(), "Fach 3: 1 von 250 Karten");
        // Another file is a box like any other.
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 0, 1)});
        b.fenster->Aktionen().DateiOeffnen(b.Pfad("b.pzb"));
        QCOMPARE(b.fenster->windowTitle(), "Lern-Box");
        QCOMPARE(b.Finde<QToolButton>("LKartei")->text(), "b.pzb");
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(b.Anzahl(2), 1);
    }

    void CardsAreNotAsked_data()
    {
        QTest::addColumn<int>("taste");
        QTest::newRow("new cards") << int(Qt::Key_N);
        QTest::newRow("a compartment") << int(Qt::Key_3);
        QTest::newRow("the die") << int(Qt::Key_W);
    }

    void CardsAreNotAsked()
    {
        QFETCH(int, taste);
        LBoxBuehne b;
        Ansehen(b);
        b.Taste(static_cast<Qt::Key>(taste));
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Kartei ist nur zum Ansehen geöffnet. Karten werden nicht abgefragt."));
        QCOMPARE(b.gefragt, QStringList());
        QVERIFY(b.Finde<QLabel>("LTasten")->text().isEmpty());
    }

    void EnterShowsTheCards()
    {
        LBoxBuehne b;
        int gezeigt = 0;
        LBoxFenster fenster;
        fenster.Manzeigen = [&] { ++gezeigt; };
        Ansehen(b, fenster);
        b.Taste(Qt::Key_Return);
        QCOMPARE(gezeigt, 1);
        b.Klick("Weiter");
        QCOMPARE(gezeigt, 2);
    }

    void WhatWouldChangeTheBoxCannotBeChosen()
    {
        LBoxBuehne b;
        LBoxFenster f;
        f.MKarten = f.Manzeigen = f.MSicherungen = f.MAscii_Export = f.MAscii_Import = f.MThema_ausfiltern =
            f.MKartei_anhängen = f.MKartei_spiegeln = f.MAlleNeu = f.MErledigtNeu = f.MStatistik =
                f.MVerlauf = [] {};
        Ansehen(b, f);
        for (const char *name : {"MAscii_Import", "MKartei_anhängen", "MAlleNeu", "MErledigtNeu",
                                 "MAutoschalter", "MZurücknehmen", "MWiederholen"})
            QVERIFY2(!b.Menue(name)->isEnabled(), name);
        for (const char *name : {"MKarten", "Manzeigen", "MSicherungen", "MAscii_Export", "MThema_ausfiltern",
                                 "MKartei_spiegeln", "MStatistik", "MVerlauf", "Mneu", "Möffnen"})
            QVERIFY2(b.Menue(name)->isEnabled(), name);
        anderes_.closeWriteChannel();
        QVERIFY(anderes_.waitForFinished());
        b.fenster->Aktionen().DateiOeffnen(b.Pfad("a.pzb"));
        QVERIFY(!b.kartei.NurAnsehen());
        QVERIFY(b.Menue("MAlleNeu")->isEnabled());
        QVERIFY(b.Menue("MAutoschalter")->isEnabled());
    }

    void TheAutomaticModeEnds()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 0, 1)});
        b.clock.perSecond = 1;
        b.Zeigen(b.Pfad("b.pzb"));
        b.Menue("MAutoschalter")->trigger();
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        anderes_.start(WorkerPath("lock_worker"), {b.Pfad("a.pzb")});
        QVERIFY(anderes_.waitForReadyRead());
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.fenster->Aktionen().DateiOeffnen(b.Pfad("a.pzb"));
        QTRY_VERIFY(!b.Menue("MAutoschalter")->isChecked());
        QCOMPARE(b.meldungen.gezeigt.size(), 2);
    }
};

PAUKFIX_TEST(LBoxAnsehenTest)
#include "LBoxAnsehenTest.moc"
