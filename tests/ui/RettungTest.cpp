// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"
#include "ResourceLimit.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

QByteArray Inhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

// The buttons where the backup has more cards than the repair would save: what brings back most leads.
enum Knopf
{
    Zurueckholen,
    Nein,
    Reparieren
};

// A box of 200 cards of which there is a backup of yesterday, and which was damaged since.
struct BeschaedigteKartei
{
    explicit BeschaedigteKartei(bool gesichert = true)
    {
        QDir(verzeichnis.path()).mkdir("karten");
        QList<CardRecord> karten;
        for (int nummer = 1; nummer <= 200; ++nummer)
            karten << MakeCard(nummer, nummer % 6, nummer);
        MakeCardFile(Pfad(), karten);
        clock.perSecond = 1;
        clock.jetzt = QDateTime({2026, 11, 20}, {18, 2});
        kartei.KarteiPfad = verzeichnis.filePath("karten");
        if (gesichert)
            oeffner.SichernMit(sicherungen);
        Oeffnen();
        kartei.CloseCardFile();
        heil = Inhalt(Pfad());
        clock.jetzt = clock.jetzt.addDays(1);

        QFile datei(Pfad());
        if (!datei.open(QIODevice::ReadWrite) || !datei.seek(datei.size() / 2 / 4096 * 4096) ||
            datei.write(QByteArray(4096, 'x')) != 4096)
            qFatal("the file cannot be damaged");
        datei.close();
        kaputt = Inhalt(Pfad());
        meldungen.gezeigt.clear();
    }

    QString Pfad() const { return verzeichnis.filePath("karten/box.pzb"); }

    void Oeffnen()
    {
        QString name = "box.pzb";
        oeffner.OpenCardFile(name);
    }

    QStringList Aufgehobene() const
    {
        const QDir wurzel(verzeichnis.filePath("Sicherungen"));
        const QDir ordner(wurzel.filePath(wurzel.entryList({"box*"}, QDir::Dirs).value(0)));
        QStringList pfade;
        for (const QString &name : ordner.entryList({"*.beschädigt"}, QDir::Files))
            pfade << ordner.filePath(name);
        return pfade;
    }

    QTemporaryDir verzeichnis;
    TestClock clock;
    TestMeldungen meldungen;
    CardStore kartei;
    Sicherungen sicherungen{verzeichnis.filePath("Sicherungen"), clock};
    KarteiOeffner oeffner{kartei, meldungen, clock};
    QByteArray heil, kaputt;
};

} // namespace

// What the learner is asked about a damaged file, and what becomes of it.
class RettungTest : public QObject
{
    Q_OBJECT

private slots:

    void WithoutABackupTheRepairAloneIsOffered()
    {
        BeschaedigteKartei b(false);
        b.Oeffnen();
        QCOMPARE(b.meldungen.Texte().first(), "Diese Datei ist beschädigt Reparaturversuch ?");
        QVERIFY(b.meldungen.knopfreihen.isEmpty());
        QCOMPARE(Inhalt(b.Pfad()), b.kaputt);
    }

    void TheQuestionSaysWhatRepairAndBackupWouldBringBack()
    {
        BeschaedigteKartei b;
        b.Oeffnen();
        const QStringList zeilen = b.meldungen.Texte().first().split('\n');
        QCOMPARE(zeilen.size(), 4);
        QCOMPARE(zeilen[0], "Diese Datei ist beschädigt Reparaturversuch ?");
        const QRegularExpressionMatch zahlen =
            QRegularExpression("^Reparatur: ([0-9]+) von ([0-9]+) Karten$").match(zeilen[2]);
        QVERIFY2(zahlen.hasMatch(), qPrintable(zeilen[2]));
        QCOMPARE(zahlen.captured(2), "200");
        QVERIFY(zahlen.captured(1).toInt() > 100);
        QCOMPARE(zeilen[3], "Sicherung von gestern 18:02: 200 Karten");
        QCOMPARE(b.meldungen.knopfreihen,
                 (QList<QStringList>{{"&Sicherung zurückholen", "&Nein", "&Ja, reparieren"}}));
        QVERIFY(!b.kartei.IsOpen());
        QCOMPARE(Inhalt(b.Pfad()), b.kaputt);
    }

    void TheRepairLeadsWhereTheBackupHasNoMoreCards()
    {
        BeschaedigteKartei b;
        const QString gute = b.sicherungen.Liste(b.Pfad()).first().datei;
        QVERIFY(QFile::remove(gute));
        MakeCardFile(gute, {MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        b.Oeffnen();
        QCOMPARE(b.meldungen.Texte().first().split('\n').last(), "Sicherung von gestern 18:02: 2 Karten");
        QCOMPARE(b.meldungen.knopfreihen,
                 (QList<QStringList>{{"&Ja, reparieren", "&Nein", "&Sicherung zurückholen"}}));
    }

    void AnOlderBackupIsNamedByItsDate()
    {
        BeschaedigteKartei b;
        const QString gute = b.sicherungen.Liste(b.Pfad()).first().datei;
        QVERIFY(QFile::rename(gute, QFileInfo(gute).path() + "/box 2026-11-10 18-02-00.pzb"));
        b.Oeffnen();
        QCOMPARE(b.meldungen.Texte().first().split('\n').last(),
                 "Sicherung vom 10.11.2026 18:02: 200 Karten");
    }

    void TheBackupTakesThePlaceAndTheDamagedFileIsKept()
    {
        BeschaedigteKartei b;
        b.meldungen.wahlen = {Zurueckholen};
        b.Oeffnen();
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.kartei.Karten().RecordCount(), 200);
        QCOMPARE(Inhalt(b.Pfad()), b.heil);
        QCOMPARE(b.Aufgehobene().size(), 1);
        QCOMPARE(Inhalt(b.Aufgehobene().first()), b.kaputt);
    }

    void BehindDamagedBackupsTheNewestSoundOneIsOfferedAndComesBack()
    {
        BeschaedigteKartei b;
        const QString gute = b.sicherungen.Liste(b.Pfad()).first().datei;
        const QString name = QFileInfo(gute).path() + "/box 2026-11-21 0%1-00-00.pzb";
        QByteArray umgekippt = b.heil;
        umgekippt[umgekippt.size() / 2] ^= 1;
        int stunde = 0;
        for (const QByteArray &inhalt : {b.kaputt, umgekippt, b.heil.left(5000), QByteArray()}) {
            QFile datei(name.arg(++stunde));
            QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
        }
        QCOMPARE(b.sicherungen.Liste(b.Pfad()).size(), 5);
        b.meldungen.wahlen = {Zurueckholen};
        b.Oeffnen();
        QVERIFY2(b.meldungen.Texte().first().contains("Sicherung von gestern 18:02: 200 Karten"),
                 qPrintable(b.meldungen.Texte().first()));
        QVERIFY(b.kartei.IsOpen());
        b.kartei.CloseCardFile();
        QCOMPARE(Inhalt(b.Pfad()), b.heil);
        for (int i = 1; i <= stunde; ++i) // nobody throws them away
            QVERIFY(QFile::exists(name.arg(i)));
    }

    void TheRepairSavesWhatTheQuestionSaid()
    {
        BeschaedigteKartei b;
        b.meldungen.wahlen = {Reparieren, 0};
        b.Oeffnen();
        QVERIFY(b.kartei.IsOpen());
        const QString gesagt =
            QRegularExpression("Reparatur: ([0-9]+)").match(b.meldungen.Texte().first()).captured(1);
        QCOMPARE(QString::number(b.kartei.Karten().RecordCount()), gesagt);
        QCOMPARE(b.Aufgehobene().size(), 1);
        QVERIFY(b.meldungen.berichte.isEmpty());
    }

    void TheReportOfARepairCanBeReadAtOnce()
    {
        BeschaedigteKartei b;
        b.meldungen.wahlen = {Reparieren, 1};
        b.Oeffnen();
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.meldungen.knopfreihen.last(), (QStringList{"&OK", "&Bericht lesen"}));
        QCOMPARE(b.meldungen.berichte.size(), 1);
        QVERIFY(b.meldungen.berichte.first().startsWith("box"));
        QVERIFY(b.meldungen.berichte.first().contains("Karten"));
    }

    void AFileThatCannotBeKeptIsNotReplaced()
    {
        BeschaedigteKartei b;
        b.meldungen.wahlen = {Zurueckholen};
        QVERIFY(b.sicherungen.NeuesteGute(b.Pfad()));
        const FullDisk voll(100);
        b.Oeffnen();
        QVERIFY(!b.kartei.IsOpen());
        QCOMPARE(Inhalt(b.Pfad()), b.kaputt);
        QVERIFY2(
            b.meldungen.Texte().last().startsWith("Die beschädigte Datei konnte nicht aufgehoben werden"),
            qPrintable(b.meldungen.Texte().last()));
    }
};

PAUKFIX_TEST(RettungTest)
#include "RettungTest.moc"
