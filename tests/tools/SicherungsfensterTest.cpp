// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sicherungsfenster.h"

#include "Hand.h"
#include "KarteEinordnen.h"
#include "ResourceLimit.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QFile>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace paukfix;

namespace {

// A box of five cards that was learned on three days.
struct DreiTage : Werkstatt
{
    DreiTage()
    {
        oeffner.SichernMit(sicherungen);
        clock.jetzt = QDateTime({2026, 11, 20}, {18, 2});
        Oeffnen(
            {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3), MakeCard(4, 1, 1), MakeCard(5, 1, 2)},
            u"box.pzb"_s);
        Antworten();
        clock.jetzt = clock.jetzt.addDays(1);
        Antworten();
        clock.jetzt = clock.jetzt.addDays(1);
        Antworten();
    }

    void Antworten()
    {
        store.Karten().SetIndex(u"BoxKey");
        store.Karten().Seek(CardRecordset::Comparison::AtLeast, 0);
        KarteEinordnen(store, Gefragt(store), true);
    }

    Sicherungsfenster &Zeigen()
    {
        fenster = std::make_unique<Sicherungsfenster>(oeffner, sicherungen, Alle());
        hand.Nimm(*fenster);
        hand.Zeigen();
        return *fenster;
    }

    QStringList Spalte(int spalte) const
    {
        QStringList texte;
        auto *liste = hand.Finde<QTreeWidget>("Liste");
        for (int zeile = 0; zeile < liste->topLevelItemCount(); ++zeile)
            texte << liste->topLevelItem(zeile)->text(spalte);
        return texte;
    }

    Sicherungen sicherungen{Pfad("Sicherungen"), clock};
    std::unique_ptr<Sicherungsfenster> fenster;
    Hand hand;
};

} // namespace

class SicherungsfensterTest : public QObject
{
    Q_OBJECT

private slots:

    void TheBackupsAreListedWithTimeCardsAndCompartments()
    {
        DreiTage b;
        b.Zeigen();
        QCOMPARE(b.Spalte(0), (QStringList{"heute 18:02", "gestern 18:02", "20.11.2026 18:02"}));
        QCOMPARE(b.Spalte(1), (QStringList{"5", "5", "5"}));
        QCOMPARE(b.Spalte(2), (QStringList{"1", "2", "3"})); // Neu, before each day's answer
        QCOMPARE(b.Spalte(3), (QStringList{"2", "2", "2"}));
        QCOMPARE(b.Spalte(4), (QStringList{"2", "1", "0"}));
        QCOMPARE(b.hand.Text("Ueberschrift"), "Sicherungen von „box.pzb“");
    }

    void WhatChangedSinceIsSaidOfTheChosenOne()
    {
        DreiTage b;
        b.Zeigen();
        QCOMPARE(b.hand.Text("Seitdem"), "Seitdem: 1 Karte in einem anderen Fach.");
        QTest::keyClick(b.hand.Fokus(), Qt::Key_Down);
        QTest::keyClick(b.hand.Fokus(), Qt::Key_Down);
        QCOMPARE(b.hand.Text("Seitdem"), "Seitdem: 3 Karten in einem anderen Fach.");
    }

    void ThatOnlyTheOrderHasChangedIsSaidToo()
    {
        DreiTage b;
        b.oeffner.VorEingriff();
        b.Zeigen();
        QCOMPARE(b.hand.Text("Seitdem"), "Seitdem hat sich nichts geändert.");
        b.fenster.reset();
        b.store.Karten().Seek(CardRecordset::Comparison::AtLeast, 1);
        KarteEinordnen(b.store, Gefragt(b.store), false); // from compartment 1 to its back
        b.Zeigen();
        QCOMPARE(b.hand.Text("Seitdem"), "Seitdem hat sich nur die Reihenfolge in den Fächern geändert.");
    }

    void AnEarlierStateIsBroughtBackAndTheLaterOneKept()
    {
        DreiTage b;
        b.Zeigen();
        QTest::keyClick(b.hand.Fokus(), Qt::Key_End);
        const QByteArray spaeter = b.Bytes("box.pzb");
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.hand.Klick("cmdZurueckholen");
        QVERIFY(!b.fenster->isVisible());
        QCOMPARE(
            b.meldungen.Texte(),
            QStringList{"Soll die Kartei wieder so werden wie in der Sicherung vom 20.11.2026 18:02? Der "
                        "jetzige Stand wird vorher gesichert."});
        QVERIFY(b.store.IsOpen());
        QCOMPARE(b.store.FachInfo[0].Anzahl, 3);
        QCOMPARE(b.store.FachInfo[2].Anzahl, 0);
        const Sicherungsliste liste = b.sicherungen.Liste(b.Pfad("box.pzb"));
        QCOMPARE(liste.size(), 4);
        QFile neueste(liste.first().datei);
        QVERIFY(neueste.open(QIODevice::ReadOnly));
        QCOMPARE(neueste.readAll(), spaeter);
    }

    void NoLeavesEverythingAsItIs()
    {
        DreiTage b;
        b.Zeigen();
        const QByteArray vorher = b.Bytes("box.pzb");
        b.hand.Klick("cmdZurueckholen");
        QCOMPARE(b.meldungen.vorgaben, QList{Meldungen::Antwort::Nein});
        QCOMPARE(b.Bytes("box.pzb"), vorher);
        QVERIFY(b.store.IsOpen());
    }

    // Though nothing but the order in a compartment has changed since the last backup.
    void WhatCannotBeBackedUpIsNotReplaced()
    {
        DreiTage b;
        b.oeffner.VorEingriff();
        b.sicherungen.Liste(b.Pfad("box.pzb"));
        b.store.Karten().Seek(CardRecordset::Comparison::AtLeast, 1);
        KarteEinordnen(b.store, Gefragt(b.store), false); // from compartment 1 to its back
        b.Zeigen();
        QTest::keyClick(b.hand.Fokus(), Qt::Key_End);
        const QByteArray vorher = b.Bytes("box.pzb");
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        {
            const FullDisk voll(100);
            b.hand.Klick("cmdZurueckholen");
        }
        QCOMPARE(b.meldungen.Texte().last(),
                 "Der jetzige Stand konnte nicht gesichert werden: Es wurde nichts geändert.");
        QCOMPARE(b.Bytes("box.pzb"), vorher);
        QVERIFY(b.store.IsOpen());
    }

    void ABackupBecomesABoxOfItsOwn()
    {
        DreiTage b;
        Sicherungsfenster &fenster = b.Zeigen();
        QSignalSpy neue(&fenster, &Sicherungsfenster::NeueKartei);
        QTest::keyClick(b.hand.Fokus(), Qt::Key_End);
        b.dialoge.pfade = {b.Pfad("alt.pzb")};
        const QByteArray vorher = b.Bytes("box.pzb");
        b.hand.Klick("cmdAlsNeue");
        QCOMPARE(neue.size(), 1);
        QCOMPARE(neue.first().first().toString(), b.Pfad("alt.pzb"));
        QCOMPARE(ReadCards(b.Pfad("alt.pzb")).size(), 5);
        QCOMPARE(b.Bytes("box.pzb"), vorher);
    }

    void TheOpenBoxIsNoPlaceForANewOne()
    {
        DreiTage b;
        b.Zeigen();
        b.dialoge.pfade = {b.Pfad("box.pzb")};
        const QByteArray vorher = b.Bytes("box.pzb");
        b.hand.Klick("cmdAlsNeue");
        QCOMPARE(b.meldungen.Texte().last(),
                 "Diese Kartei ist gerade geöffnet. Bitte einen anderen Namen wählen.");
        QCOMPARE(b.Bytes("box.pzb"), vorher);
    }

    void ADamagedBackupCanOnlyBeLookedAt()
    {
        DreiTage b;
        const QString neueste = b.sicherungen.Liste(b.Pfad("box.pzb")).first().datei;
        QFile datei(neueste);
        QVERIFY(datei.open(QIODevice::WriteOnly | QIODevice::Truncate));
        datei.write(QByteArray(5000, 'x'));
        datei.close();
        b.Zeigen();
        QCOMPARE(b.Spalte(1).first(), "beschädigt");
        QVERIFY(!b.hand.Finde("cmdZurueckholen")->isEnabled());
        QVERIFY(!b.hand.Finde("cmdAlsNeue")->isEnabled());
        QTest::keyClick(b.hand.Fokus(), Qt::Key_Down);
        QVERIFY(b.hand.Finde("cmdZurueckholen")->isEnabled());
    }

    void ABoxWithALongNameHasRoomInASmallWindow()
    {
        const QString name =
            u"Donaudampfschifffahrtselektrizitätenhauptbetriebswerk"_s.repeated(3) + u".pzb"_s;
        Werkstatt b;
        b.Oeffnen({MakeCard(1, 0, 1)}, name);
        Sicherungen sicherungen(b.Pfad("Sicherungen"), b.clock);
        Sicherungsfenster fenster(b.oeffner, sicherungen, b.Alle());
        Hand hand(fenster);
        hand.Zeigen();
        QCOMPARE(hand.Text("Ueberschrift").remove(QChar(0x200B)),
                 "Von „" + name + "“ gibt es noch keine Sicherung.");
        fenster.resize(640, 430);
        QTRY_COMPARE(fenster.size(), QSize(640, 430));
        QVERIFY(fenster.rect().contains(
            QRect(hand.Finde("cmdZurueck")->mapTo(&fenster, QPoint()), hand.Finde("cmdZurueck")->size())));
        QVERIFY(!hand.Finde("cmdZurueckholen")->isEnabled() && !hand.Finde("cmdAlsNeue")->isEnabled());
    }

    void EveryControlHasItsNames()
    {
        DreiTage b;
        CheckNames(b.Zeigen());
    }
};

PAUKFIX_TEST(SicherungsfensterTest)
#include "SicherungsfensterTest.moc"
