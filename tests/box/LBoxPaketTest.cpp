// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardMedia.h"
#include "LBoxBuehne.h"
#include "Packen.h"
#include "SafeFile.h"
#include "TestProgram.h"

#include <QDropEvent>
#include <QMimeData>
#include <QProcess>
#include <QTest>
#include <QUrl>

using namespace paukfix;

namespace {

// Lets the files fall on the window; true where it takes them.
bool Fallenlassen(QWidget *ziel, const QStringList &pfade)
{
    QMimeData mime;
    QList<QUrl> orte;
    for (const QString &pfad : pfade)
        orte << QUrl::fromLocalFile(pfad);
    mime.setUrls(orte);
    const QPoint ort = ziel->rect().center();
    QDragEnterEvent herein(ort, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(ziel, &herein);
    if (!herein.isAccepted())
        return false;
    QDropEvent fallen(ort, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(ziel, &fallen);
    return fallen.isAccepted() && fallen.dropAction() == Qt::CopyAction;
}

struct Paketbuehne : LBoxBuehne
{
    // A package "p.pzbz" in the directory, of a box of one card with a picture.
    Paketbuehne()
    {
        const QTemporaryDir dort;
        CardRecord karte = MakeCard(1, 0, 1);
        karte.Picture_1_Name = "bild.jpg";
        MakeCardFile(dort.filePath("box.pzb"), {karte});
        WriteFileSynced(dort.filePath("bild.jpg"), "Bild");
        Packen(dort.filePath("box.pzb"), PacklisteVon(dort.filePath("box.pzb"), {{"bild.jpg", 1}}),
               Pfad("p.pzbz"));
    }

    bool IstAusgepackt(const QString &wohin) const
    {
        return kartei.IsOpen() && kartei.CurrentFileName == "box.pzb" && kartei.KarteiPfad == Pfad(wohin) &&
               QFile::exists(Pfad(wohin + "/bild.jpg"));
    }
};

} // namespace

// Packages, opened on every road on which boxes are.
class LBoxPaketTest : public QObject
{
    Q_OBJECT

private slots:

    void APackageOnTheCommandLineIsUnpackedBesideItAndOpened()
    {
        Paketbuehne b;
        b.verzeichnis = b.ordner.path();
        b.Zeigen("p.pzbz");
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(b.IstAusgepackt("p"));
        QCOMPARE(b.Menue("MDat(1)")->text(), b.Pfad("p/box.pzb"));
    }

    void APackageChosenInTheOpenDialogIsOpened()
    {
        Paketbuehne b;
        b.OeffnenMit({1});
        b.dialoge.pfade = {b.Pfad("p.pzbz")};
        b.Menue("Möffnen")->trigger();
        QCOMPARE(b.dialoge.gefragt.last().weitere, QString("Gepackte Karteien (*.pzbz)|*.pzbz"));
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(b.IstAusgepackt("p"));
    }

    void WhatIsDroppedOnTheWindowIsOpened()
    {
        Paketbuehne b;
        b.OeffnenMit({1});
        QVERIFY(Fallenlassen(b.fenster.get(), {b.Pfad("p.pzbz")}));
        QTRY_VERIFY(b.IstAusgepackt("p"));
        QVERIFY(Fallenlassen(b.fenster.get(), {b.Pfad("a.pzb")}));
        QTRY_COMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void ADroppedListGoesToItsWindow_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"liste.csv", "Liste.TSV", "liste.txt", "liste.asc"})
            QTest::newRow(name) << name;
    }

    void ADroppedListGoesToItsWindow()
    {
        QFETCH(const QString, name);
        Paketbuehne b;
        QStringList eingelesen;
        b.OeffnenMit({1});
        LBoxFenster fenster;
        fenster.AsciiImport = [&](const QString &pfad) { eingelesen << pfad; };
        b.fenster->SetFenster(fenster);
        WriteFileSynced(b.Pfad(name), "a;b\n");
        QVERIFY(Fallenlassen(b.fenster.get(), {b.Pfad(name)}));
        QTRY_COMPARE(eingelesen, QStringList(b.Pfad(name)));
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        b.kartei.CloseCardFile(); // now there is no box that it could go into
        QVERIFY(!Fallenlassen(b.fenster.get(), {b.Pfad(name)}));
    }

    void OtherFilesAndSeveralAreNotTaken()
    {
        Paketbuehne b;
        b.OeffnenMit({1});
        QVERIFY(!Fallenlassen(b.fenster.get(), {b.Pfad("bild.jpg")}));
        QVERIFY(!Fallenlassen(b.fenster.get(), {b.Pfad("a.pzb"), b.Pfad("p.pzbz")}));
        QVERIFY(!Fallenlassen(b.fenster.get(), {}));
    }

    // Who opens the package again wants the box that he has learned with.
    void APackageThatWasUnpackedIsAskedAbout()
    {
        Paketbuehne b;
        b.OeffnenMit({1});
        for (const auto &[wahl, ordner] :
             {std::pair<qsizetype, QString>(-1, "p"), {2, "-"}, {0, "p"}, {1, "p-2"}}) {
            b.meldungen.gezeigt.clear();
            QString name = "a.pzb";
            b.kartei.KarteiPfad = b.ordner.path();
            b.oeffner.OpenCardFile(name);
            if (wahl >= 0)
                b.meldungen.wahlen = {wahl};
            b.dialoge.pfade = {b.Pfad("p.pzbz")};
            b.Menue("Möffnen")->trigger();
            if (wahl == 2)
                QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
            else
                QVERIFY2(b.IstAusgepackt(ordner), qPrintable(b.kartei.KarteiPfad));
            if (wahl >= 0)
                QCOMPARE(b.meldungen.Texte(),
                         QStringList{
                             "Das Paket „p.pzbz“ wurde schon ausgepackt, in den Ordner „p“. Soll die Kartei "
                             "dort geöffnet werden, mit allem, was seither gelernt wurde?"});
        }
        QVERIFY(b.kartei.IsOpen());
    }

    void APackageThatIsNoneIsToldAndTheOpenBoxStays()
    {
        Paketbuehne b;
        b.OeffnenMit({1});
        WriteFileSynced(b.Pfad("kaputt.pzbz"), "kein Paket");
        b.dialoge.pfade = {b.Pfad("kaputt.pzbz")};
        b.Menue("Möffnen")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList{"Die Datei „" + b.Pfad("kaputt.pzbz") +
                                                  "“ ist kein Paket (Zip-Datei), oder sie ist beschädigt."});
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QVERIFY(b.kartei.IsOpen());
        b.meldungen.gezeigt.clear();
        b.dialoge.pfade = {b.Pfad("fehlt.pzbz")};
        b.Menue("Möffnen")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList{"Datei nicht gefunden: " + b.Pfad("fehlt.pzbz")});
        QVERIFY(b.kartei.IsOpen());
    }

    void WhatCameBesideTheBoxIsReported()
    {
        Paketbuehne b;
        b.OeffnenMit({1});
        // As another program would add it.
        QProcess python;
        python.start("python3",
                     {"-c",
                      "import sys, zipfile; zipfile.ZipFile(sys.argv[1], 'a').writestr('lies.txt', 'x')",
                      b.Pfad("p.pzbz")});
        QVERIFY(python.waitForFinished());
        QCOMPARE(python.exitCode(), 0);
        QVERIFY(Fallenlassen(b.fenster.get(), {b.Pfad("p.pzbz")}));
        QTRY_VERIFY(b.IstAusgepackt("p"));
        QCOMPARE(
            b.meldungen.berichte,
            QStringList{
                "Paket\nNicht ausgepackt, weil es kein Bild und kein Klang einer Kartei ist:\n\nlies.txt"});
    }
};

PAUKFIX_TEST(LBoxPaketTest)
#include "LBoxPaketTest.moc"
