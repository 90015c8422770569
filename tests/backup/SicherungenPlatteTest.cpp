// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteEinordnen.h"
#include "Oeffnung.h"
#include "Plattenspur.h"
#include "SafeFile.h"
#include "Sicherungen.h"
#include "Sicherungsstand.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "Zurueckholen.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Change = DiskCalls::Change;

QByteArray Karten(const QString &pfad)
{
    QByteArray karten;
    for (const CardRecord &karte : ReadCards(pfad))
        karten += QByteArray::number(karte.FrageNr) + ':' + QByteArray::number(karte.FachNr) + ':' +
                  QByteArray::number(karte.FachLfdNr) + ' ';
    return karten;
}

// A box and its backups in one directory, which can be copied and used elsewhere.
struct Schrank
{
    explicit Schrank(const QString &ort) : ordner(ort) { kartei.KarteiPfad = ordner + "/karten"; }

    QString Box() const { return ordner + "/karten/box.pzb"; }

    bool Oeffnen() { return paukfix::Oeffnen(kartei, "box.pzb", clock).ausgang == Oeffnung::Ausgang::Offen; }

    void Antworten(bool richtig)
    {
        kartei.Karten().SetIndex(u"BoxKey");
        kartei.Karten().Seek(CardRecordset::Comparison::AtLeast, 1);
        KarteEinordnen(kartei, Gefragt(kartei), richtig);
    }

    Sicherungsliste Liste() { return sicherungen.Liste(Box()); }

    void Eingriff()
    {
        sicherungen.VorEingriff(Box(), 20);
        Liste(); // it is checked by then
    }

    // Whatever has happened: each backup is whole, and what lay about goes with the next one.
    void Pruefen()
    {
        const Sicherungsliste vorhandene = Liste();
        for (const Sicherung &sicherung : vorhandene)
            QCOMPARE(KarteiPruefen(sicherung.datei).karten, 20);
        QVERIFY(Oeffnen());
        kartei.CloseCardFile();
        QCOMPARE(FaultIn(Box()), QString());
        QVERIFY(Oeffnen());
        Antworten(false);
        clock.jetzt = clock.jetzt.addDays(1);
        Eingriff();
        QCOMPARE(Liste().size(), vorhandene.size() + 1);
        kartei.CloseCardFile();
        QCOMPARE(QDir(kartei.KarteiPfad).entryList(QDir::Files | QDir::Hidden), QStringList{"box.pzb"});
        const QDir sicherungsordner(QFileInfo(Liste().first().datei).path());
        QCOMPARE(sicherungsordner.entryList(QDir::Files | QDir::Hidden).size(), Liste().size());
    }

    QString ordner;
    TestClock clock;
    CardStore kartei;
    Sicherungen sicherungen{ordner + "/Sicherungen", clock};
};

void Kopieren(const QString &von, const QString &nach)
{
    for (const QString name : {"karten", "Sicherungen"}) {
        QDir().mkpath(nach + '/' + name);
        const QDir ort(von + '/' + name);
        for (const QString &datei : ort.entryList(QDir::Files | QDir::Hidden))
            CopyFile(ort.filePath(datei), nach + '/' + name + '/' + datei);
        for (const QString &unter : ort.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            // The directory bears a mark of the box's place.
            const QString dort = Sicherungsordner(nach + "/Sicherungen").Von(nach + "/karten/box.pzb");
            QDir().mkpath(dort);
            for (const QString &datei : QDir(ort.filePath(unter)).entryList(QDir::Files | QDir::Hidden))
                CopyFile(ort.filePath(unter) + '/' + datei, dort + '/' + datei);
        }
    }
}

// What is done, step by step; each may throw.
using Ablauf = QList<std::function<void(Schrank &)>>;

// Two backups with an answer between them.
Ablauf Sichern()
{
    return {[](Schrank &s) { s.sicherungen.VorAenderung(s.Box(), 20); },
            [](Schrank &s) { s.Antworten(true); }, [](Schrank &s) { s.Eingriff(); },
            [](Schrank &s) { s.Antworten(false); }};
}

// As the window of the backups does: the present state is backed up, the oldest one takes its place.
Ablauf Zurueckgeholt()
{
    return {[](Schrank &s) { s.Eingriff(); },
            [](Schrank &s) {
                if (s.sicherungen.IstGesichert(s.Box()))
                    Zurueckholen(s.kartei, s.Liste().last().datei, s.Box());
            },
            [](Schrank &s) {
                if (!s.kartei.IsOpen())
                    s.Oeffnen();
            }};
}

} // namespace

// Kills, failing disks and power failures at each step of a backup and of its return: the box is as it was
// before or as it should be, and so is each backup.
class SicherungenPlatteTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir vorlage_;

    static void Was()
    {
        QTest::addColumn<bool>("zurueck");
        QTest::newRow("backup") << false;
        QTest::newRow("restore") << true;
    }

    // A copy of the box and its backups in `ordner`, and what the box may hold behind each step.
    static QList<QByteArray> Staende(const QString &ordner, const Ablauf &schritte)
    {
        Schrank schrank(ordner);
        QList<QByteArray> staende{Karten(schrank.Box())};
        if (!schrank.Oeffnen())
            qFatal("not opened");
        for (const auto &schritt : schritte) {
            schritt(schrank);
            const QTemporaryDir daneben;
            CopyFile(schrank.Box(), daneben.filePath("box.pzb"));
            staende << Karten(daneben.filePath("box.pzb"));
        }
        return staende;
    }

private slots:

    // A box that was backed up and learned with afterwards.
    void initTestCase()
    {
        QDir(vorlage_.path()).mkdir("karten");
        QDir(vorlage_.path()).mkdir("Sicherungen");
        QList<CardRecord> karten;
        for (int nummer = 1; nummer <= 20; ++nummer)
            karten << MakeCard(nummer, nummer % 6, nummer);
        Schrank schrank(vorlage_.path());
        MakeCardFile(schrank.Box(), karten);
        QVERIFY(schrank.Oeffnen());
        schrank.clock.jetzt = schrank.clock.jetzt.addDays(-1);
        schrank.Eingriff();
        schrank.Antworten(true);
        QCOMPARE(schrank.Liste().size(), 1);
    }

    void AKillLeavesBoxAndBackupsWhole_data() { Was(); }

    void AKillLeavesBoxAndBackupsWhole()
    {
        QFETCH(bool, zurueck);
        const Ablauf schritte = zurueck ? Zurueckgeholt() : Sichern();
        QTemporaryDir probe;
        Kopieren(vorlage_.path(), probe.path());
        const QList<QByteArray> staende = Staende(probe.path(), schritte);
        int toetungen = 0;
        for (int stelle = 1;; ++stelle) {
            const QTemporaryDir ordner;
            Kopieren(vorlage_.path(), ordner.path());
            const pid_t kind = fork();
            if (kind == 0) {
                DiskCalls aufrufe;
                aufrufe.waits = false;
                aufrufe.half = true;
                int nummer = 0;
                aufrufe.below = ordner.path();
                aufrufe.before = [&](const Change &aenderung) {
                    if (++nummer == stelle && aenderung.what != Change::What::Write)
                        ::kill(::getpid(), SIGKILL);
                    if (nummer > stelle)
                        ::kill(::getpid(), SIGKILL);
                    return nummer == stelle ? EIO : 0; // half of it is written, and it is killed at the next
                };
                Schrank schrank(ordner.path());
                schrank.Oeffnen();
                for (const auto &schritt : schritte) {
                    try {
                        schritt(schrank);
                    } catch (const StoreError &) {
                        ::kill(::getpid(), SIGKILL);
                    }
                }
                ::_exit(nummer < stelle ? 0 : 1);
            }
            int ende = 0;
            QCOMPARE(::waitpid(kind, &ende, 0), kind);
            if (WIFEXITED(ende) && WEXITSTATUS(ende) == 0)
                break;
            ++toetungen;
            Schrank schrank(ordner.path());
            QVERIFY2(schrank.Liste().size() >= 1, qPrintable(QString::number(stelle)));
            QVERIFY(schrank.Oeffnen());
            schrank.kartei.CloseCardFile();
            QVERIFY2(staende.contains(Karten(schrank.Box())), qPrintable(QString::number(stelle)));
            schrank.Pruefen();
            if (QTest::currentTestFailed())
                qFatal("killed at %d", stelle);
        }
        qInfo("%d kills", toetungen);
        QVERIFY(toetungen > 15);
    }

    void AnyChangeOfTheDiskMayFailOnce_data()
    {
        QTest::addColumn<bool>("zurueck");
        QTest::addColumn<int>("fehler");
        QTest::addColumn<bool>("halb");
        for (const bool zurueck : {false, true}) {
            const QByteArray was = zurueck ? "restore: " : "backup: ";
            QTest::newRow(was + "nothing has happened") << zurueck << EIO << false;
            QTest::newRow(was + "half of it has happened") << zurueck << EIO << true;
            QTest::newRow(was + "the disk is full") << zurueck << ENOSPC << true;
        }
    }

    void AnyChangeOfTheDiskMayFailOnce()
    {
        QFETCH(bool, zurueck);
        QFETCH(int, fehler);
        QFETCH(bool, halb);
        const Ablauf schritte = zurueck ? Zurueckgeholt() : Sichern();
        QTemporaryDir probe;
        Kopieren(vorlage_.path(), probe.path());
        const QList<QByteArray> staende = Staende(probe.path(), schritte);
        int gesagt = 0, stelle = 1;
        for (;; ++stelle) {
            const QTemporaryDir ordner;
            Kopieren(vorlage_.path(), ordner.path());
            int nummer = 0;
            {
                Schrank schrank(ordner.path());
                QVERIFY(schrank.Oeffnen());
                connect(&schrank.sicherungen, &Sicherungen::Gescheitert, this, [&](const QString &text) {
                    ++gesagt;
                    QVERIFY2(IsGermanMessage(text.section('\n', 0, 0)), qPrintable(text));
                });
                DiskCalls aufrufe;
                aufrufe.below = ordner.path();
                aufrufe.waits = false;
                aufrufe.half = halb;
                aufrufe.before = [&](const Change &) { return ++nummer == stelle ? fehler : 0; };
                for (const auto &schritt : schritte) {
                    if (!schrank.kartei.IsOpen())
                        schrank.Oeffnen();
                    try {
                        schritt(schrank);
                    } catch (const StoreError &grund) {
                        ++gesagt;
                        QVERIFY2(IsGermanMessage(grund.Text()), qPrintable(grund.Text()));
                    }
                }
                schrank.Liste();
            }
            Schrank danach(ordner.path());
            QVERIFY2(danach.Liste().size() >= 1, qPrintable(QString::number(stelle)));
            QVERIFY2(danach.Oeffnen(), qPrintable(QString::number(stelle)));
            danach.kartei.CloseCardFile();
            // An answer that failed is missing from all that comes behind it.
            if (zurueck)
                QVERIFY2(staende.contains(Karten(danach.Box())), qPrintable(QString::number(stelle)));
            danach.Pruefen();
            if (QTest::currentTestFailed())
                qFatal("change %d", stelle);
            if (nummer < stelle)
                break;
        }
        qInfo("%d changes, %d told", stelle - 1, gesagt);
        QVERIFY(stelle > 15 && gesagt > 10);
    }

    // A damaged file, before something else takes its place.
    void WhatIsKeptIsThereAfterAPowerFailure()
    {
        const QTemporaryDir ordner;
        Kopieren(vorlage_.path(), ordner.path());
        Schrank schrank(ordner.path());
        QFile box(schrank.Box());
        QVERIFY(box.open(QIODevice::ReadOnly));
        const QByteArray inhalt = box.readAll();
        Plattenspur spur(ordner.path());
        QVERIFY(schrank.sicherungen.Aufheben(schrank.Box(), ".kaputt"));
        spur.Gemeldet();
        int gemeldet = 0;
        for (const Stromausfall::Bild &platte : spur.bilder) {
            if (platte.gemeldet == 0)
                continue;
            ++gemeldet;
            const auto aufgehoben =
                std::find_if(platte.dateien.begin(), platte.dateien.end(),
                             [](const auto &datei) { return datei.first.endsWith(".kaputt"); });
            QVERIFY(aufgehoben != platte.dateien.end());
            QVERIFY(aufgehoben->second == inhalt);
        }
        QVERIFY(gemeldet > 0);
    }

    void APowerFailureLeavesBoxAndBackupsWhole_data() { Was(); }

    void APowerFailureLeavesBoxAndBackupsWhole()
    {
        QFETCH(bool, zurueck);
        const Ablauf schritte = zurueck ? Zurueckgeholt() : Sichern();
        QTemporaryDir ordner;
        Kopieren(vorlage_.path(), ordner.path());
        QTemporaryDir probe;
        Kopieren(vorlage_.path(), probe.path());
        const QList<QByteArray> staende = Staende(probe.path(), schritte);
        QList<Stromausfall::Bild> platten;
        QList<qsizetype> sicherungen; // as many are there behind each step
        {
            Schrank schrank(ordner.path());
            QVERIFY(schrank.Oeffnen());
            Plattenspur spur(ordner.path());
            sicherungen << 1;
            for (const auto &schritt : schritte) {
                schritt(schrank);
                sicherungen << schrank.Liste().size();
                spur.Gemeldet();
            }
            platten = spur.bilder;
        }
        QCOMPARE(sicherungen.last(), zurueck ? 2 : 3);
        QVERIFY2(platten.size() > 50, qPrintable(QString::number(platten.size())));
        const bool kurz = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS");
        const int jede = kurz ? 4 : 1;
        int vor = 0, nach = 0;
        for (qsizetype i = 0; i < platten.size(); i += jede) {
            const Stromausfall::Bild &platte = platten[i];
            const QTemporaryDir danach;
            const QTemporaryDir roh;
            for (const auto &[name, bytes] : platte.dateien) {
                const QString dort = roh.path() + name.mid(ordner.path().size());
                QDir().mkpath(QFileInfo(dort).path());
                QFile datei(dort);
                QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size());
            }
            Kopieren(roh.path(), danach.path());
            Schrank schrank(danach.path());
            QVERIFY2(schrank.Liste().size() >= sicherungen[platte.gemeldet], qPrintable(QString::number(i)));
            QVERIFY2(schrank.Oeffnen(), qPrintable(QString::number(i)));
            schrank.kartei.CloseCardFile();
            const QByteArray karten = Karten(schrank.Box());
            const bool davor = karten == staende[platte.gemeldet];
            QVERIFY2(davor || karten == staende.value(platte.gemeldet + 1),
                     qPrintable(u"disk %1 after %2 steps"_s.arg(i).arg(platte.gemeldet)));
            (davor ? vor : nach) += 1;
            schrank.Pruefen();
            if (QTest::currentTestFailed())
                qFatal("disk %lld", static_cast<long long>(i));
        }
        qInfo("%d disks: %d before, %d after a step", vor + nach, vor, nach);
        QVERIFY(kurz || (vor > 0 && nach > 0));
    }
};

PAUKFIX_CORE_TEST(SicherungenPlatteTest)
#include "SicherungenPlatteTest.moc"
