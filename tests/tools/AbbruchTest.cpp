// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"
#include "AsciiTausch.h"
#include "FremdAusgabe.h"
#include "FremdEinlesen.h"
#include "NachNeu.h"
#include "NeueKartei.h"
#include "Packauftrag.h"
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
    for (int i = 1; i <= 600; ++i)
        karten << MakeCard(i, i % 7, i);
    return karten;
}

Exportwahl AlleFelder()
{
    Exportwahl wahl(u';');
    wahl.form.anfuehrung = wahl.alleFelder = true;
    return wahl;
}

Importwahl Erneuern()
{
    Importwahl wahl(u';');
    wahl.vorhandene = Vorhandene::Erneuern;
    return wahl;
}

void Einlesen(const Werkbank &bank, const std::optional<QString> &neueKartei)
{
    const auto quelle = DeckOeffnen(bank.store.CardPath(u"deck.apkg"_s));
    Einlesewahl wahl;
    wahl.neueKartei = neueKartei;
    Eingelesenes ergebnis;
    FremdEinlesen(bank, *quelle, u"deck.apkg"_s, wahl, ergebnis);
}

void Ausgeben(const Werkbank &bank, Fremdform form)
{
    QString rest;
    FremdAusgeben(bank, u"ziel"_s, form, rest);
}

Importwahl AlleFelderEin()
{
    Importwahl wahl(u';');
    wahl.aufbau.form.anfuehrung = wahl.aufbau.alleFelder = true;
    return wahl;
}

} // namespace

Q_DECLARE_METATYPE(Werkzeug)

// Each tool is ended at every report of its progress: box, file and directory are as they were.
class AbbruchTest : public QObject
{
    Q_OBJECT

private slots:

    void AToolThatIsEndedHasDoneNothing_data()
    {
        QTest::addColumn<Werkzeug>("werkzeug");
        QTest::newRow("export") << Werkzeug(
            [](const Werkbank &bank) { AsciiExportieren(bank, "ziel", u';'); });
        QTest::newRow("export of all fields")
            << Werkzeug([](const Werkbank &bank) { AsciiExportieren(bank, "ziel", AlleFelder()); });
        QTest::newRow("import") << Werkzeug(
            [](const Werkbank &bank) { AsciiImportieren(bank, "neu.txt", u';'); });
        QTest::newRow("import that renews")
            << Werkzeug([](const Werkbank &bank) { AsciiImportieren(bank, "neu.txt", Erneuern()); });
        QTest::newRow("import of all fields")
            << Werkzeug([](const Werkbank &bank) { AsciiImportieren(bank, "alle.csv", AlleFelderEin()); });
        QTest::newRow("append") << Werkzeug(
            [](const Werkbank &bank) { KarteiAnhaengen(bank, bank.store.CardPath("quelle.pzb")); });
        QTest::newRow("mirror") << Werkzeug([](const Werkbank &bank) { KarteiSpiegeln(bank, "ziel.pzb"); });
        QTest::newRow("filter") << Werkzeug(
            [](const Werkbank &bank) { ThemenAusfiltern(bank, "ziel.pzb", {"Thema 1"}); });
        QTest::newRow("deck into the open box") << Werkzeug([](const Werkbank &bank) { Einlesen(bank, {}); });
        QTest::newRow("deck into a new box")
            << Werkzeug([](const Werkbank &bank) { Einlesen(bank, u"ziel.pzb"_s); });
        QTest::newRow("package of another program")
            << Werkzeug([](const Werkbank &bank) { Ausgeben(bank, Fremdform::Anki); });
        QTest::newRow("KVTML") << Werkzeug([](const Werkbank &bank) { Ausgeben(bank, Fremdform::Kvtml); });
        QTest::newRow("pack") << Werkzeug([](const Werkbank &bank) {
            bank.oeffner.WartenZeigen = [&bank](const QString &, const QString &) { return bank.progress; };
            KarteiPacken(bank, u"ziel.pzbz"_s);
        });
        QTest::newRow("reset all") << Werkzeug([](const Werkbank &bank) { AlleNachNeu(bank); });
        QTest::newRow("reset done") << Werkzeug([](const Werkbank &bank) { ErledigteNachNeu(bank); });
    }

    void AToolThatIsEndedHasDoneNothing()
    {
        QFETCH(Werkzeug, werkzeug);
        Werkstatt w;
        w.Oeffnen(Karten(), "quelle.pzb");
        QCOMPARE(AsciiExportieren(w.bank, "alle.csv", AlleFelder()), Ausgang::Gelungen);
        QString rest;
        QCOMPARE(FremdAusgeben(w.bank, "deck.apkg", Fremdform::Anki, rest), Ausgang::Gelungen);
        QByteArray zeilen;
        for (int i = 1; i <= 300; ++i)
            zeilen += "Frage " + QByteArray::number(i) + ";anders;t\r\n";
        w.Schreiben("neu.txt", zeilen);
        w.Oeffnen(Karten());
        const QList<CardRecord> vorher = w.Karten();
        const QStringList dateien = w.Dateien();
        const QByteArray bytes = w.Bytes("offen.pzb");
        int meldungen = 0;
        for (int ende = 1;; ++ende) {
            int gemeldet = 0;
            bool beendet = false;
            w.bank.unwiderruflich = [&] { gemeldet = ende; };
            w.bank.progress = [&](int, int) {
                if (++gemeldet == ende) {
                    beendet = true;
                    throw StoreError(Fehler::Abgebrochen, u"Abgebrochen."_s);
                }
            };
            werkzeug(w.bank);
            if (!beendet)
                break; // it was done before
            QCOMPARE(w.meldungen.Texte(), QStringList{"Abgebrochen."});
            w.meldungen.gezeigt.clear();
            ++meldungen;
            QVERIFY(w.store.IsOpen());
            QCOMPARE(w.store.CurrentFileName, "offen.pzb");
            QCOMPARE(w.store.schritte.Zurueckzunehmen(), QString());
            QVERIFY(w.Bytes("offen.pzb") == bytes);
            QCOMPARE(w.Karten(), vorher);
            QVERIFY(w.ZaehlerStimmen());
            QCOMPARE(w.Dateien(), dateien);
        }
        QVERIFY(meldungen > 0);
        QCOMPARE(w.meldungen.Texte(), QStringList());
    }
};

PAUKFIX_TEST(AbbruchTest)
#include "AbbruchTest.moc"
