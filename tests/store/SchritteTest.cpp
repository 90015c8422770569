// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"
#include "CardBulk.h"
#include "CardTransaction.h"
#include "KarteEinordnen.h"
#include "KarteLoeschen.h"
#include "KarteiOeffner.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "Stromausfall.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <SQLiteCpp/Statement.h>

#include <functional>
#include <random>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using VollePlatte::Art;
using VollePlatte::Zustand;

// Every row of the cards with its row id, each value with its type, as the engine holds it.
QByteArray Inhalt(SQLite::Database &database)
{
    QByteArray inhalt;
    SQLite::Statement zeilen(database, R"(SELECT _rowid_,* FROM "Lernkarten" ORDER BY _rowid_)");
    while (zeilen.executeStep()) {
        for (int i = 0; i < zeilen.getColumnCount(); ++i) {
            const SQLite::Column wert = zeilen.getColumn(i);
            inhalt += QByteArray::number(wert.getType()) + ':';
            if (wert.isFloat())
                inhalt += QByteArray::number(wert.getDouble(), 'g', 17);
            else
                inhalt += QByteArray::fromStdString(wert.getString());
            inhalt += '|';
        }
        inhalt += '\n';
    }
    return inhalt;
}

QByteArray InhaltDerDatei(const QString &pfad)
{
    SQLite::Database database(pfad.toStdString(), SQLite::OPEN_READONLY);
    return Inhalt(database);
}

// The numbers that a box shows, and those that it hands out next.
QByteArray Zahlen(const CardStore &kartei)
{
    QByteArray zahlen;
    const auto zahl = [&](int wert) { zahlen += QByteArray::number(wert) + ' '; };
    for (const Fach &fach : kartei.FachInfo) {
        zahl(fach.Anzahl);
        zahl(fach.LfdMax);
    }
    for (const qint16 anzahl : kartei.sitzung.BegAnz())
        zahl(anzahl);
    zahl(kartei.sitzung.RichtigZaehler());
    zahl(kartei.sitzung.FalschZaehler());
    zahl(kartei.HighestCardNumber);
    return zahlen + kartei.sitzung.Beginn().toString(Qt::ISODate).toLatin1();
}

// The file's content and the box's numbers.
QByteArray Abdruck(const QByteArray &inhalt, const CardStore &kartei)
{
    return QCryptographicHash::hash(inhalt + Zahlen(kartei), QCryptographicHash::Sha256);
}

// A box on disk, open in a store of its own.
struct Kasten
{
    explicit Kasten(const QList<CardRecord> &karten)
    {
        MakeCardFile(Pfad(), karten);
        clock.perSecond = 1;
        kartei.KarteiPfad = verzeichnis.path();
        Oeffnen();
    }

    QString Pfad() const { return verzeichnis.filePath(u"box.pzb"_s); }

    void Oeffnen()
    {
        QString name = u"box.pzb"_s;
        oeffner.OpenCardFile(name);
    }

    bool Stehen(int fach)
    {
        kartei.Karten().SetIndex(u"BoxKey");
        kartei.Karten().Seek(CardRecordset::Comparison::AtLeast, fach);
        return !kartei.Karten().NoMatch() && kartei.Felder().FachNr.Number() == fach;
    }

    void Antworten(int fach, bool richtig)
    {
        if (!Stehen(fach))
            qFatal("compartment %d is empty", fach);
        KarteEinordnen(kartei, Gefragt(kartei), richtig);
    }

    QByteArray Stand()
    {
        QByteArray inhalt;
        kartei.Karten().Beside([&](SQLite::Database &database) { inhalt = Inhalt(database); });
        return inhalt;
    }

    QByteArray Abdruck() { return ::Abdruck(Stand(), kartei); }

    QTemporaryDir verzeichnis;
    TestMeldungen meldungen;
    TestClock clock;
    CardStore kartei;
    KarteiOeffner oeffner{kartei, meldungen, clock};
};

void Importieren(CardStore &kartei, int karten, const QString &text)
{
    const Aenderung schritt(kartei, u"Import"_s);
    CardTransaction zug(kartei.Karten());
    AddSimpleCards(kartei, [&](SimpleCard &karte) {
        karte = {text, u"Antwort"_s, u"Thema"_s};
        return karten-- > 0;
    });
    zug.Commit();
}

// As a tool that opens the file again, which counts it anew and begins a session.
void NachNeu(Kasten &kasten, bool alle)
{
    CardStore &kartei = kasten.kartei;
    {
        const Aenderung schritt(kartei, u"Nach Neu"_s);
        CardTransaction zug(kartei.Karten());
        if (alle)
            MoveAllToNew(kartei.Karten());
        else
            MoveDoneToNew(kartei.Karten(), kartei.FachInfo[FachNeu].LfdMax);
        zug.Commit();
    }
    const SchritteBewahren schritte(kartei);
    kasten.clock.jetzt = kasten.clock.jetzt.addSecs(60);
    kasten.Oeffnen();
}

// Changes that no rule has announced, in types that no rule writes.
void Ueberschreiben(CardStore &kartei, int wie)
{
    static const char *const aenderungen[] = {
        R"(UPDATE "Lernkarten" SET "Frage"=x'00ff00',"Picture_1_Name"=NULL WHERE _rowid_%5=1)",
        R"(UPDATE "Lernkarten" SET "Frage"=CAST(x'4100420a' AS TEXT),"PictureTop"=1.5 WHERE _rowid_%5=2)",
        R"(UPDATE "Lernkarten" SET "Antwort_ch_3"=1-"Antwort_ch_3","Picture_4_type"='007')",
        R"(UPDATE "Lernkarten" SET "Antwort_2"='' WHERE "Antwort_2" IS NULL AND _rowid_%3=0)",
    };
    CardTransaction zug(kartei.Karten());
    kartei.Karten().Past([&](SQLite::Database &database) { database.exec(aenderungen[wie]); });
    zug.Commit();
}

QList<CardRecord> VieleKarten()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= 40; ++i) // some numbers are nearly used up
        karten << MakeCard(i, i % 7, i % 7 == 2 ? 32700 + i : i);
    karten << MakeCard(61, 1, 32766);
    karten[3].Frage = QString(9000, u'f');
    return karten;
}

} // namespace

class SchritteTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void AnAnswerIsTakenBackWithAllThatItCounted()
    {
        Kasten kasten({MakeCard(12, 2, 1), MakeCard(13, 2, 2)});
        CardStore &kartei = kasten.kartei;
        const QByteArray vorher = kasten.Abdruck();
        QCOMPARE(kartei.schritte.Zurueckzunehmen(), QString());
        kasten.Antworten(2, true);
        QCOMPARE(kartei.schritte.Zurueckzunehmen(), u"Antwort auf Frage 12"_s);
        QCOMPARE(kartei.schritte.Wiederholbar(), QString());
        const QByteArray nachher = kasten.Abdruck();
        QVERIFY(nachher != vorher);

        kartei.schritte.Zuruecknehmen();
        QCOMPARE(kasten.Abdruck(), vorher);
        QCOMPARE(kartei.sitzung.RichtigZaehler(), 0);
        QCOMPARE(kartei.schritte.Zurueckzunehmen(), QString());
        QCOMPARE(kartei.schritte.Wiederholbar(), u"Antwort auf Frage 12"_s);
        QVERIFY(kasten.Stehen(2));
        QCOMPARE(kartei.Felder().FrageNr.Integer(), 12);

        kartei.schritte.Wiederholen();
        QCOMPARE(kasten.Abdruck(), nachher);
        QCOMPARE(kartei.schritte.Wiederholbar(), QString());
        kartei.CloseCardFile();
        QCOMPARE(FaultIn(kasten.Pfad()), QString());
    }

    void EveryOfTenThousandStepsLeadsToJustTheBoxThatWas()
    {
        const bool kurz = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS");
        const int schritte = kurz ? 500 : 10'000;
        Kasten kasten(VieleKarten());
        CardStore &kartei = kasten.kartei;
        std::mt19937 zufall(7);
        const auto rnd = [&](int n) { return static_cast<int>(zufall() % static_cast<unsigned>(n)); };
        // What the box was behind each step, and which of them it is in.
        QByteArray stand = kasten.Stand();
        QList<QByteArray> staende{Abdruck(stand, kartei)};
        qsizetype ort = 0;
        int zurueck = 0, wieder = 0;
        for (int schritt = 0; schritt < schritte; ++schritt) {
            const int tun = rnd(100);
            if (tun < 35) {
                QCOMPARE(kartei.schritte.Zurueckzunehmen().isEmpty(), ort == 0);
                kartei.schritte.Zuruecknehmen();
                zurueck += ort > 0 ? 1 : 0;
                ort = std::max<qsizetype>(ort - 1, 0);
            } else if (tun < 55) {
                QCOMPARE(kartei.schritte.Wiederholbar().isEmpty(), ort + 1 == staende.size());
                kartei.schritte.Wiederholen();
                wieder += ort + 1 < staende.size() ? 1 : 0;
                ort = std::min(ort + 1, staende.size() - 1);
            } else {
                if (tun < 80) {
                    if (const int fach = rnd(6); kasten.Stehen(fach))
                        KarteEinordnen(kartei, Gefragt(kartei), rnd(3) != 0);
                } else if (tun < 88) {
                    if (kartei.Karten().RecordCount() > 20 && kasten.Stehen(rnd(7)))
                        QVERIFY(KarteLoeschen(kartei).geloescht);
                } else if (tun < 93) {
                    if (kartei.Karten().RecordCount() < 80)
                        Importieren(kartei, 1 + rnd(9), QString(rnd(3000), QChar(u'a' + rnd(26))));
                } else if (tun < 95) {
                    NachNeu(kasten, rnd(2) == 0);
                } else {
                    Ueberschreiben(kartei, rnd(4));
                    kartei.schritte.Zurueckzunehmen(); // as the menu asks when the box is drawn
                }
                QByteArray danach = kasten.Stand();
                if (danach != stand) {
                    staende.resize(++ort);
                    staende << Abdruck(danach, kartei);
                } else {
                    staende[ort] = Abdruck(stand, kartei); // opened again it has begun another session
                }
            }
            stand = kasten.Stand();
            QVERIFY2(
                Abdruck(stand, kartei) == staende[ort],
                qPrintable(u"step %1, %2"_s.arg(schritt).arg(tun) + kasten.meldungen.Texte().join(u'|')));
            if (schritt % 10 == 0) {
                QByteArray befund;
                kartei.Karten().Beside([&](SQLite::Database &database) {
                    befund =
                        QByteArray::fromStdString(database.execAndGet("PRAGMA integrity_check").getString());
                });
                QCOMPARE(befund, "ok");
            }
            if (schritt % 500 == 0) { // what lies on the disk is what the connection shows
                const QString kopie = kasten.verzeichnis.filePath(u"kopie.pzb"_s);
                QVERIFY(QFile::copy(kasten.Pfad(), kopie));
                QCOMPARE(InhaltDerDatei(kopie), stand);
                QVERIFY(QFile::remove(kopie));
            }
        }
        QVERIFY(zurueck > schritte / 10 && wieder > schritte / 20);
        kartei.CloseCardFile();
        QCOMPARE(FaultIn(kasten.Pfad()), QString());
    }

    void AFileThatWasClosedLosesItsHistory()
    {
        Kasten kasten(VieleKarten());
        kasten.Antworten(3, false);
        kasten.Oeffnen();
        QCOMPARE(kasten.kartei.schritte.Zurueckzunehmen(), QString());
        const QByteArray vorher = kasten.Abdruck();
        kasten.kartei.schritte.Zuruecknehmen();
        QCOMPARE(kasten.Abdruck(), vorher);
    }

    void AFileThatWasChangedWhileItWasClosedLosesItsHistory()
    {
        Kasten kasten(VieleKarten());
        kasten.Antworten(3, false);
        const SchritteBewahren schritte(kasten.kartei);
        kasten.kartei.CloseCardFile();
        {
            SQLite::Database fremd(kasten.Pfad().toStdString(), SQLite::OPEN_READWRITE);
            fremd.exec(R"(UPDATE "Lernkarten" SET "Frage"='fremd' WHERE "FrageNr"=5)");
        }
        kasten.Oeffnen();
        QCOMPARE(kasten.kartei.schritte.Zurueckzunehmen(), QString());
    }

    void ANewChangeEndsWhatCouldBeDoneAgain()
    {
        Kasten kasten(VieleKarten());
        kasten.Antworten(3, false);
        kasten.kartei.schritte.Zuruecknehmen();
        kasten.Antworten(4, true);
        QCOMPARE(kasten.kartei.schritte.Wiederholbar(), QString());
        const QByteArray nachher = kasten.Abdruck();
        kasten.kartei.schritte.Wiederholen();
        QCOMPARE(kasten.Abdruck(), nachher);
    }

    void WhatWasRolledBackIsNoStep()
    {
        Kasten kasten(VieleKarten());
        kasten.Antworten(3, false);
        {
            const Aenderung schritt(kasten.kartei, u"Import"_s);
            const CardTransaction zug(kasten.kartei.Karten());
            MoveAllToNew(kasten.kartei.Karten());
        }
        QVERIFY(kasten.kartei.schritte.Zurueckzunehmen().startsWith(u"Antwort auf Frage"));
    }

    // Undone, an import is what redoing it needs: its cards. More of them than are kept are not redone.
    void TheMemoryIsBoundedAndTheOldestStepsGo()
    {
        Kasten kasten(VieleKarten());
        CardStore &kartei = kasten.kartei;
        const QByteArray vorher = kasten.Abdruck();
        for (int i = 0; i < 9; ++i) { // long texts that are overwritten: 9 times 10 MB to be kept
            const Aenderung schritt(kartei, u"Schritt %1"_s.arg(i));
            kartei.Karten().MoveFirst();
            kartei.Karten().Edit();
            kartei.Felder().Frage.Set(QByteArray(10'000'000, static_cast<char>('a' + i)));
            kartei.Karten().Update();
        }
        int zurueck = 0;
        while (!kartei.schritte.Zurueckzunehmen().isEmpty()) {
            kartei.schritte.Zuruecknehmen();
            ++zurueck;
        }
        QCOMPARE(zurueck, 6);
        QVERIFY(kasten.Abdruck() != vorher);
        QCOMPARE(kartei.schritte.Wiederholbar(), u"Schritt 3"_s);

        Importieren(kartei, 20, QString(1'000'000, u'x')); // 40 MB: formatted and plain
        QVERIFY(!kartei.schritte.IstEndgueltig());
        kartei.schritte.Zuruecknehmen();
        QCOMPARE(kartei.schritte.Wiederholbar(), u"Import"_s);
        Importieren(kartei, 40, QString(1'000'000, u'x'));
        QVERIFY(kartei.schritte.IstEndgueltig());
        const QByteArray voll = kasten.Abdruck();
        kartei.schritte.Zuruecknehmen();
        QVERIFY(kasten.Abdruck() != voll);
        QCOMPARE(kartei.schritte.Wiederholbar(), QString());
        QCOMPARE(kartei.Karten().RecordCount(), static_cast<int>(VieleKarten().size()));
    }

    void WhatIsTooLargeToBeTakenBackIsNamed()
    {
        Kasten kasten(VieleKarten());
        CardStore &kartei = kasten.kartei;
        kasten.Antworten(3, false);
        QCOMPARE(kartei.schritte.ZuGross(), QString());
        Importieren(kartei, 40, QString(1'000'000, u'x'));
        {
            const Aenderung schritt(kartei, u"Leeren"_s);
            CardTransaction zug(kartei.Karten());
            kartei.Karten().Past([](SQLite::Database &database) {
                database.exec(R"(DELETE FROM "Lernkarten" WHERE "FrageNr">61)");
            });
            zug.Commit();
        }
        QVERIFY(kartei.Karten().RecordCount() > 0);
        QCOMPARE(kartei.schritte.Zurueckzunehmen(), QString());
        QCOMPARE(kartei.schritte.ZuGross(), u"Leeren"_s);
        kasten.Antworten(4, true);
        QVERIFY(kartei.schritte.Zurueckzunehmen().startsWith(u"Antwort"));
        QCOMPARE(kartei.schritte.ZuGross(), QString());
    }

    void AFailureOfTheDiskLeavesFileAndHistory_data()
    {
        QTest::addColumn<Zustand>("zustand");
        QTest::addColumn<int>("nummer");
        QTest::newRow("full") << Zustand::Voll << Fehler::DatentraegerVoll;
        QTest::newRow("broken") << Zustand::Kaputt << Fehler::GeraeteFehler;
    }

    void AFailureOfTheDiskLeavesFileAndHistory()
    {
        QFETCH(Zustand, zustand);
        QFETCH(int, nummer);
        Kasten kasten(VieleKarten());
        CardStore &kartei = kasten.kartei;
        const QByteArray anfang = kasten.Abdruck();
        kasten.Antworten(3, false);
        const QByteArray vorher = kasten.Abdruck();
        VollePlatte::Setzen(zustand);
        try {
            kartei.schritte.Zuruecknehmen();
            VollePlatte::Setzen(Zustand::Gesund);
            QFAIL("taken back on a disk that takes nothing");
        } catch (const StoreError &fehler) {
            VollePlatte::Setzen(Zustand::Gesund);
            QCOMPARE(fehler.Number(), nummer);
            QVERIFY2(IsGermanMessage(fehler.Text()), qPrintable(fehler.Text()));
        }
        QCOMPARE(kasten.Abdruck(), vorher);
        QVERIFY(kartei.schritte.Zurueckzunehmen().startsWith(u"Antwort auf Frage"));
        kartei.schritte.Zuruecknehmen();
        QCOMPARE(kasten.Abdruck(), anfang);
        kartei.CloseCardFile();
        QCOMPARE(FaultIn(kasten.Pfad()), QString());
    }

    void AFileThatIsNoLongerThereIsToldAndTheHistoryStays()
    {
        Kasten kasten(VieleKarten());
        const QByteArray anfang = kasten.Abdruck();
        kasten.Antworten(3, false);
        const QString weg = kasten.verzeichnis.filePath(u"weg.pzb"_s);
        QVERIFY(QFile::rename(kasten.Pfad(), weg));
        try {
            kasten.kartei.schritte.Zuruecknehmen();
            QFAIL("taken back in a file that is not there");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), Fehler::KarteiNichtGefunden);
        }
        QVERIFY(QFile::rename(weg, kasten.Pfad()));
        kasten.kartei.schritte.Zuruecknehmen();
        QCOMPARE(kasten.Abdruck(), anfang);
    }

    void AnyCallToTheDiskMayFailOnce_data()
    {
        QTest::addColumn<Art>("art");
        for (const auto &[name, art] : VollePlatte::AlleArten)
            QTest::newRow(name) << art;
    }

    // Whatever fails while steps are made, taken back and done again: the file is in one of the two states
    // around the step, and the history leads from just there to all others.
    void AnyCallToTheDiskMayFailOnce()
    {
        QFETCH(Art, art);
        int gemeldet = 0, trotzdem = 0;
        const int weiter = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 7 : 1;
        for (int lauf = 1;; lauf += weiter) {
            Kasten kasten(VieleKarten());
            CardStore &kartei = kasten.kartei;
            QList<QByteArray> staende{kasten.Stand()};
            const std::function<void()> schritte[] = {[&] { kasten.Antworten(3, false); },
                                                      [&] { Importieren(kartei, 3, QString(5000, u'i')); },
                                                      [&] {
                                                          kasten.Stehen(4);
                                                          KarteLoeschen(kartei);
                                                      }};
            for (const auto &schritt : schritte) {
                schritt();
                staende << kasten.Stand();
            }
            qsizetype ort = 3;
            const auto was = [&] { return qPrintable(u"call %1, at %2"_s.arg(lauf).arg(ort)); };
            VollePlatte::Scheitern(lauf, art);
            for (const int richtung : {-1, -1, +1, -1, -1, +1, +1, +1}) {
                const auto drehen = [&] {
                    richtung < 0 ? kartei.schritte.Zuruecknehmen() : kartei.schritte.Wiederholen();
                };
                QString gesagt;
                try {
                    drehen();
                } catch (const StoreError &fehler) {
                    gesagt = fehler.Text();
                    ++gemeldet;
                    QVERIFY2(IsGermanMessage(gesagt), qPrintable(gesagt));
                }
                const QByteArray gefunden = kasten.Stand();
                QVERIFY2(gesagt.isEmpty() ||
                             gesagt.endsWith(u"Es ist trotzdem geschehen.") == (gefunden != staende[ort]),
                         qPrintable(gesagt));
                if (!gesagt.isEmpty() && gefunden == staende[ort])
                    drehen(); // nothing has happened: so it can be tried again
                else if (!gesagt.isEmpty())
                    ++trotzdem;
                ort += richtung;
                QVERIFY2(kasten.Stand() == staende[ort], was());
            }
            const bool gescheitert = VollePlatte::Gescheitert().has_value();
            VollePlatte::Scheitern(0);
            kartei.CloseCardFile();
            QCOMPARE(FaultIn(kasten.Pfad()), QString());
            QVERIFY2(InhaltDerDatei(kasten.Pfad()) == staende[ort], was());
            if (!gescheitert) {
                qInfo("%d calls, %d reported, %d done all the same", lauf - 1, gemeldet, trotzdem);
                QVERIFY(lauf > 100 && gemeldet > 30);
                return;
            }
        }
    }

    void NothingThatWasTakenBackComesAgainAfterAPowerFailure()
    {
        Kasten kasten(VieleKarten());
        CardStore &kartei = kasten.kartei;
        kartei.CloseCardFile();
        QList<QByteArray> staende;
        QList<Stromausfall::Bild> platten;
        {
            Stromausfall strom;
            kasten.Oeffnen();
            staende << kasten.Stand();
            const std::function<void()> schritte[] = {
                [&] { kasten.Antworten(3, false); }, [&] { kartei.schritte.Zuruecknehmen(); },
                [&] { Importieren(kartei, 3, u"neu"_s); }, [&] { kartei.schritte.Zuruecknehmen(); },
                [&] { kartei.schritte.Wiederholen(); }};
            for (const auto &schritt : schritte) {
                schritt();
                staende << kasten.Stand();
                strom.Gemeldet();
            }
            kartei.CloseCardFile();
            platten = strom.bilder;
        }
        QVERIFY(platten.size() > 100);
        int vor = 0, nach = 0; // of the disks in the midst of a step
        for (const Stromausfall::Bild &platte : platten) {
            const QTemporaryDir danach;
            for (const auto &[name, bytes] : platte.dateien)
                WriteFileSynced(danach.filePath(QFileInfo(name).fileName()), bytes);
            CardStore offen;
            TestMeldungen meldungen;
            KarteiOeffner oeffner(offen, meldungen, kasten.clock);
            offen.KarteiPfad = danach.path();
            QString name = u"box.pzb"_s;
            oeffner.OpenCardFile(name);
            QVERIFY2(offen.IsOpen(), qPrintable(meldungen.Texte().join(u'|')));
            offen.CloseCardFile();
            const QString pfad = danach.filePath(u"box.pzb"_s);
            QCOMPARE(FaultIn(pfad), QString());
            const QByteArray inhalt = InhaltDerDatei(pfad);
            const bool davor = inhalt == staende[platte.gemeldet];
            QVERIFY2(davor ||
                         (platte.gemeldet + 1 < staende.size() && inhalt == staende[platte.gemeldet + 1]),
                     qPrintable(u"after %1 steps"_s.arg(platte.gemeldet)));
            (davor ? vor : nach) += 1;
        }
        QVERIFY(vor > 0 && nach > 0);
    }
};

PAUKFIX_CORE_TEST(SchritteTest)
#include "SchritteTest.moc"
