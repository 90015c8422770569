// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DiskCalls.h"
#include "LBoxBuehne.h"
#include "TestProgram.h"

#include <QTest>
#include <QToolButton>

#include <cerrno>
#include <sys/stat.h>

using namespace paukfix;

// "neu" that fails: the learner goes on with the box that was open, and all that the window says is true.
class LBoxNeuTest : public QObject
{
    Q_OBJECT

    // The box of three new cards and two of compartment 1 is open and can be learned with.
    static void BoxIstOffen(LBoxBuehne &b)
    {
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QCOMPARE(b.kartei.KarteiPfad, b.ordner.path());
        QCOMPARE(b.meldungen.Titel(), QString("Merkkasten (a.pzb)"));
        QCOMPARE(b.Finde<QToolButton>("LKartei")->text(), QString("a.pzb"));
        QVERIFY(b.Finde("Image0(1)")->accessibleName().startsWith("Fach 1: 2 von"));
        QVERIFY(b.Balken(0)->isVisible());
        QVERIFY(b.Balken(1)->isVisible());
        QCOMPARE(b.Menue("MDat(1)")->isVisible(), false);
        qint16 karten = 0;
        b.kartei.Karten().MoveFirst();
        for (; !b.kartei.Karten().AtEOF(); b.kartei.Karten().MoveNext())
            ++karten;
        qint16 gezaehlt = 0;
        for (const Fach &fach : b.kartei.FachInfo)
            gezaehlt = static_cast<qint16>(gezaehlt + fach.Anzahl);
        QCOMPARE(gezaehlt, karten);
        QCOMPARE(karten, qint16(5));
        const QStringList dateien = QDir(b.ordner.path()).entryList(QDir::Files | QDir::Hidden);
        QVERIFY2(dateien.filter(".neu").isEmpty(), qPrintable(dateien.join(u' ')));
    }

private slots:

    void AReplacementThatCannotTakeThePlaceReopensTheBox()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2});
        DiskCalls platte;
        platte.renameFails = [&](const QString &ziel) { return ziel == b.Pfad("a.pzb") ? EIO : 0; };
        b.dialoge.pfade = {b.Pfad("a.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Datei konnte nicht angelegt werden: Ein-/Ausgabefehler (5): " +
                             b.Pfad("a.pzb")));
        BoxIstOffen(b);
        // The session begins anew, as at every opening.
        QCOMPARE(b.kartei.sitzung.BegAnz()[0], qint16(3));
        QCOMPARE(b.kartei.sitzung.BegAnz()[1], qint16(2));
        b.Lernen(Qt::Key_1, true);
        QCOMPARE(b.gefragt, QStringList{"4"});
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), qint16(1));
        QCOMPARE(b.Gespeichert()[2], QList<int>{4});
    }

    void AReplacementThatCannotBeMadeLeavesTheBoxAndItsSession()
    {
        LBoxBuehne b;
        b.OeffnenMit({4, 1});
        b.Lernen(Qt::Key_N, false);
        DiskCalls platte;
        platte.readOnlyDirectory = b.ordner.path();
        b.dialoge.pfade = {b.Pfad("a.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(
            b.meldungen.Texte(),
            QStringList("Die Datei konnte nicht angelegt werden: Der Datenträger ist schreibgeschützt: " +
                        b.Pfad("a.pzb")));
        BoxIstOffen(b);
        QCOMPARE(b.kartei.sitzung.FalschZaehler(), qint16(1));
    }

    void ANewFileThatCannotBeOpenedReopensTheBox()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2});
        QVERIFY(QDir(b.ordner.path()).mkdir("anderswo"));
        const QString neu = b.Pfad("anderswo/neu.pzb");
        DiskCalls platte;
        platte.renameFails = [&](const QString &ziel) {
            return ziel == neu ? ::mkfifo(QFile::encodeName(ziel + "-journal").constData(), 0600) : 0;
        };
        b.dialoge.pfade = {neu};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("„" + neu + "-journal“ ist keine gewöhnliche Datei. Fcode: 3051"));
        BoxIstOffen(b);
    }

    void AnotherFileOnAReadOnlyDriveLeavesTheBox()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2});
        QVERIFY(QDir(b.ordner.path()).mkdir("cd"));
        DiskCalls platte;
        platte.readOnlyDirectory = b.Pfad("cd");
        b.dialoge.pfade = {b.Pfad("cd/neu.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(
            b.meldungen.Texte(),
            QStringList("Die Datei konnte nicht angelegt werden: Der Datenträger ist schreibgeschützt: " +
                        b.Pfad("cd/neu.pzb")));
        BoxIstOffen(b);
    }

    void ANameThatIsTooLongIsToldSo()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2});
        const QString name = b.Pfad(QString(300, u'n') + ".pzb");
        b.dialoge.pfade = {name};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList("Die Datei konnte nicht angelegt werden: Der Dateiname „" +
                                                  name + "“ ist zu lang."));
        BoxIstOffen(b);
    }

    void NothingOpenStaysNothingOpen()
    {
        LBoxBuehne b;
        b.Zeigen();
        DiskCalls platte;
        platte.readOnlyDirectory = b.ordner.path();
        b.dialoge.pfade = {b.Pfad("neu.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte().size(), 1);
        QVERIFY(!b.kartei.IsOpen());
        QCOMPARE(b.meldungen.Titel(), QString("Merkkasten"));
        QVERIFY(b.kartei.FehlerStatus > 0);
    }

    // The open file under another spelling of its directory is the open file.
    void TheOpenFileIsKnownThroughALink()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2});
        QVERIFY(QFile::link(b.ordner.path(), b.programm.filePath("link")));
        b.dialoge.pfade = {b.programm.filePath("link/a.pzb")};
        b.Menue("Mneu")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.Anzahl(0), qint16(0));
    }
};

PAUKFIX_TEST(LBoxNeuTest)
#include "LBoxNeuTest.moc"
