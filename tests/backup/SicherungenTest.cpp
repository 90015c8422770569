// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sicherungen.h"

#include "KarteEinordnen.h"
#include "Oeffnung.h"
#include "ResourceLimit.h"
#include "SafeFile.h"
#include "Sicherungsstand.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "Zurueckholen.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

QByteArray Inhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

// A box on disk, open, and its backups.
struct Kasten
{
    Kasten()
    {
        QDir(verzeichnis.path()).mkdir("karten");
        QList<CardRecord> karten;
        for (int nummer = 1; nummer <= 20; ++nummer)
            karten << MakeCard(nummer, nummer % 6, nummer);
        MakeCardFile(Pfad(), karten);
        kartei.KarteiPfad = verzeichnis.filePath("karten");
        QCOMPARE(Oeffnen(kartei, "box.pzb", clock).ausgang, Oeffnung::Ausgang::Offen);
    }

    QString Pfad() const { return verzeichnis.filePath("karten/box.pzb"); }

    QString Wurzel() const { return verzeichnis.filePath("Sicherungen"); }

    int Anzahl() const
    {
        int summe = 0;
        for (const Fach &fach : kartei.FachInfo)
            summe += fach.Anzahl;
        return summe;
    }

    // What lies beside its backups.
    QStringList Reste() const
    {
        const QString ordner = Sicherungsordner(Wurzel()).Von(Pfad());
        QStringList namen = QDir(ordner).entryList(QDir::Files | QDir::Hidden);
        for (const Sicherung &sicherung : Sicherungsordner(Wurzel()).Liste(Pfad()))
            namen.removeAll(QFileInfo(sicherung.datei).fileName());
        return namen;
    }

    void Taeglich() { sicherungen.VorAenderung(Pfad(), Anzahl()); }

    void Antworten(bool richtig)
    {
        kartei.Karten().SetIndex(u"BoxKey");
        kartei.Karten().Seek(CardRecordset::Comparison::AtLeast, 1);
        KarteEinordnen(kartei, Gefragt(kartei), richtig);
    }

    QTemporaryDir verzeichnis;
    TestClock clock;
    CardStore kartei;
    Sicherungen sicherungen{Wurzel(), clock};
};

} // namespace

class SicherungenTest : public QObject
{
    Q_OBJECT

private slots:

    void TheCopyIsWhatTheFileWasBeforeTheChange()
    {
        Kasten k;
        const QByteArray vorher = Inhalt(k.Pfad());
        k.Taeglich();
        k.Antworten(true); // while the copy is being checked
        const Sicherungsliste liste = k.sicherungen.Liste(k.Pfad());
        QCOMPARE(liste.size(), 1);
        QCOMPARE(Inhalt(liste.first().datei), vorher);
        QVERIFY(Inhalt(k.Pfad()) != vorher);
        QCOMPARE(liste.first().zeit, k.clock.jetzt);
        QVERIFY(liste.first().datei.startsWith(k.Wurzel() + "/box ("));
        QVERIFY(liste.first().datei.endsWith("/box 2026-11-21 09-30-00.pzb"));
        QCOMPARE(FaultIn(liste.first().datei), QString());
    }

    void BackupsComeAlongWithTheDirectoryThatHoldsTheBoxToo()
    {
        Kasten k;
        k.Taeglich();
        k.Antworten(true);
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 1);
        QTemporaryDir anderswo;
        QVERIFY(QDir().rename(k.verzeichnis.path(), anderswo.filePath("Stick")));
        const Sicherungsordner dort(anderswo.filePath("Stick/Sicherungen"));
        QCOMPARE(dort.Liste(anderswo.filePath("Stick/karten/box.pzb")).size(), 1);
        QCOMPARE(dort.Liste(anderswo.filePath("karten/box.pzb")).size(), 0);
    }

    void BackupsThatEarlierVersionsNamedAfterTheWholePathAreFound()
    {
        Kasten k;
        const QByteArray marke =
            QCryptographicHash::hash(QFile::encodeName(Resolved(k.Pfad())), QCryptographicHash::Md5).toHex();
        QVERIFY(QDir().mkpath(k.Wurzel() + "/box (" + marke.left(8) + ")"));
        k.Taeglich();
        k.Antworten(true);
        const Sicherungsliste liste = k.sicherungen.Liste(k.Pfad());
        QCOMPARE(liste.size(), 1);
        QVERIFY(liste.first().datei.contains(marke.left(8)));
    }

    void OneBackupADayIsMade()
    {
        Kasten k;
        k.Taeglich();
        k.Antworten(true);
        k.clock.jetzt = k.clock.jetzt.addSecs(3600);
        k.Taeglich();
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 1);
        k.clock.jetzt = k.clock.jetzt.addDays(1);
        k.Taeglich();
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 2);
    }

    void ASecondRunOfTheProgramKnowsTodaysBackup()
    {
        Kasten k;
        k.Taeglich();
        k.Antworten(true);
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 1);
        Sicherungen zweite(k.Wurzel(), k.clock);
        zweite.VorAenderung(k.Pfad(), k.Anzahl());
        QCOMPARE(zweite.Liste(k.Pfad()).size(), 1);
    }

    void WhatHasNotChangedIsNotCopiedAgain()
    {
        Kasten k;
        k.Taeglich();
        for (int tag = 0; tag < 5; ++tag) {
            k.clock.jetzt = k.clock.jetzt.addDays(1);
            k.Taeglich();
            k.sicherungen.VorEingriff(k.Pfad(), k.Anzahl());
        }
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 1);
    }

    void BeforeAToolABackupIsMadeWhateverWasMadeToday()
    {
        Kasten k;
        k.Taeglich();
        k.Antworten(true);
        k.sicherungen.VorEingriff(k.Pfad(), k.Anzahl());
        const Sicherungsliste liste = k.sicherungen.Liste(k.Pfad()); // both in one second
        QCOMPARE(liste.size(), 2);
        QCOMPARE(Inhalt(liste.first().datei), Inhalt(k.Pfad()));
    }

    void BoxesOfOneNameInTwoDirectoriesAreKeptApart()
    {
        Kasten k;
        QDir(k.verzeichnis.path()).mkdir("andere");
        const QString andere = k.verzeichnis.filePath("andere/box.pzb");
        MakeCardFile(andere, {MakeCard(1, 0, 1)});
        k.Taeglich();
        k.sicherungen.VorAenderung(andere, 1);
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 1);
        QCOMPARE(k.sicherungen.Liste(andere).size(), 1);
        QCOMPARE(KarteiZaehlen(k.sicherungen.Liste(andere).first().datei).karten, 1);
    }

    void WhatIsDispensableGoesWithTheNextBackup()
    {
        Kasten k;
        const QDateTime morgens({2026, 11, 21}, {6, 0});
        for (int minute = 0; minute < 15; ++minute) {
            k.clock.jetzt = morgens.addSecs(60 * minute);
            k.sicherungen.VorEingriff(k.Pfad(), k.Anzahl());
            k.Antworten(minute % 2 == 0);
        }
        const Sicherungsliste liste = k.sicherungen.Liste(k.Pfad());
        QCOMPARE(liste.size(), 10);
        QCOMPARE(liste.first().zeit, morgens.addSecs(60 * 14));
        QCOMPARE(liste.last().zeit, morgens.addSecs(60 * 5));
    }

    void ABoxBehindALinkHasTheBackupsOfTheBox()
    {
        Kasten k;
        const QString verweis = k.verzeichnis.filePath("verweis.pzb");
        QVERIFY(QFile::link(k.Pfad(), verweis));
        k.Taeglich();
        const Sicherungsliste liste = k.sicherungen.Liste(verweis);
        QCOMPARE(liste.size(), 1);
        QCOMPARE(liste.first().datei, k.sicherungen.Liste(k.Pfad()).first().datei);
    }

    void ABoxOfTheLongestNameIsBackedUp()
    {
        Kasten k;
        const QString lang = k.verzeichnis.filePath(QString("ä").repeated(115) + ".pzb");
        MakeCardFile(lang, {MakeCard(1, 0, 1)});
        QSignalSpy gescheitert(&k.sicherungen, &Sicherungen::Gescheitert);
        k.sicherungen.VorAenderung(lang, 1);
        QCOMPARE(k.sicherungen.Liste(lang).size(), 1);
        QCOMPARE(gescheitert.size(), 0);
    }

    void WhatBearsAnotherNameIsNoBackup()
    {
        Kasten k;
        k.Taeglich();
        const Sicherungsliste vorher = k.sicherungen.Liste(k.Pfad());
        QCOMPARE(vorher.size(), 1);
        const QString fremd = QFileInfo(vorher.first().datei).path() + "/Urlaub.pzb";
        QVERIFY(QFile::copy(vorher.first().datei, fremd));
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 1);
        QCOMPARE(k.Reste(), QStringList{"Urlaub.pzb"});
    }

    void ACopyThatIsNotSoundIsNoBackup()
    {
        Kasten k;
        QSignalSpy gescheitert(&k.sicherungen, &Sicherungen::Gescheitert);
        k.sicherungen.VorEingriff(k.Pfad(), k.Anzahl() + 1); // as if cards were missing in it
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 0);
        QCOMPARE(gescheitert.size(), 1);
        QVERIFY(IsGermanMessage(gescheitert.first().first().toString().section('\n', 0, 0)));
        k.sicherungen.VorEingriff(k.Pfad(), k.Anzahl() + 2);
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 0);
        QCOMPARE(gescheitert.size(), 1); // told once
        QCOMPARE(k.Reste(), QStringList());
    }

    void AFullDiskIsToldAndStopsNothing()
    {
        Kasten k;
        QSignalSpy gescheitert(&k.sicherungen, &Sicherungen::Gescheitert);
        {
            const FullDisk voll(100);
            k.Taeglich();
        }
        QCOMPARE(gescheitert.size(), 1);
        QVERIFY(gescheitert.first().first().toString().contains("voll"));
        QCOMPARE(k.sicherungen.Liste(k.Pfad()).size(), 0);
        QCOMPARE(k.Reste(), QStringList());
        k.Antworten(true);
        k.kartei.CloseCardFile();
        QCOMPARE(FaultIn(k.Pfad()), "");
    }

    void ADirectoryThatCannotBeMadeIsTold()
    {
        Kasten k;
        QFile im_Weg(k.Wurzel());
        QVERIFY(im_Weg.open(QIODevice::WriteOnly));
        im_Weg.close();
        QSignalSpy gescheitert(&k.sicherungen, &Sicherungen::Gescheitert);
        k.Taeglich();
        QCOMPARE(gescheitert.size(), 1);
    }

    void TheNewestSoundBackupIsFoundBehindADamagedOne()
    {
        Kasten k;
        k.Taeglich();
        k.Antworten(true);
        k.clock.jetzt = k.clock.jetzt.addDays(1);
        k.Taeglich();
        const Sicherungsliste liste = k.sicherungen.Liste(k.Pfad());
        QCOMPARE(liste.size(), 2);
        QFile neueste(liste.first().datei);
        QVERIFY(neueste.open(QIODevice::ReadWrite));
        QVERIFY(neueste.seek(4096));
        QCOMPARE(neueste.write(QByteArray(4096, 'x')), 4096);
        neueste.close();
        const auto gute = k.sicherungen.NeuesteGute(k.Pfad());
        QVERIFY(gute);
        QCOMPARE(gute->datei, liste.last().datei);
    }

    void WhatChangedSinceIsCounted()
    {
        Kasten k;
        k.Taeglich();
        const QString sicherung = k.sicherungen.Liste(k.Pfad()).first().datei;
        QCOMPARE(Vergleichen(sicherung, k.Pfad()), Kartenunterschied());
        k.Antworten(true);
        CardRecordset &karten = k.kartei.Karten();
        karten.SetIndex(u"FrageNr");
        karten.Seek(CardRecordset::Comparison::Equal, 7);
        karten.Edit();
        k.kartei.Felder().Frage_Klartext.Set(u"anders"_s);
        karten.Update();
        karten.Seek(CardRecordset::Comparison::Equal, 8);
        karten.Delete();
        const Kartenunterschied unterschied = Vergleichen(sicherung, k.Pfad());
        QCOMPARE(unterschied.verschoben, 1);
        QCOMPARE(unterschied.geaendert, 1);
        QCOMPARE(unterschied.weg, 1);
        QCOMPARE(unterschied.dazu, 0);
        QCOMPARE(Vergleichen(k.Pfad(), sicherung).dazu, 1);
        QCOMPARE(KarteiZaehlen(sicherung).karten, 20);
    }

    void ABackupTakesThePlaceOfTheOpenBox()
    {
        Kasten k;
        const QByteArray vorher = Inhalt(k.Pfad());
        k.Taeglich();
        k.Antworten(true);
        Zurueckholen(k.kartei, k.sicherungen.Liste(k.Pfad()).first().datei, k.Pfad());
        QVERIFY(!k.kartei.IsOpen());
        QCOMPARE(Inhalt(k.Pfad()), vorher);
        QCOMPARE(Oeffnen(k.kartei, "box.pzb", k.clock).ausgang, Oeffnung::Ausgang::Offen);
    }

    void ABoxThatAnotherProgramHasIsNotReplaced()
    {
        Kasten k;
        k.Taeglich();
        const Sicherungsliste liste = k.sicherungen.Liste(k.Pfad());
        const QString andere = k.verzeichnis.filePath("karten/andere.pzb");
        MakeCardFile(andere, {MakeCard(1, 0, 1)});
        const QByteArray vorher = Inhalt(andere);
        CardStore lernende;
        lernende.KarteiPfad = k.kartei.KarteiPfad;
        QCOMPARE(Oeffnen(lernende, "andere.pzb", k.clock).ausgang, Oeffnung::Ausgang::Offen);
        QVERIFY_EXCEPTION_THROWN(Zurueckholen(k.kartei, liste.first().datei, andere), StoreError);
        QCOMPARE(Inhalt(andere), vorher);
    }

    void ADamagedBackupIsNotPutInPlace()
    {
        Kasten k;
        k.Taeglich();
        const QString sicherung = k.sicherungen.Liste(k.Pfad()).first().datei;
        QFile datei(sicherung);
        QVERIFY(datei.open(QIODevice::ReadWrite));
        QVERIFY(datei.seek(4096));
        QCOMPARE(datei.write(QByteArray(4096, 'x')), 4096);
        datei.close();
        const QByteArray vorher = Inhalt(k.Pfad());
        QVERIFY_EXCEPTION_THROWN(Zurueckholen(k.kartei, sicherung, k.Pfad()), StoreError);
        QVERIFY(k.kartei.IsOpen());
        QCOMPARE(Inhalt(k.Pfad()), vorher);
        k.Antworten(true);
    }

    void ADamagedFileIsKeptAsItIs()
    {
        Kasten k;
        const QString kaputt = k.verzeichnis.filePath("karten/kaputt.pzb");
        QFile datei(kaputt);
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("nicht mehr zu lesen");
        datei.close();
        for (int mal = 0; mal < 5; ++mal) {
            QVERIFY(k.sicherungen.Aufheben(kaputt, u".beschädigt"_s));
            k.clock.jetzt = k.clock.jetzt.addSecs(60);
        }
        QCOMPARE(k.sicherungen.Liste(kaputt).size(), 0);
        const QDir wurzel(k.Wurzel());
        const QDir ordner(wurzel.filePath(wurzel.entryList({"kaputt*"}, QDir::Dirs).value(0)));
        const QStringList aufgehoben = ordner.entryList(QDir::Files | QDir::Hidden, QDir::Name);
        QCOMPARE(aufgehoben.size(), 3); // the last ones
        QVERIFY(aufgehoben.last().endsWith("09-34-00.pzb.beschädigt"));
        QCOMPARE(Inhalt(ordner.filePath(aufgehoben.last())), QByteArray("nicht mehr zu lesen"));
    }
};

PAUKFIX_CORE_TEST(SicherungenTest)
#include "SicherungenTest.moc"
