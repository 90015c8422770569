// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"
#include "AsciiTausch.h"
#include "KarteEinordnen.h"
#include "NachNeu.h"
#include "NeueKartei.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QTest>

#include <functional>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Werkzeug = std::function<void(const Werkbank &)>;

QList<CardRecord> Karten()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= 24; ++i)
        karten << MakeCard(i, i % 7, i);
    return karten;
}

// What the open file holds, and what the box counts and hands out next.
QString Stand(CardStore &store)
{
    QString stand;
    CardRecordset &karten = store.Karten();
    for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext()) {
        const CardRecord karte = karten.Read();
        stand += u"%1 %2 %3 %4 %5|"_s.arg(karte.FrageNr)
                     .arg(karte.FachNr)
                     .arg(karte.FachLfdNr)
                     .arg(karte.Frage, karte.Antwort_1_Klartext);
    }
    for (const Fach &fach : store.FachInfo)
        stand += u"%1/%2 "_s.arg(fach.Anzahl).arg(fach.LfdMax);
    return stand + u"%1, %2 right, %3 wrong"_s.arg(store.HighestCardNumber)
                       .arg(store.sitzung.RichtigZaehler())
                       .arg(store.sitzung.FalschZaehler());
}

} // namespace

Q_DECLARE_METATYPE(Werkzeug)

class WerkzeugSchritteTest : public QObject
{
    Q_OBJECT

private slots:

    void WhatAToolHasChangedIsTakenBackAndDoneAgain_data()
    {
        QTest::addColumn<Werkzeug>("werkzeug");
        QTest::addColumn<QString>("name");
        QTest::newRow("import") << Werkzeug([](const Werkbank &bank) {
            QCOMPARE(AsciiImportieren(bank, "neu.txt", u';'), Ausgang::Gelungen);
        }) << u"Import von „neu.txt“"_s;
        QTest::newRow("append") << Werkzeug([](const Werkbank &bank) {
            QCOMPARE(KarteiAnhaengen(bank, bank.store.CardPath("quelle.pzb")), Ausgang::Gelungen);
        }) << u"Anhängen von „quelle.pzb“"_s;
        QTest::newRow("reset all") << Werkzeug([](const Werkbank &bank) {
            QCOMPARE(AlleNachNeu(bank), Ausgang::Gelungen);
        }) << u"Alle Karten nach Neu"_s;
        QTest::newRow("reset done") << Werkzeug([](const Werkbank &bank) {
            QCOMPARE(ErledigteNachNeu(bank), 3);
        }) << u"Erledigte Karten nach Neu"_s;
    }

    void WhatAToolHasChangedIsTakenBackAndDoneAgain()
    {
        QFETCH(Werkzeug, werkzeug);
        QFETCH(QString, name);
        Werkstatt w;
        w.Oeffnen(Karten());
        MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 2, 1), MakeCard(2, 3, 1)});
        w.Schreiben("neu.txt", "eins;one;Zahlen\r\nzwei;two;Zahlen\r\n");
        const QString anfang = Stand(w.store);
        w.store.Karten().MoveFirst();
        KarteEinordnen(w.store, Gefragt(w.store), true);
        const QString vorher = Stand(w.store);

        werkzeug(w.bank);
        const QString nachher = Stand(w.store);
        QVERIFY(nachher != vorher);
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), name);
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(Stand(w.store), vorher);
        w.store.schritte.Zuruecknehmen(); // the answer before it, of a session that was counted until then
        QCOMPARE(Stand(w.store), anfang);
        w.store.schritte.Wiederholen();
        QCOMPARE(w.store.schritte.Wiederholbar(), name);
        w.store.schritte.Wiederholen();
        QCOMPARE(Stand(w.store), nachher);
        QCOMPARE(w.meldungen.Texte(), QStringList());
        w.store.CloseCardFile();
        QCOMPARE(FaultIn(w.Pfad("offen.pzb")), QString());
    }

    void AToolThatChangesNothingKeepsTheHistory()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 1, 1)});
        w.store.Karten().MoveFirst();
        KarteEinordnen(w.store, Gefragt(w.store), true);
        QCOMPARE(ErledigteNachNeu(w.bank), 0);
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), u"Antwort auf Frage 1"_s);
    }

    void ABoxThatWasMadeOfAnotherBeginsItsHistory()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        w.store.Karten().MoveFirst();
        KarteEinordnen(w.store, Gefragt(w.store), true);
        QCOMPARE(KarteiSpiegeln(w.bank, "ziel.pzb"), Ausgang::Gelungen);
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), QString());
    }
};

PAUKFIX_CORE_TEST(WerkzeugSchritteTest)
#include "WerkzeugSchritteTest.moc"
